// The last copy, on its real window.
#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "backup/frmSicherung.h"
#include "platform/look/look.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFrmSicherung : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    store_ = std::make_unique<DemoStore>();
    schreibe(place_->settings, keys::KopienOrdner, place_->path("Kopien"));
    keeper_ = std::make_unique<CopyKeeper>(place_->workplace());
    keeper_->open(store_->path());
    QVERIFY(QTest::qWaitFor([this] { return !keeper_->isBusy(); }));
  }
  void cleanup() {
    keeper_.reset();
    store_.reset();
    place_.reset();
  }

  void makesTheCopyAndCloses();
  void showsHowFarItIs();
  void saysWhatFailedAndTriesAgain();
  void endsWithoutOne();
  void switchedOffShowsNothing();
  void manners();

 private:
  QStringList copies() const { return QDir(place_->path("Kopien")).entryList({"*.qkk"}, QDir::Files); }
  /// A file where the folder should be.
  void obstruct() {
    QFile obstacle(place_->path("Kopien"));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
  }
  /// Runs in the window's own event loop, as soon as it says a failure.
  void whenItFails(const std::function<void(frmSicherung&)>& act) {
    auto* timer = new QTimer(keeper_.get());
    connect(timer, &QTimer::timeout, this, [timer, act] {
      auto* window = qobject_cast<frmSicherung*>(QApplication::activeModalWidget());
      if (!window || !the<QPushButton>(*window, "cmdNochmal").isVisible()) return;
      timer->stop();
      act(*window);
    });
    timer->start(10);
  }

  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<DemoStore> store_;
  std::unique_ptr<CopyKeeper> keeper_;
};

void TestFrmSicherung::makesTheCopyAndCloses() {
  makeClosingCopy(*keeper_, nullptr);
  QCOMPARE(copies().size(), 1);
  QVERIFY(!keeper_->isBusy());
  store_->addShot("1", 1, 1);
  place_->clock.advance(1000);
  makeClosingCopy(*keeper_, nullptr);
  QCOMPARE(copies().size(), 2);
}

void TestFrmSicherung::showsHowFarItIs() {
  frmSicherung window(*keeper_);
  keeper_->makeNow();
  QVERIFY(keeper_->isBusy());
  bool shown = false;
  QTimer timer;
  connect(&timer, &QTimer::timeout, this, [&] {
    if (!window.isVisible()) return;
    shown = true;
    timer.stop();
    QCOMPARE(the<QLabel>(window, "lblStand").text(),
             "Der Wettkampf wird vor dem Beenden gesichert und die Sicherung geprüft ...");
    QVERIFY(the<QProgressBar>(window, "barStand").isVisible());
    QVERIFY(!the<QPushButton>(window, "cmdNochmal").isVisible());
  });
  timer.start(0);
  window.run();
  QVERIFY(shown);
  QCOMPARE(window.result(), static_cast<int>(QDialog::Accepted));
  QCOMPARE(copies().size(), 1);
}

void TestFrmSicherung::saysWhatFailedAndTriesAgain() {
  obstruct();
  whenItFails([this](frmSicherung& window) {
    const QString text = the<QLabel>(window, "lblStand").text();
    QVERIFY2(text.startsWith("Die Sicherung um 10:00 ist nicht gelungen: "), qPrintable(text));
    QVERIFY(text.endsWith("Der Wettkampf selbst ist davon nicht betroffen."));
    QVERIFY(!the<QProgressBar>(window, "barStand").isVisible());
    QVERIFY(QFile::remove(place_->path("Kopien")));
    click(window, "cmdNochmal");
  });
  makeClosingCopy(*keeper_, nullptr);
  QCOMPARE(copies().size(), 1);
  QCOMPARE(keeper_->state().trouble, QString());
}

void TestFrmSicherung::endsWithoutOne() {
  obstruct();
  whenItFails([](frmSicherung& window) { click(window, "cmdOhne"); });
  makeClosingCopy(*keeper_, nullptr);
  QVERIFY(copies().isEmpty());
}

void TestFrmSicherung::switchedOffShowsNothing() {
  obstruct();
  schreibe(place_->settings, keys::KopienAktiv, false);
  makeClosingCopy(*keeper_, nullptr);
  QVERIFY(!keeper_->isBusy());
}

void TestFrmSicherung::manners() {
  obstruct();
  frmSicherung window(*keeper_);
  keeper_->makeNow();
  QVERIFY(QTest::qWaitFor([this] { return !keeper_->isBusy(); }));
  window.show();
  QCOMPARE(badManners(window), QStringList());
}

QTEST_MAIN(TestFrmSicherung)
#include "test_frm_sicherung.moc"

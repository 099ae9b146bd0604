// When copies are made, and what the keeper says of them.
#include <QSignalSpy>
#include <QtTest>

#include "backup/copy_keeper.h"
#include "platform/dao/recordset.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestCopyKeeper : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    shots_ = 0;
    place_ = std::make_unique<TestWorkplace>();
    store_ = std::make_unique<DemoStore>();
    schreibe(place_->settings, keys::KopienOrdner, place_->path("Kopien"));
    QVERIFY(QDir().mkpath(place_->path("Kopien")));
    keeper_ = std::make_unique<CopyKeeper>(place_->workplace());
  }
  void cleanup() {
    keeper_.reset();
    store_.reset();
    place_.reset();
  }

  void makesOneWhenTheLastIsOld();
  void withoutAChangeMakesNoOther();
  void atClosingMakesTheLast();
  void switchedOffMakesNone();
  void tellsWhatWentWrongAndTriesAgain();
  void followsTheSettings();
  void seesWhatAnotherProgramMade();
  void saysThatACopyIsOpen();
  void givesUp();
  void forgetsWhatIsClosed();

 private:
  const CopyState& state() const { return keeper_->state(); }
  bool ended() const {
    return QTest::qWaitFor([this] { return !keeper_->isBusy(); }, 30000);
  }
  void open() {
    keeper_->open(store_->path());
    QVERIFY(ended());
  }
  /// A look after so many minutes, until what it began has ended.
  void lookAfter(int minutes) {
    place_->clock.advance(minutes * 60000);
    keeper_->look();
    QVERIFY(ended());
  }
  QStringList copies() const { return QDir(place_->path("Kopien")).entryList({"*.qkk"}, QDir::Files); }

  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<DemoStore> store_;
  std::unique_ptr<CopyKeeper> keeper_;
  int shots_ = 0;
};

void TestCopyKeeper::makesOneWhenTheLastIsOld() {
  QSignalSpy told(keeper_.get(), &CopyKeeper::onState);
  open();
  QVERIFY(state().enabled);
  QCOMPARE(state().interval, std::chrono::minutes(10));
  QCOMPARE(state().folder, place_->path("Kopien"));
  QVERIFY(!state().lastProven.isValid());
  QVERIFY(told.count() >= 2);
  lookAfter(0);
  QCOMPARE(copies().size(), 1);
  QCOMPARE(state().lastProven, place_->clock.now());
  QCOMPARE(state().upToDate, place_->clock.now());
  QCOMPARE(QFileInfo(state().file).fileName(), copies().first());
  QCOMPARE(state().trouble, QString());
  store_->addShot("1", 1, ++shots_);
  lookAfter(9);
  QCOMPARE(copies().size(), 1);
  lookAfter(1);
  QCOMPARE(copies().size(), 2);
  QCOMPARE(state().lastProven, place_->clock.now());
}

void TestCopyKeeper::withoutAChangeMakesNoOther() {
  open();
  lookAfter(0);
  const QDateTime first = state().lastProven;
  lookAfter(10);
  lookAfter(10);
  QCOMPARE(copies().size(), 1);
  QCOMPARE(state().lastProven, first);
  QCOMPARE(state().upToDate, place_->clock.now());
  // Also one of before counts, when it holds the same.
  keeper_ = std::make_unique<CopyKeeper>(place_->workplace());
  place_->clock.advance(3600000);
  open();
  QCOMPARE(state().lastProven, first);
  QCOMPARE(state().upToDate, first);
  lookAfter(0);
  QCOMPARE(copies().size(), 1);
  QCOMPARE(state().upToDate, place_->clock.now());
}

void TestCopyKeeper::atClosingMakesTheLast() {
  open();
  lookAfter(0);
  store_->addShot("1", 1, ++shots_);
  place_->clock.advance(60000);
  keeper_->makeNow();
  QVERIFY(keeper_->isBusy());
  // The one under way began before this shot: another one follows.
  store_->addShot("1", 1, ++shots_);
  keeper_->makeNow();
  QVERIFY(ended());
  QVERIFY(copies().size() >= 2);
  place_->clock.advance(60000);
  keeper_->makeNow();
  QVERIFY(ended());
  QCOMPARE(state().upToDate, place_->clock.now());
  const QStringList made = copies();
  const auto copy = dao::Database::open(state().file, true);
  const auto counted = copy->openRecordset("Select Count(*) as Anzahl from Haering_Daten");
  QCOMPARE(counted->value("Anzahl").toInt(), shots_);
  keeper_->makeNow();
  QVERIFY(ended());
  QCOMPARE(copies(), made);
}

void TestCopyKeeper::switchedOffMakesNone() {
  schreibe(place_->settings, keys::KopienAktiv, false);
  open();
  QVERIFY(!state().enabled);
  lookAfter(60);
  keeper_->makeNow();
  QVERIFY(ended());
  QCOMPARE(copies(), QStringList());
}

void TestCopyKeeper::tellsWhatWentWrongAndTriesAgain() {
  open();
  QVERIFY(QDir(place_->path("Kopien")).removeRecursively());
  QFile obstacle(place_->path("Kopien"));
  QVERIFY(obstacle.open(QIODevice::WriteOnly));
  lookAfter(0);
  QVERIFY2(state().trouble.startsWith("Die Sicherung um 10:00 ist nicht gelungen: "),
           qPrintable(state().trouble));
  QVERIFY(!state().lastProven.isValid());
  obstacle.remove();
  lookAfter(1);
  QVERIFY(!state().trouble.isEmpty());
  lookAfter(1);
  QCOMPARE(state().trouble, QString());
  QCOMPARE(state().lastProven, place_->clock.now());
}

void TestCopyKeeper::followsTheSettings() {
  open();
  lookAfter(0);
  store_->addShot("1", 1, ++shots_);
  schreibe(place_->settings, keys::KopienMinuten, 3);
  lookAfter(3);
  QCOMPARE(state().interval, std::chrono::minutes(3));
  QCOMPARE(copies().size(), 2);
  schreibe(place_->settings, keys::KopienMinuten, 0);
  lookAfter(0);
  QCOMPARE(state().interval, std::chrono::minutes(kFewestCopyMinutes));
  // Another folder has none yet.
  schreibe(place_->settings, keys::KopienOrdner, place_->path("Stick"));
  lookAfter(0);
  QVERIFY(!state().lastProven.isValid());
  lookAfter(0);
  QVERIFY(state().file.startsWith(place_->path("Stick")));
}

void TestCopyKeeper::seesWhatAnotherProgramMade() {
  CopyKeeper other(place_->workplace());
  open();
  lookAfter(0);
  other.open(store_->path());
  QVERIFY(QTest::qWaitFor([&] { return !other.isBusy(); }));
  QCOMPARE(other.state().lastProven, state().lastProven);
  store_->addShot("1", 1, ++shots_);
  lookAfter(10);
  QCOMPARE(copies().size(), 2);
  place_->clock.advance(60000);
  other.look();
  QVERIFY(QTest::qWaitFor([&] { return !other.isBusy(); }));
  QCOMPARE(copies().size(), 2);
  QCOMPARE(other.state().lastProven, state().lastProven);
}

void TestCopyKeeper::saysThatACopyIsOpen() {
  open();
  QCOMPARE(state().openedCopy, QString());
  lookAfter(0);
  const QString copy = state().file;
  keeper_->open(copy);
  QVERIFY(ended());
  QCOMPARE(state().openedCopy, "Geöffnet ist eine Sicherung: der Stand vom 20.11.2026 10:00 von " +
                                   sourceOf(store_->path()) + ".");
  QVERIFY(!state().lastProven.isValid());
  lookAfter(0);
  QVERIFY(state().lastProven.isValid());
  QVERIFY(state().file != copy);
  QCOMPARE(copies().size(), 2);
}

void TestCopyKeeper::givesUp() {
  open();
  keeper_->look();
  QVERIFY(keeper_->isBusy());
  keeper_->giveUp();
  QVERIFY(ended());
  QCOMPARE(state().trouble, QString());
  QVERIFY(copies().isEmpty() || state().lastProven.isValid());
  lookAfter(2);
  QVERIFY(state().lastProven.isValid());
}

void TestCopyKeeper::forgetsWhatIsClosed() {
  open();
  keeper_->look();
  keeper_->close();
  QVERIFY(!keeper_->isBusy());
  QVERIFY(state() == CopyState());
  keeper_->look();
  keeper_->makeNow();
  QVERIFY(!keeper_->isBusy());
  // Nothing of the one before arrives.
  keeper_->open(place_->path("gibt es nicht.qkk"));
  QVERIFY(ended());
  QVERIFY(!state().lastProven.isValid());
  lookAfter(0);
  QVERIFY(!state().trouble.isEmpty());
}

QTEST_GUILESS_MAIN(TestCopyKeeper)
#include "test_copy_keeper.moc"

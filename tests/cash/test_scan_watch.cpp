// A scanner at the real window, with real boxes: a scan arrives where it is meant, or nowhere.
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "platform/dialog/message_boxes.h"
#include "platform/look/look.h"
#include "platform/runtime/clock.h"
#include "tests/cash/desk_window.h"
#include "tests/support/real_boxes.h"

using namespace qk;
using namespace qk::test;

namespace {

QString refusal(const QString& scan) {
  return "Hier wird kein Strichcode gelesen.\r\nDer Scan »" + scan + "« wurde nicht übernommen.";
}

}  // namespace

class TestScanWatch : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    boxes = std::make_unique<RealBoxes>();
    till = std::make_unique<Till>(&real);
    desk = std::make_unique<DeskWindow>(*till);
    desk->open();
  }
  void cleanup() {
    desk.reset();
    till.reset();
    boxes.reset();
  }

  void articlesAreScannedOneAfterTheOther();
  void anAmountTakesNoScan();
  void anAmountTakesFingers();
  void aPriceTakesNoScan();
  void aCountTakesNoScan();
  void theChangeOfShooterTakesAScan();
  void aBoxInTheMiddleOfAScan();
  void aBoxAfterAScanKeepsItsKeys();
  void aButtonIsNotPressedByAScan();
  void aScanOnAnotherTab();
  void aScanOverTheGrid();

 private:
  /// The box on top has the keyboard; the platform of the tests gives it only after a while.
  static QWidget* inTheBox() {
    QWidget* box = QApplication::activeModalWidget();
    // Qt calls a window active already when the one below it is.
    if (!box || !QTest::qWaitFor([box] { return QApplication::activeWindow() == box; }))
      failTest("the box has no keyboard");
    return QApplication::focusWidget();
  }
  QLineEdit& field() { return desk->on<QLineEdit>("txtArtikelnummer"); }

  SystemClock clock;
  MessageBoxes real{clock};
  std::unique_ptr<RealBoxes> boxes;
  std::unique_ptr<Till> till;
  std::unique_ptr<DeskWindow> desk;
};

void TestScanWatch::articlesAreScannedOneAfterTheOther() {
  QVERIFY(field().hasFocus());
  desk->scan("200");
  desk->scan("4000000003002");
  QCOMPARE(desk->purchase().size(), 2);
  QCOMPARE(field().text(), "");
}

void TestScanWatch::anAmountTakesNoScan() {
  desk->scan("200");
  auto& money = desk->on<QComboBox>("cmbWechselGeld");
  money.setEditText("20");
  money.setFocus();
  money.lineEdit()->end(false);
  boxes->expect(refusal("4000000003002")).titled("Hinweis").with(BoxButtons::Ok);
  desk->scan("4000000003002");
  QTRY_VERIFY(boxes->done());
  QCOMPARE(money.currentText(), "20");
  QCOMPARE(desk->purchase().size(), 1);
  QCOMPARE(desk->window().focusWidget(), &money);  // Enter went nowhere
}

void TestScanWatch::anAmountTakesFingers() {
  auto& money = desk->on<QComboBox>("cmbWechselGeld");
  money.setFocus();
  for (const char* key : {"2", "0", "0"}) desk->key(key, 90);
  desk->enter(90);
  QCOMPARE(money.currentText(), "200");
  QVERIFY(desk->on<QPushButton>("cmdVerbuchen").hasFocus());
}

void TestScanWatch::aPriceTakesNoScan() {
  boxes->expectInput(kAskAmount, "12,5").during([this] {
    auto* edit = qobject_cast<QLineEdit*>(inTheBox());
    QVERIFY(edit);
    boxes->expect(refusal("4000000003002"));
    desk->scan("4000000003002");
    QTRY_VERIFY(boxes->done());
    QVERIFY(edit->window()->isVisible());
    QCOMPARE(edit->text(), "");
  });
  desk->scan("800");
  QVERIFY(desk->purchase().first().startsWith("Verzehr|0|12,5|"));
}

void TestScanWatch::aCountTakesNoScan() {
  desk->on<QListWidget>("lstAll").setCurrentRow(1);
  boxes->expectInput(kAskCount, "2").during([this] {
    QVERIFY(inTheBox());
    boxes->expect(refusal("300"));
    desk->scan("300");
    QTRY_VERIFY(boxes->done());
  });
  desk->press("cmdAddAnzahl");
  QCOMPARE(desk->purchase().size(), 2);
}

void TestScanWatch::theChangeOfShooterTakesAScan() {
  boxes->expectInput("Bitte neue Startnummer eingeben:", "BC.107.1.23").during([this] {
    auto* edit = qobject_cast<QLineEdit*>(inTheBox());
    QVERIFY(edit);
    for (const QChar c : QString("BC.107.1.23")) desk->key(c, 5);
    QCOMPARE(edit->text(), "BC.107.1.23");
  });
  desk->press("cmdSchWechsel");
  QCOMPARE(desk->text("txtStartNr"), "107");
}

void TestScanWatch::aBoxInTheMiddleOfAScan() {
  desk->key("2", 200);
  desk->key("0", 5);
  boxes->expect("Der Drucker ist weg.").during([this] {
    QVERIFY(inTheBox()->window() != &desk->window());
    desk->key("0", 5);
    desk->enter(5);
    QCOMPARE(field().text(), "200");
    QCOMPARE(desk->purchase().size(), 0);
  });
  real.note("Der Drucker ist weg.");
  QTRY_COMPARE(desk->purchase().size(), 1);
  QVERIFY(desk->purchase().first().startsWith("Nachkauf Serie|"));
  QCOMPARE(field().text(), "");
}

void TestScanWatch::aBoxAfterAScanKeepsItsKeys() {
  desk->scan("100");
  boxes->expect(kLimitOne).during([this] {
    QVERIFY(inTheBox());
    desk->key("9", 300);
    QCOMPARE(field().text(), "100");
  });
  desk->scan("100");
  QCOMPARE(desk->purchase().size(), 1);
}

void TestScanWatch::aButtonIsNotPressedByAScan() {
  desk->scan("200");
  desk->on<QPushButton>("cmdVerbuchen").setFocus();
  desk->scan("300");
  QTRY_COMPARE(desk->purchase().size(), 2);
  QVERIFY(till->payments().isEmpty());
}

void TestScanWatch::aScanOnAnotherTab() {
  desk->show(2);
  desk->on<QPushButton>("cmdOPVerbuchen").setFocus();
  boxes->expect(refusal("300"));
  desk->scan("300");
  QTRY_VERIFY(boxes->done());
  QCOMPARE(desk->purchase().size(), 0);
}

void TestScanWatch::aScanOverTheGrid() {
  desk->scan("200");
  auto& grid = desk->on<TextGrid>("flex");
  grid.setFocus();
  grid.setCurrentRow(1);
  boxes->expect(refusal("4000000003002"));
  desk->scan("4000000003002");
  QTRY_VERIFY(boxes->done());
  QVERIFY(desk->purchase().first().startsWith("Nachkauf Serie|0|3,5|"));
}

QTEST_MAIN(TestScanWatch)
#include "test_scan_watch.moc"

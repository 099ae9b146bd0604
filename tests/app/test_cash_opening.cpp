// The way from the main window to the cash desk.
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestCashOpening : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void withoutAShooterThereIsNoDesk();
  void theDeskOpensForTheShooterOfTheLine();
  void theToolbarOpensItToo();
  void itOpensByItselfWhereThatIsWanted();
  void aShooterWhoIsGone();

 private:
  static QString text(QWidget& desk, const QString& label) { return the<QLabel>(desk, label).text(); }
};

void TestCashOpening::withoutAShooterThereIsNoDesk() {
  RangeOffice office;
  QVERIFY(office.open());
  office.boxes.expect("Bitte wählen Sie einen Schützen.").titled("Hinweis").with(BoxButtons::Ok);
  trigger(office.window(), "mnuEditKasse");
}

void TestCashOpening::theDeskOpensForTheShooterOfTheLine() {
  RangeOffice office;
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  bool shown = false;
  office.boxes.expectWindow("frmFinanz", [&](QWidget& desk) {
    shown = true;
    QCOMPARE(the<QLineEdit>(desk, "txtStartNr").text(), "107");
    QCOMPARE(text(desk, "Label1"), "Müller Jörg");
    QCOMPARE(text(desk, "Label4"), "Schützenlust Äußere Au");  // it has no short name
    QCOMPARE(text(desk, "Label9"), "Äußere Au I");
    auto& tabs = the<QTabWidget>(desk, "SSTab1");
    QVERIFY(!tabs.isTabVisible(1) && !tabs.isTabVisible(3));
    click(desk, "cmdCancel");
  });
  trigger(office.window(), "mnuEditKasse");
  QVERIFY(shown);
}

void TestCashOpening::theToolbarOpensItToo() {
  RangeOffice office;
  QVERIFY(office.open());
  office.chooseShooter(1, "105");
  office.boxes.expectWindow("frmFinanz", [](QWidget& desk) { click(desk, "cmdCancel"); });
  trigger(office.window(), "euro");
}

void TestCashOpening::itOpensByItselfWhereThatIsWanted() {
  RangeOffice office;
  office.set("OpenKassenfenster", "1");
  QVERIFY(office.open());
  office.boxes.expectWindow("frmFinanz", [](QWidget& desk) { click(desk, "cmdCancel"); });
  office.chooseShooter(1, "107");
  QVERIFY(office.boxes.done());
}

void TestCashOpening::aShooterWhoIsGone() {
  RangeOffice office;
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.database()->execute("DELETE * FROM Schützen WHERE Startnummer = '107'");
  office.boxes.expectWindow("frmFinanz", [](QWidget& desk) {
    QCOMPARE(text(desk, "Label1"), "SCHÜTZE nicht gefunden!!!!");
    click(desk, "cmdCancel");
  });
  trigger(office.window(), "mnuEditKasse");
}

QTEST_MAIN(TestCashOpening)
#include "test_cash_opening.moc"

// The window of the master data: what it opens, its pages and keys.
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QStatusBar>
#include <QTest>

#include "masterdata/pages/page.h"
#include "tests/masterdata/windows/master_desk.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kOpenFilter = "Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*";

}  // namespace

class TestMasterWindow : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void manners() {
    MasterDesk desk;
    QVERIFY(desk.open());
    for (const Page& page : masterDataPages()) {
      desk.show(page.key);
      QCOMPARE(badManners(desk.window()).join('\n'), QString());
    }
  }

  void pagesTellTheirCounts() {
    MasterDesk desk;
    QVERIFY(desk.open());
    auto& list = the<QListWidget>(desk.window(), "lstSeiten");
    QCOMPARE(list.count(), int(masterDataPages().size()));
    QCOMPARE(list.item(0)->text(), QString("Wettkampf"));
    const QString clubs = "Vereine (" + desk.value("SELECT Count(*) AS n FROM Verein") + ")";
    QCOMPARE(list.findItems(clubs, Qt::MatchExactly).size(), 1);
    QVERIFY(desk.window().windowTitle().startsWith("Jubiläumsschießen Grünau – Stammdaten"));
  }

  void theTitleFollowsTheCompetitionsName() {
    MasterDesk desk;
    QVERIFY(desk.open());
    desk.setField("feld_Wettkampf_Bezeichnung", "Osterschießen");
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(desk.window().windowTitle(), "Osterschießen – Stammdaten (" + desk.competition + ")");
  }

  /// A row that was just chosen is marked over its whole height.
  void thePagesListHasRoomForItsTexts() {
    MasterDesk desk;
    QVERIFY(desk.open());
    auto& list = the<QListWidget>(desk.window(), "lstSeiten");
    for (int row = 0; row < list.count(); ++row)
      QVERIFY(list.visualItemRect(list.item(row)).height() > list.fontMetrics().lineSpacing() * 5 / 4);
  }

  void theLastCompetitionOpensByItself() {
    MasterDesk desk;
    QVERIFY(desk.open());
    desk.drop();
    QVERIFY(desk.open(""));
    QCOMPARE(desk.window().path(), desk.competition);
    // The office's own last one stays what it was.
    QCOMPARE(desk.place.settings.value("Tarvex", "Häring", "Letzter Wettkampf"), QString());
  }

  void theOfficesLastOneIsTakenFirst() {
    MasterDesk desk;
    desk.place.settings.setValue("Tarvex", "Häring", "Letzter Wettkampf", desk.competition);
    QVERIFY(desk.open(""));
    QCOMPARE(desk.window().path(), desk.competition);
  }

  void withoutACompetitionItOffersSome() {
    MasterDesk desk;
    desk.boxes.expectWindow("frmStart", [](QWidget& start) {
      QCOMPARE(badManners(start).join('\n'), QString());
      press(start, "cmdOeffnen", Qt::Key_Escape);
    });
    QVERIFY(!desk.open(""));
    desk.boxes.expectWindow("frmStart", [](QWidget& start) { click(start, "cmdOeffnen"); });
    desk.boxes.expectOpenFile(kOpenFilter, desk.competition);
    QVERIFY(desk.open(""));
  }

  void whatIsNoCompetitionIsRefused() {
    MasterDesk desk;
    dao::Database::open(desk.competition)->dropTable("Disziplin");
    desk.boxes.expect("Der Wettkampf lässt sich nicht öffnen.\n\nDas ist kein Wettkampf: " + desk.competition)
        .showing(BoxIcon::Exclamation)
        .titled("Fehler");
    QVERIFY(!desk.open());
  }

  void anotherCompetitionReplacesAllPages() {
    MasterDesk desk;
    const QString second = desk.anotherCompetition("Zweiter.qkk");
    dao::Database::open(second)->execute("DELETE FROM Verein WHERE ID > 1");
    dao::Database::open(second)->execute("UPDATE Wettkampf SET Bezeichnung = 'Zweiter'");
    QVERIFY(desk.open());
    desk.show("Vereine");
    QVERIFY(desk.rows("Vereine") > 2);
    desk.show("Wettkampf");
    desk.boxes.expectOpenFile(kOpenFilter, second);
    desk.key(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(desk.field("feld_Wettkampf_Bezeichnung"), QString("Zweiter"));
    QVERIFY(desk.window().windowTitle().startsWith("Zweiter – Stammdaten"));
    desk.show("Vereine");
    QCOMPARE(desk.rows("Vereine"), 1);
    desk.setField("feld_Vereine_Kurzname", "Z");
    desk.key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(desk.value("SELECT Kurzname FROM Verein WHERE ID = 1", second), QString("Z"));
  }

  /// What is open stays open.
  void aCompetitionThatCannotBeOpenedLeavesTheOther() {
    MasterDesk desk;
    const QString broken = desk.anotherCompetition("Kaputt.qkk");
    dao::Database::open(broken)->dropTable("Disziplin");
    QVERIFY(desk.open());
    desk.boxes.expectOpenFile(kOpenFilter, broken);
    desk.boxes.expect("Der Wettkampf lässt sich nicht öffnen.\n\nDas ist kein Wettkampf: " + broken);
    desk.key(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(desk.window().path(), desk.competition);
    desk.show("Vereine");
    QVERIFY(desk.rows("Vereine") > 2);
  }

  void f1OpensTheHandbook() {
    MasterDesk desk;
    QVERIFY(desk.open());
    desk.key(Qt::Key_F1);
    QWidget* help = desk.window().findChild<QWidget*>("frmHilfe");
    QVERIFY(help && help->isVisible());
  }

  void aPageWithUnsavedWorkIsNotLeftUnasked() {
    MasterDesk desk;
    QVERIFY(desk.open());
    desk.setField("feld_Wettkampf_Ort", "Würzbrunn");
    const QString question =
        "Wettkampf ist noch nicht gespeichert:\nOrt\n\nJetzt speichern? (Nein kehrt zurück; dort nimmt Esc "
        "die "
        "Eingaben zurück.)";
    desk.boxes.expect(question, BoxAnswer::No).presetting(BoxAnswer::Yes);
    desk.show("Schuetzen");
    QCOMPARE(desk.window().page()->objectName(), QString("seite_Wettkampf"));
    QCOMPARE(desk.field("feld_Wettkampf_Ort"), QString("Würzbrunn"));
    desk.boxes.expect(question, BoxAnswer::No);
    QVERIFY(!desk.window().close());
    desk.boxes.expect(question, BoxAnswer::Yes);
    desk.show("Schuetzen");
    QCOMPARE(desk.window().page()->objectName(), QString("seite_Schuetzen"));
    QCOMPARE(desk.value("SELECT Ort FROM Wettkampf"), QString("Würzbrunn"));
    QCOMPARE(desk.window().statusBar()->currentMessage(), QString("Wettkampf ist gespeichert."));
    QVERIFY(desk.window().close());
  }
};

QTEST_MAIN(TestMasterWindow)
#include "test_master_window.moc"

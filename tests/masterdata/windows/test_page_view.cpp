// A page as an office works with it: by keyboard, on the real window.
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>

#include "masterdata/rows/references.h"
#include "platform/runtime/error.h"
#include "tests/masterdata/windows/master_desk.h"

using namespace qk;
using namespace qk::test;

namespace {

QString missingTable(const QString& name) {
  return "Fehler: 3078 - Die Tabelle oder Abfrage '" + name + "' wurde nicht gefunden.\n";
}

}  // namespace

class TestPageView : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    desk = std::make_unique<MasterDesk>();
    QVERIFY(desk->open());
  }
  void cleanup() { desk.reset(); }

  void aNewRowByKeyboard();
  void anEmptyPageSaysWhatWouldStandThere();
  void theColumnSaysWhatItDoes();
  void aDisciplineShowsWhatItMakesOfShots();
  void whatIsWrongIsToldAndGetsTheKeyboard();
  void anotherRowAsksForTheUnsavedOne();
  void escDropsAfterAQuestion();
  void filterAndOrderKeepTheRow();
  void membersAreTickedAndStored();
  void theSecondIsToldWhatTheFirstChanged();
  void aRowThatSomebodyDeletedIsOfferedAsNew();
  void aChosenRowThatIsGoneIsTold();
  void aTickOnARowThatIsGoneIsTold();
  void whatResultsReferToStays();
  void aRowGoesAfterAQuestion();
  void refreshShowsWhatOthersDid();
  void aShooterIsFoundByHisNumber();
  void whatCannotBeReadIsToldAndTheProgramLives();
  void aMissingTableLeavesTheOtherPages();
  void aMissingListIsNotOffered();

 private:
  QWidget& window() { return desk->window(); }
  bool isUsable(const QString& button) { return the<QPushButton>(window(), button).isEnabled(); }
  std::unique_ptr<MasterDesk> desk;
};

void TestPageView::aNewRowByKeyboard() {
  desk->show("Vereine");
  const int before = desk->rows("Vereine");
  desk->key(Qt::Key_N, Qt::ControlModifier);
  QCOMPARE(desk->label("lblTitel_Vereine"), QString("Neuer Verein"));
  QVERIFY(!isUsable("cmdSpeichern_Vereine"));
  QWidget* first = &desk->focus();
  QCOMPARE(first->objectName(), QString("feld_Vereine_Name"));
  typeInto(*first, "Hubertus Öd");
  QCOMPARE(desk->label("lblStand_Vereine"), QString("Nicht gespeichert"));
  desk->key(Qt::Key_Tab);
  typeInto(desk->focus(), "Hubertus");
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT Kurzname FROM Verein WHERE Name = 'Hubertus Öd'"), QString("Hubertus"));
  QCOMPARE(desk->rows("Vereine"), before + 1);
  QCOMPARE(desk->window().statusBar()->currentMessage(),
           QString("Der Verein »Hubertus Öd« ist gespeichert."));
  QCOMPARE(desk->cell("Vereine", desk->grid("Vereine").currentRow(), 0), QString("Hubertus Öd"));
  QVERIFY(desk->label("lblStand_Vereine").isEmpty());
}

void TestPageView::anEmptyPageSaysWhatWouldStandThere() {
  desk->execute("DELETE FROM Kombination_Diszi");
  desk->execute("DELETE FROM Kombination_Name");
  desk->show("Kombinationen");
  QCOMPARE(desk->rows("Kombinationen"), 0);
  QVERIFY(desk->label("lblTitel_Kombinationen").isEmpty());
  QVERIFY(!isUsable("cmdLoeschen_Kombinationen"));
  desk->key(Qt::Key_N, Qt::ControlModifier);
  desk->setField("feld_Kombinationen_Kombinationsname", "Drei");
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->rows("Kombinationen"), 1);
}

void TestPageView::theColumnSaysWhatItDoes() {
  desk->show("Disziplinen");
  the<QWidget>(window(), "feld_Disziplinen_dblMaxSerieDSB").setFocus();
  QVERIFY(desk->label("lblWirkung_Disziplinen").startsWith("Nur bei Ring-Teilern: Ergebnis = diese Zahl"));
  QVERIFY(the<QWidget>(window(), "feld_Disziplinen_VortelAnzeige").visibleRegion().isEmpty());
  the<QWidget>(window(), "feld_Disziplinen_VortelAnzeige").setFocus();
  QVERIFY(!the<QWidget>(window(), "feld_Disziplinen_VortelAnzeige").visibleRegion().isEmpty());
  the<QWidget>(window(), "feld_Disziplinen_Ring0XZehntel").setFocus();
  QVERIFY(desk->label("lblWirkung_Disziplinen").contains("9,7 also 7"));
}

void TestPageView::aDisciplineShowsWhatItMakesOfShots() {
  desk->show("Disziplinen");
  desk->choose("Disziplinen", 0, "LG Ring-Teiler");
  QVERIFY(desk->label("lblBeispiel_Disziplinen").endsWith("Ring-Teiler: 100 − 92 Ringe + Teiler 8,3 = 16,3"));
  desk->setField("feld_Disziplinen_dblMaxSerieDSB", "109");
  QVERIFY(desk->label("lblBeispiel_Disziplinen").endsWith("Ring-Teiler: 109 − 92 Ringe + Teiler 8,3 = 25,3"));
  press(window(), "feld_Disziplinen_Teiler", Qt::Key_Space);
  QVERIFY(desk->label("lblBeispiel_Disziplinen").contains("Serie 10er aus 10 Schüssen: 92 Ringe"));
}

void TestPageView::whatIsWrongIsToldAndGetsTheKeyboard() {
  desk->show("Klassen");
  desk->choose("Klassen", 0, "Herren I");
  desk->setField("feld_Klassen_Alter von", "viele");
  desk->setField("feld_Klassen_KZ", "");
  desk->boxes
      .expect("So lässt sich das nicht speichern:\n\nKürzel: fehlt.\nAlter von: »viele« ist keine Zahl.")
      .showing(BoxIcon::Exclamation);
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->focus().objectName(), QString("feld_Klassen_KZ"));
  QCOMPARE(desk->value("SELECT KZ FROM Schützenklassen WHERE Klasse = 'Herren I'"), QString("H1"));
}

void TestPageView::anotherRowAsksForTheUnsavedOne() {
  desk->show("Vereine");
  desk->choose("Vereine", 0, "Edelweiß Höfen");
  desk->setField("feld_Vereine_Kurzname", "EWH");
  const QString question =
      "Der Verein »Edelweiß Höfen« ist noch nicht gespeichert:\nKurzname\n\nJetzt speichern? (Nein kehrt "
      "zurück; "
      "dort nimmt Esc die Eingaben zurück.)";
  desk->boxes.expect(question, BoxAnswer::No);
  desk->choose("Vereine", 0, "Bürgerschützen Münnerfeld");
  QCOMPARE(desk->field("feld_Vereine_Kurzname"), QString("EWH"));
  QCOMPARE(desk->cell("Vereine", desk->grid("Vereine").currentRow(), 0), QString("Edelweiß Höfen"));
  desk->boxes.expect(question, BoxAnswer::Yes);
  desk->choose("Vereine", 0, "Bürgerschützen Münnerfeld");
  QCOMPARE(desk->field("feld_Vereine_Kurzname"), QString("BS Münnerfeld"));
  QCOMPARE(desk->value("SELECT Kurzname FROM Verein WHERE ID = 3"), QString("EWH"));
  QCOMPARE(desk->cell("Vereine", desk->grid("Vereine").currentRow(), 0),
           QString("Bürgerschützen Münnerfeld"));
}

void TestPageView::escDropsAfterAQuestion() {
  desk->show("Vereine");
  desk->choose("Vereine", 0, "Edelweiß Höfen");
  desk->setField("feld_Vereine_Kurzname", "EWH");
  desk->boxes.expect("Eingaben zurücknehmen?\n\nKurzname", BoxAnswer::No).presetting(BoxAnswer::No);
  desk->key(Qt::Key_Escape);
  QCOMPARE(desk->field("feld_Vereine_Kurzname"), QString("EWH"));
  desk->boxes.expect("Eingaben zurücknehmen?\n\nKurzname", BoxAnswer::Yes);
  desk->key(Qt::Key_Escape);
  QCOMPARE(desk->field("feld_Vereine_Kurzname"), QString("Edelweiß"));
  QVERIFY(!isUsable("cmdVerwerfen_Vereine"));
  // A new row where nothing was typed goes unasked.
  desk->key(Qt::Key_N, Qt::ControlModifier);
  desk->key(Qt::Key_Escape);
  QVERIFY(!desk->label("lblTitel_Vereine").startsWith("Neuer"));
}

void TestPageView::filterAndOrderKeepTheRow() {
  desk->show("Disziplinen");
  desk->choose("Disziplinen", 0, "LG Teiler");
  desk->grid("Disziplinen").setFocus();
  type(window(), "filter_Disziplin_Disziplinen", "LG Ring");
  QTRY_COMPARE(desk->rows("Disziplinen"), 6);
  click(window(), "cmdFilter_Disziplinen");
  QTRY_VERIFY(desk->rows("Disziplinen") > 15);
  desk->choose("Disziplinen", 0, "LG Teiler");
  desk->key(Qt::Key_Return, Qt::ControlModifier);  // the title: by name
  desk->rows("Disziplinen");
  QCOMPARE(desk->cell("Disziplinen", desk->grid("Disziplinen").currentRow(), 0), QString("LG Teiler"));
}

void TestPageView::membersAreTickedAndStored() {
  desk->show("Kombinationen");
  desk->key(Qt::Key_N, Qt::ControlModifier);
  desk->setField("feld_Kombinationen_Kombinationsname", "Neu");
  the<QTabWidget>(window(), "tabs_Kombinationen").setCurrentIndex(1);
  type(window(), "filterDisziplinen_Kombinationen", "Teiler");
  tick(window(), "lstDisziplinen_Kombinationen", "LG Teiler");
  tick(window(), "lstDisziplinen_Kombinationen", "LG Ring-Teiler");
  QCOMPARE(desk->label("lblDisziplinen_Kombinationen"), QString("2 gewählt"));
  type(window(), "filterDisziplinen_Kombinationen", "");
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT Count(*) AS n FROM Kombination_Diszi INNER JOIN Kombination_Name ON "
                       "Kombination_Diszi.KombiID = Kombination_Name.ID WHERE Kombinationsname = 'Neu'"),
           QString("2"));
}

void TestPageView::theSecondIsToldWhatTheFirstChanged() {
  desk->show("Vereine");
  desk->choose("Vereine", 0, "Edelweiß Höfen");
  desk->setField("feld_Vereine_Kurzname", "EWH");
  desk->execute("UPDATE Verein SET Kurzname = 'Edelw.' WHERE ID = 3");
  const QString told =
      "Der Verein »Edelweiß Höfen« hat inzwischen jemand anders geändert:\n\nKurzname: dort jetzt »Edelw.«, "
      "hier "
      "»EWH«\n\nIhre Eingaben trotzdem speichern? (Nein speichert nichts; die Eingaben bleiben stehen.)";
  desk->boxes.expect(told, BoxAnswer::No).presetting(BoxAnswer::No);
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT Kurzname FROM Verein WHERE ID = 3"), QString("Edelw."));
  QCOMPARE(desk->field("feld_Vereine_Kurzname"), QString("EWH"));
  // Told once: what stands there now is known.
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT Kurzname FROM Verein WHERE ID = 3"), QString("EWH"));
}

void TestPageView::aRowThatSomebodyDeletedIsOfferedAsNew() {
  desk->show("Vereine");
  desk->choose("Vereine", 0, "Edelweiß Höfen");
  desk->setField("feld_Vereine_Kurzname", "EWH");
  desk->execute("DELETE FROM Verein WHERE ID = 3");
  desk->boxes
      .expect(
          "Der Verein »Edelweiß Höfen« hat inzwischen jemand anders gelöscht.\n\nAls neue Zeile speichern?",
          BoxAnswer::Yes)
      .presetting(BoxAnswer::No);
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT Kurzname FROM Verein WHERE Name = 'Edelweiß Höfen'"), QString("EWH"));
}

void TestPageView::aChosenRowThatIsGoneIsTold() {
  desk->execute("INSERT INTO Verein (Name) VALUES ('Kurzlebig')");
  desk->show("Mannschaften");
  desk->key(Qt::Key_N, Qt::ControlModifier);
  desk->setField("feld_Mannschaften_MannName", "Neue");
  desk->setChoice("feld_Mannschaften_VereinID", "Kurzlebig");
  desk->execute("DELETE FROM Verein WHERE Name = 'Kurzlebig'");
  desk->boxes
      .expect("So lässt sich das nicht speichern:\n\nVerein: »Kurzlebig« hat inzwischen jemand gelöscht.")
      .showing(BoxIcon::Exclamation);
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT Count(*) AS n FROM Mannschaften WHERE MannName = 'Neue'"), QString("0"));
  QCOMPARE(desk->field("feld_Mannschaften_MannName"), QString("Neue"));
  QCOMPARE(the<QComboBox>(window(), "feld_Mannschaften_VereinID").currentText(), QString("Kurzlebig"));
  QCOMPARE(desk->label("lblStand_Mannschaften"), QString("Nicht gespeichert"));
  QCOMPARE(desk->focus().objectName(), QString("feld_Mannschaften_VereinID"));
  desk->setChoice("feld_Mannschaften_VereinID", "Edelweiß Höfen");
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT VereinID FROM Mannschaften WHERE MannName = 'Neue'"), QString("3"));
}

void TestPageView::aTickOnARowThatIsGoneIsTold() {
  desk->execute("INSERT INTO Disziplin (Name) VALUES ('Kurzlebig')");
  desk->show("Kombinationen");
  desk->key(Qt::Key_N, Qt::ControlModifier);
  desk->setField("feld_Kombinationen_Kombinationsname", "Drei");
  the<QTabWidget>(window(), "tabs_Kombinationen").setCurrentIndex(1);
  auto& list = the<QListWidget>(window(), "lstDisziplinen_Kombinationen");
  for (const char* name : {"Kurzlebig", "LG Meister"})
    list.findItems(name, Qt::MatchExactly).constFirst()->setCheckState(Qt::Checked);
  the<QTabWidget>(window(), "tabs_Kombinationen").setCurrentIndex(0);
  desk->execute("DELETE FROM Disziplin WHERE Name = 'Kurzlebig'");
  desk->boxes.expect(
      "So lässt sich das nicht speichern:\n\nDisziplinen: »Kurzlebig« hat inzwischen jemand gelöscht.");
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT Count(*) AS n FROM Kombination_Name WHERE Kombinationsname = 'Drei'"),
           QString("0"));
  QCOMPARE(the<QTabWidget>(window(), "tabs_Kombinationen").currentIndex(), 1);
  QVERIFY(list.findItems("Kurzlebig", Qt::MatchExactly).isEmpty());
  QCOMPARE(desk->label("lblDisziplinen_Kombinationen"), QString("1 gewählt"));
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT Count(*) AS n FROM Kombination_Diszi INNER JOIN Kombination_Name ON "
                       "Kombination_Diszi.KombiID = Kombination_Name.ID WHERE Kombinationsname = 'Drei'"),
           QString("1"));
}

void TestPageView::whatResultsReferToStays() {
  desk->show("Klassen");
  desk->choose("Klassen", 0, "Herren I");
  const QString before = desk->value("SELECT Count(*) AS n FROM Schützenklassen");
  const QString why = refusalOf(*dao::Database::open(desk->competition), "Schützenklassen", 7);
  QVERIFY(!why.isEmpty());
  desk->boxes.expect(why).showing(BoxIcon::Exclamation);
  desk->grid("Klassen").setFocus();
  desk->key(Qt::Key_Delete);
  QCOMPARE(desk->value("SELECT Count(*) AS n FROM Schützenklassen"), before);
}

void TestPageView::aRowGoesAfterAQuestion() {
  desk->show("Vereine");
  desk->key(Qt::Key_N, Qt::ControlModifier);
  desk->setField("feld_Vereine_Name", "Ohne Mitglieder");
  desk->key(Qt::Key_S, Qt::ControlModifier);
  const int rows = desk->rows("Vereine");
  desk->boxes.expect("Der Verein »Ohne Mitglieder« löschen?", BoxAnswer::No).presetting(BoxAnswer::No);
  click(window(), "cmdLoeschen_Vereine");
  QCOMPARE(desk->rows("Vereine"), rows);
  desk->boxes.expect("Der Verein »Ohne Mitglieder« löschen?", BoxAnswer::Yes);
  trigger(window(), "mnuLoeschen");
  QCOMPARE(desk->rows("Vereine"), rows - 1);
  QCOMPARE(desk->window().statusBar()->currentMessage(),
           QString("Der Verein »Ohne Mitglieder« ist gelöscht."));
}

void TestPageView::refreshShowsWhatOthersDid() {
  desk->show("Vereine");
  desk->choose("Vereine", 0, "Edelweiß Höfen");
  desk->execute("UPDATE Verein SET Kurzname = 'Edelw.' WHERE ID = 3");
  desk->execute("INSERT INTO Verein (Name) VALUES ('Zuletzt')");
  const int rows = desk->rows("Vereine");
  desk->key(Qt::Key_F5);
  QCOMPARE(desk->rows("Vereine"), rows + 1);
  QCOMPARE(desk->field("feld_Vereine_Kurzname"), QString("Edelw."));
  QCOMPARE(desk->cell("Vereine", desk->grid("Vereine").currentRow(), 0), QString("Edelweiß Höfen"));
}

void TestPageView::aShooterIsFoundByHisNumber() {
  desk->show("Anmeldungen");
  desk->key(Qt::Key_N, Qt::ControlModifier);
  desk->setField("feld_Anmeldungen_SchuetzeID", "107");
  QVERIFY(desk->label("lbl_Anmeldungen_SchuetzeID").startsWith("107 "));
  desk->setField("feld_Anmeldungen_SchuetzeID", "nie");
  QVERIFY(desk->label("lbl_Anmeldungen_SchuetzeID").isEmpty());
}

void TestPageView::whatCannotBeReadIsToldAndTheProgramLives() {
  desk->show("Kombinationen");
  the<QTabWidget>(window(), "tabs_Kombinationen").setCurrentIndex(1);
  dao::Database::open(desk->competition)->dropTable("Disziplin");
  desk->boxes.expect(missingTable("Disziplin") + "Fehler beim Lesen: Disziplinen", BoxAnswer::Abort);
  type(window(), "filterDisziplinen_Kombinationen", "L");
  QCOMPARE(the<QListWidget>(window(), "lstDisziplinen_Kombinationen").count(), 0);
  desk->show("Vereine");
  QVERIFY(desk->rows("Vereine") > 2);
}

void TestPageView::aMissingTableLeavesTheOtherPages() {
  const QString poor = desk->anotherCompetition("Arm.qkk");
  dao::Database::open(poor)->dropTable("SchuetzenGruppen");
  QVERIFY(desk->open(poor));
  const auto& list = the<QListWidget>(window(), "lstSeiten");
  QCOMPARE(list.findItems("Schützengruppen – fehlt", Qt::MatchExactly).size(), 1);
  desk->boxes.expect("Fehler: 3078 - " + errorDescription(3078) + "\nFehler beim Öffnen: Schützengruppen",
                     BoxAnswer::Abort);
  desk->show("Schuetzengruppen");
  QVERIFY(!desk->window().page()->isEnabled());
  for (const char* act :
       {"mnuNeu", "mnuSpeichern", "mnuLoeschen", "mnuVerwerfen", "mnuAktualisieren", "mnuInhalt"})
    trigger(window(), act);
  desk->show("Vereine");
  QVERIFY(desk->rows("Vereine") > 2);
}

void TestPageView::aMissingListIsNotOffered() {
  const QString poor = desk->anotherCompetition("Arm.qkk");
  dao::Database::open(poor)->dropTable("DisziplinKlasse");
  QVERIFY(desk->open(poor));
  desk->show("Disziplinen");
  desk->choose("Disziplinen", 0, "LG Teiler");
  QVERIFY(!the<QListWidget>(window(), "lstKlassen_Disziplinen").isEnabled());
  QVERIFY(the<QListWidget>(window(), "lstWaffen_Disziplinen").isEnabled());
  desk->setField("feld_Disziplinen_CmdIndex", "77");
  desk->key(Qt::Key_S, Qt::ControlModifier);
  QCOMPARE(desk->value("SELECT CmdIndex FROM Disziplin WHERE Name = 'LG Teiler'", poor), QString("77"));
}

QTEST_MAIN(TestPageView)
#include "test_page_view.moc"

// The real main window: start, lines, tree, marks, station messages, closing.
#include <QContextMenuEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

#include "platform/dao/recordset.h"
#include "platform/grid/text_grid.h"
#include "platform/widgets/panel_splitter.h"
#include "tests/app/range_office.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

class TestFrmLindorm : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void manners();
  void linesOfTheSettings();
  void anUnreadableColourIsReportedOnce();
  void noLineActive();
  void emptySettingAsks();
  void anEmptyStoreMakesFoldersAndAsks();
  void settingsThatCannotBeStoredAreReportedAtTheStart();
  void commandLineHidesTheChoice();
  void badCommandLineEndsTheProgram();
  void lastCompetitionWithoutCommandLine();
  void cancelledDialogAtTheStart();
  void openDialogOpensAnother();
  void missingIniIsToldPerPosition();
  void testImportEntryNeedsItsMarkerFile();

  void aClickedLineIsShown();
  void keysWalkTheTree();
  void chosenShooterStandsInTheTree();
  void shooterFromTheListStandsInTheTree();

  void priceModeMarks();
  void registrationMarks();
  void signOffMarksTheSelectedNode();
  void lineClearMarks();
  void disciplinesAreClearedOnSignOffWhereSet();
  void greenStaysWhenPriceModeFollows();
  void eventsWithoutRaiser();

  void stationMessages();
  void stationMessagePopup();

  void restartBringsOpenShotsBack();
  void restartGivesTheLineToTheShooterOfTheFirstRow();
  void closingAsksAboutOpenShots();
  void closingAsksWhenSet();
  void closingReleasesTheCompetition();

  void reloadDropsTheStateOfTheScreen();
  void reloadDuringAWaitLeavesSolidGround();
  void splittersKeepTheirSize();
  void currentLineIsTheFirstVisible();

 private:
  QString infoText(RangeOffice& office, int row) {
    return the<QListWidget>(office.window(), "lstInfo").item(row)->text();
  }
};

void TestFrmLindorm::manners() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  const QSize least = office.window().minimumSizeHint();
  QVERIFY2(least.width() <= 1366 && least.height() <= 720,
           qPrintable(QString("%1 x %2").arg(least.width()).arg(least.height())));
  QCOMPARE(badManners(office.window()).join('\n'), QString());
}

void TestFrmLindorm::linesOfTheSettings() {
  RangeOffice office("101");
  QVERIFY(office.open());
  QCOMPARE(office.window().lineCount(), 3);
  QCOMPARE(office.tree().topLevelItemCount(), 2);
  QCOMPARE(office.node(1), QString(" 1"));
  QCOMPARE(office.node(2), QString(" 3"));
  QCOMPARE(office.mark(1), QString("pfeil"));
  QCOMPARE(office.tag(1), QString());
  QCOMPARE(office.window().GetTreeIndex(2), 2);
  QCOMPARE(office.window().GetTreeIndex(0), 1);
  QCOMPARE(office.window().GetTreeIndex(1), -1);
  QCOMPARE(office.window().windowTitle(), "QK-Intarso " + office.competition);
  QCOMPARE(office.line(3).nLinie(), qint16(3));
  QCOMPARE(office.line(2).nLinie(), qint16(2));
  QVERIFY(!office.line(2).isVisible());
  QVERIFY(office.line(1).isVisible());
  QCOMPARE(office.on<QLabel>(1, "lblLinie").text(), QString("1"));
}

void TestFrmLindorm::anUnreadableColourIsReportedOnce() {
  RangeOffice office("111");
  office.set("FlexFont_BackColor", "weiß");
  office.boxes
      .expect("Fehler: 13 - " + errorDescription(13) + "\nFehler beim Laden der Schriftarten!",
              BoxAnswer::Ignore)
      .titled("Fehler");
  QVERIFY(office.open());
  QCOMPARE(office.window().lineCount(), 3);
}

void TestFrmLindorm::noLineActive() {
  RangeOffice office("000");
  QVERIFY(office.open());
  QCOMPARE(office.tree().topLevelItemCount(), 0);
  QCOMPARE(office.window().Get_AktLinienNummer(), qint16(3));
  QCOMPARE(office.window().Get_AktStartnummer(), QString());
  QVERIFY(!office.action("linienstop").isEnabled());
  QVERIFY(office.action("linienstop").statusTip().contains("Schießstände"));
  QVERIFY(the<QLabel>(office.window(), "lblKeineLinie").isVisible());
  office.activate();
  QTest::keyClick(&office.window(), Qt::Key_F5);
  QVERIFY(office.window().statusBar()->currentMessage().startsWith("Keine Linie"));
}

void TestFrmLindorm::emptySettingAsks() {
  RangeOffice office("");
  office.boxes
      .expect("Bitte setzen Sie im Menü Optionen - Standeinstellungen den Intarso-Pfad und die Standbelegung")
      .titled("Hinweis")
      .showing(BoxIcon::Information);
  QVERIFY(office.open());
  QCOMPARE(office.window().lineCount(), 0);
}

void TestFrmLindorm::anEmptyStoreMakesFoldersAndAsks() {
  RangeOffice office;
  QVERIFY(QFile::remove(office.place.settings.filePath()));
  office.boxes.expect(
      "Bitte setzen Sie im Menü Optionen - Standeinstellungen den Intarso-Pfad und die Standbelegung");
  QVERIFY(office.open());
  for (const char* name : {"Daten", "Sicherung", "Export", "SystemUser"})
    QVERIFY2(QFileInfo(office.place.path("dokumente/Tarvex/") + name).isDir(), name);
}

void TestFrmLindorm::settingsThatCannotBeStoredAreReportedAtTheStart() {
  RangeOffice office;
  const QString store = office.place.settings.filePath();
  QVERIFY(QFile::remove(store) && QDir().mkpath(store));
  const QString why = "Fehler: 75 - " + errorDescription(75) + ": " + store + "\nFehler bei ";
  office.boxes.expect(why + "form_load_err!", BoxAnswer::Ignore)
      .titled("Fehler")
      .showing(BoxIcon::Exclamation)
      .with(BoxButtons::AbortRetryIgnore);
  office.boxes.expect(why + "sWettkampf_err!", BoxAnswer::Abort);
  QVERIFY(!office.open());
}

void TestFrmLindorm::commandLineHidesTheChoice() {
  RangeOffice office;
  QVERIFY(office.open());
  QVERIFY(!office.action("mnuDateiWettkampfOpen").isVisible());
  QVERIFY(!office.action("mnuDateiStrich1").isVisible());
  QVERIFY(office.action("mnuExit").isVisible());
}

void TestFrmLindorm::badCommandLineEndsTheProgram() {
  RangeOffice office;
  office.boxes.expectWindow("frmStart", [](QWidget& start) { click(start, "cmdOeffnen"); });
  office.boxes.expectOpenFile("Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*", std::nullopt);
  QVERIFY(!office.open(office.place.path("fort.qkk")));
}

void TestFrmLindorm::lastCompetitionWithoutCommandLine() {
  RangeOffice office;
  office.set("Letzter Wettkampf", office.competition);
  QVERIFY(office.open(""));
  QCOMPARE(office.window().sWettkampf(), office.competition);
  QVERIFY(office.action("mnuDateiWettkampfOpen").isVisible());
}

void TestFrmLindorm::cancelledDialogAtTheStart() {
  RangeOffice office;
  office.boxes.expectWindow("frmStart", [](QWidget& start) { click(start, "cmdOeffnen"); });
  office.boxes.expectOpenFile("Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*", std::nullopt);
  QVERIFY(!office.open(""));
}

void TestFrmLindorm::openDialogOpensAnother() {
  RangeOffice office;
  office.set("Letzter Wettkampf", office.competition);
  QVERIFY(office.open(""));
  const QString other = office.place.path("Zweiter.qkk");
  QVERIFY(QFile::copy(office.competition, other));
  office.boxes.expectOpenFile("Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*", other);
  trigger(office.window(), "mnuDateiWettkampfOpen");
  QCOMPARE(office.window().sWettkampf(), other);
  QCOMPARE(office.line(1).sWettkampf(), other);
  QCOMPARE(office.place.settings.value("Tarvex", "Häring", "Letzter Wettkampf"), other);
  office.boxes.expectOpenFile("Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*", std::nullopt);
  trigger(office.window(), "mnuDateiWettkampfOpen");
  QCOMPARE(office.window().sWettkampf(), other);
}

void TestFrmLindorm::missingIniIsToldPerPosition() {
  RangeOffice office("101");
  QVERIFY(QFile::remove(office.folderFile("esa_preis.ini")));
  for (int i = 0; i < 3; ++i)
    office.boxes
        .expect("Datei: " + office.folderFile("esa_preis.ini") +
                " nicht gefunden!\r\nHinweis: Diese Fehlermeldung erscheint noch je Linie!\r\n\r\n"
                "Bitte setzen Sie im Menü: Optionen - Standeinstellungen den Intarso-Netzwerkpfad.")
        .showing(BoxIcon::Critical);
  QVERIFY(office.open());
}

void TestFrmLindorm::testImportEntryNeedsItsMarkerFile() {
  RangeOffice office;
  QVERIFY(office.open());
  QVERIFY(!office.action("mnuOptLoadTestDaten").isVisible());
  office.drop();
  office.markForTestImport();
  QVERIFY(office.open());
  QVERIFY(office.action("mnuOptLoadTestDaten").isVisible());
}

void TestFrmLindorm::aClickedLineIsShown() {
  RangeOffice office("111");
  QVERIFY(office.open());
  office.show(3);
  QVERIFY(office.line(3).isVisible());
  QVERIFY(!office.line(1).isVisible());
  QCOMPARE(office.window().Get_AktLinienNummer(), qint16(2));
  QCOMPARE(office.on<QLabel>(3, "lblLinie").text(), QString("3"));
}

void TestFrmLindorm::keysWalkTheTree() {
  RangeOffice office("101");
  QVERIFY(office.open());
  office.activate();
  QTest::keyClick(&office.window(), Qt::Key_PageDown, Qt::ControlModifier);
  QVERIFY(office.line(3).isVisible());
  QTest::keyClick(&office.window(), Qt::Key_PageDown, Qt::ControlModifier);
  QVERIFY(office.line(3).isVisible());
  QTest::keyClick(&office.window(), Qt::Key_PageUp, Qt::ControlModifier);
  QVERIFY(office.line(1).isVisible());
  office.tree().setFocus();
  QTest::keyClick(&office.tree(), Qt::Key_Down);
  QVERIFY(office.line(3).isVisible());
}

void TestFrmLindorm::chosenShooterStandsInTheTree() {
  RangeOffice office("101");
  QVERIFY(office.open());
  office.show(3);
  office.chooseShooter(3, "107");
  QCOMPARE(office.node(2), QString(" 3 - Müller Jörg"));
  QCOMPARE(office.node(1), QString(" 1"));
  QCOMPARE(office.window().Get_AktStartnummer(), QString("107"));
  QCOMPARE(office.window().GetTreeIndex(2), 2);
}

void TestFrmLindorm::shooterFromTheListStandsInTheTree() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.boxes.expectWindow("frmSchuetzenListe", [](QWidget& list) {
    type(list, "txtSuchname", "Jäger");
    click(list, "cmdOK");
  });
  office.press(1, "cmdSchuetzenListe");
  QCOMPARE(office.node(1), QString(" 1 - Jäger Luis"));
  office.boxes.expectWindow("frmSchuetzenListe", [](QWidget& list) { click(list, "cmdCancel"); });
  office.press(1, "cmdSchuetzenListe");
  QCOMPARE(office.line(1).sStartnummer(), QString("105"));
}

void TestFrmLindorm::priceModeMarks() {
  RangeOffice office("101");
  QVERIFY(office.open());
  office.show(3);
  office.press(3, "cmdPreisModus");
  QCOMPARE(office.mark(2), QString("go"));
  QCOMPARE(office.tag(2), QString("preismodus_on"));
  QCOMPARE(office.mark(1), QString("pfeil"));
  trigger(office.window(), "linienfrei");
  QCOMPARE(office.mark(2), QString("pfeil"));
  QCOMPARE(office.tag(2), QString("preismodus_off"));
}

void TestFrmLindorm::registrationMarks() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  office.boxes.expect("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?", BoxAnswer::Yes);
  trigger(office.window(), "anmelden");
  QCOMPARE(office.mark(1), QString("gruen"));
  QCOMPARE(office.takeCommand(1), "75107 ; Müller Jörg ; 107 ; 107 ; " + QString(30, '-'));
}

void TestFrmLindorm::signOffMarksTheSelectedNode() {
  RangeOffice office("111");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  office.show(2);
  office.chooseShooter(2, "105");
  trigger(office.window(), "mnuHaeringAlleSchuetzenOFF");
  QCOMPARE(office.node(2), QString("2"));
  QCOMPARE(office.mark(2), QString("pfeil"));
  QCOMPARE(office.node(1), QString(" 1 - Müller Jörg"));
  QCOMPARE(office.line(1).sStartnummer(), QString());
  QCOMPARE(office.line(2).sStartnummer(), QString());
  QCOMPARE(office.on<QLabel>(2, "m_lblSchuetzenName").text(), QString());
}

void TestFrmLindorm::lineClearMarks() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  office.takeCommand(1);
  office.press(1, "cmdLinieClear");
  QCOMPARE(office.node(1), QString("1"));
  QCOMPARE(office.mark(1), QString("go"));
  QCOMPARE(office.takeCommand(1), QString());
  trigger(office.window(), "linienfrei");
  office.press(1, "cmdLinieClear");
  QCOMPARE(office.mark(1), QString("pfeil"));
}

void TestFrmLindorm::disciplinesAreClearedOnSignOffWhereSet() {
  RangeOffice office("1");
  QVERIFY(office.open());
  for (const bool deleted : {false, true}) {
    office.set("DisziDeleteAbmelden", deleted ? "1" : "0");
    office.chooseShooter(1, "107");
    office.press(1, "cmdWahlAlle");
    office.press(1, "cmdAbmeldenSchuetze");
    QCOMPARE(office.on<TextGrid>(1, "flexHaeringDiszi").table()->text(1, 0), QString(deleted ? "0" : "1"));
  }
}

void TestFrmLindorm::greenStaysWhenPriceModeFollows() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.boxes.expect("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?", BoxAnswer::Yes);
  office.press(1, "cmdSendenSchuetzenDisziplinen");
  office.press(1, "cmdPreisModus");
  QCOMPARE(office.mark(1), QString("gruen"));
  QCOMPARE(office.tag(1), QString());
}

void TestFrmLindorm::eventsWithoutRaiser() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  Q_EMIT office.line(2).XGruenClick(1);
  QCOMPARE(office.mark(2), QString("gruen"));
  QCOMPARE(office.node(2), QString("Linie2"));
  Q_EMIT office.line(1).cmdXStopClick(0);
  QCOMPARE(office.mark(1), QString("stop"));
  QCOMPARE(office.node(1), QString("Linie1"));
  QCOMPARE(office.line(1).sStartnummer(), QString());
  // Of a line that was taken down meanwhile.
  for (const int gone : {-1, 2}) {
    Q_EMIT office.line(1).XGruenClick(gone);
    Q_EMIT office.line(1).cmdXSchuetzeGesendet(gone);
  }
  QCOMPARE(office.mark(1), QString("stop"));
}

void TestFrmLindorm::stationMessages() {
  RangeOffice office("101");
  QVERIFY(office.open());
  office.show(3);
  office.press(3, "cmdPreisModus");
  office.send(3, {"22;Serie 98", "22", "23;nichts"});
  office.tick(3);
  auto& info = the<QListWidget>(office.window(), "lstInfo");
  QCOMPARE(info.count(), 1);
  QCOMPARE(infoText(office, 0), QString("L3 - Serie 98"));
  QTRY_COMPARE(info.currentRow(), 0);
  office.show(1);
  QTest::mouseClick(info.viewport(), Qt::LeftButton, {}, info.visualItemRect(info.item(0)).center());
  QCOMPARE(office.tree().indexOfTopLevelItem(office.tree().currentItem()), 1);
  QVERIFY(office.line(1).isVisible());  // a selected node is marked, only a clicked one is shown
}

void TestFrmLindorm::stationMessagePopup() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.press(1, "cmdPreisModus");
  office.send(1, {"22;eins", "22;zwei", "22;drei"});
  office.tick(1);
  auto& info = the<QListWidget>(office.window(), "lstInfo");
  const QPoint at = info.visualItemRect(info.item(1)).center();
  info.setCurrentRow(1);
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, info.viewport()->mapToGlobal(at));
  QCoreApplication::sendEvent(info.viewport(), &event);
  auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  QVERIFY(popup);
  QCOMPARE(popup->actions().value(0)->text(), QString("Alle Leeren"));
  QCOMPARE(popup->actions().value(1)->text(), QString("Akt. Eintrag löschen"));
  popup->close();
  office.action("mnuLstInfoAktEintragLoeschen").trigger();
  QCOMPARE(info.count(), 2);
  QCOMPARE(infoText(office, 1), QString("L1 - drei"));
  office.action("mnuLstInfoLeeren").trigger();
  QCOMPARE(info.count(), 0);
}

void TestFrmLindorm::restartBringsOpenShotsBack() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.show(2);
  office.chooseShooter(2, "107");
  office.press(2, "cmdPreisModus");
  office.fire(2, shotRecord(2, 1, "9,7", "123,4"));
  office.fire(2, shotRecord(2, 2, "10,1", "50"));
  QCOMPARE(office.line(2).nOffeneSchuss(), 2);
  office.drop();
  QVERIFY(office.open());
  QCOMPARE(office.line(2).nOffeneSchuss(), 2);
  QCOMPARE(office.line(2).sStartnummer(), QString("107"));
  QCOMPARE(office.node(2), QString(" 2 - Müller Jörg"));
  QCOMPARE(office.mark(2), QString("pfeil"));
  QVERIFY(office.line(1).isVisible());
  QVERIFY(!office.line(2).findChild<QTimer*>("Timer1")->isActive());
}

void TestFrmLindorm::restartGivesTheLineToTheShooterOfTheFirstRow() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  office.fire(1, shotRecord(1, 2, "9,7", "123,4", "LG Meister", "105"));
  office.fire(1, shotRecord(1, 1, "9,7", "123,4", "LG Meister", "107"));
  office.drop();
  QVERIFY(office.open());
  QCOMPARE(office.line(1).sStartnummer(), QString("105"));
  QCOMPARE(office.line(1).nOffeneSchuss(), 2);
  const auto db = office.database();
  const auto rs = db->openRecordset("Select * from Haering_Daten order by ID");
  QCOMPARE(rs->value("Startnummer").toString(), QString("105"));
  rs->moveNext();
  QCOMPARE(rs->value("Startnummer").toString(), QString("107"));
}

void TestFrmLindorm::closingAsksAboutOpenShots() {
  RangeOffice office("101");
  QVERIFY(office.open());
  office.show(3);
  office.chooseShooter(3, "107");
  office.press(3, "cmdPreisModus");
  office.fire(3, shotRecord(3, 1, "9,7", "123,4"));
  const QString question =
      "Einige Linien haben noch offene Schüsse!\r\n\r\nLinie 3: 1 offene Schuss\r\n"
      "\r\nDiese stehen beim nächsten Start wieder bei der Linie zur Auswahl?\r\nFenster schließen?";
  office.boxes.expect(question, BoxAnswer::No)
      .titled("Hinweis")
      .showing(BoxIcon::Information)
      .with(BoxButtons::YesNo)
      .presetting(BoxAnswer::No);
  trigger(office.window(), "mnuExit");
  QVERIFY(office.window().isVisible());
  QCOMPARE(office.window().lineCount(), 3);
  office.set("SchliessenSicherheitsabfrage", "1");
  office.boxes.expect(question, BoxAnswer::Yes);
  trigger(office.window(), "exit");
  QVERIFY(!office.window().isVisible());
}

void TestFrmLindorm::closingAsksWhenSet() {
  RangeOffice office;
  QVERIFY(office.open());
  office.set("SchliessenSicherheitsabfrage", "1");
  office.boxes.expect("Soll QK-Intarso geschlossen werden?", BoxAnswer::No)
      .titled("Hinweis")
      .showing(BoxIcon::Question);
  office.window().close();
  QVERIFY(office.window().isVisible());
  office.set("SchliessenSicherheitsabfrage", "0");
  office.window().close();
  QVERIFY(!office.window().isVisible());
}

void TestFrmLindorm::closingReleasesTheCompetition() {
  RangeOffice office;
  QVERIFY(office.open());
  office.window().close();
  QCOMPARE(office.window().lineCount(), 0);
  office.drop();
  QVERIFY(QFile::rename(office.competition, office.competition + "x"));
  QVERIFY(!QFile::exists(office.competition + "-wal"));
}

void TestFrmLindorm::reloadDropsTheStateOfTheScreen() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  office.fire(1, shotRecord(1, 1, "9,7", "123,4"));
  const QString other = office.place.path("netz");
  office.place.files.makeFolder(other);
  QVERIFY(QFile::copy(office.folderFile("esa_preis.ini"), other + "/esa_preis.ini"));
  office.boxes.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n" + office.folder + "/", other);
  trigger(office.window(), "mnuOptHaeringNetzPfad");
  QCOMPARE(office.place.settings.value("Tarvex", "Häring", "Netzverzeichnis"), other + "/");
  QCOMPARE(office.line(1).nOffeneSchuss(), 1);
  QCOMPARE(office.line(1).sStartnummer(), QString("107"));
  QCOMPARE(office.mark(1), QString("pfeil"));
  QVERIFY(!office.line(1).findChild<QTimer*>("Timer1")->isActive());
  office.folder = other;
  office.press(1, "cmdPreisModus");
  QVERIFY(QFile::exists(other + "/HServ1.ctl"));
}

void TestFrmLindorm::reloadDuringAWaitLeavesSolidGround() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  QPointer<UserControl1> former = &office.line(1);
  office.place.waits.clear();
  office.place.waits.inSleep(1, [&] { office.window().Load_Settings(); });
  office.press(1, "cmdAbmeldenSchuetze");
  QCOMPARE(office.takeCommand(1), QString("52"));
  QCOMPARE(office.window().lineCount(), 2);
  QTRY_VERIFY(former.isNull());
  // A loop over all lines ends as well.
  office.place.waits.clear();
  office.place.waits.inSleep(1, [&] { office.window().Load_Settings(); });
  trigger(office.window(), "mnuHaeringAlleSchuetzenOFF");
  QCOMPARE(office.takeCommand(1), QString("52"));
  QCOMPARE(office.takeCommand(2), QString());
}

void TestFrmLindorm::splittersKeepTheirSize() {
  RangeOffice office;
  office.set("ShowLinienBreite", "321");
  QVERIFY(office.open());
  auto& splitter = the<PanelSplitter>(office.window(), "splitterBreite");
  QCOMPARE(splitter.panelSize(0), 321);
  QWidget* handle = splitter.handle(1);
  const QPoint middle = handle->rect().center();
  QTest::mousePress(handle, Qt::LeftButton, {}, middle);
  QTest::mouseMove(handle, middle + QPoint(40, 0));
  QCOMPARE(office.place.settings.value("Tarvex", "Häring", "ShowLinienBreite"), QString("321"));
  QTest::mouseRelease(handle, Qt::LeftButton, {}, middle);
  QCOMPARE(office.place.settings.value("Tarvex", "Häring", "ShowLinienBreite"),
           QString::number(splitter.panelSize(0)));
}

void TestFrmLindorm::currentLineIsTheFirstVisible() {
  RangeOffice office("011");
  QVERIFY(office.open());
  QCOMPARE(office.window().Get_AktLinienNummer(), qint16(1));
  office.chooseShooter(2, "107");
  QCOMPARE(office.node(1), QString(" 2 - Müller Jörg"));
  QCOMPARE(office.window().Get_AktStartnummer(), QString("107"));
}

QTEST_MAIN(TestFrmLindorm)
#include "test_frmLindorm.moc"

// Every entry of menus and toolbar: what it is called, whether it can be used, what it does.
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include "platform/grid/text_grid.h"
#include "targetconfig/definition_rows.h"
#include "tests/app/range_office.h"
#include "tests/support/compare_lines.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Name, text, usable with a line, usable without one.
struct Entry {
  const char* name;
  const char* text;
  bool withLine;
  bool withoutLine;
};

const Entry kEntries[] = {
    {"mnuDateiWettkampfOpen", "Wettkampf öffnen...", true, true},
    {"mnuDateiPrinterSetup", "Druckereinrichtung...", true, true},
    {"mnuDateiKurzauswertungPreview", "Kurzauswertung Vorschau...", true, false},
    {"mnuDateiKurzauswertungPrint", "Kurzauswertung Drucken", true, false},
    {"mnuExit", "&Beenden", true, true},
    {"mnuEditSchussAlle", "Alle Intarso-Schuss einsehen...", true, true},
    {"mnuEditErgebnisse", "Ergebnisse anzeigen...", true, true},
    {"mnuEditSchussbilder", "Schussbilder anzeigen...", true, false},
    {"mnuEditKasse", "Kasse...", true, true},
    {"mnuEditWarnungen", "&Warnungen anzeigen...", true, true},
    {"mnuOptEinstellungen", "Einstellungen", true, true},
    {"mnuOptHaeringNetzPfad", "Intarso &Netzwerkpfad", true, true},
    {"mnuStandeinstellungen", "&Schießstände", true, true},
    {"mnuDisziplinenSPOWettkampf", "Wettkampf...", true, true},
    {"mnuDisziplinenSPOStandard", "Standard...", true, true},
    {"mnuOptFontHaeringDisziplin", "Intarso Disziplin", true, true},
    {"mnuOptFontHaeringSchuss", "Intarso-Schuss", true, true},
    {"mnuOptHaeringProtokoll", "Intarsodaten protokollieren", true, true},
    {"mnuOptOpenProtokolldatei", "Protokolldatei öffnen", true, true},
    {"mnuHaeringSendeProtokoll", "Sendedaten an Intarso protokollieren", true, true},
    {"mnuHaeringSendeProtokollOpen", "Sende-Protokolldatei öffnen", true, true},
    {"mnuOptLoadTestDaten", "Testdaten laden...", true, false},
    {"mnuEditHaeringOutput", "Intarso - Output...", true, false},
    {"mnuHaeringAllePreismodusON", "Auf Preismodus umschalten", true, true},
    {"mnuHaeringAllePreismodusOFF", "Preismodus beenden", true, true},
    {"mnuHaeringAlleSchuetzeON", "Schütze/Disziplinen senden", true, true},
    {"mnuHaeringAlleSchuetzenOFF", "Schützen abmelden", true, true},
    {"mnuHaeringAlleWindows", "Linien zurück zu Windows", true, true},
    {"mnuHaeringAlleShutDown", "Rechner herunterfahren", true, true},
    {"mnuHaerinAlleWerbeEIN", "Werbefenster einblenden", true, true},
    {"mnuHaerinAlleWerbeAUS", "Werbefenster ausblenden", true, true},
    {"mnuHaeringAktLinieWerbeEIN", "Werbefenster einblenden", true, false},
    {"mnuHaeringAktLinieWerbeAUS", "Werbefenster ausblenden", true, false},
    {"mnuHaeringAktWindows", "Linie zurück zu Windows", true, false},
    {"mnuHaeringAktShutDown", "Rechner herunterfahren", true, false},
    {"mnuSchussAktWettbewerb", "Akt. Wettbewerb wählen", true, false},
    {"mnuSchussAlle", "Alle wählen", true, false},
    {"mnuSchussKeinen", "Keinen wählen", true, false},
    {"mnuHaeringTransferClear", "Offene Linienbefehle löschen", true, true},
    {"mnuHaeringEsaPreisIni", "Erstellen: esa_preis.ini + def-Dateien", true, true},
    {"mnuHaeringEsaPreisIniCheck", "Prüfen:    esa_preis.ini + def-Dateien", true, true},
    {"mnuHaeringGruppenDisziplinen", "Gruppen - Disziplinen", true, true},
    {"mnuHilfe", "Hilfe...", true, true},
    {"exit", "Beenden", true, true},
    {"Speichern", "Verbuchen", true, false},
    {"Löschen", "Verwerfen", true, false},
    {"prsetup", "Druckereinrichtung", true, true},
    {"Print1", "Drucken", true, false},
    {"vorschau", "Vorschau", true, false},
    {"ErgEdit", "Ergebnisse", true, true},
    {"schussbild", "Schussbilder", true, false},
    {"euro", "Kasse", true, true},
    {"einstellungen", "Einstellungen", true, true},
    {"linienstop", "Preismodus", true, false},
    {"anmelden", "Senden", true, false},
    {"abmelden", "Abmelden", true, false},
    {"linienfrei", "Preismodus beenden", true, false},
    {"linienstopAll", "Alle Linien", true, true},
    {"anmeldenAll", "Alle Linien", true, true},
    {"abmeldenAll", "Alle Linien", true, true},
    {"linienfreiAll", "Alle Linien", true, true},
};

void collect(QMenu* menu, QStringList& names) {
  for (QAction* action : menu->actions()) {
    if (action->menu())
      collect(action->menu(), names);
    else if (!action->isSeparator())
      names << action->objectName();
  }
}

}  // namespace

class TestMenus : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void entries_data() {
    QTest::addColumn<QString>("lines");
    QTest::newRow("with a line") << "1";
    QTest::newRow("without a line") << "0";
  }
  void entries();
  void nothingBesideTheTable();
  void mnemonicsAreUnique();
  void toolTips();

  void allLinesTakeInactiveOnes();
  void shutDownOfAllLines();
  void questionsOfAllLines();
  void questionsOfTheCurrentLine();
  void registrationOfAllLines();
  void failureEndsTheLoop();
  void dropDownRunsAllLines();
  void currentLineCommands();
  void shotMenu();
  void fontDialogs();
  void settingsDialog();
  void lineSetup();
  void generator();
  void testDataEntry();
  void allShots();
  void picturesWithoutViewer();
  void checker();
  void groupsReachTheLines();
  void help();
  void keys();
};

void TestMenus::entries() {
  QFETCH(QString, lines);
  RangeOffice office(lines);
  office.markForTestImport();
  office.set("Letzter Wettkampf", office.competition);
  QVERIFY(office.open(""));
  for (const Entry& entry : kEntries) {
    QAction& action = office.action(entry.name);
    QCOMPARE(action.text(), QString(entry.text));
    QVERIFY2(action.isEnabled() == (lines == "1" ? entry.withLine : entry.withoutLine), entry.name);
    QVERIFY2(action.isEnabled() || !action.statusTip().isEmpty(), entry.name);
  }
}

void TestMenus::nothingBesideTheTable() {
  RangeOffice office;
  QVERIFY(office.open());
  QStringList shown, told;
  for (QAction* top : office.window().menuBar()->actions()) {
    if (top->menu())
      collect(top->menu(), shown);
    else
      shown << top->objectName();
  }
  for (QAction* action : the<QToolBar>(office.window(), "Toolbar1").actions())
    if (!action->isSeparator()) shown << action->objectName();
  for (const Entry& entry : kEntries)
    if (!QString(entry.name).endsWith("All")) told << entry.name;
  shown.sort();
  told.sort();
  COMPARE_LINES(shown, told);
}

void TestMenus::mnemonicsAreUnique() {
  RangeOffice office("1");
  QVERIFY(office.open());
  QStringList letters;
  const auto note = [&letters](const QString& text) {
    const qsizetype at = text.indexOf('&');
    if (at >= 0 && at + 1 < text.size()) letters << text.at(at + 1).toUpper();
  };
  for (QAction* top : office.window().menuBar()->actions()) note(top->text());
  for (QAbstractButton* button : office.line(1).findChildren<QAbstractButton*>())
    if (!qobject_cast<QToolButton*>(button)) note(button->text());
  for (QLabel* label : office.line(1).findChildren<QLabel*>())
    if (label->buddy()) note(label->text());
  QVERIFY(letters.size() >= 6);
  QCOMPARE(letters.removeDuplicates(), 0);
}

void TestMenus::toolTips() {
  RangeOffice office;
  QVERIFY(office.open());
  const std::pair<const char*, const char*> told[] = {{"Speichern", "Speichern + Verbuchen"},
                                                      {"Löschen", "Alle Häring-Schuss verwerfen"},
                                                      {"prsetup", "Druckereinrichtung"},
                                                      {"Print1", "Kurzauswertung drucken"},
                                                      {"vorschau", "Kurzauswertung Vorschau"},
                                                      {"ErgEdit", "Ergebnisse des Schützen"},
                                                      {"schussbild", "Schussbilder"},
                                                      {"einstellungen", "Einstellungen"},
                                                      {"linienstop", "Linie auf Preismodus umschalten"},
                                                      {"anmelden", "Schütze/Disziplin senden"},
                                                      {"abmelden", "Schütze abmelden"},
                                                      {"linienfrei", "Preismodus beenden"}};
  for (const auto& [name, tip] : told) QCOMPARE(office.action(name).toolTip(), QString(tip));
}

void TestMenus::allLinesTakeInactiveOnes() {
  RangeOffice office("101");
  QVERIFY(office.open());
  trigger(office.window(), "mnuHaeringAllePreismodusON");
  for (int line = 1; line <= 3; ++line)
    QCOMPARE(office.takeCommand(line), QString("76 'Umschalten auf Preismodus"));
  QCOMPARE(office.mark(1), QString("go"));
  QCOMPARE(office.mark(2), QString("go"));
  trigger(office.window(), "mnuHaeringAllePreismodusOFF");
  for (int line = 1; line <= 3; ++line)
    QCOMPARE(office.takeCommand(line), QString("77 'UmschaltenAuf Fernbedienung"));
  trigger(office.window(), "mnuHaerinAlleWerbeAUS");
  for (int line = 1; line <= 3; ++line)
    QCOMPARE(office.takeCommand(line), QString("46 'Werbefenster ausblenden"));
}

void TestMenus::shutDownOfAllLines() {
  RangeOffice office("101");
  QVERIFY(office.open());
  const QString question = "Sollen wirklich alle Linienrechner heruntergefahren werden?";
  office.boxes.expect(question, BoxAnswer::No)
      .titled("Hinweis")
      .showing(BoxIcon::Question)
      .with(BoxButtons::YesNo);
  trigger(office.window(), "mnuHaeringAlleShutDown");
  QVERIFY(office.place.files.list(office.folder, "HServ*").isEmpty());
  office.boxes.expect(question, BoxAnswer::Yes);
  trigger(office.window(), "mnuHaeringAlleShutDown");
  for (int line = 1; line <= 3; ++line)
    QCOMPARE(office.takeCommand(line), QString("99 'Rechner herunterfahren"));
}

void TestMenus::questionsOfAllLines() {
  RangeOffice office("01");
  QVERIFY(office.open());
  office.boxes.expect("Sollen wirklich alle Linienrechner zurück zu Windows gesetzt werden?", BoxAnswer::Yes);
  trigger(office.window(), "mnuHaeringAlleWindows");
  for (int line = 1; line <= 2; ++line) QCOMPARE(office.takeCommand(line), QString("50 'Zurück zu Windows"));
}

void TestMenus::questionsOfTheCurrentLine() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.show(2);
  office.boxes.expect("Sollen wirklich der Rechner an der aktuellen Linie zurück zu Windows wechseln?",
                      BoxAnswer::Yes);
  trigger(office.window(), "mnuHaeringAktWindows");
  QCOMPARE(office.takeCommand(2), QString("50 'Zurück zu Windows"));
  office.boxes.expect("Sollen wirklich der Rechner an der aktuellen Linie heruntergefahren werden?",
                      BoxAnswer::No);
  trigger(office.window(), "mnuHaeringAktShutDown");
  office.boxes.expect("Sollen wirklich der Rechner an der aktuellen Linie heruntergefahren werden?",
                      BoxAnswer::Yes);
  trigger(office.window(), "mnuHaeringAktShutDown");
  QCOMPARE(office.takeCommand(2), QString("99 'Rechner herunterfahren"));
  trigger(office.window(), "mnuHaeringAktLinieWerbeAUS");
  QCOMPARE(office.takeCommand(2), QString("46 'Werbefenster ausblenden"));
  QCOMPARE(office.takeCommand(1), QString());
}

void TestMenus::registrationOfAllLines() {
  RangeOffice office("111");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.show(2);
  office.chooseShooter(2, "105");
  office.press(2, "cmdWahlAlle");
  office.boxes.expect("Sollen alle Disziplinen aller Schützen gesendet werden?", BoxAnswer::Yes);
  office.boxes.expect("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?", BoxAnswer::Yes);
  office.boxes.expect("Bitte Schützen wählen!");
  trigger(office.window(), "mnuHaeringAlleSchuetzeON");
  QVERIFY(office.takeCommand(1).startsWith("75107 ; "));
  QCOMPARE(office.takeCommand(2), QString());
}

void TestMenus::failureEndsTheLoop() {
  RangeOffice office("111");
  QVERIFY(office.open());
  office.place.files.fail(FileStep::Write, "HServ2.nrt", 70);
  office.boxes
      .expect("Fehler: 13 - " + errorDescription(13) + "\nFehler beim Klick mnuHaerinAlleWerbeAUS_Click_err!",
              BoxAnswer::Abort)
      .titled("Fehler");
  trigger(office.window(), "mnuHaerinAlleWerbeAUS");
  QCOMPARE(office.takeCommand(1), QString("46 'Werbefenster ausblenden"));
  QCOMPARE(office.takeCommand(3), QString());
}

void TestMenus::dropDownRunsAllLines() {
  RangeOffice office("11");
  QVERIFY(office.open());
  auto& bar = the<QToolBar>(office.window(), "Toolbar1");
  for (const char* key : {"linienstop", "anmelden", "abmelden", "linienfrei"}) {
    auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(&office.action(key)));
    QVERIFY(button && button->menu());
    QCOMPARE(button->menu()->actions().value(0)->objectName(), QString(key) + "All");
  }
  office.action("linienstopAll").trigger();
  QCOMPARE(office.takeCommand(2), QString("76 'Umschalten auf Preismodus"));
  office.action("abmeldenAll").trigger();
  QCOMPARE(office.takeCommand(2), QString("53"));
  office.action("linienfreiAll").trigger();
  QCOMPARE(office.takeCommand(1), QString("77 'UmschaltenAuf Fernbedienung"));
  office.boxes.expect("Sollen alle Disziplinen aller Schützen gesendet werden?", BoxAnswer::No);
  office.action("anmeldenAll").trigger();
}

void TestMenus::currentLineCommands() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.show(2);
  trigger(office.window(), "linienstop");
  QCOMPARE(office.takeCommand(2), QString("76 'Umschalten auf Preismodus"));
  office.boxes.expect("Bitte Schützen wählen!");
  trigger(office.window(), "anmelden");
  office.boxes.expect("Bitte wählen Sie eine Disziplin");
  trigger(office.window(), "Speichern");
  trigger(office.window(), "abmelden");
  QCOMPARE(office.takeCommand(2), QString("53"));
  for (const auto& [key, command] :
       {std::pair{"wkvorbereiten", "12"}, std::pair{"wkstarten", "13"}, std::pair{"wkstop", "52"}}) {
    office.action(key).trigger();
    QCOMPARE(office.takeCommand(2), QString(command));
  }
  QCOMPARE(office.takeCommand(1), QString());
}

void TestMenus::shotMenu() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  for (int hit = 1; hit <= 3; ++hit) office.fire(1, shotRecord(1, hit, "9,7", "123,4"));
  TextTable& shots = *office.on<TextGrid>(1, "flex").table();
  office.tickEntry(1, "m_lstDisziTarvex", "LG Meister");
  office.place.random.give({0.1, 0.2});
  trigger(office.window(), "mnuSchussAlle");
  QCOMPARE(shots.text(3, 0), QString("-1"));
  trigger(office.window(), "mnuSchussKeinen");
  QCOMPARE(shots.text(3, 0), QString("0"));
  office.on<TextGrid>(1, "flex").setCurrentRow(2);
  trigger(office.window(), "mnuSchussAktWettbewerb");
  QCOMPARE(shots.text(1, 0), QString("-1"));
}

void TestMenus::fontDialogs() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.boxes.expectFont(FontChoice{"DejaVu Sans;13;-1;0;0;0", 0});
  trigger(office.window(), "mnuOptFontHaeringSchuss");
  QCOMPARE(office.on<TextGrid>(2, "flex").font().pointSize(), 13);
  QVERIFY(office.place.settings.value("Tarvex", "Häring", "FlexFont_Font").startsWith("DejaVu Sans;13;-1"));
  office.boxes.expectFont(FontChoice{"DejaVu Sans;12;0;0;0;0", 0});
  trigger(office.window(), "mnuOptFontHaeringDisziplin");
  QCOMPARE(office.on<TextGrid>(1, "flexHaeringDiszi").font().pointSize(), 12);
  office.boxes.expectFont(std::nullopt);
  trigger(office.window(), "mnuOptFontHaeringSchuss");
  office.drop();
  QVERIFY(office.open());
  QCOMPARE(office.on<TextGrid>(1, "flex").font().pointSize(), 13);
}

void TestMenus::settingsDialog() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.boxes.expectWindow("frmHaeringEinstellungen", [](QWidget& dialog) { click(dialog, "cmdOK"); });
  trigger(office.window(), "einstellungen");
  QCOMPARE(office.line(1).sStartnummer(), QString("107"));  // the same folder: nothing is rebuilt
  office.boxes.expectWindow("frmHaeringEinstellungen", [](QWidget& dialog) { click(dialog, "cmdCancel"); });
  trigger(office.window(), "mnuOptEinstellungen");
  QCOMPARE(office.line(1).sStartnummer(), QString("107"));
  const QString other = office.place.path("netz");
  office.place.files.makeFolder(other);
  QVERIFY(QFile::copy(office.folderFile("esa_preis.ini"), other + "/esa_preis.ini"));
  office.boxes.expectWindow("frmHaeringEinstellungen", [&](QWidget& dialog) {
    office.boxes.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n" + office.folder + "/", other);
    click(dialog, "cmdHaeringPfad");
    click(dialog, "cmdOK");
  });
  trigger(office.window(), "mnuOptEinstellungen");
  QCOMPARE(office.line(1).sStartnummer(), QString());
}

void TestMenus::lineSetup() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.boxes.expectWindow("frmLinienSetup", [](QWidget& dialog) {
    type(dialog, "txtLinieMax", "3");
    click(dialog, "cmdUebertrag");
    click(dialog, "cmdAlleWaehlen");
    click(dialog, "cmdOK");
  });
  trigger(office.window(), "mnuStandeinstellungen");
  QCOMPARE(office.window().lineCount(), 3);
  QCOMPARE(office.node(3), QString(" 3"));
  office.chooseShooter(1, "107");
  office.boxes.expectWindow("frmLinienSetup", [](QWidget& dialog) { click(dialog, "cmdCancel"); });
  trigger(office.window(), "mnuStandeinstellungen");
  QCOMPARE(office.line(1).sStartnummer(), QString("107"));
}

void TestMenus::generator() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  const auto disciplines = [&] { return office.on<TextGrid>(1, "flexHaeringDiszi").table()->rows(); };
  const auto question = [&](BoxAnswer answer) {
    office.boxes.expect("Sollen die Settings neu eingelesen werden?", answer)
        .titled("Hinweis")
        .with(BoxButtons::YesNo)
        .showing(BoxIcon::Question);
  };
  const int before = disciplines();
  office.boxes.expectWindow("frmHaeringDEF", [&](QWidget& dialog) {
    QCOMPARE(dialog.property("DataBaseName").toString(), office.competition);
    auto& table = *the<TextGrid>(dialog, "flexDEF").table();
    for (int row = 1; row < table.rows(); ++row) {
      table.setText(row, DefinitionRows::DateiWaffe, "0_hw.def");
      table.setText(row, DefinitionRows::DateiScheibe, "0_hs.def");
    }
    office.boxes.expect("Datei(en) erstellt");
    question(BoxAnswer::No);
    click(dialog, "cmdErstellen");
    click(dialog, "cmdClose");
  });
  trigger(office.window(), "mnuHaeringEsaPreisIni");
  QCOMPARE(office.line(1).sStartnummer(), QString("107"));
  QCOMPARE(disciplines(), before);

  office.boxes.expectWindow("frmHaeringDEF", [](QWidget& dialog) { click(dialog, "cmdClose"); });
  question(BoxAnswer::Yes);
  trigger(office.window(), "mnuHaeringEsaPreisIni");
  QCOMPARE(office.line(1).sStartnummer(), QString());
  QVERIFY(disciplines() != before);
}

void TestMenus::testDataEntry() {
  RangeOffice office("1");
  office.markForTestImport();
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  const QString file = office.place.path("Schuesse.txt");
  office.place.files.write(file, shotRecord(1, 1, "9,7", "123,4").toLatin1() + "\r\n");
  office.boxes.expectOpenFile("Intarso-Logdateien (*.txt)|*.txt|Alle Dateien (*.*)|*.*", file);
  trigger(office.window(), "mnuOptLoadTestDaten");
  QCOMPARE(office.line(1).nOffeneSchuss(), 1);
}

void TestMenus::allShots() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.boxes.expectWindow("frmHaeringSchussAlle", [](QWidget& browser) { click(browser, "cmdClose"); });
  trigger(office.window(), "mnuEditSchussAlle");
  QVERIFY(office.boxes.done());
}

void TestMenus::picturesWithoutViewer() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.boxes.expect("QK-Grafik.exe nicht im aktuellen Verzeichnis: " + office.competition).titled("Fehler");
  trigger(office.window(), "schussbild");
}

void TestMenus::checker() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.boxes.expectWindow("frmHaeringIniPruefung", [&](QWidget& window) {
    QCOMPARE(the<QLabel>(window, "lblHaeringPfad").text(), office.folder + "/");
    click(window, "cmdCheck");
    QVERIFY(the<TextGrid>(window, "flexPruefung").table()->rows() > 10);
    click(window, "cmdClose");
  });
  trigger(office.window(), "mnuHaeringEsaPreisIniCheck");
}

void TestMenus::groupsReachTheLines() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.boxes.expectWindow("frmHaeringGruppenDisziplinen", [&](QWidget& window) {
    click(window, "cmdWahlAlle");
    office.boxes.expectInput("Bitte neuen Gruppen-Namen eingeben:", "Alles");
    click(window, "cmdNewKombi");
    click(window, "cmdClose");
  });
  trigger(office.window(), "mnuHaeringGruppenDisziplinen");
  for (const int line : {1, 2}) {
    auto& groups = office.on<QComboBox>(line, "cmbHaeringGruppen");
    QCOMPARE(groups.count(), 2);
    QCOMPARE(groups.itemText(1), QString("Alles"));
    Q_EMIT groups.activated(1);
    const TextTable& disciplines = *office.on<TextGrid>(line, "flexHaeringDiszi").table();
    QVERIFY(disciplines.rows() > 10);
    for (int row = 1; row < disciplines.rows(); ++row) QCOMPARE(disciplines.text(row, 0), QString("1"));
  }
}

void TestMenus::help() {
  RangeOffice office;
  QVERIFY(office.open());
  trigger(office.window(), "mnuHilfe");
  auto* help = office.window().findChild<QDialog*>("frmHilfe");
  QVERIFY(help && help->isVisible() && !help->isModal());
  help->close();
  trigger(office.window(), "mnuHilfe");
  QVERIFY(help->isVisible());
  QCOMPARE(office.window().findChildren<QDialog*>("frmHilfe").size(), 1);
  help->close();
  QCOMPARE(office.action("mnuHilfe").shortcut(), QKeySequence(Qt::Key_F1));
}

void TestMenus::keys() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.activate();  // a window that is shown gets the keyboard a moment later
  QTest::keyClick(&office.window(), Qt::Key_F2);
  QCOMPARE(office.window().focusWidget()->objectName(), QString("m_txtStartNummer"));
  QTest::keyClick(&office.window(), Qt::Key_F6);
  QVERIFY(office.window().statusBar()->currentMessage().startsWith("Kein Schütze"));
  QTest::keyClick(&office.window(), Qt::Key_F8);
  QVERIFY(office.window().statusBar()->currentMessage().startsWith("Zum Übertragen fehlt"));
  QTest::keyClick(&office.window(), Qt::Key_F5);
  QCOMPARE(office.takeCommand(1), QString("76 'Umschalten auf Preismodus"));
  office.boxes.expectWindow("frmSchuetzenListe", [](QWidget& list) { click(list, "cmdOK"); });
  QTest::keyClick(&office.window(), Qt::Key_F3);
  QCOMPARE(office.line(1).sStartnummer(), QString("7a"));
  office.boxes.expect("Bitte wählen Sie zuerst die Schüsse.\r\nund übertragen diese in die Disziplin(en).");
  office.activate();
  QTest::keyClick(&office.window(), Qt::Key_F9);
  office.activate();
  QTest::keyClick(&office.window(), Qt::Key_F12);
  QCOMPARE(office.takeCommand(1), QString("53"));
}

QTEST_MAIN(TestMenus)
#include "test_menus.moc"

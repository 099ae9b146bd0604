// The line control as the operator meets it, on the real window: shooter, station disciplines, commands, the
// road of a shot, and what happens when something fails.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "link/linecontrol/line_disciplines.h"
#include "platform/dao/recordset.h"
#include "platform/grid/text_grid.h"
#include "platform/runtime/numbers.h"
#include "platform/widgets/panel_splitter.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestUserControl1 : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    office_ = std::make_unique<RangeOffice>("1");
    QVERIFY(office_->open());
  }
  void cleanup() { office_.reset(); }

  void everyControlIsThere();
  void stationDisciplines();
  void startOfALine();
  void chosenShooter();
  void unknownStartNumber();
  void startNumberWithAQuote();
  void changeOfShooterWithOpenShots();
  void buttonsWantAShooter();
  void clearedLine();
  void clearingWithOpenShotsIsRefused();
  void groups();
  void numbersAndPopupOfTheStationGrid();
  void oneCommitAShot();
  void roadOfAShot();
  void oneShotAFile();
  void aRepeatIsKnownUntilItsShotIsBooked();
  void aShotCountsForTheShooterOnTheLine();
  void seriesByDoubleClick();
  void seriesByDefFile();
  void priceModeEndsWithSignOff();
  void discardAll();
  void ctlButton();
  void ctlButtonReportsAndKeepsPolling();
  void pendingCommandShowsTheSendLabel();
  void testData();
  void testDataKnowsNoRepeatsAndAnswersNothing();
  void panelsKeepTheirSize();
  void fonts();

 private:
  TextTable& stationGrid() { return *office_->on<TextGrid>(1, "flexHaeringDiszi").table(); }
  TextTable& shots() { return *office_->on<TextGrid>(1, "flex").table(); }
  QString label(const QString& name) { return office_->on<QLabel>(1, name).text(); }

  std::unique_ptr<RangeOffice> office_;
};

void TestUserControl1::everyControlIsThere() {
  for (const char* name : {"lblLinie",
                           "lblTime",
                           "lblSenden",
                           "m_txtStartNummer",
                           "m_lblSchuetzenName",
                           "m_lblVereinsName",
                           "m_lblMannName",
                           "m_lblKlasse",
                           "m_lblStartnummer",
                           "flexHaeringDiszi",
                           "flex",
                           "ffErg",
                           "cmbHaeringGruppen",
                           "m_lstDisziTarvex",
                           "m_lstKombiTarvex",
                           "SSTabErg",
                           "lstBesteErg",
                           "LstBesteErgSerien",
                           "LstBesteErgTeiler",
                           "cmdSucheStartnummer",
                           "cmdSchuetzenListe",
                           "cmdLinieClear",
                           "cmdPreisModus",
                           "Command2",
                           "cmdSendenSchuetzenDisziplinen",
                           "cmdNachkauf",
                           "cmdAbmeldenSchuetze",
                           "cmdClearHaeringSchuss",
                           "cmdWahlAlle",
                           "cmdWahlKeine",
                           "cmdCreateCTL",
                           "m_cmdUebertragenTarvex",
                           "m_cmdAlleWaehlenHaering",
                           "m_cmdAlleAbwaehlenHaering",
                           "m_cmdSerieWaehlenHaering",
                           "m_cmdVerwerfen",
                           "m_cmdVerwerfenGewaehlte",
                           "m_cmdSaveTarvex",
                           "cmd_SaveOnlyTarvex",
                           "lblSchusszahl",
                           "PicDraw",
                           "PicDraw2",
                           "picDraw4"})
    QCOMPARE(office_->line(1).findChildren<QWidget*>(name).size(), 1);
  QCOMPARE(office_->line(1).objectName(), QString("cLine_0"));
}

void TestUserControl1::stationDisciplines() {
  QCOMPARE(stationGrid().rows(), 15);
  QCOMPARE(stationGrid().text(1, 1), QString("LG Meister"));
  QCOMPARE(stationGrid().text(1, 2), QString("40"));
  QCOMPARE(stationGrid().text(14, 1), QString("Großes Paket"));
}

void TestUserControl1::startOfALine() {
  QVERIFY(!office_->line(1).findChild<QTimer*>("Timer1")->isActive());
  QCOMPARE(office_->line(1).findChild<QTimer*>("Timer1")->interval(), 1000);
  QVERIFY(!office_->on<QPushButton>(1, "m_cmdUebertragenTarvex").isEnabled());
  QVERIFY(!office_->on<QLabel>(1, "lblSenden").isVisible());
  QCOMPARE(label("lblSenden"), QString("sende..."));
  QCOMPARE(office_->on<QListView>(1, "m_lstDisziTarvex").model()->rowCount(), 30);
  QCOMPARE(office_->on<QListView>(1, "m_lstKombiTarvex").model()->rowCount(), 4);
}

void TestUserControl1::chosenShooter() {
  office_->chooseShooter(1, "107");
  QCOMPARE(label("m_lblSchuetzenName"), QString("Müller Jörg"));
  QCOMPARE(label("m_lblStartnummer"), QString("107"));
  QCOMPARE(label("m_lblVereinsName"), QString("Schützenlust Äußere Au"));
  QCOMPARE(label("m_lblMannName"), QString("Äußere Au I"));
  QCOMPARE(label("m_lblKlasse"), QString("Senioren Auflage"));
  QCOMPARE(office_->line(1).sStartnummer(), QString("107"));
  // Read from across the room.
  const QFont name = office_->on<QLabel>(1, "m_lblSchuetzenName").font();
  QVERIFY(name.bold() && name.pointSizeF() > office_->line(1).font().pointSizeF());
}

void TestUserControl1::unknownStartNumber() {
  office_->chooseShooter(1, "107");
  office_->chooseShooter(1, "99999");
  QCOMPARE(label("m_lblSchuetzenName"), QString("Müller Jörg"));
  QCOMPARE(office_->line(1).sStartnummer(), QString("107"));
  const QLineEdit& number = office_->on<QLineEdit>(1, "m_txtStartNummer");
  QCOMPARE(number.text(), QString("99999"));
  QCOMPARE(number.selectedText(), number.text());  // the next one overwrites it
  office_->chooseShooter(1, "105");
  QCOMPARE(number.selectedText(), QString());
}

void TestUserControl1::startNumberWithAQuote() {
  office_->chooseShooter(1, "1' or '1'='1");
  QCOMPARE(office_->line(1).sStartnummer(), QString());
}

void TestUserControl1::changeOfShooterWithOpenShots() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  const QString question =
      "Bisheriger Schütze hat noch offene Schüsse!\r\nDiese werden dann dem neuen Schützen zuordnet!\r\n"
      "Trotzdem wechseln?";
  office_->boxes.expect(question, BoxAnswer::No).titled("Hinweis").showing(BoxIcon::Exclamation);
  office_->chooseShooter(1, "105");
  QCOMPARE(office_->line(1).sStartnummer(), QString("107"));
  QCOMPARE(label("m_lblSchuetzenName"), QString("Müller Jörg"));
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Startnummer = '107'"), 1);
  office_->boxes.expect(question, BoxAnswer::Yes);
  office_->chooseShooter(1, "105");
  QCOMPARE(office_->line(1).sStartnummer(), QString("105"));
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Startnummer = '105'"), 1);
}

void TestUserControl1::buttonsWantAShooter() {
  const QStringList buttons = {"cmdAbmeldenSchuetze",   "cmdNachkauf", "cmdSendenSchuetzenDisziplinen",
                               "cmdClearHaeringSchuss", "cmdWahlAlle", "cmdWahlKeine"};
  for (const QString& name : buttons) {
    QVERIFY2(!office_->on<QPushButton>(1, name).isEnabled(), qPrintable(name));
    QVERIFY(office_->on<QPushButton>(1, name).statusTip().startsWith("Kein Schütze"));
  }
  const auto text = [this] {
    return office_->on<TextGrid>(1, "flexHaeringDiszi").palette().color(QPalette::Text);
  };
  QCOMPARE(text(), office_->line(1).palette().color(QPalette::Disabled, QPalette::Text));
  office_->chooseShooter(1, "107");
  for (const QString& name : buttons)
    QVERIFY2(office_->on<QPushButton>(1, name).isEnabled(), qPrintable(name));
  QCOMPARE(text(), office_->line(1).palette().color(QPalette::Active, QPalette::Text));
}

void TestUserControl1::clearedLine() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdLinieClear");
  QCOMPARE(office_->line(1).sStartnummer(), QString());
  for (const char* name :
       {"m_lblSchuetzenName", "m_lblVereinsName", "m_lblMannName", "m_lblKlasse", "m_lblStartnummer"})
    QCOMPARE(label(name), QString());
  QCOMPARE(office_->on<QLineEdit>(1, "m_txtStartNummer").text(), QString("107"));
  QVERIFY(!office_->on<QPushButton>(1, "cmdWahlAlle").isEnabled());
  QCOMPARE(office_->takeCommand(1), QString());
}

void TestUserControl1::clearingWithOpenShotsIsRefused() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  office_->boxes
      .expect("Diese Linie enthält noch nicht verbuchte Schuss!\r\nBitte Verwerfen oder Speichern Sie diese.")
      .titled("Hinweis")
      .showing(BoxIcon::Exclamation);
  office_->press(1, "cmdLinieClear");
  QCOMPARE(office_->line(1).sStartnummer(), QString("107"));
  QCOMPARE(office_->node(1), QString(" 1 - Müller Jörg"));
}

void TestUserControl1::groups() {
  {
    const auto db = office_->database();
    const auto groups = db->openRecordset("Haering_Gruppen");
    groups->addNew();
    groups->setValue("GruppenName", "Pistole");
    const int id = groups->value("ID").toInt();
    groups->update();
    const auto members = db->openRecordset("Haering_Gruppen_Disziplinen");
    members->addNew();
    members->setValue("GruppenID", id);
    members->setValue("DisziplinName", "LP Meister");
    members->update();
  }
  office_->line(1).Fill_HaeringGruppen();
  auto& combo = office_->on<QComboBox>(1, "cmbHaeringGruppen");
  QCOMPARE(combo.count(), 2);
  QCOMPARE(combo.itemText(0), QString());
  stationGrid().setText(1, 0, "1");
  combo.setFocus();
  QTest::keyClick(&combo, Qt::Key_Down);
  QCOMPARE(combo.currentText(), QString("Pistole"));
  QCOMPARE(stationGrid().text(1, 0), QString("0"));
  QCOMPARE(stationGrid().text(10, 1), QString("LP Meister"));
  QCOMPARE(stationGrid().text(10, 0), QString("1"));
  stationGrid().setText(9, 0, "1");
  office_->line(1).Fill_HaeringGruppen();
  QCOMPARE(combo.currentText(), QString("Pistole"));
  QCOMPARE(stationGrid().text(9, 0), QString("1"));
  Q_EMIT combo.activated(-1);
  QCOMPARE(stationGrid().text(10, 0), QString("1"));
  QTest::keyClick(&combo, Qt::Key_Up);
  QCOMPARE(stationGrid().text(10, 0), QString("0"));
}

void TestUserControl1::numbersAndPopupOfTheStationGrid() {
  office_->chooseShooter(1, "107");
  office_->on<TextGrid>(1, "flexHaeringDiszi").setCurrentRow(3);
  const auto popup = [this](const char* name) { the<QAction>(office_->line(1), name).trigger(); };
  popup("mnuSchuss20");
  QCOMPARE(stationGrid().text(3, 4), QString("20"));
  QCOMPARE(stationGrid().text(1, 4), QString());
  office_->on<TextGrid>(1, "flexHaeringDiszi").setCurrentRow(1);
  popup("mnuSchuss20");
  QCOMPARE(stationGrid().text(1, 4), QString("20"));
  office_->on<TextGrid>(1, "flexHaeringDiszi").setCurrentRow(3);
  QCOMPARE(stationGrid().text(3, 3), QString("40"));
  popup("mnuSchuss0");
  QCOMPARE(stationGrid().text(3, 4), QString("0"));
  QCOMPARE(stationGrid().text(3, 3), QString("20"));
  for (int count : {1, 2, 3, 4, 5, 9, 10, 20, 30, 40}) {
    popup(qPrintable("mnuSchuss" + QString::number(count)));
    QCOMPARE(stationGrid().text(3, 4), QString::number(count));
    QCOMPARE(stationGrid().text(3, 3), QString::number(20 + count));
  }
  popup("mnuSchussLeeren");
  QCOMPARE(stationGrid().text(3, 4), QString());
  popup("mnuSchuss9");
  popup("mnuSchussClearAkt");
  QCOMPARE(stationGrid().text(3, 4), QString("0"));
  QStringList entries;
  for (const QAction* action : the<QMenu>(office_->line(1), "mnuPopSchuss").actions())
    if (!action->isSeparator()) entries << action->text();
  QCOMPARE(entries.join('|'), QString("Alle Leeren|Akt. Leeren|0 (Freischalten)|1|2|3|4|5|9|10|20|30|40"));
}

void TestUserControl1::oneCommitAShot() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  for (int hit = 1; hit <= 3; ++hit) {
    const qint64 before = office_->line(1).commitCount();
    office_->fire(1, shotRecord(1, hit, "9,7", "123,4"));
    QCOMPARE(office_->line(1).commitCount() - before, 1);
  }
}

void TestUserControl1::roadOfAShot() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  for (int hit = 1; hit <= 10; ++hit) office_->fire(1, shotRecord(1, hit, "9,7", "123,4", "LG Serie 10"));
  QCOMPARE(shots().rows(), 11);
  QVERIFY(!QFile::exists(office_->folderFile("HSlav1.ctl")));
  QCOMPARE(label("lblTime"), QString("20.11.2026 10:00:00"));
  office_->tickEntry(1, "m_lstDisziTarvex", "LG Serie 10");
  office_->place.random.give({0.1, 0.2});
  office_->press(1, "m_cmdAlleWaehlenHaering");
  QCOMPARE(label("lblSchusszahl"), QString("Gesamt: 10 Gewählt: 10"));
  QVERIFY(office_->on<QPushButton>(1, "m_cmdUebertragenTarvex").isEnabled());
  office_->press(1, "m_cmdUebertragenTarvex");
  auto& best = office_->on<QListWidget>(1, "lstBesteErg");
  QCOMPARE(best.count(), 1);
  QCOMPARE(best.item(0)->text(), QString("    97,0 - LG Serie 10"));
  office_->press(1, "m_cmdSaveTarvex");
  QCOMPARE(best.count(), 0);
  QCOMPARE(shots().rows(), 1);
  QCOMPARE(office_->line(1).nOffeneSchuss(), 0);
  {
    const auto db = office_->database();
    const auto series = db->openRecordset("Select * from SchussSerien where Startnummer = '107'");
    QCOMPARE(formatNumber(series->value("Ergebnis").toDouble(), 1), QString("97,0"));
    QCOMPARE(series->value("Anz").toString(), QString("10er"));
    series->moveNext();
    QVERIFY(series->eof());
  }
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Verbucht = -1"), 10);
  QCOMPARE(office_->rowsOf("Select * from Grafik_Scheibe where StartNr = '107'"), 1);
}

void TestUserControl1::oneShotAFile() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  const QString first = shotRecord(1, 1, "9,7", "123,4");
  office_->send(1, {first, first, shotRecord(1, 2, "8,1", "400")});
  office_->tick(1);
  QCOMPARE(shots().rows(), 2);
  QCOMPARE(shots().text(1, 4), QString("9,7"));
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten"), 1);
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Treffernummer = 1"), 1);
  QVERIFY(!QFile::exists(office_->folderFile("HSlav1.ctl")));
}

void TestUserControl1::aRepeatIsKnownUntilItsShotIsBooked() {
  const QString record = shotRecord(1, 1, "9,7", "123,4");
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, record);
  office_->fire(1, record);
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten"), 1);
  office_->tickEntry(1, "m_lstDisziTarvex", "LG Serie 10");
  office_->place.random.give({0.1, 0.2});
  office_->press(1, "m_cmdAlleWaehlenHaering");
  office_->press(1, "m_cmdSaveTarvex");
  QCOMPARE(office_->line(1).nOffeneSchuss(), 0);
  office_->fire(1, record);
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  QCOMPARE(shots().rows(), 2);
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten"), 2);
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Verbucht = 0"), 1);
}

void TestUserControl1::aShotCountsForTheShooterOnTheLine() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4", "LG Serie 10", "105"));
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Startnummer = '105'"), 1);
  office_->tickEntry(1, "m_lstDisziTarvex", "LG Serie 10");
  office_->place.random.give({0.1, 0.2});
  office_->press(1, "m_cmdAlleWaehlenHaering");
  office_->press(1, "m_cmdSaveTarvex");
  QCOMPARE(office_->rowsOf("Select * from SchussSerien where Startnummer = '107'"), 1);
  QCOMPARE(office_->rowsOf("Select * from SchussSerien where Startnummer = '105'"), 0);
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Startnummer = '105' and Verbucht = -1"), 1);
}

void TestUserControl1::seriesByDoubleClick() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  for (int hit = 1; hit <= 12; ++hit)
    office_->fire(1, shotRecord(1, hit, "9,7", "123,4", hit < 3 ? "LP Meister" : "LG Serie 10"));
  auto& flex = office_->on<TextGrid>(1, "flex");
  const QModelIndex cell = flex.model()->index(6, 1);
  flex.scrollTo(cell);
  const QPoint at = flex.visualRect(cell).center();
  office_->place.random.give({0.1});
  QTest::mouseClick(flex.viewport(), Qt::LeftButton, {}, at);
  QTest::mouseDClick(flex.viewport(), Qt::LeftButton, {}, at);
  QString ticks;
  for (int row = 1; row < shots().rows(); ++row) ticks += shots().text(row, 0) == "-1" ? 'x' : 'o';
  QCOMPARE(ticks, QString("ooxxxxxxxxxx"));
}

void TestUserControl1::seriesByDefFile() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  for (int hit = 1; hit <= 12; ++hit) office_->fire(1, shotRecord(1, hit, "9,7", "123,4"));
  stationGrid().setText(4, LineDisciplines::Auswahl, "1");
  the<QAction>(office_->line(1), "mnuPopHaeringManSchussSerie").trigger();
  QCOMPARE(shots().text(10, 0), QString("-1"));
  QVERIFY(shots().text(11, 0) != "-1");
}

void TestUserControl1::priceModeEndsWithSignOff() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->place.files.clearJournal();
  office_->press(1, "Command2");
  QCOMPARE(office_->takeCommand(1), QString("77 'UmschaltenAuf Fernbedienung"));
  QCOMPARE(office_->place.files.journal().count("write HServ1.nrt"), 4);
  QCOMPARE(office_->tag(1), QString("preismodus_off"));
  QCOMPARE(office_->line(1).sStartnummer(), QString());
  QVERIFY(!office_->line(1).findChild<QTimer*>("Timer1")->isActive());
}

void TestUserControl1::discardAll() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  const QString question = "Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?";
  office_->boxes.expect(question, BoxAnswer::No).titled("Hinweis").showing(BoxIcon::Question);
  office_->press(1, "m_cmdVerwerfen");
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  const QSignalSpy said(&office_->line(1), &UserControl1::successSaid);
  office_->boxes.expect(question, BoxAnswer::Yes);
  trigger(office_->window(), "Löschen");
  QCOMPARE(said.size(), 1);
  QCOMPARE(said.first().at(1).toString(), QString("1 Schuss verworfen"));
  QCOMPARE(office_->line(1).nOffeneSchuss(), 0);
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Verworfen = -1"), 1);
}

void TestUserControl1::ctlButton() {
  office_->chooseShooter(1, "107");
  office_->send(1, {shotRecord(1, 1, "9,7", "123,4")});
  QFile::remove(office_->folderFile("HSlav1.ctl"));
  office_->boxes.expect("Timer wird wieder gestartet").titled("Hinweis").showing(BoxIcon::Information);
  office_->press(1, "cmdCreateCTL");
  QCOMPARE(office_->place.files.read(office_->folderFile("HSlav1.ctl")), QByteArray("\r\n"));
  QVERIFY(office_->line(1).findChild<QTimer*>("Timer1")->isActive());
  office_->tick(1);
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
}

void TestUserControl1::ctlButtonReportsAndKeepsPolling() {
  for (const bool polling : {false, true}) {
    if (polling) office_->press(1, "cmdPreisModus");
    office_->place.files.fail(FileStep::Write, "HSlav1.ctl", 70, 1);
    office_->boxes
        .expect("Fehler: 70 - " + errorDescription(70) + "\nFehler bei cmdCreateCTL_Click_err!",
                BoxAnswer::Abort)
        .titled("Fehler");
    office_->press(1, "cmdCreateCTL");
    QCOMPARE(office_->line(1).isPolling(), polling);
  }
}

void TestUserControl1::pendingCommandShowsTheSendLabel() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  stationGrid().setText(1, LineDisciplines::Nachkauf, "5");
  bool shown = false;
  office_->place.waits.clear();
  office_->place.waits.inSleep(1, [&] {
    auto& sending = office_->on<QLabel>(1, "lblSenden");
    shown = sending.isVisible() && sending.palette().color(QPalette::Window) == QColor(255, 0, 0);
    office_->takeCommand(1);
  });
  office_->line(1).command([](LineCommands& line) { return line.Nachkauf_Senden(false); });
  QVERIFY(shown);
  QVERIFY(!office_->on<QLabel>(1, "lblSenden").isVisible());
  QCOMPARE(office_->takeCommand(1), QString("801;5"));
}

void TestUserControl1::testData() {
  const QString file = office_->place.path("Schuesse.txt");
  office_->line(1).Fill_Testdaten(file);
  const QString beginsAsASum = "22" + shotRecord(1, 2, "8,1", "400").mid(2);
  office_->place.files.write(file, (shotRecord(1, 1, "9,7", "123,4") + "\r\n" + beginsAsASum +
                                    "\r\n\"22;Serie 17\"\r\nirgendwas\r\n")
                                       .toLatin1());
  office_->boxes.expect("Kein Schütze gewählt!").titled("Hinweis");
  office_->line(1).Fill_Testdaten(file);
  office_->chooseShooter(1, "107");
  office_->line(1).Fill_Testdaten(file);
  QCOMPARE(office_->line(1).nOffeneSchuss(), 2);
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten"), 2);
  QCOMPARE(the<QListWidget>(office_->window(), "lstInfo").count(), 1);
  QCOMPARE(the<QListWidget>(office_->window(), "lstInfo").item(0)->text(), QString("L1 - Serie 17"));
  QVERIFY(!QFile::exists(office_->place.path("dokumente/Tarvex/Daten/InputIntarsoProtokoll.txt")));
}

void TestUserControl1::testDataKnowsNoRepeatsAndAnswersNothing() {
  office_->chooseShooter(1, "107");
  const QByteArray record = "78" + shotRecord(1, 1, "9,7", "123,4").mid(2).toLatin1() + "\r\n";
  const QString file = office_->place.path("Schuesse.txt");
  office_->place.files.write(file, record + record);
  office_->boxes.expect("457 - " + errorDescription(457) +
                            "\nFehler beim Übertragen der Intarso-Schussdaten in die Gridanzeige!",
                        BoxAnswer::Ignore);
  office_->line(1).Fill_Testdaten(file);
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten"), 2);
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  QCOMPARE(office_->takeCommand(1), QString());
}

void TestUserControl1::panelsKeepTheirSize() {
  office_->drop();
  office_->set("BreiteSchuetzen", "311");
  office_->set("BreiteDisziKombi", "222");
  office_->set("BreiteDisziKombi2", "333");
  QVERIFY(office_->open());
  QCOMPARE(office_->on<QWidget>(1, "picDraw4").width(), 311);
  QCOMPARE(office_->on<QWidget>(1, "PicDraw").width(), 222);
  QCOMPARE(office_->on<QWidget>(1, "PicDraw2").width(), 333);
  QWidget* handle = office_->on<PanelSplitter>(1, "splitterOben").handle(1);
  QTest::mousePress(handle, Qt::LeftButton, {}, handle->rect().center());
  QTest::mouseMove(handle, handle->rect().center() + QPoint(20, 0));
  QTest::mouseRelease(handle, Qt::LeftButton, {}, handle->rect().center());
  QCOMPARE(office_->place.settings.value("Tarvex", "Häring", "BreiteSchuetzen"),
           QString::number(office_->on<QWidget>(1, "picDraw4").width()));
  QVERIFY(office_->on<QWidget>(1, "picDraw4").width() > 311);
}

void TestUserControl1::fonts() {
  Schrift schrift;
  schrift.font = parseFontText("DejaVu Sans;14;-1;0;0;0");
  schrift.backColor = 0x102030;
  schrift.foreColor = 0xF0E0D0;
  office_->line(1).Set_Font_Flex(schrift);
  auto& flex = office_->on<TextGrid>(1, "flex");
  QCOMPARE(flex.font().pointSize(), 14);
  QVERIFY(flex.font().bold());
  QCOMPARE(flex.palette().color(QPalette::Base), QColor(0x30, 0x20, 0x10));
  QCOMPARE(flex.palette().color(QPalette::Text), QColor(0xD0, 0xE0, 0xF0));
}

QTEST_MAIN(TestUserControl1)
#include "test_usercontrol1.moc"

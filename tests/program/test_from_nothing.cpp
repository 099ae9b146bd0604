// From an empty folder to a booked shot: the real programs, worked by object names, with a station as a
// process of its own. Nothing is there at first but the folder in which office and station meet.
#include <QFile>
#include <QTest>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/files.h"
#include "platform/settings/settings.h"
#include "targetconfig/station_files.h"
#include "tests/program/range_folder.h"
#include "tools/rundgang/desk.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/shown_report.h"
#include "tools/rundgang/walk.h"

using namespace qk;

namespace {

constexpr int kShooters = 5000;
const QString kDiscipline = "LG Serie 10 Schuss";
constexpr int kRow = 3;  // of that discipline in the generator's grid
constexpr int kShots = 10;
const QString kNumber = "1234";
// Columns of the generator's grid.
constexpr int kTick = 0, kWeaponFile = 17, kTargetFile = 18;

/// A list of members as a spreadsheet stores it: no start numbers, "Nachname" and "Vorname".
QByteArray memberList() {
  static const char* const clubs[] = {"SV Ährenfeld", "Edelweiß Höfen", "Schützenlust Öd", "FSG Würzbrunn"};
  QByteArray text = "Nr;Nachname;Vorname;geb. am;m/w;Verein\r\n";
  for (int i = 1; i <= kShooters; ++i)
    text += QString("%1;Müller%1;Jörg;%2.%3.%4;%5;%6\r\n")
                .arg(i)
                .arg(i % 28 + 1)
                .arg(i % 12 + 1)
                .arg(1950 + i % 60)
                .arg(i % 3 == 0 ? "w" : "m", clubs[i % 4])
                .toUtf8();
  return "\xEF\xBB\xBF" + text;
}

}  // namespace

class TestFromNothing : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void fromAnEmptyFolderToABookedShot();

 private:
  static void beginCompetition(DrivenProgram& program, const QString& path, bool onServer);
  static void takeOverList(DrivenProgram& program, const QString& list);
  static void setLines(DrivenProgram& program);
  static void writeStationFiles(DrivenProgram& program);
  static QString shootAndBook(Range& range, DrivenProgram& program);
  static void enter(DrivenProgram& program, int column, const QString& text, const QString& question);
  static void answerOver(DrivenProgram& program, const QString& title, const QString& text,
                         const QString& button);
};

/// A box over a window that is modal itself.
void TestFromNothing::answerOver(DrivenProgram& program, const QString& title, const QString& text,
                                 const QString& button) {
  program.waitUntil(text, [&] { return program.modal()["title"].toString() == title; });
  program.answer(text, button);
}

void TestFromNothing::beginCompetition(DrivenProgram& program, const QString& path, bool onServer) {
  waitForModal(program, "frmStart");
  program.click("cmdNeu");
  waitForModal(program, "frmNeuerWettkampf");
  program.type("txtBezeichnung", "Herbstpokal");
  program.type("txtOrt", "Grünau");
  program.type("txtStichtag", "1.7.2026");
  program.choose("cboStarter", "Verein (Luftgewehr und Luftpistole)");
  if (onServer) program.click("optServer");
  program.type("txtPfad", path);
  program.click("frmNeuerWettkampf/cmdOK");
  program.waitUntil("the new competition",
                    [&] { return program.modal().isEmpty() && !program.items("lstSeiten").isEmpty(); });
}

void TestFromNothing::takeOverList(DrivenProgram& program, const QString& list) {
  program.click("mnuListen");
  waitForModal(program, "frmListen");
  program.click("cmdDatei");
  program.waitUntil("file dialog", [&] { return program.modal()["class"].toString() == "QFileDialog"; });
  program.type("fileNameEdit", list);
  program.press("fileNameEdit", "Return");
  program.waitUntil("judged", [&] {
    return program.modal()["name"].toString() == "frmListen" && program.enabled("cmdUebernehmen");
  });
  program.click("cmdUebernehmen");
  answerOver(program, "Listen", QString("Soll übernommen werden: %1 neu?").arg(kShooters), "Ja");
  program.waitUntil("taken over", [&] {
    return program.text("lblErfolg") == QString("Übernommen: %1 neu.").arg(kShooters);
  });
  program.click("frmListen/cmdClose");
}

void TestFromNothing::setLines(DrivenProgram& program) {
  program.click("mnuStandeinstellungen");
  waitForModal(program, "frmLinienSetup");
  program.type("txtLinieMax", "1");
  program.click("cmdUebertrag");
  program.click("cmdAlleWaehlen");
  program.click("frmLinienSetup/cmdOK");
  // Office and line look for what the station offers; that is written next.
  const QString missing = "esa_preis.ini nicht gefunden!";
  program.waitUntil("the line", [&] {
    if (program.modal()["text"].toString().contains(missing)) program.answer(missing, "OK");
    return program.modal().isEmpty() && !program.items("tree").isEmpty();
  });
}

void TestFromNothing::enter(DrivenProgram& program, int column, const QString& text,
                            const QString& question) {
  program.clickCell("flexDEF", 0, column);  // of the first row the others are asked for
  program.press("flexDEF", "F2");
  program.type("flexDEF/cellEditor", text);
  program.press("flexDEF/cellEditor", "Return");
  answerOver(program, "Frage", question, "Ja");
}

void TestFromNothing::writeStationFiles(DrivenProgram& program) {
  program.click("mnuHaeringEsaPreisIni");
  program.waitUntil("generator",
                    [&] { return program.modal()["class"].toString().endsWith("frmHaeringDEF"); });
  program.click("cmdSelNone");
  program.clickCell("flexDEF", kRow, kTick);
  enter(program, kWeaponFile, "0_hw_LG.def", "dieser Spalte");
  enter(program, kTargetFile, "0_hs_LG.def", "dieser Waffenart");
  program.click("cmdErstellen");
  answerOver(program, "Hinweis", "Datei(en) erstellt", "OK");
  program.click("cmdClose");
  answerOver(program, "Hinweis", "Sollen die Settings neu eingelesen werden?", "Ja");
}

/// What the quick evaluation prints of it.
QString TestFromNothing::shootAndBook(Range& range, DrivenProgram& program) {
  Journal journal;
  Desk desk(range, program, journal, 1);
  desk.show();
  desk.chooseShooter(kNumber);
  desk.tickStationDisciplines({kDiscipline});
  desk.startShooting();
  desk.waitForOpenShots(kShots);
  desk.waitForLastHit(kShots);
  desk.chooseDisciplines({kDiscipline});
  desk.tickAll();
  desk.saveAndBook();
  program.click("mnuDateiKurzauswertungPreview");
  const QString pdf = range.file("kurzauswertung.pdf");
  saveShownReport(program, pdf);
  program.waitUntil("main window", [&] { return program.modal().isEmpty(); });
  return printedText(pdf);
}

void TestFromNothing::fromAnEmptyFolderToABookedShot() {
  const test::RangeFolder folder;
  Range range({.folder = folder.path(), .activeLines = "1", .demo = false});
  Settings(range.file("einstellungen")).setValue("Tarvex", "Häring", "LinienAktiv", "");
  Files files;
  files.write(range.file("mitglieder.csv"), memberList());
  // These come with the stations.
  for (const char* name : {"0_hw_LG.def", "0_hs_LG.def"}) files.write(range.exchangeFolder() + name, "\r\n");

  const auto master = range.startMasterData();
  beginCompetition(*master, range.competition(), test::storesOnServer());
  takeOverList(*master, range.file("mitglieder.csv"));
  master->waitUntil("the shooters", [&] {
    for (const QJsonValue& page : master->items("lstSeiten"))
      if (page.toArray().first().toObject()["text"].toString() == "Schützen (5.000)") return true;
    return false;
  });
  master->click("mnuBeenden");
  QCOMPARE(master->waitForEnd(), 0);

  const auto office = range.startProgram();
  // A workstation without lines says where they are set up.
  office->answer("Bitte setzen Sie im Menü Optionen", "OK");
  office->waitUntil("the office", [&] { return office->get("frmLindorm", "visible").toBool(); });
  setLines(*office);
  Walk(*office).waitForMainWindow();
  writeStationFiles(*office);
  QCOMPARE(readStationDisciplines(files, range.exchangeFolder()).size(), size_t(1));
  range.startStations();
  const QString sheet = shootAndBook(range, *office);

  const auto store = dao::Database::open(range.competition());
  const auto result = store->openRecordset("Select * from SchussSerien");
  QVERIFY(!result->eof());
  QCOMPARE(result->value("Startnummer").toString(), kNumber);
  const auto shooter = store->openRecordset("Select * from Schützen where Startnummer = '" + kNumber + "'");
  QCOMPARE(result->value("KlassenID").toInt(), shooter->value("KlassenID").toInt());
  QVERIFY(shooter->value("KlassenID").toInt() > 0);
  // What the station says it fired is what was booked.
  const auto shots = store->openRecordset("Select * from Haering_Daten where Verbucht = -1");
  int rings = 0, count = 0;
  for (; !shots->eof(); shots->moveNext(), ++count)
    rings += static_cast<int>(shots->value("RingwertmitZehntel").toDouble());
  QCOMPARE(count, kShots);
  QCOMPARE(result->value("Ergebnis").toInt(), rings);
  QVERIFY2(sheet.contains("Müller1234 Jörg"), qPrintable(sheet));
  QVERIFY2(sheet.contains(QString::number(rings)), qPrintable(sheet));
  Walk(*office).close(false);
}

QTEST_GUILESS_MAIN(TestFromNothing)
#include "test_from_nothing.moc"

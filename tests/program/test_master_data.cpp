// The program for master data beside the office on one competition: the real programs, a station, one file or
// server.
#include <QTest>

#include "masterdata/pages/page.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tests/program/range_folder.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/walk.h"

using namespace qk;

namespace {

constexpr int kShots = 8;
constexpr int kClubs = 15;

void showPage(DrivenProgram& program, const QString& key) {
  const std::vector<Page>& all = masterDataPages();
  int row = 0;
  while (all[size_t(row)].key != key) ++row;
  program.clickCell("lstSeiten", row, 0);
  program.waitUntil("page " + key, [&] { return program.get("seite_" + key, "visible").toBool(); });
}

void addClub(DrivenProgram& program, const QString& name) {
  program.click("mnuNeu");
  program.waitUntil("new row", [&] { return program.text("lblTitel_Vereine") == "Neuer Verein"; });
  program.type("feld_Vereine_Name", name);
  program.click("cmdSpeichern_Vereine");
  program.waitUntil("stored club", [&] {
    return program.text("lblTitel_Vereine") == "Der Verein »" + name + "«" &&
           program.text("lblStand_Vereine").isEmpty();
  });
}

int count(const QString& competition, const QString& from) {
  const auto database = dao::Database::open(competition);
  return database->openRecordset("SELECT Count(*) AS n FROM " + from)->value(0).toInt();
}

}  // namespace

class TestMasterData : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void rowsAreStoredWhileALineShoots();
  void theSecondOneBringsTheFirstToTheFront();
  void anUnknownFileEndsInAQuestion();
};

void TestMasterData::rowsAreStoredWhileALineShoots() {
  test::RangeFolder folder;
  Range range({folder.path(), "1", 20, 1, {"--schuss", QString::number(kShots)}});
  range.startStations();
  const auto office = range.startProgram();
  Walk walk(*office);
  walk.waitForMainWindow();
  walk.chooseShooter(1, "107");
  walk.priceModeOn(1);
  walk.tickStationDiscipline(1, "LG Meister");
  const auto program = range.startMasterData(range.competition());
  program->waitUntil("pages",
                     [&] { return program->items("lstSeiten").size() == int(masterDataPages().size()); });
  showPage(*program, "Vereine");
  const int clubs = count(range.competition(), "Verein");
  walk.sendShooter(1);
  for (int club = 1; club <= kClubs; ++club) addClub(*program, QString("Neuer Club %1").arg(club));
  walk.waitForOpenShots(1, kShots);
  QVERIFY(office->modal().isEmpty());
  QVERIFY(program->modal().isEmpty());
  QCOMPARE(count(range.competition(), "Verein"), clubs + kClubs);
  QCOMPARE(count(range.competition(), "Haering_Daten"), kShots);
  // What the office has open keeps working when this program goes.
  program->click("mnuBeenden");
  QCOMPARE(program->waitForEnd(), 0);
  walk.close(true);
  QCOMPARE(office->waitForEnd(), 0);
}

void TestMasterData::theSecondOneBringsTheFirstToTheFront() {
  test::RangeFolder folder;
  const Range range({folder.path(), "1", 20, 1, {}});
  const auto first = range.startMasterData(range.competition());
  first->waitUntil("pages", [&] { return !first->items("lstSeiten").isEmpty(); });
  QProcess second;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(range.environment());
  second.setProcessEnvironment(environment);
  second.start(range.masterDataProgram(), {range.competition()});
  QVERIFY(second.waitForFinished());
  QCOMPARE(second.exitCode(), 0);
  QCOMPARE(QString::fromUtf8(second.readAllStandardOutput()),
           "qk-stammdaten läuft schon; sein Fenster kommt nach vorn.\nNicht geöffnet: " +
               range.competition() + "\n");
  QVERIFY(first->running());
}

void TestMasterData::anUnknownFileEndsInAQuestion() {
  test::RangeFolder folder;
  const Range range({folder.path(), "1", 20, 1, {}});
  const auto program = range.startMasterData(range.file("fort.qkk"));
  program->waitUntil("start window", [&] { return program->modal()["name"].toString() == "frmStart"; });
  QVERIFY(program->text("frmStart/lblGrund").contains("fort.qkk"));
  program->click("frmStart/cmdBeenden");
  QCOMPARE(program->waitForEnd(), 0);
}

QTEST_GUILESS_MAIN(TestMasterData)
#include "test_master_data.moc"

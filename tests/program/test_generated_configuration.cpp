// The real binary writes the stations' configuration, and the stations, a process of their own, work with it.
#include <QTest>

#include "platform/runtime/files.h"
#include "targetconfig/station_files.h"
#include "tests/program/range_folder.h"
#include "tools/rundgang/desk.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/walk.h"

using namespace qk;

namespace {

// Columns of the generator's grid, and the first rows of the demo competition's disciplines.
constexpr int kTick = 0;
constexpr int kRows = 4;  // LG Meister, LG Meister Zehntel, LG Serie 20, LG Serie 10
constexpr int kWeaponFile = 17;
constexpr int kTargetFile = 18;

}  // namespace

class TestGeneratedConfiguration : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void stationsShootWhatWasGenerated();

 private:
  static void enter(DrivenProgram& program, int row, int column, const QString& text,
                    const QString& question) {
    program.clickCell("flexDEF", row, column);
    program.press("flexDEF", "F2");
    program.type("flexDEF/cellEditor", text);
    program.press("flexDEF/cellEditor", "Return");
    answer(program, "Frage", question, "Ja");
  }
  /// The box over the generator's own modal window.
  static void answer(DrivenProgram& program, const QString& title, const QString& text,
                     const QString& button) {
    program.waitUntil(text, [&] { return program.modal()["title"].toString() == title; });
    program.answer(text, button);
  }
};

void TestGeneratedConfiguration::stationsShootWhatWasGenerated() {
  const test::RangeFolder folder;
  Range range({folder.path(), "1", 0, 1, {}});
  Files files;
  for (const QString& name : files.list(range.exchangeFolder(), "0_hd*"))
    files.remove(range.exchangeFolder() + name);

  const auto program = range.startProgram();
  Walk walk(*program);
  walk.waitForMainWindow();
  program->click("mnuHaeringEsaPreisIni");
  program->waitUntil("generator",
                     [&] { return program->modal()["class"].toString().endsWith("frmHaeringDEF"); });
  program->click("cmdSelNone");
  for (int row = 0; row < kRows; ++row) program->clickCell("flexDEF", row, kTick);
  enter(*program, 0, kWeaponFile, "0_hw_LG.def", "dieser Spalte");
  enter(*program, 0, kTargetFile, "0_hs_LG.def", "dieser Waffenart");
  program->click("cmdErstellen");
  answer(*program, "Hinweis", "Datei(en) erstellt", "OK");
  program->click("cmdClose");
  answer(*program, "Hinweis", "Sollen die Settings neu eingelesen werden?", "Ja");

  const auto written = readStationDisciplines(files, range.exchangeFolder());
  QCOMPARE(written.size(), size_t(kRows));
  QCOMPARE(written.back(), (StationDiscipline{"LG Serie 10", "0_hd_LG_LG_Serie_10.def"}));
  QCOMPARE(files.list(range.exchangeFolder(), "0_hd*").size(), qsizetype(kRows));

  // A station shoots the ten shots that the def file orders, and no more.
  range.startStations();
  Journal journal;
  Desk desk(range, *program, journal, 1);
  desk.show();
  desk.chooseShooter("107");
  desk.tickStationDisciplines({"LG Serie 10"});
  desk.startShooting();
  desk.waitForOpenShots(10);
  desk.waitForLastHit(10);
  QCOMPARE(desk.openShots(), 10);
  range.stopStations();
  walk.close(true);
}

QTEST_GUILESS_MAIN(TestGeneratedConfiguration)
#include "test_generated_configuration.moc"

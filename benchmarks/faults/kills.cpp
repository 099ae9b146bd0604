#include <random>

#include "benchmarks/faults/faults.h"
#include "benchmarks/faults/stored_shots.h"
#include "tests/support/foreign/foreign_process.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/reckoning_log.h"
#include "tools/rundgang/walk.h"

namespace qk::faults {

namespace {

const QString kLines = "111111";
constexpr unsigned kLongestLife = 6000;  ///< milliseconds: start, restoring, sending, shooting

/// A station fires its next shot only when the flag of the last one is gone: all but the last of each line
/// are acknowledged, and the last one is when its flag is gone, too.
QStringList acknowledgedButMissing(const Range& range, const StoredShots& store) {
  const auto fired = firedShots(range.stationLog());
  QMap<int, QString> last;
  for (const FiredShot& shot : fired) last[shot.line] = shot.key;
  QStringList missing;
  for (const FiredShot& shot : fired) {
    const bool waiting = last[shot.line] == shot.key && range.reportPending(shot.line);
    if (!waiting && !store.keys.contains(shot.key)) missing << shot.key;
  }
  return missing;
}

void goOnShooting(Range& range, DrivenProgram& program) {
  Walk walk(program);
  walk.waitForMainWindow();
  for (int line = 1; line <= kLines.size(); ++line) {
    walk.selectLine(line);
    if (!walk.hasShooter(line)) walk.chooseShooter(line, QString::number(104 + line));
    walk.priceModeOn(line);
    range.waitUntilTaken(program, line, {"76"});
    walk.tickAllStationDisciplines(line);
    walk.sendShooter(line);
    range.waitUntilTaken(program, line, {"75"});
  }
}

}  // namespace

bool runKills(const QString& folder, int runs, unsigned seed) {
  std::mt19937 random(seed);
  RangeOptions options;
  options.folder = folder;
  options.activeLines = kLines;
  options.pace = 0;
  options.seed = static_cast<int>(seed);
  Range range(options);
  range.startStations();
  test::ForeignVisitor visitor(range.competition(), seed);
  QStringList missing;
  for (int run = 0; run < runs; ++run) {
    const auto program = range.startProgram();
    program->killIn(static_cast<int>(random() % kLongestLife));
    try {
      goOnShooting(range, *program);
    } catch (const DriverError&) {
      // Killed while the lines were still on their way into price mode: that is a moment like any other.
    }
    program->waitForEnd();
    missing += acknowledgedButMissing(range, storedShots(range.competition()));
  }
  // Once more without a crash: what still waits in the folder is read, too.
  range.stopStations();
  {
    const auto program = range.startProgram();
    Walk walk(*program);
    walk.waitForMainWindow();
    for (int line = 1; line <= kLines.size(); ++line) {
      walk.selectLine(line);
      walk.priceModeOn(line);
      program->waitUntil("waiting shot read", [&] { return !range.reportPending(line); });
    }
    program->kill();
  }
  const int visits = visitor.end();
  return reportShots(QString("%1 SIGKILL, %2 fremde Öffnungen").arg(runs).arg(visits), range,
                     storedShots(range.competition()), missing) &&
         visits > runs && test::foreignCheck(range.competition());
}

}  // namespace qk::faults

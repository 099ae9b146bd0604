#include <algorithm>
#include <array>

#include "benchmarks/faults/faults.h"
#include "benchmarks/faults/stored_shots.h"
#include "tests/support/postgres_server.h"
#include "tools/rundgang/reckoning_log.h"
#include "tools/rundgang/walk.h"

namespace qk::faults {

namespace {

constexpr int kLines = 12;
constexpr int kLinesPerDesk = 6;
constexpr int kBooked = 5;      ///< shots that a desk books: more don't fit the discipline
constexpr int kPatience = 900;  ///< seconds

/// One program with its lines, and whoever sits at it.
struct Desk {
  std::unique_ptr<DrivenProgram> program;
  int firstLine;

  bool asks() const { return !program->modal().isEmpty(); }
  /// What stands in the way of the operator, for the report of a run that failed.
  QString obstacle() const {
    const QString text = program->modal()["text"].toString();
    return text.isEmpty() ? QString("no box") : "box: " + text;
  }
  void retry() const {
    if (asks()) program->answer("Fehler", "Wiederholen");
  }
};

bool hasFired(const Range& range, int line) {
  const auto fired = firedShots(range.stationLog());
  return std::any_of(fired.begin(), fired.end(), [line](const FiredShot& shot) { return shot.line == line; });
}

/// Price mode is two commands, and a busy program may write the second after the first was taken: an operator
/// sees that nothing happens, and does it again.
void startLine(const Range& range, const Desk& desk, int line) {
  constexpr int kTrials = 5;
  constexpr int kSecondsToFirstShot = 10;
  Walk walk(*desk.program);
  for (int trial = 1;; ++trial) {
    walk.priceModeOn(line);
    desk.program->waitUntil("command 76 taken", [&] { return !range.commandPending(line); });
    if (trial == 1) walk.tickAllStationDisciplines(line);
    walk.sendShooter(line);
    try {
      desk.program->waitUntil(
          "first shot", [&] { return hasFired(range, line); }, kSecondsToFirstShot);
      return;
    } catch (const DriverError&) {
      if (trial == kTrials) throw;
    }
  }
}

void startShooting(const Range& range, const Desk& desk) {
  Walk walk(*desk.program);
  walk.waitForMainWindow();
  for (int line = desk.firstLine; line < desk.firstLine + kLinesPerDesk; ++line) {
    walk.selectLine(line);
    walk.chooseShooter(line, QString::number(100 + line));
    startLine(range, desk, line);
  }
}

/// The first open shots of the line, as single results.
void bookLine(const Desk& desk, int line) {
  Walk walk(*desk.program);
  walk.selectLine(line);
  for (int place = 0; place < kBooked; ++place) walk.clickShot(line, place);
  walk.clickDiscipline(line, "LG Teiler");
  walk.transfer(line);
  desk.program->waitUntil("results", [&] { return walk.hasResults(line); });
  walk.saveAndBook(line);
}

class Outage {
 public:
  Outage(test::PostgresServer& server, const std::array<Desk, 2>& desks) : server_(server), desks_(desks) {}

  /// The server is away until a desk has noticed; then it comes back, and whoever was asked says
  /// "Wiederholen".
  void happen() {
    server_.kill();
    desks_.front().program->waitUntil("error box of a desk without a server", [&] {
      return std::any_of(desks_.begin(), desks_.end(), [](const Desk& desk) { return desk.asks(); });
    });
    server_.again();
    for (const Desk& desk : desks_)
      desk.program->waitUntil("going on", [&] {
        desk.retry();
        return !desk.asks();
      });
  }

 private:
  test::PostgresServer& server_;
  const std::array<Desk, 2>& desks_;
};

bool shootAndBook(const Range& range, test::PostgresServer& server, const std::array<Desk, 2>& desks,
                  int each, int kills) {
  for (const Desk& desk : desks) startShooting(range, desk);
  const auto fired = [&range] { return static_cast<int>(firedShots(range.stationLog()).size()); };
  const int all = each * kLines;
  DrivenProgram& watch = *desks.front().program;
  for (int kill = 1; kill <= kills; ++kill) {
    watch.waitUntil(
        "shots before the next outage", [&] { return fired() >= all * kill / (kills + 1); }, kPatience);
    Outage(server, desks).happen();
  }
  watch.waitUntil(
      "all shots",
      [&] {
        for (const Desk& desk : desks) desk.retry();
        bool pending = false;
        for (int line = 1; line <= kLines; ++line) pending = pending || range.reportPending(line);
        return fired() == all && !pending;
      },
      kPatience);
  for (const Desk& desk : desks) bookLine(desk, desk.firstLine);
  const StoredShots store = storedShots(range.competition());
  return reportShots(QString("2 Arbeitsplätze, %1 SIGKILL des Servers").arg(kills), range, store, {}) &&
         store.booked == 2 * kBooked && store.open + store.booked == all;
}

}  // namespace

bool runDesks(const QString& folder, int shots, int kills, unsigned seed) {
  test::PostgresServer server;
  const test::ServerDatabase database(server.folder());
  database.writeAddress(folder + "/demo.qkk");

  RangeOptions options;
  options.folder = folder;
  options.activeLines = QString(kLines, '1');
  options.pace = 0;
  options.seed = static_cast<int>(seed);
  const int each = (shots + kLines - 1) / kLines;
  options.stationArguments = {"--schuss", QString::number(each)};
  Range range(options);
  range.startStations();
  const QString own(kLinesPerDesk, '1'), others(kLinesPerDesk, '0');
  const std::array desks{Desk{range.startDesk("buero1", own + others), 1},
                         Desk{range.startDesk("buero2", others + own), 1 + kLinesPerDesk}};
  try {
    return shootAndBook(range, server, desks, each, kills);
  } catch (const DriverError& problem) {
    QString text = problem.what();
    for (const Desk& desk : desks)
      text += QString("\n  desk of line %1: ").arg(desk.firstLine) + desk.obstacle();
    throw DriverError(text);
  }
}

}  // namespace qk::faults

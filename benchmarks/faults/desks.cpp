#include <QFile>
#include <QSet>
#include <algorithm>
#include <array>

#include "benchmarks/faults/faults.h"
#include "benchmarks/faults/stored_shots.h"
#include "tests/support/foreign/foreign_process.h"
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

void startShooting(const Range& range, const Desk& desk) {
  Walk walk(*desk.program);
  walk.waitForMainWindow();
  for (int line = desk.firstLine; line < desk.firstLine + kLinesPerDesk; ++line) {
    walk.selectLine(line);
    walk.chooseShooter(line, QString::number(100 + line));
    walk.priceModeOn(line);
    range.waitUntilTaken(*desk.program, line, {"76"});
    walk.tickAllStationDisciplines(line);
    walk.sendShooter(line);
    range.waitUntilTaken(*desk.program, line, {"75"});
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

/// A line whose start had to be repeated may fire more than it was asked for: it is done when it has told the
/// sum of its last series.
bool allSeriesEnded(const Range& range) {
  QSet<int> shooting, seen;
  QFile log(range.stationLog());
  if (!log.open(QIODevice::ReadOnly)) return false;
  while (!log.atEnd()) {
    const QString record = QString::fromLatin1(log.readLine());
    const bool isSum = record.startsWith("22;Linie ");
    const int line = isSum ? record.section(' ', 1, 1).toInt() : record.section(" ; ", 4, 4).toInt();
    seen.insert(line);
    if (isSum)
      shooting.remove(line);
    else
      shooting.insert(line);
  }
  return seen.size() == kLines && shooting.isEmpty();
}

void waitForAll(const Range& range, const std::array<Desk, 2>& desks, int all) {
  desks.front().program->waitUntil(
      "all shots",
      [&] {
        for (const Desk& desk : desks) desk.retry();
        bool pending = false;
        for (int line = 1; line <= kLines; ++line) pending = pending || range.reportPending(line);
        const int fired = static_cast<int>(firedShots(range.stationLog()).size());
        return fired >= all && allSeriesEnded(range) && !pending;
      },
      kPatience);
}

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
  waitForAll(range, desks, all);
  for (const Desk& desk : desks) bookLine(desk, desk.firstLine);
  const StoredShots store = storedShots(range.competition());
  return reportShots(QString("2 Arbeitsplätze, %1 SIGKILL des Servers").arg(kills), range, store, {}) &&
         store.booked == 2 * kBooked && store.open + store.booked == fired();
}

/// Two programs with six lines each on the competition in the folder, and its stations.
class TwoDesks {
 public:
  TwoDesks(const QString& folder, int shots, unsigned seed)
      : each_((shots + kLines - 1) / kLines), range_(optionsOf(folder, each_, seed)) {
    range_.startStations();
    const QString own(kLinesPerDesk, '1'), others(kLinesPerDesk, '0');
    desks_ = {Desk{range_.startDesk("buero1", own + others), 1},
              Desk{range_.startDesk("buero2", others + own), 1 + kLinesPerDesk}};
  }

  /// What `work` does; its failure also tells what the desks show.
  bool run(const std::function<bool(const Range& range, const std::array<Desk, 2>& desks, int each)>& work) {
    try {
      return work(range_, desks_, each_);
    } catch (const DriverError& problem) {
      QString text = problem.what();
      for (const Desk& desk : desks_)
        text += QString("\n  desk of line %1: ").arg(desk.firstLine) + desk.obstacle();
      throw DriverError(text);
    }
  }

 private:
  static RangeOptions optionsOf(const QString& folder, int each, unsigned seed) {
    RangeOptions options;
    options.folder = folder;
    options.activeLines = QString(kLines, '1');
    options.pace = 0;
    options.seed = static_cast<int>(seed);
    options.stationArguments = {"--schuss", QString::number(each)};
    return options;
  }

  int each_;
  Range range_;
  std::array<Desk, 2> desks_;
};

}  // namespace

bool runDesks(const QString& folder, int shots, int kills, unsigned seed) {
  test::PostgresServer server;
  const test::ServerDatabase database(server.folder());
  database.writeAddress(folder + "/demo.qkk");
  return TwoDesks(folder, shots, seed)
      .run([&](const Range& range, const std::array<Desk, 2>& desks, int each) {
        return shootAndBook(range, server, desks, each, kills);
      });
}

bool runFileDesks(const QString& folder, int shots, unsigned seed) {
  TwoDesks both(folder, shots, seed);
  return both.run([&](const Range& range, const std::array<Desk, 2>& desks, int each) {
    test::ForeignVisitor visitor(range.competition(), seed);
    for (const Desk& desk : desks) startShooting(range, desk);
    const int all = each * kLines;
    waitForAll(range, desks, all);
    for (const Desk& desk : desks) bookLine(desk, desk.firstLine);
    for (const Desk& desk : desks) {
      desk.program->kill();
      desk.program->waitForEnd();
    }
    const int visits = visitor.end();
    const StoredShots store = storedShots(range.competition());
    return reportShots(QString("2 Arbeitsplätze an einer Datei, %1 fremde Öffnungen").arg(visits), range,
                       store, {}) &&
           visits > 0 && test::foreignCheck(range.competition()) && store.booked == 2 * kBooked;
  });
}

}  // namespace qk::faults

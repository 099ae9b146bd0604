#include <QFile>
#include <QSet>
#include <QTextStream>
#include <algorithm>
#include <array>
#include <functional>
#include <vector>

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

/// The server is away until a desk has noticed; then there is one again, and whoever was asked says
/// "Wiederholen".
void loseServer(test::PostgresServer& server, const std::array<Desk, 2>& desks,
                const std::function<void()>& bringBack) {
  server.kill();
  desks.front().program->waitUntil("error box of a desk without a server", [&] {
    return std::any_of(desks.begin(), desks.end(), [](const Desk& desk) { return desk.asks(); });
  });
  bringBack();
  for (const Desk& desk : desks)
    desk.program->waitUntil("going on", [&] {
      desk.retry();
      return !desk.asks();
    });
}

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

int firedIn(const Range& range) {
  return static_cast<int>(firedShots(range.stationLog()).size());
}

/// All lines shoot, and each of the incidents happens after an equal part of their shots.
bool shootAndBook(const QString& what, const Range& range, const std::array<Desk, 2>& desks, int each,
                  const std::vector<std::function<void()>>& incidents) {
  for (const Desk& desk : desks) startShooting(range, desk);
  const int all = each * kLines, parts = static_cast<int>(incidents.size()) + 1;
  DrivenProgram& watch = *desks.front().program;
  for (int part = 1; part < parts; ++part) {
    watch.waitUntil(
        "shots before the next incident", [&] { return firedIn(range) >= all * part / parts; }, kPatience);
    incidents[static_cast<size_t>(part) - 1]();
  }
  waitForAll(range, desks, all);
  for (const Desk& desk : desks) bookLine(desk, desk.firstLine);
  const StoredShots store = storedShots(range.competition());
  return reportShots(what, range, store, {}) && store.booked == 2 * kBooked &&
         store.open + store.booked == firedIn(range);
}

/// What a server has ever stored since it started.
QStringList changesAt(const test::PostgresServer& server, const test::ServerDatabase& database) {
  return server.native("SELECT sum(n_tup_ins + n_tup_upd + n_tup_del) FROM pg_stat_user_tables",
                       database.address().database) +
         server.native(R"(SELECT count(*) FROM dao."Haering_Daten")", database.address().database);
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
        const auto outage = [&] { loseServer(server, desks, [&] { server.again(); }); };
        return shootAndBook(QString("2 Arbeitsplätze, %1 SIGKILL des Servers").arg(kills), range, desks, each,
                            std::vector<std::function<void()>>(static_cast<size_t>(kills), outage));
      });
}

bool runPromotion(const QString& folder, int shots, unsigned seed) {
  test::PostgresServer first;
  const test::ServerDatabase database(first.folder());
  const auto second = test::PostgresServer::synchronousStandbyOf(first);
  database.writeAddress(folder + "/demo.qkk", {first.folder(), second->folder()});
  return TwoDesks(folder, shots, seed)
      .run([&](const Range& range, const std::array<Desk, 2>& desks, int each) {
        const auto promotion = [&] {
          loseServer(first, desks, [&] {
            second->promote();
            second->waitForStandby({});
          });
        };
        QStringList atReturn;
        const auto comeBack = [&] {
          first.again();
          first.waitForStandby({});
          atReturn = changesAt(first, database);
        };
        const bool whole = shootAndBook("2 Arbeitsplätze, SIGKILL des Hauptservers, der Ersatz übernimmt",
                                        range, desks, each, {promotion, comeBack});
        const bool untouched = changesAt(first, database) == atReturn;
        if (!untouched) QTextStream(stdout) << "  der alte Hauptserver hat noch gespeichert" << Qt::endl;
        return whole && untouched;
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

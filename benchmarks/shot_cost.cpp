// What a shot costs from the station's flag to row and grid, against bare reading, splitting and inserting of
// the same row; the same with a million rows in the table; and how often it commits.
#include <QFile>
#include <QtEndian>

#include "benchmarks/bare_store.h"
#include "benchmarks/bench_line.h"
#include "benchmarks/pairs.h"
#include "platform/runtime/textcodec.h"

namespace qk::bench {

namespace {

constexpr int kShotsOfAVisit = 40;  ///< open shots of a line before they are booked

int nextShot() {
  static int n = 0;
  return ++n;
}

/// Line 1 after a first shot, which has reserved the numbers of those that follow; a shooter does that else.
std::unique_ptr<UserControl1> shootingLine(BenchPlace& place) {
  auto line = std::make_unique<UserControl1>(place.workplace(), place.global(), 0);
  line->setLinie(1);
  line->Init(place.competition());
  report(place.exchangeFolder(), record(nextShot()));
  tick(*line);
  return line;
}

void house(Rounds& rounds, int rows) {
  BenchPlace& place = sharedPlace(rows);
  std::unique_ptr<UserControl1> line;
  const auto freshLine = [&] { line = shootingLine(place); };
  freshLine();
  while (rounds.next()) {
    rounds.pause();
    if (line->nOffeneSchuss() >= kShotsOfAVisit) freshLine();
    report(place.exchangeFolder(), record(nextShot()));
    rounds.resume();
    tick(*line);
  }
  if (line->nOffeneSchuss() == 0) rounds.fail("no shot arrived");
}

void bare(Rounds& rounds, int rows) {
  BenchPlace& place = sharedPlace(rows);
  BareStore store(place.competition());
  sqlite3_stmt* insert = store.prepare(
      "INSERT INTO Haering_Daten (WettbewerbBezeichnung, KlasseBezeichnung, StandnummerOrt, Liniennummer, "
      "\"Schütze\", ProbeMatch, Wertung, Treffernummer, RingwertmitZehntel, Lagepfeil, X, Y, Radius, Winkel, "
      "ZeitAbsolut, ZeitRelativ, Datum, Wettbewerb, Klasse, Startnummer, Waffe, Teiler, Teilerfaktor, "
      "\"Key\", "
      "Verbucht, Verworfen, BuchungsZeitpunkt) VALUES "
      "(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,'LG',?,1,?,0,0,"
      "'1899-12-30 00:00:00')");
  const QString data = place.exchangeFolder() + "HSlav1.nrt", flag = place.exchangeFolder() + "HSlav1.ctl";
  const auto number = [](const QString& part) { return QString(part).replace(',', '.').toDouble(); };
  while (rounds.next()) {
    rounds.pause();
    report(place.exchangeFolder(), record(nextShot()));
    rounds.resume();
    if (!QFile::exists(flag)) continue;
    QFile file(data);
    if (!file.open(QIODevice::ReadOnly)) continue;
    const QStringList p = fromWindows1252(file.readAll()).trimmed().split(" ; ");
    store.run(insert, p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], number(p[9]), p[10], number(p[11]),
              number(p[12]), number(p[13]), number(p[14]), p[15], p[16], p[17], p[18], p[19], p[20],
              number(p[13]), p[4] + "-" + p[8] + "-" + p[17] + "-" + p[15]);
    QFile::remove(flag);
  }
}

void open(Rounds& rounds, int rows) {
  BenchPlace& place = sharedPlace(rows);
  while (rounds.next()) {
    const auto store = dao::Database::open(place.competition());
    const auto held = store->openRecordset("Select * from Haering_Daten order by Datum, ZeitAbsolut");
    keep(held);
  }
}

double residentMegabytes() {
  QFile file("/proc/self/statm");
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

double growthOfMemory() {
  const auto held = [](int rows) {
    BenchPlace& place = sharedPlace(rows);
    const double before = residentMegabytes();
    const auto store = dao::Database::open(place.competition());
    const auto recordset = store->openRecordset("Select * from Haering_Daten order by Datum, ZeitAbsolut");
    return residentMegabytes() - before;
  };
  held(0);  // what the first opening of all takes stays, and counts for nobody
  const double empty = held(0);
  return held(kMillion) - empty;
}

/// Commits that stand in the write-ahead log: frames that carry the size of the database after a commit
/// (https://www.sqlite.org/fileformat2.html#walformat). Counts what the engine did, not what the house says.
int commitsInLog(const QString& path) {
  QFile file(path + "-wal");
  if (!file.open(QIODevice::ReadOnly)) return 0;
  const QByteArray log = file.readAll();
  constexpr qsizetype kHeader = 32, kFrameHeader = 24;
  if (log.size() < kHeader) return 0;
  const auto page = static_cast<qsizetype>(qFromBigEndian<quint32>(log.constData() + 8));
  int commits = 0;
  for (qsizetype at = kHeader; at + kFrameHeader + page <= log.size(); at += kFrameHeader + page) {
    const bool current = log.mid(at + 8, 8) == log.mid(16, 8);  // of this log, not left from a former one
    if (current && qFromBigEndian<quint32>(log.constData() + at + 4) != 0) ++commits;
  }
  return commits;
}

double commitsOfAShot() {
  BenchPlace place;
  const auto line = shootingLine(place);
  const int before = commitsInLog(place.competition());
  constexpr int kShots = 100;
  for (int i = 0; i < kShots; ++i) {
    report(place.exchangeFolder(), record(nextShot()));
    tick(*line);
  }
  return static_cast<double>(commitsInLog(place.competition()) - before) / kShots;
}

using namespace std::placeholders;

const Registered shot{Pair{"Ein Schuss", 2.7, "gegen bloßes Lesen, Zerlegen und Einfügen",
                           std::bind(house, _1, 0), std::bind(bare, _1, 0), 40}};
const Registered shotAmongMany{Pair{"Ein Schuss bei 1.000.000 Zeilen", 2.7,
                                    "gegen bloßes Lesen, Zerlegen und Einfügen",
                                    std::bind(house, _1, kMillion), std::bind(bare, _1, kMillion), 40}};
const Registered growth{Quotient{"Wachstum eines Schusses", 1.05, "1.000.000 Zeilen gegen keine",
                                 "Ein Schuss bei 1.000.000 Zeilen", "Ein Schuss"}};
const Registered shotAmongMost{Pair{.name = "Ein Schuss bei 10.000.000 Zeilen",
                                    .bound = 3.3,
                                    .unit = "gegen bloßes Lesen, Zerlegen und Einfügen",
                                    .house = std::bind(house, _1, kTenMillion),
                                    .bare = std::bind(bare, _1, kTenMillion),
                                    .counted = 40,
                                    .large = true}};
const Registered greatGrowth{Quotient{"Wachstum auf 10.000.000 Zeilen", 1.05, "10.000.000 Zeilen gegen keine",
                                      "Ein Schuss bei 10.000.000 Zeilen", "Ein Schuss"}};
const Registered opening{Pair{"Öffnen bei 1.000.000 Zeilen", 1.1, "gegen Öffnen ohne Zeilen",
                              std::bind(open, _1, kMillion), std::bind(open, _1, 0), 5}};
const Registered memory{Figure{"Speicher beim Öffnen", 2.0, "MB mehr bei 1.000.000 Zeilen", growthOfMemory}};
const Registered commitCount{Figure{"Commits je Schuss", 1.0, "Commits", commitsOfAShot}};

}  // namespace

}  // namespace qk::bench

// What a shot costs from the station's flag to row and grid, against bare reading, splitting and inserting of
// the same row; the same with a million rows in the table; and how often it commits.
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QtEndian>

#include "benchmarks/bench_line.h"
#include "benchmarks/pairs.h"
#include "platform/runtime/textcodec.h"

namespace qk::bench {

namespace {

constexpr int kMillion = 1'000'000;
constexpr int kShotsOfAVisit = 40;  ///< open shots of a line before they are booked

/// One per size: making a million rows takes longer than measuring on them.
BenchPlace& placeOf(int rows) {
  static BenchPlace empty(0);
  if (rows == 0) return empty;
  static BenchPlace full(kMillion);
  return full;
}

int nextShot() {
  static int n = 0;
  return ++n;
}

void house(benchmark::State& state, int rows) {
  BenchPlace& place = placeOf(rows);
  std::unique_ptr<UserControl1> line;
  const auto freshLine = [&] {
    line = std::make_unique<UserControl1>(place.workplace(), place.global(), 0);
    line->setLinie(1);
    line->Init(place.competition());
  };
  freshLine();
  tick(*line);
  for (auto _ : state) {
    state.PauseTiming();
    if (line->nOffeneSchuss() >= kShotsOfAVisit) freshLine();
    report(place.exchangeFolder(), record(nextShot()));
    state.ResumeTiming();
    tick(*line);
  }
  if (line->nOffeneSchuss() == 0) state.SkipWithError("no shot arrived");
}

void bare(benchmark::State& state, int rows) {
  BenchPlace& place = placeOf(rows);
  const QString name = "bare";
  {
    QSqlDatabase store = QSqlDatabase::addDatabase("QSQLITE", name);
    store.setDatabaseName(place.competition());
    store.open();
    QSqlQuery(store).exec("PRAGMA journal_mode = WAL");
    QSqlQuery insert(store);
    insert.prepare(
        "INSERT INTO Haering_Daten (WettbewerbBezeichnung, KlasseBezeichnung, StandnummerOrt, Liniennummer, "
        "\"Schütze\", "
        "ProbeMatch, Wertung, Treffernummer, RingwertmitZehntel, Lagepfeil, X, Y, Radius, Winkel, "
        "ZeitAbsolut, "
        "ZeitRelativ, Datum, Wettbewerb, Klasse, Startnummer, Waffe, Teiler, Teilerfaktor, \"Key\", "
        "Verbucht, Verworfen, "
        "BuchungsZeitpunkt) VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,'LG',?,1,?,0,0,'1899-12-30 "
        "00:00:00')");
    const QString data = place.exchangeFolder() + "HSlav1.nrt", flag = place.exchangeFolder() + "HSlav1.ctl";
    for (auto _ : state) {
      state.PauseTiming();
      report(place.exchangeFolder(), record(nextShot()));
      state.ResumeTiming();
      if (!QFile::exists(flag)) continue;
      QFile file(data);
      if (!file.open(QIODevice::ReadOnly)) continue;
      const QStringList parts = fromWindows1252(file.readAll()).trimmed().split(" ; ");
      for (int i = 1; i <= 20; ++i) {
        const bool number = i == 9 || (i >= 11 && i <= 14);
        insert.bindValue(
            i - 1, number ? QVariant(QString(parts[i]).replace(',', '.').toDouble()) : QVariant(parts[i]));
      }
      insert.bindValue(20, QString(parts[13]).replace(',', '.').toDouble());
      insert.bindValue(21, parts[4] + "-" + parts[8] + "-" + parts[17] + "-" + parts[15]);
      if (!insert.exec()) {
        state.SkipWithError(insert.lastError().text().toUtf8().constData());
        break;
      }
      QFile::remove(flag);
    }
  }
  QSqlDatabase::removeDatabase(name);
}

void open(benchmark::State& state, int rows) {
  BenchPlace& place = placeOf(rows);
  for (auto _ : state) {
    const auto store = dao::Database::open(place.competition());
    const auto held = store->openRecordset("Select * from Haering_Daten order by Datum, ZeitAbsolut");
    benchmark::DoNotOptimize(held);
  }
}

double residentMegabytes() {
  QFile file("/proc/self/statm");
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

double growthOfMemory() {
  const auto held = [](int rows) {
    BenchPlace& place = placeOf(rows);
    const double before = residentMegabytes();
    const auto store = dao::Database::open(place.competition());
    const auto recordset = store->openRecordset("Select * from Haering_Daten order by Datum, ZeitAbsolut");
    return residentMegabytes() - before;
  };
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
  UserControl1 line(place.workplace(), place.global(), 0);
  line.setLinie(1);
  line.Init(place.competition());
  const int before = commitsInLog(place.competition());
  constexpr int kShots = 100;
  for (int i = 0; i < kShots; ++i) {
    report(place.exchangeFolder(), record(nextShot()));
    tick(line);
  }
  return static_cast<double>(commitsInLog(place.competition()) - before) / kShots;
}

using namespace std::placeholders;

const Registered shot{Pair{"Ein Schuss", 5.0, "gegen bloßes Lesen, Zerlegen und Einfügen",
                           std::bind(house, _1, 0), std::bind(bare, _1, 0)}};
const Registered shotAmongMany{Pair{"Ein Schuss bei 1.000.000 Zeilen", 5.0,
                                    "gegen bloßes Lesen, Zerlegen und Einfügen",
                                    std::bind(house, _1, kMillion), std::bind(bare, _1, kMillion)}};
const Registered growth{Quotient{"Wachstum eines Schusses", 1.2, "1.000.000 Zeilen gegen keine",
                                 "Ein Schuss bei 1.000.000 Zeilen", "Ein Schuss"}};
const Registered opening{Pair{"Öffnen bei 1.000.000 Zeilen", 1.3, "gegen Öffnen ohne Zeilen",
                              std::bind(open, _1, kMillion), std::bind(open, _1, 0)}};
const Registered memory{Figure{"Speicher beim Öffnen", 2.0, "MB mehr bei 1.000.000 Zeilen", growthOfMemory}};
const Registered commitCount{Figure{"Commits je Schuss", 1.0, "Commits", commitsOfAShot}};

}  // namespace

}  // namespace qk::bench

// What storing a shot on a PostgreSQL server costs, against the bare client that inserts the same row: one
// commit each, durable, on one table of one server; and the same with a million rows in the table.
#include <libpq-fe.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <stdexcept>

#include "app/competition_opening.h"
#include "benchmarks/bench_line.h"
#include "benchmarks/pairs.h"
#include "capture/open_shots.h"
#include "masterdata/making/competition.h"
#include "tests/support/postgres_server.h"

namespace qk::bench {

namespace {

constexpr int kMillion = 1'000'000;
constexpr int kRounds = 1500;

test::PostgresServer& server() {
  static test::PostgresServer running(test::PostgresServer::Storage::Disk);
  return running;
}

/// A competition on the server, with `rows` booked shots, and a connection of the bare client's.
class ServerPlace {
 public:
  explicit ServerPlace(int rows) : store_(server().folder()) {
    const QString path = folder_.filePath("wettkampf.qkk");
    store_.writeAddress(path);
    makeDemoCompetition(path);
    CompetitionOpening opening(place_.workplace(), place_.global());
    if (!opening.setWettkampf(path)) throw std::runtime_error("the competition doesn't open");
    opening.close();
    addBookedShots(rows);
    competition_ = dao::Database::open(path);
    competition_->reserveNumbers("Haering_Daten");
    const QString address = QString("host='%1' port=%2 dbname='%3' user='%4'")
                                .arg(store_.address().endpoints.first().host)
                                .arg(store_.address().endpoints.first().port)
                                .arg(store_.address().database, store_.address().user);
    client_.reset(PQconnectdb(address.toUtf8().constData()));
    prepareInsert();
  }

  Workplace workplace() { return place_.workplace(); }
  dao::Database* competition() { return competition_.get(); }

  /// The row of a shot, in one round trip and one commit.
  bool insert(const HaeringSchuss& shot) {
    const auto text = [](double number) { return QByteArray::number(number, 'g', 17); };
    const std::array<QByteArray, 21> values{shot.WettbewerbBezeichnung.toUtf8(),
                                            shot.KlasseBezeichnung.toUtf8(),
                                            text(shot.OrtStandnummer),
                                            text(shot.LinienNummer),
                                            shot.SchuetzenName.toUtf8(),
                                            shot.ProbeMatch.toUtf8(),
                                            text(shot.Wertung),
                                            text(shot.TrefferNummer),
                                            text(shot.RingMitZehntel),
                                            shot.LagePfeilzeichen.toUtf8(),
                                            text(shot.X),
                                            text(shot.Y),
                                            text(shot.Radius),
                                            text(shot.PHiPosition),
                                            shot.AbsoluteZeit.toUtf8(),
                                            shot.RelativeZeit.toUtf8(),
                                            shot.Datum.toUtf8(),
                                            shot.RegelNummerWettbewerb.toUtf8(),
                                            shot.SchuetzeStartnummer.toUtf8(),
                                            text(shot.dblTeiler),
                                            shot.Key.toUtf8()};
    std::array<const char*, 21> pointers{};
    for (std::size_t i = 0; i < values.size(); ++i) pointers[i] = values[i].constData();
    return succeeded(
        PQexecPrepared(client_.get(), "insert", int(values.size()), pointers.data(), nullptr, nullptr, 0));
  }

 private:
  static bool succeeded(PGresult* result) {
    const bool good = PQresultStatus(result) == PGRES_COMMAND_OK;
    PQclear(result);
    return good;
  }

  void prepareInsert() {
    const QString sequence =
        store_.native("SELECT pg_get_serial_sequence('dao.\"Haering_Daten\"', 'ID')").value(0);
    const QString text =
        "INSERT INTO dao.\"Haering_Daten\" (\"ID\", \"WettbewerbBezeichnung\", \"KlasseBezeichnung\", "
        "\"StandnummerOrt\", \"Liniennummer\", \"Schütze\", \"ProbeMatch\", \"Wertung\", \"Treffernummer\", "
        "\"RingwertmitZehntel\", \"Lagepfeil\", \"X\", \"Y\", \"Radius\", \"Winkel\", \"ZeitAbsolut\", "
        "\"ZeitRelativ\", \"Datum\", \"Wettbewerb\", \"Startnummer\", \"Teiler\", \"Key\", \"Klasse\", "
        "\"Waffe\", "
        "\"Teilerfaktor\", \"Verbucht\", \"Verworfen\", \"BuchungsZeitpunkt\") VALUES (nextval('" +
        sequence +
        "'), $1, $2, $3, $4, $5, $6, $7, $8, $9, $10, $11, $12, $13, $14, $15, $16, $17, $18, $19, $20, $21, "
        "'', "
        "'LG', 1, 0, 0, '1899-12-30 00:00:00')";
    if (!succeeded(PQprepare(client_.get(), "insert", text.toUtf8().constData(), 0, nullptr)))
      throw std::runtime_error(PQerrorMessage(client_.get()));
  }

  void addBookedShots(int rows) {
    if (rows == 0) return;
    store_.native(
        QString("INSERT INTO dao.\"Haering_Daten\" (\"ID\", \"WettbewerbBezeichnung\", \"Liniennummer\", "
                "\"Treffernummer\", \"RingwertmitZehntel\", \"X\", \"Y\", \"Radius\", \"ZeitAbsolut\", "
                "\"Datum\", "
                "\"Wettbewerb\", \"Startnummer\", \"Waffe\", \"Teiler\", \"Teilerfaktor\", \"Key\", "
                "\"Verbucht\", "
                "\"Verworfen\", \"BuchungsZeitpunkt\") SELECT i, 'LG Auflage', 1 + i % 24, i % 1000, 9.7, i "
                "% 500, i % "
                "400, 12.3, '10:41:07', '20.11.2026', '1.10', '107', 'LG', 12.3, 1, 'alt-' || i, -1, 0, "
                "'2026-11-20 "
                "10:41:07' FROM generate_series(1, ") +
        QString::number(rows) + ") AS i");
    store_.native("SELECT setval(pg_get_serial_sequence('dao.\"Haering_Daten\"', 'ID'), " +
                  QString::number(rows) + ")");
    store_.native("VACUUM ANALYZE");
    store_.native("CHECKPOINT");
  }

  QTemporaryDir folder_;
  BenchPlace place_;
  test::ServerDatabase store_;
  std::unique_ptr<dao::Database> competition_;
  std::unique_ptr<PGconn, void (*)(PGconn*)> client_{nullptr, PQfinish};
};

ServerPlace& placeOf(int rows) {
  static ServerPlace empty(0);
  if (rows == 0) return empty;
  static ServerPlace full(kMillion);
  return full;
}

HaeringSchuss shot() {
  static int n = 0;
  ++n;
  HaeringSchuss shot;
  shot.WettbewerbBezeichnung = "LG Auflage";
  shot.KlasseBezeichnung = "Senioren I";
  shot.OrtStandnummer = shot.LinienNummer = 1;
  shot.SchuetzenName = "Müller, Jürgen";
  shot.ProbeMatch = "M";
  shot.TrefferNummer = qint16(n % 1000);
  shot.RingMitZehntel = 9.7;
  shot.LagePfeilzeichen = "q";
  shot.X = 123.5;
  shot.Y = -87;
  shot.Radius = 151.1;
  shot.PHiPosition = 324.8;
  shot.AbsoluteZeit = "10:41:07";
  shot.RelativeZeit = "00:03:12";
  shot.Datum = "20.11.2026";
  shot.RegelNummerWettbewerb = "1.10";
  shot.SchuetzeStartnummer = "107";
  shot.sWaffe = "LG";
  shot.dblTeiler = 151.1;
  shot.dblTeilerFaktor = 1;
  shot.Key = QString("LG-%1").arg(n);
  return shot;
}

double median(std::vector<qint64> times) {
  std::sort(times.begin(), times.end());
  return static_cast<double>(times[times.size() / 2]);
}

/// Times on the wall, for the server's work counts too. A disk has better and worse seconds: house and bare
/// client take turns shot by shot, so that each meets the same ones.
struct Times {
  double house = 0, bare = 0, houseAmongMany = 0, bareAmongMany = 0;
};

const Times& times() {
  static const Times measured = [] {
    std::array<std::vector<qint64>, 4> all;
    const auto take = [](std::vector<qint64>& times, const auto& store) {
      QElapsedTimer timer;
      timer.start();
      if (!store()) throw std::runtime_error("the shot isn't stored");
      times.push_back(timer.nsecsElapsed());
    };
    const std::array<ServerPlace*, 2> places{&placeOf(0), &placeOf(kMillion)};
    for (int round = 0; round < kRounds; ++round)
      for (std::size_t i = 0; i < places.size(); ++i) {
        ServerPlace& place = *places[i];
        take(all[2 * i], [&] {
          HaeringSchuss fired = shot();
          return SpeichereHaeringSchuss(place.workplace(), place.competition(), fired);
        });
        take(all[2 * i + 1], [&] { return place.insert(shot()); });
      }
    return Times{median(all[0]), median(all[1]), median(all[2]), median(all[3])};
  }();
  return measured;
}

const Registered onServer{Figure{"Ein Schuss auf dem Server", 1.5, "gegen bloßes Einfügen derselben Zeile",
                                 [] { return times().house / times().bare; }}};
const Registered amongMany{Figure{"Server bei 1.000.000 Zeilen", 1.5, "gegen bloßes Einfügen derselben Zeile",
                                  [] { return times().houseAmongMany / times().bareAmongMany; }}};
const Registered growth{Figure{"Wachstum auf dem Server", 1.2, "1.000.000 Zeilen gegen keine",
                               [] { return times().houseAmongMany / times().house; }}};

}  // namespace

}  // namespace qk::bench

#include "benchmarks/server_place.h"

#include <libpq-fe.h>

#include <QDir>
#include <QFile>
#include <array>
#include <charconv>
#include <stdexcept>

#include "app/competition_opening.h"
#include "capture/open_shots.h"
#include "masterdata/making/competition.h"

namespace qk::bench {

namespace {

using test::PostgresServer;

const QString& serverOf(PostgresServer::Storage storage) {
  if (storage == PostgresServer::Storage::Memory) {
    static const PostgresServer inMemory(PostgresServer::Storage::Memory);
    return inMemory.folder();
  }
  static const PostgresServer onDisk(PostgresServer::Storage::Disk);
  return onDisk.folder();
}

}  // namespace

HaeringSchuss nextServerShot() {
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

ServerPlace::ServerPlace(PostgresServer::Storage storage, int rows) : store_(serverOf(storage)) {
  QDir(folder()).mkpath("daten");
  store_.writeAddress(competition());
  makeDemoCompetition(competition());
  BenchPlace place(OnFolder{folder()});
  CompetitionOpening opening(place.workplace(), place.global());
  if (!opening.setWettkampf(competition())) throw std::runtime_error("the competition doesn't open");
  opening.close();
  addBookedShots(rows);
}

QString ServerPlace::competition() const {
  return folder_.filePath("wettkampf.qkk");
}

QString ServerPlace::addressThrough(const QString& server) const {
  const QString path = folder_.filePath("umweg.qkk");
  dao::ServerAddress address = store_.address();
  address.endpoints = {{server}};
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(dao::serverAddressText(address)) < 0)
    throw std::runtime_error("can't write " + path.toStdString());
  return path;
}

void ServerPlace::addBookedShots(int rows) {
  if (rows == 0) return;
  store_.native(
      QString("INSERT INTO dao.\"Haering_Daten\" (\"ID\", \"WettbewerbBezeichnung\", \"Liniennummer\", "
              "\"Treffernummer\", \"RingwertmitZehntel\", \"X\", \"Y\", \"Radius\", \"ZeitAbsolut\", "
              "\"Datum\", \"Wettbewerb\", \"Startnummer\", \"Waffe\", \"Teiler\", \"Teilerfaktor\", \"Key\", "
              "\"Verbucht\", \"Verworfen\", \"BuchungsZeitpunkt\") "
              "SELECT i, 'LG Auflage', 1 + i % 24, i % 1000, 9.7, i % 500, i % 400, 12.3, '10:41:07', "
              "'20.11.2026', '1.10', '107', 'LG', 12.3, 1, 'alt-' || i, -1, 0, '2026-11-20 10:41:07' "
              "FROM generate_series(1, ") +
      QString::number(rows) + ") AS i");
  store_.native("SELECT setval(pg_get_serial_sequence('dao.\"Haering_Daten\"', 'ID'), " +
                QString::number(rows) + ")");
  store_.native("VACUUM ANALYZE");
  store_.native("CHECKPOINT");
}

ServerHouse::ServerHouse(const QString& folder, const QString& competition)
    : place_(OnFolder{folder}), competition_(dao::Database::open(competition)) {
  competition_->reserveNumbers("Haering_Daten");
}

void ServerHouse::store(HaeringSchuss shot) {
  if (!SpeichereHaeringSchuss(place_.workplace(), competition_.get(), shot))
    throw std::runtime_error("the shot isn't stored");
}

BareClient::BareClient(const dao::ServerAddress& address) : connection_(nullptr, PQfinish) {
  const dao::ServerEndpoint& endpoint = address.endpoints.first();
  connection_.reset(PQconnectdb(QString("host='%1' port=%2 dbname='%3' user='%4'")
                                    .arg(endpoint.host)
                                    .arg(endpoint.port)
                                    .arg(address.database, address.user)
                                    .toUtf8()
                                    .constData()));
  const QByteArray text =
      "INSERT INTO dao.\"Haering_Daten\" (\"ID\", \"WettbewerbBezeichnung\", \"KlasseBezeichnung\", "
      "\"StandnummerOrt\", \"Liniennummer\", \"Schütze\", \"ProbeMatch\", \"Wertung\", \"Treffernummer\", "
      "\"RingwertmitZehntel\", \"Lagepfeil\", \"X\", \"Y\", \"Radius\", \"Winkel\", \"ZeitAbsolut\", "
      "\"ZeitRelativ\", \"Datum\", \"Wettbewerb\", \"Startnummer\", \"Teiler\", \"Key\", \"Klasse\", "
      "\"Waffe\", \"Teilerfaktor\", \"Verbucht\", \"Verworfen\", \"BuchungsZeitpunkt\") "
      "VALUES (nextval('" +
      sequence() +
      "'), $1, $2, $3, $4, $5, $6, $7, $8, $9, $10, $11, $12, $13, $14, $15, $16, $17, $18, $19, $20, $21, "
      "'', 'LG', 1, 0, 0, '1899-12-30 00:00:00')";
  require(PQprepare(connection_.get(), "insert", text.constData(), 0, nullptr), PGRES_COMMAND_OK);
}

void BareClient::require(pg_result* result, int status) const {
  const bool good = PQresultStatus(result) == status;
  PQclear(result);
  if (!good) throw std::runtime_error(PQerrorMessage(connection_.get()));
}

QByteArray BareClient::sequence() const {
  PGresult* result =
      PQexec(connection_.get(), "SELECT pg_get_serial_sequence('dao.\"Haering_Daten\"', 'ID')");
  const QByteArray name = PQntuples(result) == 1 ? QByteArray(PQgetvalue(result, 0, 0)) : QByteArray();
  require(result, PGRES_TUPLES_OK);
  return name;
}

void BareClient::insert(const HaeringSchuss& shot) {
  const auto text = [](double number) {
    std::array<char, 32> digits{};
    return QByteArray(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr - digits.data());
  };
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
  require(
      PQexecPrepared(connection_.get(), "insert", int(values.size()), pointers.data(), nullptr, nullptr, 0),
      PGRES_COMMAND_OK);
}

}  // namespace qk::bench

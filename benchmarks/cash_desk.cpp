// What the cash desk costs: booking 20 stakes, and opening it and changing the shooter with 50,000 payments
// in the table, each against the same statements on SQLite's own interface. Without the window: a bare store
// has none.
#include <sqlite3.h>

#include <vector>

#include "benchmarks/bench_line.h"
#include "benchmarks/long_list.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "cash/booking.h"
#include "cash/cash_desk.h"
#include "masterdata/making/competition.h"
#include "tests/support/test_workplace.h"

namespace qk::bench {
namespace {

constexpr int kShooters = 5'000;
constexpr int kPayments = 50'000;
constexpr int kStakes = 20;

/// A competition of 5,000 shooters in 200 clubs and 500 teams, with 50,000 payments.
class Competition {
 public:
  Competition() : path_(madeStore("kasse", make)) {
    global_.sWettkampf = path_;
    global_.RefDatum = QDate(2026, 1, 1);
  }
  const QString& path() const { return path_; }
  GlobalVariablen& global() { return global_; }
  Workplace workplace() { return place_.workplace(); }

 private:
  static void make(const QString& path) {
    makeCompetition(path, {});
    fillNatively(
        path,
        QString(
            "INSERT INTO \"Schützenklassen\" (ID, Klasse, KZ, \"Alter von\", \"Alter bis\", Geschlecht) "
            "VALUES (7, 'Herren', 'H', 0, 99, 0);"
            "%numbers(200) INSERT INTO Verein (ID, Name, Kurzname) SELECT i, 'Verein ' || i, 'V' || i FROM n;"
            "%numbers(500) INSERT INTO Mannschaften (ID, MannName, VereinID) "
            "SELECT i, 'Mannschaft ' || i, i % 200 + 1 FROM n;"
            "%numbers(%1) INSERT INTO \"Schützen\" (ID, Startnummer, Name, Gebdat, Geschlecht, VereinsID, "
            "lMannID, KlassenID) SELECT i, '' || i, 'Schütze ' || i, '04.03.1980', 'M', i % 200 + 1, "
            "i % 500 + 1, 7 FROM n;"
            "%numbers(%1) INSERT INTO Schuetzen_SPO_Anmeldungen (SchuetzeID, SPOID, MannID) "
            "SELECT i, 1, i % 500 + 1 FROM n;"
            "INSERT INTO MeldeDisziplin (ID, MeldeDisziplin) VALUES (1, 'LG');"
            "%numbers(20) INSERT INTO Kasse_Verwaltung (ID, Platz, Bezeichnung, Betrag, Nachkauf, Verein) "
            "SELECT i, i, 'Einlage ' || i, i, 0, 0 FROM n;"
            "INSERT INTO Kasse_Verwaltung (ID, Platz, Bezeichnung, Betrag, Nachkauf, Verein) "
            "VALUES (30, 1, 'Vereinsbeitrag', 50, 0, -1);"
            "%numbers(%2) INSERT INTO Kasse_Eingang (Startnummer, KasseID, Offen, Betrag, DatumEingang) "
            "SELECT '' || (i % %1 + 1), i % 20 + 1, -(i % 2), i % 50, '2026-11-20 10:00:00' FROM n;"
            "%numbers(1000) INSERT INTO Kasse_Eingang (KasseID, Offen, Betrag, VereinID, MannID) "
            "SELECT 30, 0, 50, i % 200 + 1, i % 500 + 1 FROM n")
            .arg(kShooters)
            .arg(kPayments));
  }

  test::TestWorkplace place_{[](const QString& problem) { failBench(problem); }};
  QString path_;
  GlobalVariablen global_;
};

/// SQLite's own interface.
class Bare {
 public:
  explicit Bare(const QString& path) {
    if (sqlite3_open(path.toUtf8().constData(), &raw_) != SQLITE_OK) failBench("the file doesn't open");
    sqlite3_exec(raw_, "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
  }
  ~Bare() {
    for (sqlite3_stmt* statement : prepared_) sqlite3_finalize(statement);
    sqlite3_close(raw_);
  }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  sqlite3_stmt* prepare(const char* text) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(raw_, text, -1, &statement, nullptr) != SQLITE_OK) failBench(sqlite3_errmsg(raw_));
    prepared_.push_back(statement);
    return statement;
  }
  /// Reads every value of every row; how many rows.
  int read(const char* text, const QString& value = {}) {
    sqlite3_stmt* statement = prepare(text);
    if (!value.isEmpty()) sqlite3_bind_text(statement, 1, value.toUtf8().constData(), -1, SQLITE_TRANSIENT);
    int rows = 0;
    for (; sqlite3_step(statement) == SQLITE_ROW; ++rows)
      for (int column = 0; column < sqlite3_column_count(statement); ++column)
        values_ +=
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column))).size();
    sqlite3_reset(statement);
    return rows;
  }
  void run(sqlite3_stmt* statement) {
    if (sqlite3_step(statement) != SQLITE_DONE) failBench(sqlite3_errmsg(raw_));
    sqlite3_reset(statement);
  }

 private:
  sqlite3* raw_ = nullptr;
  std::vector<sqlite3_stmt*> prepared_;
  qsizetype values_ = 0;
};

void book(Rounds& rounds) {
  Competition competition;
  CashDesk desk(competition.workplace(), competition.global());
  desk.UpdateStartNr("107", {}, {});
  for (int stake = 1; stake <= kStakes; ++stake) desk.purchase().AddKauf(stake);
  while (rounds.next()) {
    const BookingOutcome outcome =
        verbuche(competition.workplace(), desk.store(), desk.purchase(), desk.sStartNr(), {});
    if (outcome.gespeichert != kStakes) rounds.fail("not booked");
  }
}

void insertBare(Rounds& rounds) {
  Competition competition;
  Bare store(competition.path());
  sqlite3_stmt* insert = store.prepare(
      "INSERT INTO Kasse_Eingang (Startnummer, KasseID, Offen, Betrag, DatumEingang, Gruppe) "
      "VALUES ('107', ?, '0', ?, '2026-11-20 10:00:00', '')");
  while (rounds.next())
    for (int stake = 1; stake <= kStakes; ++stake) {
      sqlite3_bind_int(insert, 1, stake);
      sqlite3_bind_double(insert, 2, stake);
      store.run(insert);
    }
}

void open(Rounds& rounds) {
  Competition competition;
  while (rounds.next()) {
    CashDesk desk(competition.workplace(), competition.global());
    desk.UpdateStartNr("107", "V108", "Mannschaft 108");
    for (const char* number : {"2000", "4999"}) desk.wechsleSchuetzen(number);
    if (desk.payments().flexAll().rows() != 1 + kPayments / kShooters) rounds.fail("not shown");
  }
}

const char* const kList =
    "SELECT s.*, v.Kurzname, v.Name, m.MannName, k.Klasse, k.KZ FROM \"Schützen\" s "
    "LEFT JOIN Verein v ON s.VereinsID = v.ID LEFT JOIN Mannschaften m ON s.lMannID = m.ID "
    "LEFT JOIN \"Schützenklassen\" k ON s.KlassenID = k.ID";

/// The statements of one shooter; the class is looked up on connections of its own.
int readShooter(Bare& store, const QString& path, const QString& number) {
  store.read((std::string(kList) + " WHERE s.Startnummer = ?").c_str(), number);
  store.read(
      "SELECT a.*, d.MeldeDisziplin, d.MeldeKZ, m.MannName FROM Schuetzen_SPO_Anmeldungen a INNER JOIN "
      "MeldeDisziplin d ON a.SPOID = d.ID LEFT JOIN Mannschaften m ON a.MannID = m.ID WHERE SchuetzeID = "
      "CAST(? AS INTEGER)",
      number);
  Bare forClasses(path), forShooter(path), forId(path);
  forShooter.read("SELECT * FROM \"Schützen\" WHERE Startnummer = ?", number);
  forId.read("SELECT * FROM \"Schützenklassen\" ORDER BY \"Alter von\"");
  forId.read("SELECT * FROM Klassenwechsel");
  forClasses.read("SELECT * FROM \"Schützenklassen\" WHERE ID = 7");
  store.read("SELECT * FROM Kasse_Verwaltung WHERE Verein = -1");
  const QString club = QString::number(number.toInt() % 200 + 1),
                team = QString::number(number.toInt() % 500 + 1);
  store.read("SELECT * FROM Kasse_Eingang WHERE VereinID = CAST(? AS INTEGER)", club);
  store.read("SELECT * FROM Kasse_Eingang WHERE MannID = CAST(? AS INTEGER)", team);
  store.read(
      "SELECT a.SchuetzeID, a.MannID, e.Betrag, e.Offen, m.MannName FROM Schuetzen_SPO_Anmeldungen a LEFT "
      "JOIN "
      "Kasse_Eingang e ON a.MannID = e.MannID INNER JOIN Mannschaften m ON a.MannID = m.ID WHERE "
      "a.SchuetzeID = "
      "CAST(? AS INTEGER) AND a.MannID > 0 ORDER BY a.MannID",
      number);
  const int rows = store.read("SELECT * FROM Kasse_Eingang WHERE Startnummer = ?", number);
  for (int row = 0; row < rows; ++row)
    store.read("SELECT * FROM Kasse_Verwaltung WHERE Verein = 0 AND ID = CAST(? AS INTEGER)",
               QString::number(row + 1));
  return rows;
}

void readBare(Rounds& rounds) {
  Competition competition;
  while (rounds.next()) {
    Bare store(competition.path());
    store.read(kList);
    store.read("SELECT * FROM Kasse_Verwaltung WHERE Verein = 0 ORDER BY Platz");
    int rows = readShooter(store, competition.path(), "107");
    for (const char* number : {"2000", "4999"}) {
      store.read("SELECT * FROM \"Schützen\" WHERE Startnummer = ?", number);
      store.read("SELECT * FROM Verein WHERE ID = 1");
      store.read("SELECT * FROM Mannschaften WHERE ID = 1");
      rows = readShooter(store, competition.path(), number);
    }
    if (rows != kPayments / kShooters) rounds.fail("not read");
  }
}

const Registered registered[] = {
    Registered{Pair{"Kasse: 20 Einlagen verbuchen", 1.43, "gegen bloßes Einfügen derselben Zeilen", book,
                    insertBare, 5}},
    Registered{Pair{"Kasse öffnen, zweimal wechseln, 50.000 Eingänge", 1.4,
                    "gegen dieselben Anweisungen bloß", open, readBare, 2}}};

}  // namespace
}  // namespace qk::bench

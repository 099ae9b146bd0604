// What a quick evaluation costs with a million results in the competition: against SQLite's own interface
// doing the same, against the same sheet where there is nobody else's result, and the alignment of results
// with shooters where nothing is to be aligned, against the bare look for it.
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <string>

#include "benchmarks/long_list.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "evaluation/evaluation_tables.h"
#include "evaluation/quick_evaluation.h"
#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/runtime/clock.h"
#include "tests/support/test_workplace.h"

namespace qk::bench {
namespace {

constexpr int kShooters = 5'000;
constexpr int kOwn = 20;  // of the shooter's results, in either table

/// Nobody looks at the sheet: the report control has a benchmark of its own.
class NoSheet : public ReportDoor {
 public:
  bool run(const ReportOrder&) override { return ++sheets > 0; }
  int sheets = 0;
};

/// One for all competitions here: it sets the program's folders.
class Place {
 public:
  Place() {
    QDir().mkpath(system());
    if (!QFile::copy(QStringLiteral(QK_BIN_FOLDER "/System/ergschdruck.mdb"), printTemplate()))
      failBench("no template");
  }
  QString system() const { return tests.path("programm/System/"); }
  QString printTemplate() const { return system() + "ergschdruck.mdb"; }

  test::TestWorkplace tests{[](const QString& problem) { failBench(problem); }};
};

Place& place() {
  static Place made;
  return made;
}

class Competition {
 public:
  /// `nOthers`: results of other shooters, half of them in either table.
  explicit Competition(int nOthers)
      : path_(
            madeStore(QString("pokal-%1").arg(nOthers), [=](const QString& path) { make(path, nOthers); })) {}

  const QString& path() const { return path_; }

 private:
  static void make(const QString& path, int nOthers) {
    makeCompetition(path, {});
    const QString result =
        "%numbers(%1) INSERT INTO %2 (Startnummer, DisziID, Ergebnis, WTyp, KlassenID, MannID, VorMannID, "
        "Datum) "
        "SELECT '' || %3, %4, 90 + i % 10, 'LG', 7, %3 % 200 + 1, %3 % 500 + 1, '20.11.2026 10:00:00' FROM "
        "n;";
    QString statements =
        QString(
            "INSERT INTO \"Schützenklassen\" (ID, Klasse) VALUES (7, 'Herren');"
            "%numbers(200) INSERT INTO Verein (ID, Name) SELECT i, 'Verein ' || i FROM n;"
            "%numbers(500) INSERT INTO Mannschaften (ID, MannName) SELECT i, 'Mannschaft ' || i FROM n;"
            "%numbers(%1) INSERT INTO \"Schützen\" (ID, Startnummer, Name, VereinsID, lMannID, KlassenID) "
            "SELECT i, '' || i, 'Schütze ' || i, i % 200 + 1, i % 500 + 1, 7 FROM n;"
            "INSERT INTO Disziplin (ID, Name, Teiler) VALUES (1, 'LG Teiler', -1), (2, 'LG Serie', 0);"
            "INSERT INTO AuswertProfil (ID, Name, Typ, Anzahl, nShowKurzAuswertung) "
            "VALUES (1, 'Pokal', 0, 3, -1);"
            "INSERT INTO AwProfilDiszi (AwProfilID, DisziID) VALUES (1, 1), (1, 2);")
            .arg(kShooters);
    for (const auto& [table, discipline] : {std::pair("Schuss", "1"), std::pair("SchussSerien", "2")}) {
      statements += QString(result).arg(QString::number(kOwn), table, "107", discipline);
      if (nOthers > 0)
        statements += QString(result).arg(QString::number(nOthers / 2), table, QString("(1000 + i % 4000)"),
                                          discipline);
    }
    fillNatively(path, statements);
  }

  QString path_;
};

enum class Alignment { Done, TurnedOff };

void evaluate(Rounds& rounds, const Competition& competition, Alignment alignment) {
  const QString noUpdate = place().tests.path("programm/NoUpdate.txt");
  if (alignment == Alignment::TurnedOff)
    place().tests.files.write(noUpdate, {});
  else
    QFile::remove(noUpdate);
  SystemRandom random;
  test::TestWorkplace& tests = place().tests;
  const Workplace workplace{tests.clock, random, tests.waits, tests.files, tests.settings, tests.dialogs};
  const auto wettkampf = dao::Database::open(competition.path());
  NoSheet reports;
  const Auswertungsplatz platz{workplace, *wettkampf, reports, place().system()};
  while (rounds.next())
    if (!druckeProfilauswertung(platz, "107", ReportOrder::Ziel::Fenster)) rounds.fail("no sheet");
}

constexpr int kMillion = 1'000'000;

Competition& full() {
  static Competition made(kMillion);
  return made;
}

void sheetOfAMillion(Rounds& rounds) {
  evaluate(rounds, full(), Alignment::Done);
}

template <int nOthers>
void sheetWithoutAlignment(Rounds& rounds) {
  static Competition competition(nOthers);
  evaluate(rounds, competition, Alignment::TurnedOff);
}

/// SQLite's own interface.
class Bare {
 public:
  explicit Bare(const QString& path, const char* settings) {
    if (sqlite3_open(path.toUtf8().constData(), &raw_) != SQLITE_OK) failBench("the file doesn't open");
    run(settings);
  }
  ~Bare() { sqlite3_close(raw_); }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  /// Reads every value of every row.
  void run(const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    const char* rest = text.c_str();
    while (*rest) {
      if (sqlite3_prepare_v2(raw_, rest, -1, &statement, &rest) != SQLITE_OK) failBench(sqlite3_errmsg(raw_));
      int step = SQLITE_DONE;
      while (statement && (step = sqlite3_step(statement)) == SQLITE_ROW)
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
          bytes_ += sqlite3_column_bytes(statement, column);
      if (step != SQLITE_DONE) failBench(sqlite3_errmsg(raw_));
      sqlite3_finalize(statement);
    }
  }

 private:
  sqlite3* raw_ = nullptr;
  qint64 bytes_ = 0;
};

const char* const kDurable = "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL";
const char* const kThrownAway = "PRAGMA journal_mode = WAL; PRAGMA synchronous = OFF";

std::string differs(const std::string& table) {
  return "(" + table + ".KlassenID IS NOT s.KlassenID OR " + table + ".MannID IS NOT s.VereinsID OR " +
         table + ".VorMannID IS NOT s.lMannID)";
}

std::string alignment(const std::string& table) {
  return "UPDATE " + table +
         " SET KlassenID = s.KlassenID, MannID = s.VereinsID, VorMannID = s.lMannID FROM \"Schützen\" s "
         "WHERE " +
         table + ".Startnummer = s.Startnummer AND " + differs(table) + ";";
}

std::string look(const std::string& table) {
  return "SELECT count(*) FROM " + table + " INNER JOIN \"Schützen\" s ON " + table +
         ".Startnummer = s.Startnummer WHERE " + differs(table) + ";";
}

/// The told statements one by one, their rows read and written, and nothing else.
void sheetBare(Rounds& rounds) {
  Bare store(full().path(), kDurable);
  while (rounds.next()) {
    store.run(alignment("Schuss") + alignment("SchussSerien"));
    const QString copy = place().tests.path("temp/bare.tmp");
    if (!QFile::copy(place().printTemplate(), copy)) failBench("no copy");
    {
      Bare print(copy, kThrownAway);
      store.run(
          "SELECT * FROM AuswertProfil a INNER JOIN AwProfilDiszi d ON a.ID = d.AwProfilID INNER JOIN "
          "Disziplin x "
          "ON d.DisziID = x.ID WHERE a.nShowKurzAuswertung <> 0;"
          "SELECT * FROM Schuss WHERE Startnummer = '107'; SELECT * FROM SchussSerien WHERE Startnummer = "
          "'107';"
          "SELECT * FROM \"Schützen\" WHERE Startnummer = '107'; SELECT * FROM Wettkampf");
      print.run("CREATE TABLE Profile (AwProfilID, DisziID); INSERT INTO Profile VALUES (1, 1), (1, 2)");
      for (int i = 0; i < 2 * kOwn; ++i)
        print.run("INSERT INTO EinzelErgebnisse (Startnummer, Ergebnis) VALUES ('107', 9)");
      print.run(
          "INSERT INTO Ergebnisse (E1) VALUES (1); INSERT INTO Ergebnisse (E1) VALUES (1);"
          "INSERT INTO \"Schütze\" (Startnummer) VALUES ('107'); UPDATE Wettkampf SET Bez1 = 'x'");
    }
    for (const char* end : {"", "-wal", "-shm"}) QFile::remove(copy + end);
  }
}

void alignMillion(Rounds& rounds) {
  const auto wettkampf = dao::Database::open(full().path());
  while (rounds.next())
    for (const QString& statement : abgleichAnweisungen())
      if (wettkampf->execute(statement) != 0) rounds.fail("something was written");
}

void lookAtAMillion(Rounds& rounds) {
  Bare store(full().path(), kDurable);
  while (rounds.next()) store.run(look("Schuss") + look("SchussSerien"));
}

const Registered sheet{Pair{"Bogen bei 1.000.000 Ergebnissen", 1.25, "gegen dieselben Anweisungen bloß",
                            sheetOfAMillion, sheetBare, 1}};
const Registered calm{Pair{"Bogen ohne Angleichen", 1.1,
                           "bei 1.000.000 Ergebnissen gegen nur die des Schützen",
                           sheetWithoutAlignment<kMillion>, sheetWithoutAlignment<0>, 5}};
const Registered aligned{Pair{"Angleichen, nichts zu schreiben", 1.25,
                              "bei 1.000.000 Ergebnissen gegen das bloße Nachsehen", alignMillion,
                              lookAtAMillion, 1}};

}  // namespace
}  // namespace qk::bench

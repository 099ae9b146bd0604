// A list over 50,000 payments: the first page, and the whole as PDF, against SQLite's own interface reading
// the rows of the same query.
#include <malloc.h>
#include <sqlite3.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "benchmarks/long_list.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "platform/dao/sqlite/sqlite_functions.h"
#include "platform/report/document.h"
#include "platform/report/parser.h"
#include "tests/data/paid_competition.h"

namespace qk::bench {
namespace {

constexpr int kShooters = 5000, kPayments = 50'000;

const char* const kReport = R"(Bericht "Alle Buchungen"
Seitenkopf
  Text 0 0 * 6 "Alle Buchungen" fett
Seitenfuß
  Text 0 0 * 5 "Seite {Seite} von {Seiten}" rechts
Abfrage
  SELECT Kasse_Eingang.ID AS Nummer, Kasse_Eingang.Startnummer AS Startnummer, Schützen.Name AS Wer,
  Kasse_Verwaltung.Bezeichnung AS Einlage, Kasse_Eingang.DatumEingang AS Datum, Kasse_Eingang.Betrag AS Betrag
  FROM Kasse_Eingang LEFT JOIN Schützen ON Kasse_Eingang.Startnummer = Schützen.Startnummer
  LEFT JOIN Kasse_Verwaltung ON Kasse_Eingang.KasseID = Kasse_Verwaltung.ID
  ORDER BY Wer, Nummer
Spalten
  "Nr."      Nummer       20
  "Startnr." Startnummer  20
  "Name"     Wer          *
  "Einlage"  Einlage      40
  "Datum"    Datum        24 Datum
  "Betrag"   Betrag       28 Währung Summe
  Gesamt "Gesamt"
)";

/// The same rows in the same order.
const char* const kBare =
    "SELECT k.ID, k.Startnummer, s.Name, v.Bezeichnung, k.DatumEingang, k.Betrag FROM Kasse_Eingang k LEFT "
    "JOIN "
    "\"Schützen\" s ON k.Startnummer = s.Startnummer LEFT JOIN Kasse_Verwaltung v ON k.KasseID = v.ID ORDER "
    "BY "
    "s.Name COLLATE german, k.ID";

QString competition() {
  return madeStore("buchungen",
                   [](const QString& path) { test::makePaidCompetition(path, kShooters, kPayments); });
}

std::unique_ptr<report::Document> opened() {
  report::Input input;
  input.dataFile = competition();
  return std::make_unique<report::Document>(report::parseReport(kReport, "buchungen.rpt"), input);
}

class Bare {
 public:
  Bare() {
    check(sqlite3_open_v2(competition().toUtf8().constData(), &raw_, SQLITE_OPEN_READONLY, nullptr));
    dao::sql::registerSqliteFunctions(raw_);
  }
  ~Bare() { sqlite3_close(raw_); }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  void readAll() {
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v2(raw_, kBare, -1, &statement, nullptr));
    int rows = 0;
    qsizetype size = 0;
    for (; sqlite3_step(statement) == SQLITE_ROW; ++rows)
      for (int column = 0; column < sqlite3_column_count(statement); ++column) {
        keep(sqlite3_column_text(statement, column));
        size += sqlite3_column_bytes(statement, column);
      }
    sqlite3_finalize(statement);
    if (rows != kPayments || size == 0) failBench("Die Abfrage gibt nicht alle Zeilen");
  }

 private:
  void check(int code) {
    if (code != SQLITE_OK) failBench(QString::fromUtf8(sqlite3_errmsg(raw_)));
  }
  sqlite3* raw_ = nullptr;
};

void bareReads(Rounds& rounds) {
  Bare bare;
  while (rounds.next()) bare.readAll();
}

void houseShowsFirst(Rounds& rounds) {
  competition();
  while (rounds.next()) {
    const auto document = opened();
    if (!document->waitForPage(0)) failBench("Die erste Seite fehlt");
    keep(document->page(0));
  }
}

void writeWhole(QIODevice& device) {
  const auto document = opened();
  if (!document->writePdf(device, "Buchungen") || document->pageCount() < 500) failBench("Es fehlen Seiten");
}

void houseWritesAll(Rounds& rounds) {
  competition();
  while (rounds.next()) {
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    writeWhole(pdf);
  }
}

/// The most that the process has held so far, in kilobytes.
qint64 peakKilobytes() {
  QFile status("/proc/self/status");
  if (!status.open(QIODevice::ReadOnly)) failBench(status.errorString());
  for (const QByteArray& line : status.readAll().split('\n'))
    if (line.startsWith("VmHWM:")) return line.simplified().split(' ')[1].toLongLong();
  failBench("VmHWM fehlt");
}

void resetPeak() {
  QFile refs("/proc/self/clear_refs");
  if (!refs.open(QIODevice::WriteOnly) || refs.write("5") != 1) failBench(refs.errorString());
}

/// Megabytes that the whole PDF takes more than a report of few rows.
double memory() {
  opened()->waitForPage(0);
  malloc_trim(0);  // what earlier benchmarks have given back counts for nobody
  resetPeak();
  const qint64 before = peakKilobytes();
  QTemporaryDir folder;
  QFile pdf(folder.filePath("liste.pdf"));
  if (!pdf.open(QIODevice::WriteOnly)) failBench(pdf.errorString());
  writeWhole(pdf);
  return double(peakKilobytes() - before) / 1024;
}

const Registered registered[] = {
    Registered{Pair{"Bericht erste Seite", 0.93, "50.000 Buchungen gegen die bloße Abfrage", houseShowsFirst,
                    bareReads, 3}},
    Registered{Pair{"Bericht ganzes PDF", 4.7, "50.000 Buchungen gegen die bloße Abfrage", houseWritesAll,
                    bareReads, 1}},
    Registered{Figure{"Bericht Speicher", 60, "MB mehr für das ganze PDF", memory}}};

}  // namespace
}  // namespace qk::bench

// The page of the shooters among 200,000 of them, from the act of the operator to the painted page, against
// SQLite's own interface answering the same page into a plain table of the toolkit. Both sides paint the same
// cells.
#include <QApplication>
#include <QLineEdit>

#include "benchmarks/long_list.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "masterdata/making/competition.h"
#include "masterdata/windows/shooter_page.h"
#include "platform/dao/database.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "tests/support/test_workplace.h"

namespace qk::bench {
namespace {

constexpr int kShooters = 200'000;
constexpr int kName = 1;  // column of the list

/// A competition with that many shooters.
QString competition() {
  return madeStore("schuetzenseite", [](const QString& path) {
    makeDemoCompetition(path);
    fillNatively(
        path, QString("%numbers(%1) "
                      "INSERT INTO \"Schützen\" (ID, Startnummer, Name, Vorname, Gebdat, Geschlecht, "
                      "VereinsID, lMannID, KlassenID, AusweisNr) SELECT 1000 + i, '' || (1000 + i), 'Name ' "
                      "|| (i * 7919 % 100003), 'Vorname', '01.01.1990', 'M', i % 6 + 1, i % 8 + 1, i % 14 "
                      "+ 1, 'A' || i FROM n")
                  .arg(kShooters));
  });
}

/// The real page.
class Page {
 public:
  Page()
      : place_([](const QString& problem) { failBench(problem); }),
        database_(dao::Database::open(competition())),
        page_(place_.workplace()) {
    page_.resize(1300, 900);
    page_.show();
    page_.open(*database_);
    waitForPage();
  }

  void show() {
    page_.refresh();
    waitForPage();
  }
  void filter(const QString& text) {
    page_.findChild<QLineEdit*>("filter_Name")->setText(text);
    waitForPage();
  }
  void sort() {
    Q_EMIT grid().titleClicked(kName);
    waitForPage();
  }

 private:
  BoundGrid& grid() { return *page_.findChild<BoundGrid*>("gridSchuetzen"); }
  void waitForPage() { bench::waitForPage(*grid().rows(), grid()); }

  test::TestWorkplace place_;
  std::unique_ptr<dao::Database> database_;
  ShooterPage page_;
};

/// The same page by SQLite alone.
class Bare {
 public:
  void page(const QString& conditions) {
    table_.show(
        "SELECT s.ID, s.Startnummer, s.Name, s.Gebdat, s.Geschlecht, k.Klasse, v.Name, m.MannName, "
        "s.AusweisNr FROM "
        "\"Schützen\" s LEFT JOIN Verein v ON s.VereinsID = v.ID LEFT JOIN Mannschaften m ON s.lMannID = "
        "m.ID LEFT "
        "JOIN \"Schützenklassen\" k ON s.KlassenID = k.ID " +
            conditions,
        1);
  }

 private:
  BareTable table_{competition()};
};

const QString kByNumber = "ORDER BY CAST(s.Startnummer AS REAL), s.ID";

void houseShows(Rounds& rounds) {
  Page page;
  while (rounds.next()) page.show();
}
void bareShows(Rounds& rounds) {
  Bare bare;
  while (rounds.next()) bare.page(kByNumber);
}

const QString kOne = "Name 9999", kOther = "name 8888";

void houseFilters(Rounds& rounds) {
  Page page;
  while (rounds.next()) {
    page.filter(kOne);
    page.filter(kOther);
  }
}
void bareFilters(Rounds& rounds) {
  Bare bare;
  while (rounds.next())
    for (const QString& text : {kOne, kOther})
      bare.page(QString("WHERE s.Name LIKE '%1%' ").arg(text) + kByNumber);
}

void houseSorts(Rounds& rounds) {
  Page page;
  while (rounds.next()) {
    page.sort();
    page.sort();
  }
}
void bareSorts(Rounds& rounds) {
  Bare bare;
  while (rounds.next())
    for (const char* direction : {"ASC", "DESC"})
      bare.page(QString("ORDER BY s.Name COLLATE german %1, s.ID").arg(direction));
}

const Registered registered[] = {
    Registered{Pair{"Schützenseite erste Seite", 1.42, "von 200.000, gegen SQLite in einer Tabelle",
                    houseShows, bareShows, 3}},
    Registered{Pair{"Schützenseite gefiltert", 1.16, "von 200.000, gegen SQLite in einer Tabelle",
                    houseFilters, bareFilters, 1}},
    Registered{Pair{"Schützenseite sortiert", 1.21, "von 200.000, gegen SQLite in einer Tabelle", houseSorts,
                    bareSorts, 1}}};

}  // namespace
}  // namespace qk::bench

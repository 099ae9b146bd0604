// The results editor on a shooter with 10,000 results, from the act of the operator to the painted page,
// against SQLite's own interface answering the same page into a plain table of the toolkit.
#include "app/ground/global_variablen.h"
#include "benchmarks/long_list.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "evaluation/frmSchuetzeErg.h"
#include "masterdata/making/competition.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "tests/support/image_paper.h"
#include "tests/support/test_workplace.h"

namespace qk::bench {
namespace {

constexpr int kResults = 10'000;
/// Of all shooters together.
constexpr int kAllResults = 200'000;

/// A competition in which shooter 107 has copied himself.
QString competition() {
  return madeStore("ergebnisse", [](const QString& path) {
    makeDemoCompetition(path);
    fillNatively(path, QString("DELETE FROM Schuss WHERE Startnummer = '107';"
                               "%numbers(%1) INSERT INTO Schuss (Art, Ergebnis, Startnummer, DisziID, Datum, "
                               "WTyp, SchussXY) SELECT 'T', (i * 7919 % 99991) / 10.0, "
                               "CASE WHEN i % %2 = 0 THEN '107' ELSE '' || (1000 + i % 900) END, "
                               "CASE i % 3 WHEN 0 THEN 6 WHEN 1 THEN 24 ELSE 30 END, "
                               "substr('0' || (1 + i % 28), -2) || '.11.2026 10:41:07', 'LG', '' FROM n")
                           .arg(kAllResults)
                           .arg(kAllResults / kResults));
  });
}

/// The real window.
class Window {
 public:
  Window()
      : place_([](const QString& problem) { failBench(problem); }),
        editor_(place_.workplace(), global_, {paper_, paper_}) {
    editor_.setStartnummer("107");
    editor_.setWettkampf(competition());
    editor_.resize(1300, 700);
    editor_.LoadSchuetzen();
    editor_.LoadErgebnisse();
    editor_.show();
    editor_.resize(1300, 700);
    waitForPage();
  }
  void open() {
    editor_.LoadErgebnisse();
    waitForPage();
  }
  void sort() {
    Q_EMIT grid().titleClicked(0);
    waitForPage();
  }

 private:
  BoundGrid& grid() { return *editor_.findChild<BoundGrid*>("TDBGrid1"); }
  void waitForPage() { bench::waitForPage(*grid().rows(), grid()); }

  test::TestWorkplace place_;
  GlobalVariablen global_;
  test::ImagePaper paper_;
  frmSchuetzeErg editor_;
};

const QString kReading =
    "SELECT Schuss.Ergebnis, Schuss.WTyp, Disziplin.Name, Schuss.Datum, Disziplin.ID, Schuss.ID FROM Schuss "
    "INNER JOIN Disziplin ON Schuss.DisziID = Disziplin.ID WHERE Schuss.Startnummer = '107' ORDER BY ";

void houseOpens(Rounds& rounds) {
  Window window;
  while (rounds.next()) window.open();
}
void bareOpens(Rounds& rounds) {
  BareTable table(competition());
  while (rounds.next()) table.show(kReading + "Disziplin.Name COLLATE german, Schuss.Ergebnis");
}

void houseSorts(Rounds& rounds) {
  Window window;
  while (rounds.next()) {
    window.sort();
    window.sort();
  }
}
void bareSorts(Rounds& rounds) {
  BareTable table(competition());
  while (rounds.next())
    for (const char* direction : {"ASC", "DESC"}) table.show(kReading + "Schuss.Ergebnis " + direction);
}

const Registered registered[] = {
    Registered{Pair{"Ergebnisse eines Schützen", 1.12, "10.000, erste Seite gegen SQLite in einer Tabelle",
                    houseOpens, bareOpens, 5}},
    Registered{Pair{"Ergebnisse sortiert", 1.12, "10.000, erste Seite gegen SQLite in einer Tabelle",
                    houseSorts, bareSorts, 3}}};

}  // namespace
}  // namespace qk::bench

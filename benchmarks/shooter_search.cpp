// The search in the list of shooters on 20,000 of them, from the text that is typed to the painted page,
// against SQLite's own interface answering the page of the same query into a plain table of the toolkit.
#include <QApplication>
#include <QLineEdit>
#include <QTableView>

#include "benchmarks/long_list.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "masterdata/making/competition.h"
#include "platform/grid/bound_rows.h"
#include "shooters/frmSchuetzenListe.h"
#include "tests/support/test_workplace.h"

namespace qk::bench {
namespace {

constexpr int kShooters = 20'000;

/// A competition with 20,000 shooters in 200 clubs.
QString competition() {
  return madeStore("schuetzen", [](const QString& path) {
    makeCompetition(path, {});
    fillNatively(path,
                 QString("%numbers(200) INSERT INTO Verein (ID, Name, Kurzname) "
                         "SELECT i, 'Schützenverein ' || i, 'SV' || i FROM n;"
                         "%numbers(%1) INSERT INTO \"Schützen\" (ID, Startnummer, Name, Ort, VereinsID) "
                         "SELECT i, '' || (i * 7 % 20011), 'Schütze ' || (i * 7919 % 20011), 'Ort ' || (i % "
                         "300), i % 200 + 1 FROM n")
                     .arg(kShooters));
  });
}

/// The real dialog.
class Dialog {
 public:
  Dialog() : place_([](const QString& problem) { failBench(problem); }), dialog_(place_.workplace()) {
    dialog_.setWettkampf(competition());
    dialog_.show();
    dialog_.resize(1300, 700);
    rows_ = dialog_.findChild<BoundRows*>();
    waitForPage();
  }
  void type(const QString& text) {
    dialog_.findChild<QLineEdit*>("txtSuchname")->setText(text);
    waitForPage();
  }

 private:
  void waitForPage() { bench::waitForPage(*rows_, *dialog_.findChild<QTableView*>("VSFlexGrid1")); }

  test::TestWorkplace place_;
  frmSchuetzenListe dialog_;
  BoundRows* rows_;
};

/// The same page by SQLite alone: a field for the text above a table of the columns that are shown.
class Bare {
 public:
  Bare() { search_.show(); }
  void type(const QString& text) {
    search_.setText(text);
    table_.show(QString("SELECT s.Startnummer, s.Name, s.Gebdat, v.Name, m.MannName, k.Klasse, s.AusweisNr "
                        "FROM \"Schützen\" s LEFT JOIN Verein v ON s.VereinsID = v.ID "
                        "LEFT JOIN Mannschaften m ON s.lMannID = m.ID "
                        "LEFT JOIN \"Schützenklassen\" k ON s.KlassenID = k.ID "
                        "WHERE s.Name LIKE '%%1%' ORDER BY CAST(s.Startnummer AS REAL)")
                    .arg(text));
  }

 private:
  BareTable table_{competition()};
  QLineEdit search_;
};

template <class Side>
Work typing(const QString& one, const QString& other) {
  return [=](Rounds& rounds) {
    Side side;
    while (rounds.next()) {
      side.type(one);
      side.type(other);
    }
  };
}

const Registered registered[] = {
    Registered{Pair{"Suche Schützen, wenige Treffer", 1.08, "erste Seite gegen SQLite in einer Tabelle",
                    typing<Dialog>("Schütze 1234", "schütze 987"),
                    typing<Bare>("Schütze 1234", "schütze 987"), 5}},
    Registered{Pair{"Suche Schützen, viele Treffer", 1.45, "erste Seite gegen SQLite in einer Tabelle",
                    typing<Dialog>("Schütze 1", "hütze"), typing<Bare>("Schütze 1", "hütze"), 5}}};

}  // namespace
}  // namespace qk::bench

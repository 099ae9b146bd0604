// The browser of all shots on a million rows, from the act of the operator to the painted page, against
// SQLite's own interface answering the same page into a plain table of the toolkit. Both sides paint the same
// cells.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "benchmarks/long_list.h"
#include "benchmarks/made_once.h"
#include "benchmarks/pairs.h"
#include "capture/frmHaeringSchussAlle.h"
#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/schema/schema_build.h"
#include "tests/support/test_workplace.h"

namespace qk::bench {
namespace {

constexpr int kRows = 1'000'000;

/// A competition with a million shots.
QString competition() {
  return madeStore("schussliste", [](const QString& path) {
    dao::Database::create(path, {.durable = false})
        ->createTable(*embeddedSchema("LeerSA.txt").table("Haering_Daten"));
    fillNatively(
        path,
        QString(
            "%numbers(%1) "
            "INSERT INTO Haering_Daten (ID, WettbewerbBezeichnung, KlasseBezeichnung, StandnummerOrt, "
            "Liniennummer, \"Schütze\", ProbeMatch, Wertung, Treffernummer, RingwertmitZehntel, X, Y, "
            "Radius, ZeitAbsolut, Datum, Startnummer, Teiler, \"Key\") SELECT i, 'LG Auflage', 'Herren ' || "
            "(i % 5), 1, i % 24 + 1, 'Schütze ' || (i * 7919 % 100003), 'M', 1, i % 40 + 1, 7 + (i % 40) / "
            "10.0, i % 977 - 488, i % 881 - 440, i % 499, '10:41:07', '20.11.2026', '' || (i % 3000), "
            "i % 499 / 4.0, 'K' || i FROM n")
            .arg(kRows));
  });
}

/// The real window.
class Window {
 public:
  Window() : place_([](const QString& problem) { failBench(problem); }), browser_(place_.workplace()) {
    browser_.setWettkampf(competition());
    browser_.resize(1300, 700);
    browser_.show();
    browser_.resize(1300, 700);
    waitForPage();
  }

  BoundGrid& grid() { return *browser_.findChild<BoundGrid*>("gridInput"); }
  void filter(const QString& text) {
    browser_.findChild<QLineEdit*>("filter_Schütze")->setText(text);
    waitForPage();
  }
  void clearFilter() {
    browser_.findChild<QPushButton*>("cmdClearFilter")->click();
    waitForPage();
  }
  void sort() {
    Q_EMIT grid().titleClicked(4);
    waitForPage();
  }
  void waitForPage() { bench::waitForPage(*grid().rows(), grid()); }

 private:
  test::TestWorkplace place_;
  frmHaeringSchussAlle browser_;
};

/// The same page by SQLite alone.
class Bare {
 public:
  void page(const QString& conditions) { table_.show("SELECT * FROM Haering_Daten " + conditions, 1); }

 private:
  BareTable table_{competition()};
};

void houseShows(Rounds& rounds) {
  Window window;
  while (rounds.next()) window.clearFilter();
}
void bareShows(Rounds& rounds) {
  Bare bare;
  while (rounds.next()) bare.page("ORDER BY ID");
}

// Few shooters begin so: half the table is read until the page is full.
const QString kOne = "Schütze 9999", kOther = "schütze 8888";

void houseFilters(Rounds& rounds) {
  Window window;
  while (rounds.next()) {
    window.filter(kOne);
    window.filter(kOther);
  }
}
void bareFilters(Rounds& rounds) {
  Bare bare;
  while (rounds.next())
    for (const QString& text : {kOne, kOther})
      bare.page(QString("WHERE \"Schütze\" LIKE '%1%' ORDER BY ID").arg(text));
}

void houseSorts(Rounds& rounds) {
  Window window;
  while (rounds.next()) {
    window.sort();
    window.sort();
  }
}
void bareSorts(Rounds& rounds) {
  Bare bare;
  while (rounds.next())
    for (const char* direction : {"ASC", "DESC"})
      bare.page(QString("ORDER BY \"Schütze\" COLLATE german %1, ID").arg(direction));
}

qint64 residentKilobytes() {
  QFile status("/proc/self/statm");
  if (!status.open(QIODevice::ReadOnly)) failBench(status.errorString());
  return status.readAll().split(' ')[1].toLongLong() * 4;
}

/// Megabytes that the whole list of a million rows takes, sorted, walked through.
double memory() {
  const qint64 before = [] {
    Window window;
    window.filter("Schütze 12345");
    return residentKilobytes();
  }();
  Window window;
  window.sort();
  window.grid().rows()->waitForAll();
  window.grid().scrollToBottom();
  QCoreApplication::processEvents();
  return double(residentKilobytes() - before) / 1024;
}

/// The longest time without a turn of the event loop while the whole list comes, over that time.
double longestPause() {
  Window window;
  QElapsedTimer whole, turn;
  whole.start();
  qint64 longest = 0;
  turn.start();
  Q_EMIT window.grid().titleClicked(4);
  while (!window.grid().rows()->isComplete()) {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    longest = std::max(longest, turn.restart());
  }
  return double(longest) / double(whole.elapsed());
}

const Registered registered[] = {
    Registered{Pair{"Schussliste erste Seite", 1.43, "ungefiltert gegen SQLite in einer Tabelle", houseShows,
                    bareShows, 5}},
    Registered{Pair{"Schussliste gefiltert", 1.02, "erste Seite gegen SQLite in einer Tabelle", houseFilters,
                    bareFilters, 1}},
    Registered{Pair{"Schussliste sortiert", 1.13, "erste Seite gegen SQLite in einer Tabelle", houseSorts,
                    bareSorts, 1}},
    Registered{Figure{"Schussliste Speicher", 25, "MB für eine Million Zeilen", memory}},
    Registered{Figure{"Schussliste Pause", 0.1, "längste Pause, Teil der ganzen Arbeit", longestPause}}};

}  // namespace
}  // namespace qk::bench

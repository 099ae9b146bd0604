// The browser of all shots on a million rows, from the act of the operator to the painted page, against
// SQLite's own interface answering the same page into a plain table of the toolkit. Both sides paint the same
// cells.
#include <sqlite3.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <algorithm>
#include <stdexcept>

#include "benchmarks/pairs.h"
#include "capture/frmHaeringSchussAlle.h"
#include "platform/dao/database.h"
#include "platform/dao/sql/sqlite_functions.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "tests/support/test_workplace.h"
#include "tools/schema/schema_build.h"
#include "tools/wettkampf/competition.h"

namespace qk::bench {
namespace {

constexpr int kRows = 1'000'000;
constexpr int kPage = 50;

[[noreturn]] void failBench(const QString& problem) {
  throw std::runtime_error(problem.toStdString());
}

/// A competition with a million shots, made once a run.
class Shots {
 public:
  static const QString& path() {
    static const Shots shots;
    return shots.path_;
  }

 private:
  Shots() : path_(folder_.filePath("Million.qkk")) {
    const auto database = dao::Database::create(path_, {.durable = false});
    database->createTable(*embeddedSchema("LeerSA.txt").table("Haering_Daten"));
    sqlite3* raw = nullptr;
    sqlite3_open(path_.toUtf8().constData(), &raw);
    const QString fill =
        QString(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
            "INSERT INTO Haering_Daten (ID, WettbewerbBezeichnung, KlasseBezeichnung, StandnummerOrt, "
            "Liniennummer, \"Schütze\", ProbeMatch, Wertung, Treffernummer, RingwertmitZehntel, X, Y, "
            "Radius, "
            "ZeitAbsolut, Datum, Startnummer, Teiler, \"Key\") SELECT i, 'LG Auflage', 'Herren ' || (i % 5), "
            "1, i % 24 + 1, 'Schütze ' || (i * 7919 % 100003), 'M', 1, i % 40 + 1, 7 + (i % 40) / 10.0, "
            "i % 977 - 488, i % 881 - 440, i % 499, '10:41:07', '20.11.2026', '' || (i % 3000), i % 499 / "
            "4.0, "
            "'K' || i FROM n")
            .arg(kRows);
    const bool good = sqlite3_exec(raw, fill.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    const QString problem = QString::fromUtf8(sqlite3_errmsg(raw));
    sqlite3_close(raw);
    if (!good) failBench(problem);
  }
  QTemporaryDir folder_;
  QString path_;
};

/// The real window. A page is there when its first rows are painted; the rest of the list is given up with
/// the next act or the end.
class Window {
 public:
  Window() : place_([](const QString& problem) { failBench(problem); }), browser_(place_.workplace()) {
    browser_.setWettkampf(Shots::path());
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
  void waitForPage() {
    while (grid().rows()->count() == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
    grid().viewport()->repaint();
  }

 private:
  test::TestWorkplace place_;
  frmHaeringSchussAlle browser_;
};

/// The same page by SQLite alone, shown in a table that holds nothing else.
class Bare {
 public:
  Bare() {
    sqlite3_open_v2(Shots::path().toUtf8().constData(), &raw_, SQLITE_OPEN_READONLY, nullptr);
    dao::sql::registerSqliteFunctions(raw_);
    view_.setModel(&model_);
    view_.verticalHeader()->hide();
    view_.resize(1300, 700);
    view_.show();
  }
  ~Bare() { sqlite3_close(raw_); }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  void page(const QString& conditions) {
    const QByteArray text =
        ("SELECT * FROM Haering_Daten " + conditions + " LIMIT " + QString::number(kPage)).toUtf8();
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(raw_, text.constData(), -1, &statement, nullptr) != SQLITE_OK)
      failBench(QString::fromUtf8(sqlite3_errmsg(raw_)));
    model_.clear();
    while (sqlite3_step(statement) == SQLITE_ROW) {
      QList<QStandardItem*> row;
      for (int i = 1; i < sqlite3_column_count(statement); ++i)
        row.append(new QStandardItem(
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, i)))));
      model_.appendRow(row);
    }
    sqlite3_finalize(statement);
    QCoreApplication::processEvents();
    view_.viewport()->repaint();
  }

 private:
  sqlite3* raw_ = nullptr;
  QStandardItemModel model_;
  QTableView view_;
};

void houseShows(benchmark::State& state) {
  Window window;
  for (auto _ : state) window.clearFilter();
}
void bareShows(benchmark::State& state) {
  Bare bare;
  for (auto _ : state) bare.page("ORDER BY ID");
}

// Few shooters begin so: nearly the whole table is read until the page is full.
void houseFilters(benchmark::State& state) {
  Window window;
  bool other = false;
  for (auto _ : state) window.filter((other = !other) ? "Schütze 9999" : "schütze 8888");
}
void bareFilters(benchmark::State& state) {
  Bare bare;
  bool other = false;
  for (auto _ : state)
    bare.page(QString("WHERE \"Schütze\" LIKE '%1%' ORDER BY ID")
                  .arg((other = !other) ? "Schütze 9999" : "schütze 8888"));
}

void houseSorts(benchmark::State& state) {
  Window window;
  for (auto _ : state) window.sort();
}
void bareSorts(benchmark::State& state) {
  Bare bare;
  bool down = false;
  for (auto _ : state)
    bare.page(QString("ORDER BY \"Schütze\" COLLATE german %1, ID").arg((down = !down) ? "ASC" : "DESC"));
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
    Registered{Pair{"Schussliste erste Seite", 1.5, "ungefiltert gegen SQLite in einer Tabelle", houseShows,
                    bareShows}},
    Registered{Pair{"Schussliste gefiltert", 1.5, "erste Seite gegen SQLite in einer Tabelle", houseFilters,
                    bareFilters}},
    Registered{Pair{"Schussliste sortiert", 1.5, "erste Seite gegen SQLite in einer Tabelle", houseSorts,
                    bareSorts}},
    Registered{Figure{"Schussliste Speicher", 30, "MB für eine Million Zeilen", memory}},
    Registered{Figure{"Schussliste Pause", 0.1, "längste Pause, Teil der ganzen Arbeit", longestPause}}};

}  // namespace
}  // namespace qk::bench

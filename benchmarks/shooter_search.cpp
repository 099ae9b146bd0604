// The search in the list of shooters on 20,000 of them, from the text that is typed to the painted page,
// against SQLite's own interface answering the page of the same query into a plain table of the toolkit.
#include <sqlite3.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <stdexcept>

#include "benchmarks/pairs.h"
#include "platform/grid/bound_rows.h"
#include "shooters/frmSchuetzenListe.h"
#include "tests/support/test_workplace.h"
#include "tools/wettkampf/competition.h"

namespace qk::bench {
namespace {

constexpr int kShooters = 20'000;
constexpr int kPage = 50;

[[noreturn]] void failBench(const QString& problem) {
  throw std::runtime_error(problem.toStdString());
}

/// A competition with 20,000 shooters in 200 clubs, made once a run.
class Shooters {
 public:
  static const QString& path() {
    static const Shooters shooters;
    return shooters.path_;
  }

 private:
  Shooters() : path_(folder_.filePath("Schuetzen.qkk")) {
    makeCompetition(path_, {});
    sqlite3* raw = nullptr;
    sqlite3_open(path_.toUtf8().constData(), &raw);
    const QString numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ";
    const QString fill =
        numbers.arg(200) +
        "INSERT INTO Verein (ID, Name, Kurzname) SELECT i, 'Schützenverein ' || i, 'SV' || i FROM n;" +
        numbers.arg(kShooters) +
        "INSERT INTO \"Schützen\" (ID, Startnummer, Name, Ort, VereinsID) SELECT i, '' || (i * 7 % 20011), "
        "'Schütze ' || (i * 7919 % 20011), 'Ort ' || (i % 300), i % 200 + 1 FROM n";
    const bool good = sqlite3_exec(raw, fill.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    const QString problem = QString::fromUtf8(sqlite3_errmsg(raw));
    sqlite3_close(raw);
    if (!good) failBench(problem);
  }
  QTemporaryDir folder_;
  QString path_;
};

/// The real dialog.
class Dialog {
 public:
  Dialog() : place_([](const QString& problem) { failBench(problem); }), dialog_(place_.workplace()) {
    dialog_.setWettkampf(Shooters::path());
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
  void waitForPage() {
    while (rows_->count() == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
    dialog_.findChild<QTableView*>("VSFlexGrid1")->viewport()->repaint();
  }

  test::TestWorkplace place_;
  frmSchuetzenListe dialog_;
  BoundRows* rows_;
};

/// The same page by SQLite alone: a field for the text above a table of the columns that are shown.
class Bare {
 public:
  Bare() {
    sqlite3_open_v2(Shooters::path().toUtf8().constData(), &raw_, SQLITE_OPEN_READONLY, nullptr);
    view_.setModel(&model_);
    view_.verticalHeader()->hide();
    view_.resize(1300, 700);
    view_.show();
    search_.show();
  }
  ~Bare() { sqlite3_close(raw_); }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  void type(const QString& text) {
    search_.setText(text);
    const QByteArray query =
        QString(
            "SELECT s.Startnummer, s.Name, s.Gebdat, v.Name, m.MannName, k.Klasse, s.AusweisNr "
            "FROM \"Schützen\" s LEFT JOIN Verein v ON s.VereinsID = v.ID "
            "LEFT JOIN Mannschaften m ON s.lMannID = m.ID "
            "LEFT JOIN \"Schützenklassen\" k ON s.KlassenID = k.ID "
            "WHERE s.Name LIKE '%%1%' ORDER BY CAST(s.Startnummer AS REAL) LIMIT %2")
            .arg(text)
            .arg(kPage)
            .toUtf8();
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(raw_, query.constData(), -1, &statement, nullptr) != SQLITE_OK)
      failBench(QString::fromUtf8(sqlite3_errmsg(raw_)));
    model_.clear();
    while (sqlite3_step(statement) == SQLITE_ROW) {
      QList<QStandardItem*> row;
      for (int i = 0; i < sqlite3_column_count(statement); ++i)
        row.append(new QStandardItem(
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, i)))));
      model_.appendRow(row);
    }
    sqlite3_finalize(statement);
    if (model_.rowCount() == 0) failBench("Die Suche findet nichts");
    QCoreApplication::processEvents();
    view_.viewport()->repaint();
  }

 private:
  sqlite3* raw_ = nullptr;
  QStandardItemModel model_;
  QTableView view_;
  QLineEdit search_;
};

template <class Side>
Work typing(const QString& one, const QString& other) {
  return [=](benchmark::State& state) {
    Side side;
    bool first = false;
    for (auto _ : state) side.type((first = !first) ? one : other);
  };
}

const Registered registered[] = {
    Registered{Pair{"Suche Schützen, wenige Treffer", 2, "erste Seite gegen SQLite in einer Tabelle",
                    typing<Dialog>("Schütze 1234", "schütze 987"),
                    typing<Bare>("Schütze 1234", "schütze 987")}},
    Registered{Pair{"Suche Schützen, viele Treffer", 2, "erste Seite gegen SQLite in einer Tabelle",
                    typing<Dialog>("Schütze 1", "hütze"), typing<Bare>("Schütze 1", "hütze")}}};

}  // namespace
}  // namespace qk::bench

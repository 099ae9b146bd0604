#include "benchmarks/long_list.h"

#include <sqlite3.h>

#include <QCoreApplication>
#include <QHeaderView>
#include <QRegularExpression>
#include <stdexcept>

#include "platform/dao/sqlite/sqlite_functions.h"
#include "platform/grid/bound_rows.h"

namespace qk::bench {

namespace {

void check(sqlite3* database, int code) {
  if (code != SQLITE_OK) failBench(QString::fromUtf8(sqlite3_errmsg(database)));
}

sqlite3* opened(const QString& path, int flags) {
  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(path.toUtf8().constData(), &raw, flags, nullptr);
  check(raw, code);
  return raw;
}

}  // namespace

void failBench(const QString& problem) {
  throw std::runtime_error(problem.toStdString());
}

void fillNatively(const QString& path, const QString& statements) {
  static const QRegularExpression numbers("%numbers\\((\\d+)\\)");
  QString text = statements;
  text.replace(numbers, "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < \\1)");
  sqlite3* raw = opened(path, SQLITE_OPEN_READWRITE);
  check(raw, sqlite3_exec(raw, text.toUtf8().constData(), nullptr, nullptr, nullptr));
  sqlite3_close(raw);
}

void waitForPage(const BoundRows& rows, QAbstractItemView& view) {
  while (rows.count() < kPage && !rows.isComplete())
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QCoreApplication::processEvents();
  view.viewport()->repaint();
}

BareTable::BareTable(const QString& path) : raw_(opened(path, SQLITE_OPEN_READONLY)) {
  dao::sql::registerSqliteFunctions(raw_);
  view_.setModel(&model_);
  view_.verticalHeader()->hide();
  view_.resize(1300, 700);
  view_.show();
}

BareTable::~BareTable() {
  sqlite3_close(raw_);
}

void BareTable::show(const QString& query, int firstColumn) {
  const QByteArray text = (query + " LIMIT " + QString::number(kPage)).toUtf8();
  sqlite3_stmt* statement = nullptr;
  check(raw_, sqlite3_prepare_v2(raw_, text.constData(), -1, &statement, nullptr));
  model_.clear();
  while (sqlite3_step(statement) == SQLITE_ROW) {
    QList<QStandardItem*> row;
    for (int i = firstColumn; i < sqlite3_column_count(statement); ++i)
      row.append(new QStandardItem(
          QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, i)))));
    model_.appendRow(row);
  }
  sqlite3_finalize(statement);
  if (model_.rowCount() == 0) failBench("Die Abfrage findet nichts");
  QCoreApplication::processEvents();
  view_.viewport()->repaint();
}

}  // namespace qk::bench

// What the benchmarks of long lists share: a store that is filled natively, and the bare side, SQLite's own
// interface answering a page of a query into a plain table of the toolkit.
#pragma once

#include <QStandardItemModel>
#include <QString>
#include <QTableView>
#include <functional>

class QAbstractItemView;
struct sqlite3;

namespace qk {
class BoundRows;
}

namespace qk::bench {

/// Rows that both sides show.
constexpr int kPage = 50;

[[noreturn]] void failBench(const QString& problem);

/// Runs statements on the file. "%numbers(N)" stands for a table n with the column i from 1 to N.
void fillNatively(const QString& path, const QString& statements);

/// Until the first page of the list, or all of a shorter one, is read and painted. The rest of the list is
/// given up with the next act or the end.
void waitForPage(const BoundRows& rows, QAbstractItemView& view);

class BareTable {
 public:
  explicit BareTable(const QString& path);
  ~BareTable();
  BareTable(const BareTable&) = delete;
  BareTable& operator=(const BareTable&) = delete;

  /// Paints the first page of a query, which must have one, from that column on.
  void show(const QString& query, int firstColumn = 0);

 private:
  sqlite3* raw_;
  QStandardItemModel model_;
  QTableView view_;
};

}  // namespace qk::bench

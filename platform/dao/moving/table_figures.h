// What tells whether two tables hold the same rows and give out the same numbers: counts, exact sums and
// digests, the same whatever the engine and the order of the rows.
#pragma once

#include <functional>
#include <vector>

#include "platform/dao/database.h"

namespace qk::dao {

/// Sums are taken modulo 2^64: of whole numbers, of ten-thousandths for money, of seconds for dates, of the
/// bits of a floating number (adding those up as numbers would depend on their order), of digests of texts
/// and bytes.
struct ColumnFigures {
  qint64 values = 0;  ///< rows that aren't Null there
  quint64 sum = 0;
  bool operator==(const ColumnFigures&) const = default;
};

struct TableFigures {
  qint64 rows = 0;
  std::vector<ColumnFigures> columns;  ///< in the order of the table's fields
  quint64 digest = 0;                  ///< sum of one digest a row: values that changed places show here
  qint64 lastNumber = 0;               ///< of the auto numbers given out so far; 0 without any
  bool operator==(const TableFigures&) const = default;
};

/// Called now and then with the count of rows so far.
using RowProgress = std::function<void(qint64 rows)>;

/// 3078 when the table is missing.
TableFigures figuresOf(Database& store, const QString& table, const RowProgress& progress = {});
TableFigures figuresOf(Engine& engine, const QString& table, const RowProgress& progress = {});

/// The first thing that two tables of one name differ in, as a German sentence; empty when they are equal. A
/// table whose numbers are further on than expected is equal: it only never gives one out again.
QString differenceOf(const TableDef& expected, const TableDef& found);
QString differenceOf(const TableDef& table, const TableFigures& expected, const TableFigures& found);

}  // namespace qk::dao

// Rows that make engines differ: German letters in both cases, Null and empty texts, numbers as texts, money
// to four decimals, plain 0 dates, times.
#pragma once

#include "tests/platform/dao/twin_stores.h"

namespace qk::dao::test {

/// A value for a column: the same for the same row and seed. Columns whose names end in "ID" take the small
/// numbers by which tables meet.
QVariant sampleValue(const FieldDef& field, int row, quint32 seed);
/// Adds rows to a table of the twins.
void fill(TwinStores& twins, const TableDef& table, int rows, quint32 seed);

}  // namespace qk::dao::test

// What should stand in the competition beside what stands there, and the table that says so.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "tools/rundgang/reckoning_figures.h"

namespace qk {

namespace dao {
class Database;
}

struct Row {  ///< of the closing table
  QString what;
  QString expected, competition;
  bool agrees() const { return expected == competition; }
};

struct Reckoning {
  std::vector<Row> rows;
  QStringList differences;  ///< figures that don't agree, in words
  int binaryRests = 0;      ///< block sums that hold nothing but the rest of a binary fraction
};

/// All rows of a query, every column.
std::vector<StoredRow> storedRows(dao::Database& store, const QString& query);

struct Comparison {
  Reckoning result;

  void add(const QString& what, qint64 expected, qint64 stored);
  void add(const QString& what, const QString& expected, const QString& stored);
  /// Finds for each expected row a stored one that agrees in every figure and isn't taken yet: lines write
  /// side by side, so the order of the rows says nothing. The places of what was found, -1 for none.
  QList<int> claim(const QString& table, const std::vector<ExpectedRow>& expected,
                   const std::vector<StoredRow>& stored);
};

/// Prints table and differences; true when all agrees. `expecting` heads the column of what should be.
bool printTable(const Reckoning& reckoning, const QString& expecting);

}  // namespace qk

// Auto numbers of a store on a PostgreSQL server, taken from the table's sequence in blocks, so that a number
// can be read before its row is stored. What is left of a block at closing stays a gap.
#pragma once

#include <QHash>
#include <QSet>
#include <deque>
#include <optional>

#include "platform/dao/values/catalogue.h"

namespace qk::dao {

class PostgresNumbers {
 public:
  std::optional<qint64> take(const TableInfo& table);
  /// Nothing comes back of a number that a row may bear after all, nor of a block that was forgotten.
  void giveBack(const TableInfo& table, qint64 number);
  void doubt(const TableInfo& table, qint64 number) { doubtful_[table.def.name].insert(number); }
  /// A block was in use and is used up.
  bool isUsedUp(const TableInfo& table) const;
  bool has(const TableInfo& table) const;
  /// An expression that reserves a block and gives it as text.
  static QString reservation(const TableInfo& table, int count);
  void keep(const TableInfo& table, const QString& block);
  void forgetAll() { blocks_.clear(); }
  void forget(const TableInfo& table) { blocks_.remove(table.def.name); }

 private:
  QHash<QString, std::deque<qint64>> blocks_;
  QHash<QString, QSet<qint64>> doubtful_;
};

}  // namespace qk::dao

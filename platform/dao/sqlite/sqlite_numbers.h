// Auto numbers of a SQLite file, reserved in blocks, so that a number can be read before its row is stored.
//
// A block is reserved by moving the table's entry in sqlite_sequence on: whoever else inserts, through this
// program or any other, gets numbers behind it. What is left of a block at closing stays a gap.
#pragma once

#include <QHash>
#include <optional>

#include "platform/dao/sqlite/sqlite_connection.h"
#include "platform/dao/values/catalogue.h"

namespace qk::dao {

class SqliteNumbers {
 public:
  struct Block {
    qint64 next = 0;
    qint64 end = 0;  ///< behind the last
    bool empty() const { return next == end; }
  };

  explicit SqliteNumbers(SqliteConnection& connection) : connection_(connection) {}

  std::optional<qint64> take(const TableInfo& table);
  void giveBack(const TableInfo& table, qint64 number);
  /// A block was in use and is used up.
  bool isUsedUp(const TableInfo& table) const;
  bool has(const TableInfo& table) const;
  /// As the engine's, but for the end of the numbers.
  qint64 last(const TableInfo& table);
  /// Within a write transaction.
  void goOnAfter(const TableInfo& table, qint64 number);
  /// Within a write transaction; keep() once that is committed.
  Block reserve(const TableInfo& table, int count);
  void keep(const TableInfo& table, Block block) { blocks_.insert(table.def.name, block); }
  void forget(const TableInfo& table) { blocks_.remove(table.def.name); }
  void forgetAll() { blocks_.clear(); }

 private:
  QVariant sequence(const TableInfo& table);

  SqliteConnection& connection_;
  QHash<QString, Block> blocks_;
};

}  // namespace qk::dao

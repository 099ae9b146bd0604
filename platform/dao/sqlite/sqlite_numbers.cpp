#include "platform/dao/sqlite/sqlite_numbers.h"

#include <algorithm>

#include "platform/dao/sqlite/sqlite_schema.h"

namespace qk::dao {
std::optional<qint64> SqliteNumbers::take(const TableInfo& table) {
  const auto block = blocks_.find(table.def.name);
  if (block == blocks_.end() || block->empty()) return {};
  return block->next++;
}

void SqliteNumbers::giveBack(const TableInfo& table, qint64 number) {
  const auto block = blocks_.find(table.def.name);
  if (block != blocks_.end() && block->next == number + 1) --block->next;
}

bool SqliteNumbers::isUsedUp(const TableInfo& table) const {
  const auto block = blocks_.constFind(table.def.name);
  return block != blocks_.cend() && block->empty();
}

bool SqliteNumbers::has(const TableInfo& table) const {
  const auto block = blocks_.constFind(table.def.name);
  return block != blocks_.cend() && !block->empty();
}

QVariant SqliteNumbers::sequence(const TableInfo& table) {
  return connection_.value("SELECT seq FROM sqlite_sequence WHERE name = ?", {table.def.name});
}

qint64 SqliteNumbers::last(const TableInfo& table) {
  const QString key = sqlite::quotedName(table.key.names.first());
  const QVariant greatest =
      connection_.value("SELECT max(" + key + ") FROM " + sqlite::quotedName(table.def.name));
  return std::max({sequence(table).toLongLong(), greatest.toLongLong(), 0LL});
}

void SqliteNumbers::goOnAfter(const TableInfo& table, qint64 number) {
  const QVariant before = sequence(table);
  if (before.toLongLong() >= number) return;
  if (before.isValid())
    connection_.write("UPDATE sqlite_sequence SET seq = ? WHERE name = ?", {number, table.def.name});
  else
    connection_.write("INSERT INTO sqlite_sequence (seq, name) VALUES (?, ?)", {number, table.def.name});
}

SqliteNumbers::Block SqliteNumbers::reserve(const TableInfo& table, int count) {
  const qint64 before = last(table);
  goOnAfter(table, before + count);
  return {before + 1, before + count + 1};
}

}  // namespace qk::dao

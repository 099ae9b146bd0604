#include "platform/dao/postgres/postgres_numbers.h"

#include "platform/dao/postgres/postgres_schema.h"

namespace qk::dao {
std::optional<qint64> PostgresNumbers::take(const TableInfo& table) {
  const auto block = blocks_.find(table.def.name);
  if (block == blocks_.end() || block->empty()) return {};
  const qint64 number = block->front();
  block->pop_front();
  return number;
}

void PostgresNumbers::giveBack(const TableInfo& table, qint64 number) {
  const auto block = blocks_.find(table.def.name);
  if (block != blocks_.end() && !doubtful_.value(table.def.name).contains(number)) block->push_front(number);
}

bool PostgresNumbers::isUsedUp(const TableInfo& table) const {
  const auto block = blocks_.constFind(table.def.name);
  return block != blocks_.cend() && block->empty();
}

bool PostgresNumbers::has(const TableInfo& table) const {
  const auto block = blocks_.constFind(table.def.name);
  return block != blocks_.cend() && !block->empty();
}

QString PostgresNumbers::reservation(const TableInfo& table, int count) {
  const QString& field = table.def.fields[static_cast<size_t>(table.autoNumber)].name;
  return QString("qk_reserve(%1, %2, %3)")
      .arg(postgres::quotedText(postgres::quotedName(table.def.name)), postgres::quotedText(field))
      .arg(count);
}

void PostgresNumbers::keep(const TableInfo& table, const QString& block) {
  std::deque<qint64>& numbers = blocks_[table.def.name];
  for (const QString& number : block.split(u',')) numbers.push_back(number.toLongLong());
}

}  // namespace qk::dao

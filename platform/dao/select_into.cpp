#include "platform/dao/select_into.h"

#include <algorithm>

#include "platform/dao/engine/engine.h"
#include "platform/dao/opening.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

/// The result's columns, and the primary key of the one table they come from where all of it is among them.
TableDef definitionOf(const std::vector<sql::ResultColumn>& columns, const QString& name,
                      const Catalogue& catalogue) {
  TableDef table{name, {}, {}};
  QStringList baseTables;
  for (const sql::ResultColumn& column : columns) {
    FieldDef field = column.type;
    field.name = column.name;
    table.fields.push_back(field);
    if (!baseTables.contains(column.baseTable)) baseTables.append(column.baseTable);
  }
  const TableInfo* base = baseTables.size() == 1 ? catalogue.info(baseTables.first()) : nullptr;
  if (!base) {
    for (FieldDef& field : table.fields) field.autoNumber = false;
    return table;
  }
  if (const IndexDef* primary = base->def.primary())
    if (std::all_of(primary->fields.begin(), primary->fields.end(),
                    [&](const QString& f) { return table.field(f); }))
      table.indexes.push_back(*primary);
  return table;
}

}  // namespace

int selectInto(Engine& engine, sql::Select select) {
  const QString name = std::exchange(select.into, {});
  const QString file = std::exchange(select.intoFile, {});
  const auto catalogue = engine.catalogue();
  sql::resolve(select, *catalogue);
  const TableDef table = definitionOf(sql::resultColumns(select, *catalogue), name, *catalogue);

  const std::unique_ptr<Engine> other = file.isEmpty() ? nullptr : openEngine(file, {});
  Engine& target = other ? *other : engine;
  if (target.catalogue()->info(name)) throw Error(errors::kTableExists);

  const sql::NativeQuery query = engine.writer().select(select);
  std::vector<QVariantList> rows;
  engine.read(query.text, query.values, [&](const NativeRow& row) {
    rows.push_back(row);
    return true;
  });
  target.transaction([&] {
    target.createTable(table);
    const QString text = target.writer().insertRows(table, 1);
    for (QVariantList& row : rows) {
      for (qsizetype i = 0; i < row.size(); ++i) {
        const FieldType type = table.fields[static_cast<size_t>(i)].type;
        row[i] = target.writer().toNative(engine.writer().fromNative(row[i], type), type);
      }
      target.write(text, row);
    }
  });
  return static_cast<int>(rows.size());
}

}  // namespace qk::dao

#include "masterdata/rows/numbered_columns.h"

#include <algorithm>

namespace qk {

std::vector<NumberedColumn> numberedColumns(const dao::Database& database) {
  std::vector<NumberedColumn> columns;
  for (const QString& table : database.tableNames())
    for (const char* name : {"Startnummer", "StartNr"}) {
      const dao::TableDef def = database.tableDef(table);
      const dao::FieldDef* field = def.field(name);
      if (field && field->type == dao::FieldType::Text) columns.push_back({table, field->name});
    }
  std::stable_partition(columns.begin(), columns.end(),
                        [](const NumberedColumn& column) { return dao::sameName(column.table, "Schützen"); });
  return columns;
}

}  // namespace qk

// Which fields make a table's key in the engine, by which its rows are found again.
#pragma once

#include <algorithm>

#include "platform/dao/values/types.h"

namespace qk::dao {

/// An auto number always is it, else the primary key; empty where the engine makes one of its own.
inline QStringList physicalKey(const TableDef& table) {
  for (const FieldDef& field : table.fields)
    if (field.autoNumber) return {field.name};
  const IndexDef* primary = table.primary();
  return primary ? primary->fields : QStringList();
}

inline bool isKey(const IndexDef& index, const QStringList& key) {
  return index.fields.size() == key.size() &&
         std::equal(key.begin(), key.end(), index.fields.begin(), sameName);
}

}  // namespace qk::dao

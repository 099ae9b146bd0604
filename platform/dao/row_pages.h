// All rows of a table in the order of its key, a page at a time, so that a table of any size is walked in
// constant memory. Other connections may work on the table meanwhile.
#pragma once

#include <memory>
#include <vector>

#include "platform/dao/values/catalogue.h"

namespace qk::dao {

class Database;
class Engine;

class RowPages {
 public:
  /// 3078 when there is no such table. The engine outlives the pages.
  RowPages(Engine& engine, const QString& table);
  /// The database outlives the pages.
  RowPages(Database& database, const QString& table);

  const TableDef& def() const { return table_->def; }
  const TableInfo& table() const { return *table_; }  ///< lives as long as the pages
  /// The next rows, with the values of platform/dao/values/types.h in the order of the fields. False when
  /// there are none left.
  bool next(std::vector<QVariantList>& rows);

 private:
  Engine& engine_;
  std::shared_ptr<const Catalogue> catalogue_;
  const TableInfo* table_;
  Key last_;
  bool complete_ = false;
};

}  // namespace qk::dao

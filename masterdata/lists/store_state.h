// The master data of a competition as they stand at one moment, read with a handful of statements, so that a
// list of any length is judged against it without asking the store again.
#pragma once

#include <memory>
#include <vector>

#include "masterdata/people/shooter_class.h"
#include "platform/dao/values/types.h"

namespace qk {

namespace dao {
class Database;
}

namespace lists {

/// All rows of a table, by key; values as in platform/dao/values/types.h, in the order of the fields.
struct TableRows {
  dao::TableDef def;
  std::vector<QVariantList> rows;

  int position(const QString& column) const;  ///< of a column; 3265 when it is missing
  qint64 key(const QVariantList& row) const;  ///< by the table's primary key, one whole number
};

struct StoreState {
  TableRows shooters, clubs, teams, teamGroups, shooterGroups, groupMembers, registrations,
      reportedDisciplines;
  std::vector<TableRows> rules;  ///< what `classes` was read from
  ShooterClasses classes;
};

/// Errors of the store pass; 3078 where the competition lacks one of the tables.
std::shared_ptr<const StoreState> readStoreState(dao::Database& database);

/// Whether the same rows stand in both.
bool sameRows(const StoreState& a, const StoreState& b);

}  // namespace lists
}  // namespace qk

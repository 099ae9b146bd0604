// The query texts the program hands over, filled with values, and the store they run on.
#pragma once

#include <QStringList>

#include "tests/platform/dao/sql/sample_store.h"

namespace qk::dao::sql::test {

std::vector<TableDef> competitionTables();
struct StoredQuery {
  QString name, text;
};
StoredQuery shooterList();

/// Tables and the stored query of a small competition, empty.
std::unique_ptr<SampleStore> competitionStore();

QStringList readingStatements();
QStringList actionStatements();
QStringList criteria();  ///< of FindFirst, on "Select * from Haering_Daten"

}  // namespace qk::dao::sql::test

// The table in which the last import lies ready to be taken back, and a look at whether tables stand still.
#pragma once

#include <QStringList>
#include <vector>

#include "masterdata/lists/import_record.h"
#include "masterdata/lists/take_over.h"
#include "platform/dao/changes.h"

namespace qk::lists {

/// Makes the table where it is missing; a commit of its own.
void ensureImportTable(dao::Database& database);
/// Puts the import into the table's place for the last one, with the other changes.
void recordImport(dao::Changes& changes, const LastImport& import, const std::vector<WrittenRow>& rows);
/// Takes it out again.
void dropImport(dao::Changes& changes);

struct StoredImport {
  LastImport about;
  QByteArray rows;
};
std::optional<StoredImport> storedImport(dao::Database& database);

/// How many rows a table has and the key of its last one: additions and deletions of others show here.
struct TableMark {
  QString table;
  QVariant rows, last;
  friend bool operator==(const TableMark&, const TableMark&) = default;
};
/// Tables that aren't there have no rows.
std::vector<TableMark> marksOf(dao::Database& database, const QStringList& tables);

/// Whether a failure of Changes::write() says that somebody else has been at the rows. requireMarks() fails
/// so.
bool isStale(const Error& error);
/// Nothing is written unless the tables are as marked; nobody adds to those of `held` until all is written.
void requireMarks(dao::Changes& changes, dao::Database& database, const std::vector<TableMark>& marks,
                  const QStringList& held);

}  // namespace qk::lists

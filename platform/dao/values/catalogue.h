// What a store knows of its tables and stored queries.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <vector>

#include "platform/dao/values/types.h"

namespace qk::dao {

/// What tells a row of a table from all others, in native values (a whole number is a qlonglong).
using Key = QVariantList;

struct KeyColumns {
  QStringList names;     ///< stored spelling; a column of the engine's own where the table has no primary key
  bool integer = false;  ///< one whole-number column: rows can be read in pages of ascending keys
};

struct TableInfo {
  TableDef def;
  KeyColumns key;
  int autoNumber =
      -1;  ///< position of the field whose numbers are handed out before the row is stored; -1 for none
  bool query = false;  ///< a stored query: it has no key, and its rows can't be changed through it
  QString text;        ///< of a stored query, in the query language; empty for a view of other hands
};

class Catalogue {
 public:
  virtual ~Catalogue() = default;
  /// Nullptr when there is neither a table nor a stored query of that name. Lives as long as the catalogue.
  virtual const TableInfo* info(const QString& name) const = 0;
  /// Its definition, or nullptr likewise.
  const TableDef* find(const QString& name) const {
    const TableInfo* table = info(name);
    return table ? &table->def : nullptr;
  }
  virtual QStringList tableNames() const = 0;
  virtual QStringList queryNames() const = 0;
};

}  // namespace qk::dao

// Makes in a database what a schema text says.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <vector>

#include "platform/dao/database.h"
#include "platform/schema/schema_text.h"

namespace qk {

/// Rows of one table with the values of platform/dao/values/types.h.
struct TableData {
  QString table;
  QStringList columns;
  std::vector<QVariantList> rows;
};

/// The values of a section, by the table's columns; Error 5 with source and line for a cell or column that
/// doesn't fit.
TableData typedRows(const RowSection& section, const dao::TableDef& table, const QString& source);

/// Appends the rows in their order; auto numbers among the columns are kept as given.
void insertRows(dao::Database& database, const TableData& data);

/// Tables with their indexes, then stored queries, then rows. Rows may belong to tables that the database
/// had.
void buildSchema(dao::Database& database, const Schema& schema);

/// Makes the file and fills it, or leaves none behind; 3204 when it exists.
void createDatabase(const QString& path, const std::function<void(dao::Database&)>& fill);

}  // namespace qk

// What the grid of a page asks the store: the page's columns, with the names of what they refer to.
#pragma once

#include <QList>
#include <optional>
#include <vector>

#include "masterdata/pages/page.h"
#include "platform/grid/filtered_query.h"

namespace qk {

/// The query behind the grid. Its columns are those of the page that the grid shows, in their order; the
/// field of each is fieldOf(). The page's key is a field too.
FilteredQuery::Shape gridQuery(const Page& page);
/// The field of the grid's query that holds what a column shows.
QString fieldOf(const PageColumn& column);
/// What a cell of the grid shows for a value.
QString gridText(const PageColumn& column, const QVariant& value);

struct NamedRow {
  qint64 key;
  QString text;
};

// Rows come in the order of their texts, those of a long table (one with a code) in that of their keys.

/// All rows of what a column refers to.
std::vector<NamedRow> referredRows(dao::Database& database, const RowSource& reference);
/// The text of one; nothing for a row that isn't there.
std::optional<QString> referredText(dao::Database& database, const RowSource& reference, qint64 key);
/// The row with that code; nothing where there is none.
std::optional<NamedRow> lookedUp(dao::Database& database, const RowSource& reference, const QString& code);
/// The code of a row; empty for one that isn't there.
QString codeOf(dao::Database& database, const RowSource& reference, qint64 key);

/// The first rows of a linked list's source whose text holds `part`, those of `first` before all others.
std::vector<NamedRow> sourceRows(dao::Database& database, const RowSource& reference, const QString& part,
                                 const QList<qint64>& first, int limit);

/// How many rows the page has.
int countOf(dao::Database& database, const Page& page);

}  // namespace qk

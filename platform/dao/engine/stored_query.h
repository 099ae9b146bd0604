// What the text of a stored query says of its columns; an engine's view says less.
#pragma once

#include "platform/dao/values/catalogue.h"

namespace qk::dao {

/// Fills the fields of a query's definition. False where the text is missing or a table behind it has
/// changed: what the view shows is left then.
bool describeStoredQuery(const QString& text, const Catalogue& catalogue, TableDef& query);

}  // namespace qk::dao

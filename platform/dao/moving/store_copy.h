// Whole tables and stored queries from one store into another, whatever the engine of each.
#pragma once

#include "platform/dao/database.h"
#include "platform/dao/moving/table_figures.h"

namespace qk::dao {

/// Makes the table in the target, with its fields, presets and indexes, and copies all rows in the order of
/// their keys, a page per commit. Auto numbers stay as they are, and the target's go on after the last that
/// the source has given out, for rows that outlive what they name mustn't find a new one under its number.
/// 3010 when the target has the table. The count of rows. A failure leaves what was copied so far.
qint64 copyTable(Engine& source, Database& target, const QString& table, const RowProgress& progress = {});
qint64 copyTable(Database& source, Database& target, const QString& table, const RowProgress& progress = {});

/// Makes all stored queries of the source in the target, whose tables are there by now. 3219 for one whose
/// text isn't known: a view that other hands put into the store.
void copyQueries(Engine& source, Database& target);
void copyQueries(Database& source, Database& target);

}  // namespace qk::dao

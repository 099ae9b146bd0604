// A competition that holds everything a move could spoil: every type, Null, the empty text, German texts,
// money to the last ten-thousandth, date 0, tables with and without keys, presets, stored queries on each
// other.
#pragma once

#include <QString>

#include "platform/dao/database.h"

namespace qk::test {

/// Adds the tables "Alles", "OhneSchlüssel", "Textschlüssel" and "Paare" and the queries "Namen" and
/// "Auf Namen" to a store, and numbered tables whose rows don't tell their next number: "Gekürzt" lacks its
/// last rows, "Geleert" all of them, "Unberührt" never had any. `rows` is the count of rows of "Alles".
void addHardTables(dao::Database& store, int rows);

/// "Table: number" for each numbered table of a store, the number that a new row would get. It is taken from
/// the store by that.
QStringList nextNumbersOf(const QString& path);

/// Every definition and every row of a store as text, a line each: equal for equal stores.
QStringList contentsOf(const QString& path);
/// The first line that differs, for a message that can be read; empty when there is none.
QString firstDifference(const QStringList& a, const QStringList& b);

/// Runs qk-wettkampf as a process and ends it by SIGKILL as soon as it says the line; where it stands then is
/// left to chance. False when it never said it.
bool killMoveAt(const QString& from, const QString& to, const QString& line);

}  // namespace qk::test

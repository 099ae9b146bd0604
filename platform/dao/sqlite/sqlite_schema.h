// Definitions to SQLite's text and back: the dictionary of declared types.
#pragma once

#include <QString>
#include <QVariant>

#include "platform/dao/values/types.h"

namespace qk::dao::sqlite {

/// Type and size of a declared type, ours or an ordinary one of other tools.
void readDeclaredType(const QString& declared, FieldDef& field);

/// "a", quotes doubled.
QString quotedName(const QString& name);
/// A native value as it stands inside a text.
QString literal(const QVariant& native);

/// Column of CREATE TABLE or ALTER TABLE. primaryNumber: the table's auto number, which is its key.
QString columnText(const FieldDef& field, bool primaryNumber, bool notNull);

/// Indexes have one name space a file, and one a table for us.
QString storedIndexName(const QString& table, const QString& index);
QString indexNameOf(const QString& table, const QString& stored);

}  // namespace qk::dao::sqlite

// Definitions to PostgreSQL's text and back.
//
// All of a store stands in the schema "dao" of its database. What PostgreSQL can't say of a column or an
// index stands in the comment on it, as JSON: {"size":50,"required":true,"nonempty":true} of a column,
// {"name":…,"fields":[…],"primary":…,"unique":…,"required":…} of an index; {"hidden":true} of one that only
// keeps texts apart whatever their case.
#pragma once

#include <QString>
#include <QStringList>

#include "platform/dao/values/types.h"

namespace qk::dao::postgres {

/// Key of a table that has no primary one; never shown.
inline const QString kRowNumber = "qk_row";
/// One row: raised with every change of a definition.
inline const QString kVersionTable = "dao_version";
/// One row for each commit whose fate may have to be told.
inline const QString kMarksTable = "dao_marks";

QString quotedName(const QString& name);
QString quotedText(const QString& text);
QString nameList(const QStringList& names);
/// Names of PostgreSQL end after 63 bytes: 3125 for longer ones.
void requireShortName(const QString& name);
/// The name of an index or a sequence in the one name space of a schema, shortened where needed.
QString storedName(const QString& table, const QString& name);

/// Column of CREATE TABLE or ALTER TABLE.
QString columnText(const FieldDef& field, bool notNull);
/// Its comment; empty where there is nothing to say.
QString columnComment(const FieldDef& field);
/// Type, preset and comment of a column as they are stored.
FieldDef readColumn(const QString& name, const QString& type, bool notNull, const QString& preset,
                    const QString& comment);

/// "CREATE INDEX …"; texts are indexed as they are compared.
QString indexText(const TableDef& table, const IndexDef& index);
QString indexComment(const IndexDef& index);
/// False for a hidden one.
bool readIndex(const QString& comment, IndexDef& index);

}  // namespace qk::dao::postgres

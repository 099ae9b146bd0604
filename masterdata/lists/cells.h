// One cell of a list as a value of a column, or why it is none.
#pragma once

#include <QVariant>

#include "masterdata/lists/headings.h"
#include "platform/dao/values/types.h"

namespace qk::lists {

struct CellValue {
  QVariant value;   ///< invalid: the cell says nothing
  QString trouble;  ///< a German sentence; empty when all is well
};

/// The text of a cell without blanks around it, without the guard against formulas, its line breaks as
/// blanks; Null stays Null.
QString plainText(const QString& cell);

/// Whether a cell holds what no text of a list has: control characters, or more letters than any column
/// takes.
QString troubleOf(const QString& cell);

/// By the column's type: text, whole number, "Ja"/"Nein". An empty text in quotes is an empty text.
CellValue readCell(const QString& cell, const dao::FieldDef& field);
/// A text as it stands, line breaks and blanks included.
CellValue readExactly(const QString& cell, const dao::FieldDef& field);
/// Text that another table's column of that length takes.
QString tooLong(const QString& text, int size);

/// What readCell() gives that value for, unguarded text apart; Null for an invalid one.
QString cellOf(const QVariant& value, const dao::FieldDef& field);

/// As a person reads it in a preview: a long text is shortened.
QString shownText(const QString& text);

}  // namespace qk::lists

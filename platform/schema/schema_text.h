// Tables, stored queries and rows as readable text, so that they can be read, edited and compared.
//
//   # a comment stands on a line of its own
//   Tabelle Altersklassen
//     ID           Zähler
//     Klasse       Text 100
//     [Alter von]  Integer Vorgabe 0
//     Index PrimaryKey primär ID
//     Index Alter [Alter von], Geschlecht
//   Abfrage Namen
//     SELECT ID, Klasse FROM Altersklassen
//   Zeilen Altersklassen
//     ID | Klasse       | Alter von
//     1  | Kinder m.    | 0
//
// An unindented line opens a section, indented lines belong to it. Types: Zähler, Ja/Nein, Byte, Integer
// (16 bit), Long, Single, Double, Währung, Datum, Text [size], Memo, Binär; behind the type "Pflicht" (never
// Null), "nichtleer" (never the empty text) and, last, "Vorgabe" with the value of a new row. An index names
// its flags ("primär", "eindeutig", "pflicht") before its columns. A name with a blank or a comma stands in
// square brackets. In rows "|" parts the cells: an empty cell is Null, "" the empty text, numbers have a
// decimal comma, dates are DD.MM.YYYY [HH:MM:SS], yes/no is "ja" or "nein".
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <vector>

#include "platform/dao/values/types.h"

namespace qk {

struct TextRow {
  int line = 0;
  QStringList cells;  ///< as many as the section has columns
};

struct RowSection {
  QString table;
  int line = 0;  ///< of its beginning
  QStringList columns;
  std::vector<TextRow> rows;
};

struct StoredQuery {
  QString name;
  QString text;
};

struct Schema {
  QString source;  ///< file name, for messages
  std::vector<dao::TableDef> tables;
  std::vector<StoredQuery> queries;
  std::vector<RowSection> rows;

  const dao::TableDef* table(const QString& name) const;  ///< nullptr when missing
};

/// Reads a whole text. A fault is Error 5 with "<source>:<line>: <what is wrong>".
Schema parseSchema(const QString& text, const QString& source);

/// A cell's value for a column; a cell that doesn't fit its type is Error 5 as above.
QVariant cellValue(const QString& cell, const dao::FieldDef& field, const QString& source, int line);

}  // namespace qk

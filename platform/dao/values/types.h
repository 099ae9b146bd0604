// Values and definitions of the store.
//
// A value is a QVariant of one of these: invalid (Null), int -1/0 (Boolean), int (Byte, Integer, Long),
// double (Single, Double), Money (Currency), QDateTime (Date), QString (Text, Memo), QByteArray (LongBinary).
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <vector>

namespace qk::dao {

/// Names of tables, columns and indexes are told apart whatever their case, umlauts included.
bool sameName(const QString& a, const QString& b);
/// Equal for the same names.
QString foldedName(const QString& name);

/// The numbers are those of the classic engine: below 9 is numeric (Date isn't asked for as a number).
enum class FieldType {
  Boolean = 1,
  Byte = 2,
  Integer = 3,
  Long = 4,
  Currency = 5,
  Single = 6,
  Double = 7,
  Date = 8,
  Text = 10,
  LongBinary = 11,
  Memo = 12
};

struct FieldDef {
  QString name;
  FieldType type = FieldType::Text;
  int size = 0;  ///< characters of a Text; 0 is 255
  bool autoNumber = false;
  bool required = false;
  bool allowZeroLength = true;
  QVariant preset = {};  ///< default of a new row; a Boolean without one is 0
};

struct IndexDef {
  QString name;
  QStringList fields;
  bool primary = false;
  bool unique = false;
  bool required = false;
};

struct TableDef {
  QString name;
  std::vector<FieldDef> fields;
  std::vector<IndexDef> indexes;

  const FieldDef* field(
      const QString& name) const;  ///< whatever its case (Unicode folding); nullptr when missing
  const IndexDef* primary() const;
};

}  // namespace qk::dao

#include "platform/dao/sqlite/sqlite_schema.h"

#include <QHash>

#include "platform/dao/sql/native_values.h"
#include "platform/dao/sql/resolver.h"
#include "platform/dao/values/convert.h"
#include "platform/runtime/error.h"

namespace qk::dao::sqlite {
namespace {

/// A Memo is a bare TEXT and a Single a FLOAT4, for SQLite works out a column's affinity from the letters of
/// its type: in a column called MEMO the text "007" would become the number 7.
QString declaredType(const FieldDef& field) {
  switch (field.type) {
    case FieldType::Boolean:
      return "YESNO";
    case FieldType::Byte:
      return "BYTE";
    case FieldType::Integer:
      return "SMALLINT";
    case FieldType::Long:
      return "INTEGER";
    case FieldType::Currency:
      return "CURRENCY";
    case FieldType::Single:
      return "FLOAT4";
    case FieldType::Double:
      return "DOUBLE";
    case FieldType::Date:
      return "DATETIME";
    case FieldType::Text:
      return QString("TEXT(%1)").arg(field.size > 0 ? field.size : 255);
    case FieldType::LongBinary:
      return "BLOB";
    case FieldType::Memo:
      return "TEXT";
  }
  throw Error(errors::kConversionFailed);
}

const QHash<QString, FieldType>& types() {
  static const QHash<QString, FieldType> known{
      {"YESNO", FieldType::Boolean},     {"BOOLEAN", FieldType::Boolean},
      {"BOOL", FieldType::Boolean},      {"BIT", FieldType::Boolean},
      {"LOGICAL", FieldType::Boolean},   {"BYTE", FieldType::Byte},
      {"TINYINT", FieldType::Byte},      {"SMALLINT", FieldType::Integer},
      {"SHORT", FieldType::Integer},     {"INT2", FieldType::Integer},
      {"INTEGER", FieldType::Long},      {"INT", FieldType::Long},
      {"LONG", FieldType::Long},         {"INT4", FieldType::Long},
      {"MEDIUMINT", FieldType::Long},    {"COUNTER", FieldType::Long},
      {"CURRENCY", FieldType::Currency}, {"MONEY", FieldType::Currency},
      {"NUMERIC", FieldType::Currency},  {"DECIMAL", FieldType::Currency},
      {"FLOAT4", FieldType::Single},     {"SINGLE", FieldType::Single},
      {"DOUBLE", FieldType::Double},     {"DOUBLE PRECISION", FieldType::Double},
      {"REAL", FieldType::Double},       {"FLOAT", FieldType::Double},
      {"FLOAT8", FieldType::Double},     {"BIGINT", FieldType::Double},
      {"DATETIME", FieldType::Date},     {"DATE", FieldType::Date},
      {"TIME", FieldType::Date},         {"TIMESTAMP", FieldType::Date},
      {"BLOB", FieldType::LongBinary},   {"LONGBINARY", FieldType::LongBinary},
      {"BINARY", FieldType::LongBinary}, {"", FieldType::Memo}};
  return known;
}

bool isTextType(const QString& type) {
  return type.contains("CHAR") || type.contains("TEXT");
}

bool hasText(FieldType type) {
  return type == FieldType::Text || type == FieldType::Memo;
}

}  // namespace

void readDeclaredType(const QString& declared, FieldDef& field) {
  const qsizetype bracket = declared.indexOf('(');
  const QString type = declared.left(bracket).trimmed().toUpper();
  field.size = 0;
  if (const auto known = types().constFind(type); known != types().cend()) {
    field.type = *known;
  } else if (isTextType(type) && bracket >= 0) {
    field.type = FieldType::Text;
    field.size = declared.mid(bracket + 1, declared.indexOf(')') - bracket - 1).trimmed().toInt();
  } else {
    field.type = FieldType::Memo;
  }
}

QString quotedName(const QString& name) {
  return '"' + QString(name).replace('"', "\"\"") + '"';
}

QString literal(const QVariant& native) {
  switch (native.typeId()) {
    case QMetaType::UnknownType:
      return "NULL";
    case QMetaType::QByteArray:
      return "x'" + QString::fromLatin1(native.toByteArray().toHex()) + "'";
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
      return QString::number(native.toLongLong());
    case QMetaType::Double:
      return QString::number(native.toDouble(), 'g', 17);
    default:
      return '\'' + native.toString().replace('\'', "''") + '\'';
  }
}

QString columnText(const FieldDef& field, bool primaryNumber, bool notNull) {
  QString text = quotedName(field.name) + " ";
  if (primaryNumber) return text + "INTEGER PRIMARY KEY AUTOINCREMENT";
  text += declaredType(field);
  if (hasText(field.type)) text += " COLLATE NOCASE";
  if (notNull) text += " NOT NULL";
  if (const QVariant preset = presetValue(field); preset.isValid())
    text += " DEFAULT " + literal(sql::toNative(preset, sql::kindOf(field.type)));
  return text;
}

QString storedIndexName(const QString& table, const QString& index) {
  return table + "." + index;
}

QString indexNameOf(const QString& table, const QString& stored) {
  const QString prefix = table + ".";
  return stored.startsWith(prefix, Qt::CaseInsensitive) ? stored.mid(prefix.size()) : stored;
}

}  // namespace qk::dao::sqlite

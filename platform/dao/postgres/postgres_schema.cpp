#include "platform/dao/postgres/postgres_schema.h"

#include <QCryptographicHash>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "platform/dao/postgres/postgres_writer.h"
#include "platform/dao/sql/native_values.h"
#include "platform/dao/sql/resolver.h"
#include "platform/dao/values/convert.h"
#include "platform/runtime/error.h"

namespace qk::dao::postgres {
namespace {

constexpr qsizetype kLongestName = 63;
constexpr int kDefaultTextSize = 255;

bool hasText(FieldType type) {
  return type == FieldType::Text || type == FieldType::Memo;
}

QString declaredType(FieldType type) {
  switch (type) {
    case FieldType::Boolean:
      return "yesno";
    case FieldType::Byte:
      return "byte";
    case FieldType::Integer:
      return "smallint";
    case FieldType::Long:
      return "integer";
    case FieldType::Currency:
      return "numeric(19,4)";
    case FieldType::Single:
      return "real";
    case FieldType::Double:
      return "double precision";
    case FieldType::Date:
      return "timestamp(0)";
    case FieldType::LongBinary:
      return "bytea";
    case FieldType::Text:
    case FieldType::Memo:
      return "text COLLATE \"C\"";
  }
  throw Error(errors::kConversionFailed);
}

FieldType typeOf(const QString& stored) {
  static const QHash<QString, FieldType> known{
      {"yesno", FieldType::Boolean},    {"bool", FieldType::Boolean},     {"byte", FieldType::Byte},
      {"int2", FieldType::Integer},     {"int4", FieldType::Long},        {"int8", FieldType::Double},
      {"numeric", FieldType::Currency}, {"float4", FieldType::Single},    {"float8", FieldType::Double},
      {"timestamp", FieldType::Date},   {"timestamptz", FieldType::Date}, {"date", FieldType::Date},
      {"bytea", FieldType::LongBinary}};
  return known.value(stored, FieldType::Memo);
}

QString jsonText(const QJsonObject& object) {
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QJsonObject jsonOf(const QString& comment) {
  return QJsonDocument::fromJson(comment.toUtf8()).object();
}

/// "'-5'::integer", "(-5)", "'x'::text": what stands before the type.
QString bareDefault(QString text) {
  if (text.startsWith('(') && text.endsWith(')')) text = text.mid(1, text.size() - 2);
  const qsizetype quote = text.lastIndexOf('\'');
  const qsizetype cast = text.indexOf("::", quote < 0 ? 0 : quote);
  return cast < 0 ? text : text.left(cast);
}

QVariant presetOf(const QString& text, FieldType type) {
  const QString bare = bareDefault(text);
  const bool numberInQuotes = bare.startsWith('\'') && !hasText(type) && type != FieldType::Date;
  return sql::presetOfDefault(numberInQuotes ? bare.mid(1, bare.size() - 2) : bare, type);
}

}  // namespace

QString quotedName(const QString& name) {
  return '"' + QString(name).replace('"', "\"\"") + '"';
}

QString quotedText(const QString& text) {
  return '\'' + QString(text).replace('\'', "''") + '\'';
}

QString nameList(const QStringList& names) {
  QStringList quoted;
  for (const QString& name : names) quoted.append(quotedName(name));
  return quoted.join(", ");
}

void requireShortName(const QString& name) {
  if (name.toUtf8().size() > kLongestName) throw Error(errors::kInvalidName);
}

QString storedName(const QString& table, const QString& name) {
  const QString whole = table + "." + name;
  if (whole.toUtf8().size() <= kLongestName) return whole;
  const QByteArray mark = QCryptographicHash::hash(whole.toUtf8(), QCryptographicHash::Md5).toHex();
  return whole.left(15) + "." + QString::fromLatin1(mark);
}

QString columnText(const FieldDef& field, bool notNull) {
  QString text = quotedName(field.name) + " " + declaredType(field.type);
  if (notNull) text += " NOT NULL";
  if (const QVariant preset = presetValue(field); preset.isValid())
    text += " DEFAULT " + quotedText(sql::toNative(preset, sql::kindOf(field.type)).toString());
  return text;
}

QString columnComment(const FieldDef& field) {
  QJsonObject facts;
  if (field.type == FieldType::Text) facts["size"] = field.size > 0 ? field.size : kDefaultTextSize;
  if (field.required) facts["required"] = true;
  if (!field.allowZeroLength) facts["nonempty"] = true;
  return facts.isEmpty() ? QString() : jsonText(facts);
}

FieldDef readColumn(const QString& name, const QString& type, bool notNull, const QString& preset,
                    const QString& comment) {
  FieldDef field;
  field.name = name;
  field.type = typeOf(type);
  const QJsonObject facts = jsonOf(comment);
  if (facts.contains("size")) {
    field.type = FieldType::Text;
    field.size = facts["size"].toInt();
  }
  field.autoNumber = preset.contains("qk_next(");
  field.required = (notNull && !field.autoNumber) || facts["required"].toBool();
  field.allowZeroLength = !facts["nonempty"].toBool();
  if (!field.autoNumber && !preset.isEmpty()) field.preset = presetOf(preset, field.type);
  return field;
}

QString indexText(const TableDef& table, const IndexDef& index) {
  QStringList terms;
  for (const QString& name : index.fields) {
    const FieldDef* field = table.field(name);
    const QString column = quotedName(field ? field->name : name);
    terms.append((field && hasText(field->type) ? sql::foldedText(column) : column) + " NULLS FIRST");
  }
  return QString(index.unique || index.primary ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
         quotedName(storedName(table.name, index.name)) + " ON " + quotedName(table.name) + " (" +
         terms.join(", ") + ")";
}

QString indexComment(const IndexDef& index) {
  return jsonText({{"name", index.name},
                   {"fields", QJsonArray::fromStringList(index.fields)},
                   {"primary", index.primary},
                   {"unique", index.unique || index.primary},
                   {"required", index.required}});
}

bool readIndex(const QString& comment, IndexDef& index) {
  const QJsonObject facts = jsonOf(comment);
  if (facts["hidden"].toBool()) return false;
  if (!facts.contains("name")) return true;
  index.name = facts["name"].toString();
  index.fields.clear();
  for (const QJsonValue& field : facts["fields"].toArray()) index.fields.append(field.toString());
  index.primary = facts["primary"].toBool();
  index.unique = facts["unique"].toBool();
  index.required = facts["required"].toBool();
  return true;
}

}  // namespace qk::dao::postgres

#include "platform/dao/moving/table_figures.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDateTime>
#include <QIODevice>
#include <bit>

#include "platform/dao/engine/engine.h"
#include "platform/dao/row_pages.h"
#include "platform/runtime/money.h"

namespace qk::dao {
namespace {

quint64 digestOf(const QByteArray& bytes) {
  quint64 digest = 0;
  QDataStream(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1)) >> digest;
  return digest;
}

/// The value as a number that is equal for equal values; what has no such number gets a digest.
quint64 numberOf(const QVariant& value, FieldType type) {
  switch (type) {
    case FieldType::Boolean:
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
      return static_cast<quint64>(value.toLongLong());
    case FieldType::Currency:
      return static_cast<quint64>(value.value<Money>().units());
    case FieldType::Single:
    case FieldType::Double:
      return std::bit_cast<quint64>(value.toDouble() + 0.0);  // -0 is 0
    case FieldType::Date: {
      const QDateTime date = value.toDateTime();
      return static_cast<quint64>(date.date().toJulianDay() * 86400 +
                                  date.time().msecsSinceStartOfDay() / 1000);
    }
    case FieldType::Text:
    case FieldType::Memo:
      return digestOf(value.toString().toUtf8());
    case FieldType::LongBinary:
      return digestOf(value.toByteArray());
  }
  return 0;
}

void addRow(const QVariantList& row, const TableDef& table, TableFigures& figures) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  for (size_t i = 0; i < table.fields.size(); ++i) {
    const QVariant& value = row[static_cast<qsizetype>(i)];
    stream << value.isValid();
    if (!value.isValid()) continue;
    const quint64 number = numberOf(value, table.fields[i].type);
    stream << number;
    ++figures.columns[i].values;
    figures.columns[i].sum += number;
  }
  figures.digest += digestOf(bytes);
  ++figures.rows;
}

QString differenceOf(const FieldDef& expected, const FieldDef& found) {
  if (expected.name != found.name) return QString("Spalte »%1« heißt »%2«").arg(expected.name, found.name);
  const QString column = QString("Spalte »%1«: ").arg(expected.name);
  const auto size = [](const FieldDef& field) {
    return field.type == FieldType::Text && field.size == 0 ? 255 : field.size;
  };
  if (expected.type != found.type) return column + "anderer Typ";
  if (size(expected) != size(found)) return column + "andere Länge";
  if (expected.autoNumber != found.autoNumber) return column + "Zähler oder nicht";
  if (expected.required != found.required) return column + "Eingabe erforderlich oder nicht";
  if (expected.allowZeroLength != found.allowZeroLength) return column + "leerer Text erlaubt oder nicht";
  if (expected.preset != found.preset) return column + "andere Vorgabe";
  return {};
}

QString differenceOf(const IndexDef& expected, const IndexDef& found) {
  const bool same = expected.name == found.name && expected.fields == found.fields &&
                    expected.primary == found.primary && expected.unique == found.unique &&
                    expected.required == found.required;
  return same ? QString() : QString("Index »%1« ist anders").arg(expected.name);
}

/// The first difference of two lists of definitions.
template <class Definition>
QString differenceOf(const std::vector<Definition>& expected, const std::vector<Definition>& found,
                     const QString& what) {
  if (expected.size() != found.size())
    return QString("%1 %2 statt %3").arg(found.size()).arg(what).arg(expected.size());
  for (size_t i = 0; i < expected.size(); ++i)
    if (const QString difference = differenceOf(expected[i], found[i]); !difference.isEmpty())
      return difference;
  return {};
}

}  // namespace

TableFigures figuresOf(Database& store, const QString& table, const RowProgress& progress) {
  return figuresOf(store.engine(), table, progress);
}

TableFigures figuresOf(Engine& engine, const QString& table, const RowProgress& progress) {
  RowPages pages(engine, table);
  TableFigures figures;
  figures.columns.resize(pages.def().fields.size());
  std::vector<QVariantList> rows;
  while (pages.next(rows)) {
    for (const QVariantList& row : rows) addRow(row, pages.def(), figures);
    if (progress) progress(figures.rows);
  }
  figures.lastNumber = engine.lastNumber(pages.table());
  return figures;
}

QString differenceOf(const TableDef& expected, const TableDef& found) {
  const QString fields = differenceOf(expected.fields, found.fields, "Spalten");
  return fields.isEmpty() ? differenceOf(expected.indexes, found.indexes, "Indizes") : fields;
}

QString differenceOf(const TableDef& table, const TableFigures& expected, const TableFigures& found) {
  if (expected.rows != found.rows) return QString("%1 Zeilen statt %2").arg(found.rows).arg(expected.rows);
  for (size_t i = 0; i < table.fields.size(); ++i) {
    const ColumnFigures& wanted = expected.columns.at(i);
    const ColumnFigures& there = found.columns.at(i);
    if (wanted.values != there.values)
      return QString("Spalte »%1«: %2 Werte statt %3")
          .arg(table.fields[i].name)
          .arg(there.values)
          .arg(wanted.values);
    if (wanted.sum != there.sum)
      return QString("Spalte »%1«: die Prüfsumme ist anders").arg(table.fields[i].name);
  }
  if (expected.digest != found.digest) return "die Prüfsumme der Zeilen ist anders";
  if (found.lastNumber < expected.lastNumber)
    return QString("die nächste Nummer wäre %1 statt %2")
        .arg(found.lastNumber + 1)
        .arg(expected.lastNumber + 1);
  return {};
}

}  // namespace qk::dao

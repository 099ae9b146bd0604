#include "masterdata/pages/page_query.h"

#include <QSet>

#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

QString bracketed(const QString& name) {
  return "[" + name + "]";
}

bool refers(const PageColumn& column) {
  return column.kind == ColumnKind::Reference || column.kind == ColumnKind::LookUp;
}

/// Two columns may refer to one table.
QString aliasOf(const PageColumn& column) {
  return bracketed("zu " + column.column);
}

QString expressionOf(const Page& page, const PageColumn& column) {
  if (refers(column)) return column.reference.text.arg(aliasOf(column));
  return bracketed(page.table) + "." + bracketed(column.column);
}

/// What a filter text is compared with: what the cell shows.
QString filterOf(const PageColumn& column, const QString& expression) {
  if (column.kind == ColumnKind::Flag) return "IIf(" + expression + " <> 0, 'ja', '')";
  if (column.kind != ColumnKind::Choice) return expression;
  QString text = "''";
  for (const PageChoice& choice : column.choices) {
    const bool isText = choice.value.typeId() == QMetaType::QString;
    const QString value = isText ? dao::sql::quoted(choice.value.toString()) : choice.value.toString();
    text = QString("IIf(%1 = %2, %3, %4)").arg(expression, value, dao::sql::quoted(choice.text), text);
  }
  return text;
}

std::optional<NamedRow> firstOf(dao::Database& database, const RowSource& reference,
                                const QString& criterion) {
  const auto rows =
      database.openRecordset("SELECT TOP 1 " + bracketed(reference.key) + " AS Nummer, " +
                             reference.text.arg(bracketed(reference.table)) + " AS Anzeige FROM " +
                             bracketed(reference.table) + " WHERE " + criterion);
  if (rows->eof()) return std::nullopt;
  return NamedRow{rows->value("Nummer").toLongLong(), rows->value("Anzeige").toString().simplified()};
}

/// A long table in the order of its texts would be read whole for its first rows.
std::vector<NamedRow> namedRows(dao::Database& database, const RowSource& source, const QString& top,
                                const QString& criterion) {
  const QString text = source.text.arg(bracketed(source.table));
  const QString order = source.code.isEmpty() ? text : bracketed(source.key);
  const auto rows = database.openRecordset("SELECT " + top + bracketed(source.key) + " AS Nummer, " + text +
                                           " AS Anzeige FROM " + bracketed(source.table) + criterion +
                                           " ORDER BY " + order);
  std::vector<NamedRow> found;
  for (; !rows->eof(); rows->moveNext())
    found.push_back({rows->value("Nummer").toLongLong(), rows->value("Anzeige").toString().simplified()});
  return found;
}

}  // namespace

FilteredQuery::Shape gridQuery(const Page& page) {
  const QString table = bracketed(page.table);
  QStringList fields{table + "." + bracketed(page.keyColumn)};
  QString source = table;
  FilteredQuery::Shape shape;
  for (const PageColumn& column : page.columns) {
    if (column.inGrid == 0) continue;
    const QString expression = expressionOf(page, column);
    fields << expression + (refers(column) ? " AS " + bracketed(fieldOf(column)) : QString());
    if (refers(column)) {
      if (source != table) source = "(" + source + ")";
      source += QString(" LEFT JOIN %1 AS %2 ON %3.%4 = %2.%5")
                    .arg(bracketed(column.reference.table), aliasOf(column), table, bracketed(column.column),
                         bracketed(column.reference.key));
    }
    shape.columns.push_back(
        {filterOf(column, expression), {column.order.isEmpty() ? expression : column.order.arg(table)}});
  }
  shape.base = "SELECT " + fields.join(", ") + " FROM " + source;
  shape.joint = " WHERE ";
  if (!page.firstOrder.isEmpty()) shape.firstOrder = " ORDER BY " + page.firstOrder.arg(table);
  return shape;
}

QString fieldOf(const PageColumn& column) {
  return refers(column) ? "Text zu " + column.column : column.column;
}

QString gridText(const PageColumn& column, const QVariant& value) {
  switch (column.kind) {
    case ColumnKind::Flag:
      return value.toInt() ? "ja" : QString();
    case ColumnKind::Choice:
      for (const PageChoice& choice : column.choices)
        if (choice.value.toString() == value.toString()) return choice.text;
      return value.toString();
    case ColumnKind::Number:
      return value.isNull() ? QString() : numberText(value.toDouble());
    case ColumnKind::Day:
      return value.isNull() ? QString() : dateText(value.toDateTime());
    default:
      return value.toString();
  }
}

std::vector<NamedRow> referredRows(dao::Database& database, const RowSource& reference) {
  if (!database.hasTable(reference.table)) return {};
  return namedRows(database, reference, {}, {});
}

std::optional<QString> referredText(dao::Database& database, const RowSource& reference, qint64 key) {
  const auto found = firstOf(database, reference, bracketed(reference.key) + " = " + QString::number(key));
  return found ? std::optional(found->text) : std::nullopt;
}

std::optional<NamedRow> lookedUp(dao::Database& database, const RowSource& reference, const QString& code) {
  return firstOf(database, reference, bracketed(reference.code) + " = " + dao::sql::quoted(code));
}

QString codeOf(dao::Database& database, const RowSource& reference, qint64 key) {
  const auto rows = database.openRecordset("SELECT " + bracketed(reference.code) + " AS Kennung FROM " +
                                           bracketed(reference.table) + " WHERE " + bracketed(reference.key) +
                                           " = " + QString::number(key));
  return rows->eof() ? QString() : rows->value("Kennung").toString();
}

std::vector<NamedRow> sourceRows(dao::Database& database, const RowSource& reference, const QString& part,
                                 const QList<qint64>& first, int limit) {
  const QString text = reference.text.arg(bracketed(reference.table));
  const QString matches =
      part.isEmpty() ? QString() : " AND (" + text + ") LIKE " + dao::sql::quoted("*" + part + "*");
  std::vector<NamedRow> found;
  if (!first.isEmpty()) {
    QStringList keys;
    for (const qint64 key : first) keys << QString::number(key);
    found = namedRows(database, reference, {},
                      " WHERE " + bracketed(reference.key) + " IN (" + keys.join(",") + ")" + matches);
  }
  const QSet<qint64> known(first.begin(), first.end());
  const std::vector<NamedRow> others =
      namedRows(database, reference, QString("TOP %1 ").arg(limit + first.size()),
                matches.isEmpty() ? QString() : " WHERE" + matches.mid(4));
  for (const NamedRow& row : others)
    if (!known.contains(row.key) && found.size() < size_t(limit) + size_t(first.size())) found.push_back(row);
  return found;
}

int countOf(dao::Database& database, const Page& page) {
  const auto rows = database.openRecordset("SELECT Count(*) AS Anzahl FROM " + bracketed(page.table));
  return rows->eof() ? 0 : rows->value("Anzahl").toInt();
}

}  // namespace qk

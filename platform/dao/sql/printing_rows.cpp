#include "platform/dao/sql/printing_writer.h"

namespace qk::dao::sql {
namespace {

QString named(const QString& name) {
  QString text;
  appendIdentifier(text, name);
  return text;
}

/// The names with what stands behind each.
QString list(const QStringList& names, const QString& behind = {}, const QString& between = ", ") {
  QStringList texts;
  texts.reserve(names.size());
  for (const QString& name : names) texts.append(named(name) + behind);
  return texts.join(between);
}

QString places(qsizetype count) {
  return "(" + QStringList(count, "?").join(", ") + ")";
}

QString thisRow(const TableInfo& table) {
  return " WHERE " + list(table.key.names, " = ?", " AND ");
}

QString insertion(const QString& table, const QStringList& columns, int rows) {
  const QString into = "INSERT INTO " + named(table);
  if (columns.isEmpty()) return into + " DEFAULT VALUES";
  return into + " (" + list(columns) + ") VALUES " + QStringList(rows, places(columns.size())).join(", ");
}

QStringList namesOf(const TableDef& table) {
  QStringList names;
  for (const FieldDef& field : table.fields) names.append(field.name);
  return names;
}

}  // namespace

NativeQuery PrintingWriter::count(const std::vector<SourcePtr>& sources) const {
  return columnsOf({"COUNT(*)"}, sources);
}

NativeQuery PrintingWriter::chosen(const NativeQuery& rows, const Choice& choice) const {
  NativeQuery query = rows;
  const char* before = " WHERE (";
  for (const NativeQuery& condition : choice.conditions) {
    if (condition.text.isEmpty()) continue;
    query.text += before + condition.text + u')';
    query.values += condition.values;
    before = " AND (";
  }
  before = " ORDER BY ";
  for (const NativeQuery& term : choice.order) {
    query.text += before + term.text;
    query.values += term.values;
    before = ", ";
  }
  if (choice.most) {
    query.text += " LIMIT ?";
    query.values.append(*choice.most);
  }
  return query;
}

NativeQuery PrintingWriter::atKey(const NativeQuery& rows, const QStringList& columns, const Key& key) const {
  NativeQuery query = rows;
  const char* before = " WHERE ";
  for (qsizetype i = 0; i < columns.size(); ++i) {
    query.text += before + columns[i] + (key[i].isNull() ? " IS NULL" : " = ?");
    if (!key[i].isNull()) query.values.append(key[i]);
    before = " AND ";
  }
  return query;
}

NativeQuery PrintingWriter::first(const NativeQuery& query, int most) const {
  return {query.text + " LIMIT " + QString::number(most), query.values};
}

QString PrintingWriter::column(const QString& source, const QString& name) const {
  return named(source) + u'.' + named(name);
}

NativeQuery PrintingWriter::within(const QString& column, std::optional<qint64> above, qint64 upTo) const {
  NativeQuery condition;
  if (above) {
    condition.text = column + " > ? AND ";
    condition.values.append(static_cast<qlonglong>(*above));
  }
  condition.text += column + " <= ?";
  condition.values.append(static_cast<qlonglong>(upTo));
  return condition;
}

std::vector<NativeQuery> PrintingWriter::keyOrder(const QString& column, FieldType, bool) const {
  return {{column}};
}

NativeQuery PrintingWriter::descending(const NativeQuery& term) const {
  return {term.text + " DESC", term.values};
}

QString PrintingWriter::insertRow(const TableInfo& table, const QStringList& columns) const {
  return insertion(table.def.name, columns, 1);
}

QString PrintingWriter::insertRows(const TableDef& table, int rows) const {
  return insertion(table.name, namesOf(table), rows);
}

QString PrintingWriter::updateRow(const TableInfo& table, const QStringList& columns) const {
  return "UPDATE " + named(table.def.name) + " SET " + list(columns, " = ?") + thisRow(table);
}

QString PrintingWriter::deleteRow(const TableInfo& table) const {
  return "DELETE FROM " + named(table.def.name) + thisRow(table);
}

QString PrintingWriter::readRow(const TableInfo& table, const QStringList& columns) const {
  return "SELECT " + list(columns) + " FROM " + named(table.def.name) + thisRow(table);
}

QString PrintingWriter::holdRow(const TableInfo& table, const QStringList& columns) const {
  return readRow(table, columns) + holdingRows();
}

NativeQuery PrintingWriter::page(const TableInfo& table, const Key& behind, int most) const {
  const QString key = list(table.key.names);
  QString text = "SELECT " + list(table.key.names + namesOf(table.def)) + " FROM " + named(table.def.name);
  if (!behind.isEmpty()) text += " WHERE (" + key + ") > " + places(behind.size());
  return {text + " ORDER BY " + key + " LIMIT ?", behind + QVariantList{most}};
}

QString PrintingWriter::endOfKeys(const TableInfo& table, End end) const {
  return QString("SELECT %1(%2) FROM %3")
      .arg(end == End::Least ? "min" : "max", named(table.key.names.front()), named(table.def.name));
}

}  // namespace qk::dao::sql

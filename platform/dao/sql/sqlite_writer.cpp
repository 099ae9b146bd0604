#include "platform/dao/sql/sqlite_writer.h"

#include "platform/dao/sql/sqlite_printer.h"
#include "platform/dao/sql/sqlite_values.h"
#include "platform/runtime/error.h"

namespace qk::dao::sql {
namespace {

/// Names in an UPDATE over a join: the table it writes to, and the join with the row to change and its new
/// values.
constexpr auto kTarget = "\"qk_target\"";
constexpr auto kNewValues = "\"qk_new\"";

const TableSource* tableOf(const Source& source) {
  return std::get_if<TableSource>(&source.node);
}
const QString& nameOf(const TableSource& table) {
  return table.alias.isEmpty() ? table.name : table.alias;
}

bool isJoin(const Source& source) {
  return std::holds_alternative<Join>(source.node);
}

/// The side that follows the word JOIN in print: a RIGHT JOIN is turned round, for SQLite has indexes at hand
/// only for the right side.
const Source& printedRight(const Join& join) {
  return join.kind == JoinKind::Right ? *join.left : *join.right;
}
const Source& printedLeft(const Join& join) {
  return join.kind == JoinKind::Right ? *join.right : *join.left;
}

/// The table that stands under this name or alias; null where brackets around a join hide its row number.
const TableSource* findTable(const Source& source, const QString& name) {
  if (const TableSource* table = tableOf(source)) return nameOf(*table) == name ? table : nullptr;
  const auto* join = std::get_if<Join>(&source.node);
  if (!join) return nullptr;
  if (const TableSource* found = findTable(printedLeft(*join), name)) return found;
  return isJoin(printedRight(*join)) ? nullptr : findTable(printedRight(*join), name);
}

/// Names in the order of the tree, which a rewritten RIGHT JOIN would change. False when one has none.
bool sourceNames(const Source& source, QStringList& names, bool& reordered) {
  if (const TableSource* table = tableOf(source)) {
    names << nameOf(*table);
  } else if (const auto* inner = std::get_if<SelectSource>(&source.node)) {
    names << inner->alias;
  } else {
    const Join& join = std::get<Join>(source.node);
    reordered |= join.kind == JoinKind::Right;
    return sourceNames(*join.left, names, reordered) && sourceNames(*join.right, names, reordered);
  }
  return !names.last().isEmpty();
}

}  // namespace

void appendIdentifier(QString& text, const QString& name) {
  text += u'"';
  if (name.contains(u'"')) {
    text += QString(name).replace(u'"', "\"\"");
  } else {
    text += name;
  }
  text += u'"';
}

SqlitePrinter::SqlitePrinter(QVariantList& values, Literals literals) : values_(values), literals_(literals) {
  text_.reserve(256);
}

void SqlitePrinter::select(const Select& select, const std::vector<Kind>& wanted) {
  const bool outerQualified = qualified_;
  const bool isUnion = select.unionNext != nullptr;
  for (const Select* part = &select; part; part = part->unionNext.get()) {
    // SQLite takes a LIMIT only at the end of a union.
    const bool limited = isUnion && part->top;
    if (limited) text_ += "SELECT * FROM (";
    core(*part, wanted);
    if (limited) text_ += QString(" LIMIT %1)").arg(*part->top);
    if (part->unionNext) text_ += part->unionAll ? " UNION ALL " : " UNION ";
  }
  if (!select.orderBy.empty()) text_ += " ORDER BY ";
  bool first = true;
  qualified_ = true;  // a bare name would mean an item's alias first
  for (const OrderItem& item : select.orderBy) {
    if (!first) text_ += ", ";
    first = false;
    orderItem(item);
  }
  if (!isUnion && select.top) text_ += " LIMIT " + QString::number(*select.top);
  qualified_ = outerQualified;
}

void SqlitePrinter::core(const Select& select, const std::vector<Kind>& wanted) {
  qualified_ = select.from.size() != 1 || !tableOf(*select.from.front());
  text_ += select.distinct ? "SELECT DISTINCT " : "SELECT ";
  for (std::size_t i = 0; i < select.items.size(); ++i) {
    if (i > 0) text_ += ", ";
    item(select.items[i], select, i < wanted.size() ? wanted[i] : Kind::Unknown);
  }
  if (!select.from.empty()) text_ += " FROM ";
  from(select.from);
  where(select.where);
  for (std::size_t i = 0; i < select.groupBy.size(); ++i) {
    text_ += i == 0 ? " GROUP BY " : ", ";
    value(*select.groupBy[i]);
  }
  if (select.having) {
    // Without groups the language takes the whole result as one; SQLite wants to be told.
    text_ += select.groupBy.empty() ? " GROUP BY NULL HAVING " : " HAVING ";
    condition(*select.having);
  }
}

void SqlitePrinter::item(const SelectItem& item, const Select& select, Kind wanted) {
  if (item.expression) {
    value(*item.expression, wanted);
    if (!item.alias.isEmpty()) {
      text_ += " AS ";
      name(item.alias);
    }
    return;
  }
  if (!item.starTable.isEmpty()) {
    name(item.starTable);
    text_ += ".*";
    return;
  }
  QStringList names;
  bool reordered = false, named = true;
  for (const SourcePtr& source : select.from) named = sourceNames(*source, names, reordered) && named;
  if (!reordered || !named) {
    text_ += u'*';
    return;
  }
  for (qsizetype i = 0; i < names.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(names[i]);
    text_ += ".*";
  }
}

void SqlitePrinter::from(const std::vector<SourcePtr>& sources) {
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (i == 0) {
      source(*sources[i]);
    } else {
      text_ += ", ";
      bracketed(*sources[i]);
    }
  }
}

void SqlitePrinter::source(const Source& source) {
  if (const TableSource* table = tableOf(source)) return tableSource(*table);
  if (const auto* inner = std::get_if<SelectSource>(&source.node)) {
    text_ += u'(';
    select(*inner->select);
    text_ += u')';
    if (!inner->alias.isEmpty()) {
      text_ += " AS ";
      name(inner->alias);
    }
    return;
  }
  const Join& join = std::get<Join>(source.node);
  this->source(printedLeft(join));
  text_ += join.kind == JoinKind::Inner ? " INNER JOIN " : " LEFT JOIN ";
  bracketed(printedRight(join));
  text_ += " ON ";
  const bool outer = qualified_;
  qualified_ = true;
  condition(*join.on);
  qualified_ = outer;
}

void SqlitePrinter::bracketed(const Source& source) {
  const bool brackets = isJoin(source);
  if (brackets) text_ += u'(';
  this->source(source);
  if (brackets) text_ += u')';
}

void SqlitePrinter::tableSource(const TableSource& table) {
  name(table.name);
  if (!table.alias.isEmpty()) {
    text_ += " AS ";
    name(table.alias);
  }
}

void SqlitePrinter::update(const Update& update) {
  text_ += "UPDATE ";
  const TableSource* table = tableOf(*update.source);
  if (!table) return updateOverJoin(update);
  qualified_ = false;
  tableSource(*table);
  text_ += " SET ";
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(update.set[i].column.name);
    text_ += " = ";
    value(*update.set[i].value, update.set[i].kind);
  }
  where(update.where);
}

void SqlitePrinter::updateOverJoin(const Update& update) {
  const QString& target = update.set.front().column.table;
  const TableSource* table = findTable(*update.source, target);
  if (!table) throw Error(3073);
  const auto newValue = [](std::size_t i) { return QString("v%1").arg(i); };
  name(table->name);
  text_ += QString(" AS ") + kTarget + " SET ";
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(update.set[i].column.name);
    text_ += QString(" = ") + kNewValues + u'.' + newValue(i);
  }
  text_ += " FROM (SELECT ";
  name(target);
  text_ += ".rowid AS r";
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    text_ += ", ";
    value(*update.set[i].value, update.set[i].kind);
    text_ += " AS " + newValue(i);
  }
  text_ += " FROM ";
  source(*update.source);
  where(update.where);
  text_ += QString(") AS ") + kNewValues + " WHERE " + kTarget + ".rowid = " + kNewValues + ".r";
}

void SqlitePrinter::where(const ExpressionPtr& expression) {
  if (!expression) return;
  text_ += " WHERE ";
  condition(*expression);
}

void SqlitePrinter::remove(const Delete& remove) {
  text_ += "DELETE FROM ";
  if (const TableSource* table = tableOf(*remove.source)) {
    qualified_ = false;
    tableSource(*table);
    return where(remove.where);
  }
  const TableSource* table = findTable(*remove.source, remove.starTable);
  if (!table) throw Error(3086);
  name(table->name);
  text_ += " WHERE rowid IN (SELECT ";
  name(remove.starTable);
  text_ += ".rowid FROM ";
  source(*remove.source);
  where(remove.where);
  text_ += u')';
}

void SqlitePrinter::insert(const Insert& insert) {
  text_ += "INSERT INTO ";
  name(insert.table);
  text_ += " (";
  for (qsizetype i = 0; i < insert.columns.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(insert.columns[i]);
  }
  text_ += ") ";
  if (insert.select) return select(*insert.select, insert.kinds);
  text_ += "VALUES (";
  for (std::size_t i = 0; i < insert.values.size(); ++i) {
    if (i > 0) text_ += ", ";
    value(*insert.values[i], insert.kinds[i]);
  }
  text_ += u')';
}

void SqlitePrinter::orderItem(const OrderItem& item) {
  value(*item.expression);
  if (item.expression->kind == Kind::Text) text_ += " COLLATE german";
  if (item.descending) text_ += " DESC";
}

NativeQuery SqliteWriter::statement(const Statement& statement) const {
  NativeQuery query;
  SqlitePrinter printer(query.values);
  if (const auto* select = std::get_if<Select>(&statement)) {
    printer.select(*select);
  } else if (const auto* update = std::get_if<Update>(&statement)) {
    printer.update(*update);
  } else if (const auto* remove = std::get_if<Delete>(&statement)) {
    printer.remove(*remove);
  } else {
    printer.insert(std::get<Insert>(statement));
  }
  query.text = printer.take();
  return query;
}

NativeQuery SqliteWriter::select(const Select& select) const {
  NativeQuery query;
  SqlitePrinter printer(query.values);
  printer.select(select);
  query.text = printer.take();
  return query;
}

NativeQuery SqliteWriter::condition(const Expression& expression) const {
  NativeQuery query;
  SqlitePrinter printer(query.values);
  printer.condition(expression);
  query.text = printer.take();
  return query;
}

NativeQuery SqliteWriter::orderTerm(const OrderItem& item) const {
  NativeQuery query;
  SqlitePrinter printer(query.values);
  printer.orderItem(item);
  query.text = printer.take();
  return query;
}

QString SqliteWriter::source(const Source& source, QVariantList& values) const {
  SqlitePrinter printer(values);
  printer.source(source);
  return printer.take();
}

QString SqliteWriter::identifier(const QString& name) const {
  QString text;
  appendIdentifier(text, name);
  return text;
}

QVariant SqliteWriter::toNative(const QVariant& value, FieldType type) const {
  const QVariant native = toSqlite(value, kindOf(type));
  if (type != FieldType::Boolean || native.isNull()) return native;
  return native.toDouble() != 0 ? -1 : 0;
}

QVariant SqliteWriter::fromNative(const QVariant& native, FieldType type) const {
  return fromSqlite(native, type);
}

QString SqliteWriter::plainText(const Select& select) const {
  QVariantList unused;
  SqlitePrinter printer(unused, SqlitePrinter::Literals::WrittenOut);
  printer.select(select);
  return printer.take();
}

}  // namespace qk::dao::sql

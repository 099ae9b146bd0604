#include "platform/dao/sql/printer.h"

#include <utility>

#include "platform/runtime/error.h"

namespace qk::dao::sql {
namespace {

/// The table that stands under this name or alias; null where brackets around a join hide its rows.
const TableSource* findTable(const Source& source, const QString& name) {
  if (const TableSource* table = tableOf(source)) return nameOf(*table) == name ? table : nullptr;
  const auto* join = std::get_if<Join>(&source.node);
  if (!join) return nullptr;
  if (const TableSource* found = findTable(printedLeft(*join), name)) return found;
  return isJoin(printedRight(*join)) ? nullptr : findTable(printedRight(*join), name);
}

const TableSource& targetOf(const Update& update) {
  const TableSource* target = findTable(*update.source, update.set.front().column.table);
  if (!target) throw Error(errors::kNoUpdatableQuery);
  return *target;
}

}  // namespace

const Source& printedRight(const Join& join) {
  return join.kind == JoinKind::Right ? *join.left : *join.right;
}
const Source& printedLeft(const Join& join) {
  return join.kind == JoinKind::Right ? *join.right : *join.left;
}

void appendIdentifier(QString& text, const QString& name) {
  text += u'"';
  if (name.contains(u'"')) {
    text += QString(name).replace(u'"', "\"\"");
  } else {
    text += name;
  }
  text += u'"';
}

Printer::Printer(QVariantList& values, Literals literals) : values_(values), literals_(literals) {
  text_.reserve(256);
}

void Printer::select(const Select& select, const std::vector<Kind>& wanted) {
  const bool outerQualified = qualified_;
  const bool isUnion = select.unionNext != nullptr;
  for (const Select* part = &select; part; part = part->unionNext.get()) {
    // SQLite takes a LIMIT only at the end of a union.
    const bool limited = isUnion && part->top;
    if (limited) text_ += "SELECT * FROM (";
    core(*part, part == &select || !wanted.empty() ? wanted : kindsOfItems(select));
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

void Printer::bare(const Select& select) {
  qualify(select);
  text_ += "SELECT ";
  items(select, {});
  from(select.from);
}

void Printer::columnsOf(const QStringList& columns, const std::vector<SourcePtr>& sources) {
  text_ += "SELECT " + columns.join(", ");
  from(sources);
}

/// Where one table stands alone, its columns need no name before them.
void Printer::qualify(const Select& select) {
  qualified_ = select.from.size() != 1 || !tableOf(*select.from.front());
}

void Printer::core(const Select& select, const std::vector<Kind>& wanted) {
  qualify(select);
  text_ += select.distinct ? "SELECT DISTINCT " : "SELECT ";
  items(select, wanted);
  from(select.from);
  where(select.where);
  groups(select);
}

void Printer::items(const Select& select, const std::vector<Kind>& wanted) {
  for (std::size_t i = 0; i < select.items.size(); ++i) {
    if (i > 0) text_ += ", ";
    item(select.items[i], select, i < wanted.size() ? wanted[i] : Kind::Unknown);
  }
}

void Printer::groups(const Select& select) {
  for (std::size_t i = 0; i < select.groupBy.size(); ++i) {
    text_ += i == 0 ? " GROUP BY " : ", ";
    group(*select.groupBy[i]);
  }
  if (!select.having) return;
  if (select.groupBy.empty()) groupOfAll();
  text_ += " HAVING ";
  condition(*select.having);
}

void Printer::item(const SelectItem& item, const Select& select, Kind wanted) {
  if (!item.expression) return star(item, select);
  if (storing_) {
    stored(*item.expression, wanted);
  } else {
    resultValue(*item.expression, wanted);
  }
  if (item.alias.isEmpty()) return;
  text_ += " AS ";
  name(item.alias);
}

void Printer::from(const std::vector<SourcePtr>& sources) {
  for (std::size_t i = 0; i < sources.size(); ++i) {
    text_ += i == 0 ? " FROM " : ", ";
    if (i == 0) {
      source(*sources[i]);
    } else {
      bracketed(*sources[i]);
    }
  }
}

void Printer::source(const Source& source) {
  if (const TableSource* table = tableOf(source)) return tableSource(*table);
  if (const auto* inner = std::get_if<SelectSource>(&source.node)) {
    text_ += u'(';
    const bool outer = std::exchange(storing_, false);
    select(*inner->select);
    storing_ = outer;
    text_ += ") AS ";
    return name(inner->alias.isEmpty() ? QString("qk_unnamed%1").arg(++unnamed_) : inner->alias);
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

void Printer::bracketed(const Source& source) {
  const bool brackets = isJoin(source);
  if (brackets) text_ += u'(';
  this->source(source);
  if (brackets) text_ += u')';
}

void Printer::tableSource(const TableSource& table) {
  name(table.name);
  if (!table.alias.isEmpty()) {
    text_ += " AS ";
    name(table.alias);
  }
}

void Printer::update(const Update& update) {
  text_ += "UPDATE ";
  const TableSource* table = tableOf(*update.source);
  if (!table) return updateOverJoin(update, targetOf(update));
  qualified_ = false;
  tableSource(*table);
  text_ += " SET ";
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(update.set[i].column.name);
    text_ += " = ";
    stored(*update.set[i].value, update.set[i].kind);
  }
  where(update.where);
}

void Printer::keysToChange(const Update& update, const QString& key) {
  keysOverJoin(update, targetOf(update), key);
}

void Printer::within(const KeyRange& range) {
  if (range.keys.empty()) {
    text_ += QString(" BETWEEN %1 AND %2 AND ").arg(range.low).arg(range.high);
    return;
  }
  QStringList keys;
  for (const qint64 key : range.keys) keys << QString::number(key);
  text_ += " IN (" + keys.join(u',') + ") AND ";
}

void Printer::joinOf(const Update& update, const TableSource& target) {
  text_ += " FROM ";
  source(*update.source);
  text_ += " WHERE ";
  if (update.piece) {
    storedColumn(target, update.piece->key);
    within(*update.piece);
  }
  if (!update.where) return;
  text_ += u'(';
  condition(*update.where);
  text_ += ") AND ";
}

void Printer::givesOthers(const Update& update, const TableSource& target) {
  text_ += u'(';
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    if (i > 0) text_ += " OR ";
    differs(target, update.set[i]);
  }
  text_ += u')';
}

void Printer::storedColumn(const TableSource& target, const QString& column) {
  name(nameOf(target));
  text_ += u'.';
  name(column);
}

void Printer::where(const ExpressionPtr& expression) {
  if (!expression) return;
  text_ += " WHERE ";
  condition(*expression);
}

void Printer::remove(const Delete& remove) {
  text_ += "DELETE FROM ";
  if (const TableSource* table = tableOf(*remove.source)) {
    qualified_ = false;
    tableSource(*table);
    return where(remove.where);
  }
  const TableSource* target = findTable(*remove.source, remove.starTable);
  if (!target) throw Error(errors::kNoDeletableTable);
  name(target->name);
  text_ += " WHERE ";
  rowOfJoin(remove, *target);
}

void Printer::insert(const Insert& insert) {
  text_ += "INSERT INTO ";
  name(insert.table);
  text_ += " (";
  for (qsizetype i = 0; i < insert.columns.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(insert.columns[i]);
  }
  text_ += ") ";
  if (insert.select) {
    storing_ = true;
    return select(*insert.select, insert.kinds);
  }
  text_ += "VALUES (";
  for (std::size_t i = 0; i < insert.values.size(); ++i) {
    if (i > 0) text_ += ", ";
    stored(*insert.values[i], insert.kinds[i]);
  }
  text_ += u')';
}

}  // namespace qk::dao::sql

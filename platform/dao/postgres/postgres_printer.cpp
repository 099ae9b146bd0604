#include "platform/dao/postgres/postgres_printer.h"

#include <algorithm>
#include <utility>

#include "platform/dao/sql/functions.h"

namespace qk::dao::sql {
namespace {

/// Sets a value until the end of a block.
template <class Value>
class Set {
 public:
  Set(Value& place, Value value) : place_(place), former_(std::exchange(place, value)) {}
  ~Set() { place_ = former_; }
  Set(const Set&) = delete;
  Set& operator=(const Set&) = delete;

 private:
  Value& place_;
  Value former_;
};

bool isOneGroup(const Select& select) {
  return select.groupBy.empty() &&
         (select.having || std::any_of(select.items.begin(), select.items.end(), [](const SelectItem& item) {
            return item.expression && hasAggregate(*item.expression);
          }));
}

QString numberedName(std::size_t index) {
  return QString("c%1").arg(index + 1);
}

const char* nullsOf(bool descending) {
  return descending ? " DESC NULLS LAST" : " NULLS FIRST";
}

/// Position behind the last part of a union that a UNION without ALL takes in: all before it is made
/// distinct.
std::size_t distinctParts(const Select& select) {
  std::size_t count = 0, position = 1;
  for (const Select* part = &select; part->unionNext; part = part->unionNext.get(), ++position)
    if (!part->unionAll) count = position + 1;
  return count;
}

}  // namespace

/// Whatever is sorted by nobody comes by its keys, for PostgreSQL moves a row that is changed.
void PostgresPrinter::select(const Select& select, const std::vector<Kind>& wanted) {
  const Set<bool> outerQualified(qualified_, qualified_);
  const Set<const Select*> outerGrouped(grouped_, nullptr);
  const Set<bool> outerWriteOut(writeOut_, writeOut_);
  const Set<int> deeper(depth_, depth_ + 1);
  if (select.unionNext) return unionOf(select, wanted);
  if (select.distinct) return distinct(select, wanted);
  plain(select, wanted, depth_ == 1 || select.top || !select.orderBy.empty());
}

void PostgresPrinter::plain(const Select& select, const std::vector<Kind>& wanted, bool ordered) {
  core(select, wanted);
  if (ordered) order(select);
  if (select.top) text_ += " LIMIT " + QString::number(*select.top);
}

/// Equal texts of different case are one group, shown by one of them.
void PostgresPrinter::core(const Select& select, const std::vector<Kind>& wanted) {
  qualify(select);
  writeOut_ = writeOut_ || !select.groupBy.empty();
  text_ += "SELECT ";
  {
    const Set<const Select*> grouping(grouped_, select.groupBy.empty() ? nullptr : &select);
    items(select, wanted);
  }
  from(select.from);
  where(select.where);
  for (std::size_t i = 0; i < select.groupBy.size(); ++i) {
    text_ += i == 0 ? " GROUP BY " : ", ";
    group(*select.groupBy[i]);
  }
  if (!select.having) return;
  const Set<const Select*> grouping(grouped_, select.groupBy.empty() ? nullptr : &select);
  text_ += " HAVING ";
  condition(*select.having);
}

void PostgresPrinter::print(const Expression& expression) {
  const qsizetype start = text_.size();
  Printer::print(expression);
  if (!grouped_ || expression.kind != Kind::Text || !isGroup(text_.sliced(start))) return;
  text_.insert(start, "min(");
  text_ += u')';
}

/// Whether one of the groups is printed so.
bool PostgresPrinter::isGroup(const QString& printed) {
  const Select* grouped = std::exchange(grouped_, nullptr);
  const qsizetype start = text_.size();
  const bool found = std::any_of(grouped->groupBy.begin(), grouped->groupBy.end(), [&](const auto& group) {
    if (group->kind != Kind::Text) return false;
    Printer::print(*group);
    const bool same = QStringView(text_).sliced(start) == printed;
    text_.truncate(start);
    return same;
  });
  grouped_ = grouped;
  return found;
}

void PostgresPrinter::group(const Expression& expression) {
  if (expression.kind == Kind::Text) return folded(expression);
  sortable(expression);
}

/// A bare constant would be the number of a column.
void PostgresPrinter::sortable(const Expression& expression) {
  value(expression);
  if (expression.kind == Kind::Unknown && as<Literal>(expression)) text_ += "::text";
}

void PostgresPrinter::term(const Expression& expression, bool descending) {
  sortable(expression);
  if (expression.kind == Kind::Text) text_ += " COLLATE german";
  text_ += nullsOf(descending);
}

void PostgresPrinter::orderItem(const OrderItem& item) {
  term(*item.expression, item.descending);
}

void PostgresPrinter::order(const Select& select) {
  if (isOneGroup(select)) return;
  qualified_ = true;  // a bare name would mean an item's alias first
  const qsizetype start = text_.size();
  {
    const Set<const Select*> grouping(grouped_, select.groupBy.empty() ? nullptr : &select);
    for (const OrderItem& item : select.orderBy) {
      text_ += ", ";
      orderItem(item);
    }
  }
  for (const ExpressionPtr& term : select.groupBy) {
    text_ += ", ";
    group(*term);
    text_ += nullsOf(false);
  }
  if (select.groupBy.empty())
    for (const SourcePtr& source : select.from) appendTies(*source);
  if (text_.size() > start) text_.replace(start, 2, " ORDER BY ");
}

void PostgresPrinter::appendTies(const Source& source) {
  if (const auto* join = std::get_if<Join>(&source.node)) {
    appendTies(*join->left);
    return appendTies(*join->right);
  }
  Columns columns;
  QString qualifier;
  if (const TableSource* table = tableOf(source)) {
    qualifier = nameOf(*table);
    const StoredTable stored = tables_(table->name);
    for (const QString& key : stored.key) {
      const qsizetype place = stored.columns.indexOf(key);
      columns.names << key;
      columns.kinds.push_back(place < 0 ? Kind::Number : stored.kinds[std::size_t(place)]);
    }
  } else {
    qualifier = std::get<SelectSource>(source.node).alias;
  }
  if (qualifier.isEmpty()) return;
  if (columns.names.isEmpty()) appendColumns(source, {}, columns);
  for (qsizetype i = 0; i < columns.names.size(); ++i) {
    QString column;
    appendIdentifier(column, qualifier);
    column += u'.';
    appendIdentifier(column, columns.names[i]);
    if (columns.kinds[std::size_t(i)] == Kind::Text) column = foldedText(column);
    text_ += ", " + column;
  }
}

PostgresPrinter::Columns PostgresPrinter::columnsOf(const Select& select) const {
  Columns columns;
  for (const SelectItem& item : select.items) {
    if (!item.expression) {
      for (const SourcePtr& source : select.from) appendColumns(*source, item.starTable, columns);
      continue;
    }
    const auto* column = as<Column>(*item.expression);
    const QString unnamed = column ? column->name : QString("Ausdr%1").arg(columns.names.size() + 1);
    columns.names << (item.alias.isEmpty() ? unnamed : item.alias);
    columns.kinds.push_back(item.expression->kind);
  }
  return columns;
}

/// Of all sources, or of the one that bears a name.
void PostgresPrinter::appendColumns(const Source& source, const QString& only, Columns& columns) const {
  if (const auto* join = std::get_if<Join>(&source.node)) {
    appendColumns(*join->left, only, columns);
    return appendColumns(*join->right, only, columns);
  }
  if (const TableSource* table = tableOf(source)) {
    if (!only.isEmpty() && nameOf(*table) != only) return;
    const StoredTable stored = tables_(table->name);
    columns.names += stored.columns;
    columns.kinds.insert(columns.kinds.end(), stored.kinds.begin(), stored.kinds.end());
    return;
  }
  const auto& inner = std::get<SelectSource>(source.node);
  if (!only.isEmpty() && inner.alias != only) return;
  const Columns found = columnsOf(*inner.select);
  columns.names += found.names;
  columns.kinds.insert(columns.kinds.end(), found.kinds.begin(), found.kinds.end());
}

/// Column by column: a key of the engine's own stays hidden, and a join that is turned round keeps its order.
void PostgresPrinter::star(const SelectItem& item, const Select& select) {
  const qsizetype start = text_.size();
  const auto list = [&](const auto& self, const Source& source) -> void {
    if (const auto* join = std::get_if<Join>(&source.node)) {
      self(self, *join->left);
      return self(self, *join->right);
    }
    const TableSource* table = tableOf(source);
    const QString qualifier = table ? nameOf(*table) : std::get<SelectSource>(source.node).alias;
    if (!item.starTable.isEmpty() && qualifier != item.starTable) return;
    Columns columns;
    appendColumns(source, {}, columns);
    for (const QString& column : std::as_const(columns.names)) {
      if (text_.size() > start) text_ += ", ";
      if (qualified_ && !qualifier.isEmpty()) {
        name(qualifier);
        text_ += u'.';
      }
      name(column);
    }
  };
  for (const SourcePtr& source : select.from) list(list, *source);
}

/// "c1 AS name, c2 AS name …"
void PostgresPrinter::shown(const Columns& columns) {
  text_ += "SELECT ";
  for (qsizetype i = 0; i < columns.names.size(); ++i) {
    if (i > 0) text_ += ", ";
    text_ += numberedName(std::size_t(i)) + " AS ";
    name(columns.names[i]);
  }
  text_ += " FROM (";
}

QStringList PostgresPrinter::keysOf(const Columns& columns) const {
  QStringList keys;
  for (std::size_t i = 0; i < columns.kinds.size(); ++i)
    keys << (columns.kinds[i] == Kind::Text ? foldedText(numberedName(i)) : numberedName(i));
  return keys;
}

void PostgresPrinter::distinctRows(const Columns& columns) {
  text_ += "SELECT DISTINCT ON (" + keysOf(columns).join(", ") + ") * FROM (";
}

/// The end of a select inside another one, with names for its columns, and for some more behind them.
void PostgresPrinter::numbered(const Columns& columns, std::size_t more) {
  QStringList names;
  for (std::size_t i = 0; i < columns.kinds.size(); ++i) names << numberedName(i);
  for (std::size_t i = 0; i < more; ++i) names << QString("o%1").arg(i + 1);
  text_ += ") AS qk_rows(" + names.join(", ") + u')';
}

/// The order of numbered columns: by the items' own terms o1, o2 … or by names of the result; then by all.
void PostgresPrinter::numberedOrder(const Select& select, const Columns& columns, bool fromItems) {
  QStringList terms;
  for (std::size_t i = 0; i < select.orderBy.size(); ++i) {
    const OrderItem& item = select.orderBy[i];
    QString column = QString("o%1").arg(i + 1);
    if (const auto* named = as<Column>(*item.expression); named && !fromItems)
      column = numberedName(std::size_t(std::max<qsizetype>(0, columns.names.indexOf(named->name))));
    if (item.expression->kind == Kind::Text) column += " COLLATE german";
    terms << column + nullsOf(item.descending);
  }
  for (const QString& key : keysOf(columns)) terms << key + nullsOf(false);
  text_ += " ORDER BY " + terms.join(", ");
}

void PostgresPrinter::distinct(const Select& select, const std::vector<Kind>& wanted) {
  const Columns columns = columnsOf(select);
  shown(columns);
  distinctRows(columns);
  qualify(select);
  writeOut_ = writeOut_ || !select.groupBy.empty();
  text_ += "SELECT ";
  const Set<const Select*> grouping(grouped_, select.groupBy.empty() ? nullptr : &select);
  items(select, wanted);
  for (const OrderItem& item : select.orderBy) {
    text_ += ", ";
    value(*item.expression);
  }
  {
    const Set<const Select*> none(grouped_, nullptr);
    from(select.from);
    where(select.where);
    groups(select);
  }
  numbered(columns, select.orderBy.size());
  text_ += ") AS qk_rows";
  numberedOrder(select, columns, true);
  if (select.top) text_ += " LIMIT " + QString::number(*select.top);
}

void PostgresPrinter::unionOf(const Select& select, const std::vector<Kind>& wanted) {
  const Columns columns = columnsOf(select);
  const std::size_t distinctEnd = distinctParts(select);
  shown(columns);
  if (distinctEnd > 0) distinctRows(columns);
  std::size_t position = 0;
  for (const Select* part = &select; part; part = part->unionNext.get(), ++position) {
    if (position > 0) text_ += " UNION ALL ";
    std::vector<Kind> kinds = wanted;
    if (kinds.empty() && position > 0) kinds = columns.kinds;
    text_ += u'(';
    if (part->distinct) text_ += "SELECT DISTINCT * FROM (";
    core(*part, kinds);
    if (part->top) {
      for (const SourcePtr& source : part->from) {
        const qsizetype start = text_.size();
        qualified_ = true;
        appendTies(*source);
        if (text_.size() > start && source == part->from.front()) text_.replace(start, 2, " ORDER BY ");
      }
      text_ += " LIMIT " + QString::number(*part->top);
    }
    if (part->distinct) text_ += ") AS qk_part";
    text_ += u')';
    if (distinctEnd > 0 && position + 1 == distinctEnd) numbered(columns, 0);
  }
  numbered(columns, 0);
  numberedOrder(select, columns, false);
}

void PostgresPrinter::updateOverJoin(const Update& update, const TableSource& target) {
  name(target.name);
  text_ += " AS qk_target SET ";
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(update.set[i].column.name);
    text_ += QString(" = qk_new.v%1").arg(i);
  }
  newValues(update, target);
  text_ += " AND qk_target.";
  if (update.piece) {  // else the server reads all rows of the table for each piece
    name(update.piece->key);
    within(*update.piece);
    text_ += "qk_target.";
  }
  const QStringList key = tables_(target.name).key;
  for (qsizetype i = 0; i < key.size(); ++i) {
    if (i > 0) text_ += " AND qk_target.";
    name(key[i]);
    text_ += QString(" = qk_new.k%1").arg(i);
  }
}

void PostgresPrinter::keysOverJoin(const Update& update, const TableSource& target, const QString& key) {
  text_ += QString("SELECT k%1").arg(tables_(target.name).key.indexOf(key));
  newValues(update, target);
}

/// What a join gives to the rows that are not right, as qk_new: their keys k0 … and their values v0 …
/// OFFSET keeps the order: the right rows are looked for when a row of the join gives others. IS NOT TRUE
/// keeps the two from being joined, for which the server guesses the sizes far too small.
void PostgresPrinter::newValues(const Update& update, const TableSource& target) {
  const QStringList key = tables_(target.name).key;
  text_ += " FROM (SELECT ";
  for (qsizetype i = 0; i < key.size(); ++i) {
    storedColumn(target, key[i]);
    text_ += QString(" AS k%1, ").arg(i);
  }
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    if (i > 0) text_ += ", ";
    stored(*update.set[i].value, update.set[i].kind);
    text_ += QString(" AS v%1").arg(i);
  }
  joinOf(update, target);
  givesOthers(update, target);
  text_ += " OFFSET 0) AS qk_new WHERE EXISTS (SELECT 1";
  joinOf(update, target);
  for (qsizetype i = 0; i < key.size(); ++i) {
    storedColumn(target, key[i]);
    text_ += QString(" = qk_new.k%1 AND ").arg(i);
  }
  text_ += "NOT ";
  givesOthers(update, target);
  text_ += ") IS NOT TRUE";
}

void PostgresPrinter::differs(const TableSource& target, const Assignment& assignment) {
  storedColumn(target, assignment.column.name);
  if (assignment.kind == Kind::Text) text_ += " COLLATE \"C\"";
  text_ += " IS DISTINCT FROM (";
  stored(*assignment.value, assignment.kind);
  text_ += u')';
}

void PostgresPrinter::rowOfJoin(const Delete& remove, const TableSource& target) {
  QStringList own, joined;
  for (const QString& part : tables_(target.name).key) {
    QString column;
    appendIdentifier(column, part);
    own << column;
    QString qualifier;
    appendIdentifier(qualifier, nameOf(target));
    joined << qualifier + u'.' + column;
  }
  text_ += u'(' + own.join(", ") + ") IN (SELECT " + joined.join(", ") + " FROM ";
  source(*remove.source);
  where(remove.where);
  text_ += u')';
}

}  // namespace qk::dao::sql

#include "platform/dao/sql/resolver.h"

#include "platform/dao/sql/bindings.h"
#include "platform/dao/sql/functions.h"
#include "platform/runtime/error.h"

namespace qk::dao::sql {
namespace {

[[noreturn]] void throwUnknown(const QString& name) {
  throw Error(errors::kUnknownColumn, QString("Zu wenige Parameter: der Name '%1' ist unbekannt.").arg(name));
}

/// Resolves one query level; the levels around it are reachable through outer.
class Resolver {
 public:
  Resolver(const Catalogue& catalogue, const Resolver* outer) : catalogue_(catalogue), outer_(outer) {}

  void select(Select& select);
  void update(Update& update);
  void remove(Delete& remove);
  void insert(Insert& insert);
  void criterion(Expression& criterion, const Select& select);

 private:
  enum class Place { Row, Group };  ///< whether aggregates may stand

  void core(Select& select);
  void order(Select& select);
  void nameItems(Select& select) const;
  void orderOfUnion(Select& select);
  void from(Source& source);
  void conditions(Source& source);
  void expression(Expression& expression, Place place);
  void expression(const ExpressionPtr& pointer, Place place) {
    if (pointer) expression(*pointer, place);
  }
  Kind node(Literal& literal, Place place);
  Kind node(Column& column, Place place);
  Kind node(Unary& unary, Place place);
  Kind node(Binary& binary, Place place);
  Kind node(Between& between, Place place);
  Kind node(In& in, Place place);
  Kind node(IsNull& isNull, Place place);
  Kind node(Call& call, Place place);

  bool bindColumn(Column& column, Kind& kind) const;
  bool bindOuter(Column& column, Kind& kind) const;
  bool set(Column& column, Kind& kind, int source, int field) const;
  bool replaceByAlias(Expression& expression, const Select& select) const;
  bool replaceByResultName(Expression& expression);

  const Catalogue& catalogue_;
  const Resolver* outer_;
  Bindings bindings_;
  std::vector<ExpandedColumn> resultNames_;  ///< of a criterion; they go before the columns of the sources
  bool overUnion_ = false;
  bool aggregated_ = false;  ///< an aggregate stands among the items
};

void Resolver::select(Select& select) {
  core(select);
  if (!select.unionNext) return order(select);
  const auto width = [this](const Select& part) {
    return expand(part, bindSources(part.from, catalogue_)).size();
  };
  for (Select* next = select.unionNext.get(); next; next = next->unionNext.get()) {
    Resolver(catalogue_, outer_).core(*next);
    if (width(*next) != width(select)) {
      throw Error(errors::kUnionColumnCount);
    }
  }
  orderOfUnion(select);
}

void Resolver::core(Select& select) {
  for (const SourcePtr& source : select.from) from(*source);
  for (const SourcePtr& source : select.from) bindSources(*source, catalogue_, false, bindings_);
  for (const SourcePtr& source : select.from) conditions(*source);
  for (SelectItem& item : select.items) {
    if (item.expression) {
      expression(item.expression, Place::Group);
      continue;
    }
    const int source = findBinding(bindings_, item.starTable);
    if (bindings_.empty() || (!item.starTable.isEmpty() && source < 0)) {
      throwUnknownSource(item.starTable);
    }
    if (source >= 0) item.starTable = bindings_[std::size_t(source)].name;
  }
  expression(select.where, Place::Row);
  for (const ExpressionPtr& group : select.groupBy) expression(group, Place::Row);
  expression(select.having, Place::Group);
}

void Resolver::order(Select& select) {
  const Place place = aggregated_ || !select.groupBy.empty() ? Place::Group : Place::Row;
  for (OrderItem& item : select.orderBy) {
    if (const auto* literal = std::get_if<Literal>(&item.expression->node);
        literal && literal->value.userType() == QMetaType::LongLong) {
      const qlonglong position = literal->value.toLongLong();
      const std::vector<ExpandedColumn> columns = expand(select, bindings_);
      if (position < 1 || position > qlonglong(columns.size())) throwUnknown(QString::number(position));
      const ExpandedColumn& column = columns[std::size_t(position - 1)];
      if (column.expression) {
        item.expression = clone(*column.expression);
        continue;
      }
      const Binding& binding = bindings_[std::size_t(column.source)];
      item.expression->node = Column{binding.name, binding.field(column.field).name, -1};
    }
    if (!replaceByAlias(*item.expression, select)) expression(item.expression, place);
  }
}

void Resolver::orderOfUnion(Select& select) {
  const std::vector<ResultColumn> columns = resultColumns(select, bindings_);
  for (OrderItem& item : select.orderBy) {
    const ResultColumn* found = nullptr;
    QString wanted;
    if (auto* column = std::get_if<Column>(&item.expression->node)) {
      wanted = column->name;
      for (const ResultColumn& candidate : columns) {
        if (sameName(candidate.name, wanted)) found = &candidate;
      }
    } else if (const auto* literal = std::get_if<Literal>(&item.expression->node)) {
      const qlonglong position = literal->value.toLongLong();
      wanted = literal->value.toString();
      if (position >= 1 && position <= qlonglong(columns.size())) found = &columns[std::size_t(position - 1)];
    }
    if (!found) throwUnknown(wanted);
    item.expression->node = Column{{}, found->name, -1};
    item.expression->kind = kindOf(found->type.type);
  }
}

/// A name of no source that an item of the select bears as its alias stands for that item.
bool Resolver::replaceByAlias(Expression& expression, const Select& select) const {
  const auto* column = std::get_if<Column>(&expression.node);
  if (!column || !column->table.isEmpty()) return false;
  for (const Binding& binding : bindings_) {
    if (binding.find(column->name) >= 0) return false;
  }
  for (const SelectItem& item : select.items) {
    if (!item.expression || !sameName(item.alias, column->name)) continue;
    ExpressionPtr copy = clone(*item.expression);
    expression.node = std::move(copy->node);
    expression.kind = copy->kind;
    return true;
  }
  return false;
}

void Resolver::from(Source& source) {
  if (auto* table = std::get_if<TableSource>(&source.node)) {
    if (!table->file.isEmpty()) return;
    if (const TableDef* definition = catalogue_.find(table->name)) table->name = definition->name;
  } else if (auto* inner = std::get_if<SelectSource>(&source.node)) {
    Resolver level(catalogue_, nullptr);
    level.select(*inner->select);
    level.nameItems(*inner->select);
  } else {
    Join& join = std::get<Join>(source.node);
    from(*join.left);
    from(*join.right);
  }
}

/// Gives every item of a subselect its result name as alias, where the level around couldn't tell it
/// otherwise.
void Resolver::nameItems(Select& select) const {
  std::vector<SelectItem> items;
  for (const ExpandedColumn& column : expand(select, bindings_)) {
    SelectItem item{nullptr, {}, column.name};
    if (column.expression) {
      item.expression = clone(*column.expression);
    } else {
      Column bound;
      item.expression = std::make_unique<Expression>();
      set(bound, item.expression->kind, column.source, column.field);
      item.expression->node = std::move(bound);
    }
    items.push_back(std::move(item));
  }
  select.items = std::move(items);
}

void Resolver::conditions(Source& source) {
  if (auto* join = std::get_if<Join>(&source.node)) {
    conditions(*join->left);
    conditions(*join->right);
    expression(join->on, Place::Row);
  }
}

void Resolver::expression(Expression& expression, Place place) {
  if (!resultNames_.empty() && replaceByResultName(expression)) return;
  expression.kind = std::visit([&](auto& inner) { return node(inner, place); }, expression.node);
}

Kind Resolver::node(Literal& literal, Place) {
  switch (literal.value.userType()) {
    case QMetaType::Bool:
      return Kind::Boolean;
    case QMetaType::LongLong:
    case QMetaType::Double:
      return Kind::Number;
    case QMetaType::QString:
      return Kind::Text;
    case QMetaType::QDateTime:
      return Kind::Date;
    default:
      return Kind::Unknown;
  }
}

bool Resolver::set(Column& column, Kind& kind, int source, int field) const {
  const Binding& binding = bindings_[std::size_t(source)];
  column.table = binding.name;
  column.name = binding.field(field).name;
  column.source = source;
  kind = kindOf(binding.field(field).type);
  return true;
}

bool Resolver::bindColumn(Column& column, Kind& kind) const {
  QString name = column.name;
  if (!column.table.isEmpty()) {
    const int source = findBinding(bindings_, column.table);
    const int field = source < 0 ? -1 : bindings_[std::size_t(source)].find(column.name);
    if (field >= 0) return set(column, kind, source, field);
    name = column.table + u'.' + column.name;
  }
  int foundSource = -1, foundField = -1;
  for (int source = 0; source < int(bindings_.size()); ++source) {
    const int field = bindings_[std::size_t(source)].find(name);
    if (field < 0) continue;
    if (foundSource >= 0) {
      throw Error(
          3079,
          QString("Das Feld '%1' kann sich auf mehr als eine Tabelle der FROM-Klausel beziehen.").arg(name));
    }
    foundSource = source;
    foundField = field;
  }
  return foundSource >= 0 && set(column, kind, foundSource, foundField);
}

bool Resolver::bindOuter(Column& column, Kind& kind) const {
  for (const Resolver* level = outer_; level; level = level->outer_) {
    if (!level->bindColumn(column, kind)) continue;
    column.source = -1;  // positions count within one level
    return true;
  }
  return false;
}

Kind Resolver::node(Column& column, Place) {
  Kind kind = Kind::Unknown;
  if (!bindColumn(column, kind) && !bindOuter(column, kind)) {
    throwUnknown(column.table.isEmpty() ? column.name : column.table + u'.' + column.name);
  }
  return kind;
}

Kind Resolver::node(Unary& unary, Place place) {
  expression(unary.operand, place);
  if (unary.op == UnaryOperator::Not) return Kind::Boolean;
  return unary.operand->kind == Kind::Money ? Kind::Money : Kind::Number;
}

Kind Resolver::node(Binary& binary, Place place) {
  expression(binary.left, place);
  expression(binary.right, place);
  const Kind left = binary.left->kind, right = binary.right->kind;
  const auto either = [&](Kind kind) { return left == kind || right == kind; };
  switch (binary.op) {
    case BinaryOperator::Concat:
      return Kind::Text;
    case BinaryOperator::Add:
    case BinaryOperator::Subtract:
      if (binary.op == BinaryOperator::Add && left == Kind::Text && right == Kind::Text) return Kind::Text;
      if (left == Kind::Date && right == Kind::Date) return Kind::Number;
      if (either(Kind::Date)) return Kind::Date;
      return either(Kind::Money) ? Kind::Money : Kind::Number;
    case BinaryOperator::Multiply:
      return either(Kind::Money) ? Kind::Money : Kind::Number;
    case BinaryOperator::Divide:
    case BinaryOperator::IntegerDivide:
    case BinaryOperator::Modulo:
      return Kind::Number;
    default:
      return Kind::Boolean;
  }
}

Kind Resolver::node(Between& between, Place place) {
  expression(between.value, place);
  expression(between.low, place);
  expression(between.high, place);
  return Kind::Boolean;
}

Kind Resolver::node(In& in, Place place) {
  expression(in.value, place);
  for (const ExpressionPtr& item : in.list) expression(item, place);
  if (in.select) Resolver(catalogue_, this).select(*in.select);
  return Kind::Boolean;
}

Kind Resolver::node(IsNull& isNull, Place place) {
  expression(isNull.value, place);
  return Kind::Boolean;
}

Kind Resolver::node(Call& call, Place place) {
  const Function* function = call.function = findFunction(call.name);
  if (!function)
    throw Error(errors::kUnknownFunction, QString("Undefinierte Funktion '%1' im Ausdruck.").arg(call.name));
  if (function->aggregate && place == Place::Row) {
    throw Error(errors::kMisplacedAggregate,
                QString("Die Aggregatfunktion '%1' ist hier nicht möglich.").arg(call.name));
  }
  aggregated_ |= function->aggregate;
  const int count = int(call.arguments.size());
  const bool starred = call.star && function->id == Function::Id::Count;
  if (call.star ? !starred : count < function->least || count > function->most) {
    throw Error(errors::kQuerySyntax,
                QString("Falsche Anzahl von Argumenten in der Funktion '%1'.").arg(call.name));
  }
  for (const ExpressionPtr& argument : call.arguments) {
    expression(argument, function->aggregate ? Place::Row : place);
  }
  switch (function->result) {
    case Function::Result::Boolean:
      return Kind::Boolean;
    case Function::Result::Whole:
    case Function::Result::Number:
      return Kind::Number;
    case Function::Result::Date:
      return Kind::Date;
    case Function::Result::Text:
      return Kind::Text;
    case Function::Result::OfArgument:
    case Function::Result::Amount:
      break;
  }
  Kind kind = call.arguments[std::size_t(function->argument)]->kind;
  // IIf and Nz: where one of the two values is a bare Null, the other one says the kind.
  if (kind == Kind::Unknown && count > 1) kind = call.arguments.back()->kind;
  if (function->result == Function::Result::Amount && kind != Kind::Money) return Kind::Number;
  return kind;
}

void Resolver::update(Update& update) {
  from(*update.source);
  bindSources(*update.source, catalogue_, false, bindings_);
  conditions(*update.source);
  for (Assignment& assignment : update.set) {
    node(assignment.column, Place::Row);
    const Binding& target = bindings_[std::size_t(assignment.column.source)];
    if (!target.table || assignment.column.source != update.set.front().column.source) {
      throw Error(errors::kNoUpdatableQuery);
    }
    const int field = target.find(assignment.column.name);
    assignment.kind = storedKindOf(target.field(field).type);
    expression(assignment.value, Place::Row);
  }
  expression(update.where, Place::Row);
}

void Resolver::remove(Delete& remove) {
  from(*remove.source);
  bindSources(*remove.source, catalogue_, false, bindings_);
  conditions(*remove.source);
  expression(remove.where, Place::Row);
  int source = findBinding(bindings_, remove.starTable);
  if (remove.starTable.isEmpty()) source = manySide({remove.source.get()}, remove.where.get(), bindings_);
  if (source < 0) {
    throwUnknownSource(remove.starTable);
  }
  if (!bindings_[std::size_t(source)].table) {
    throw Error(errors::kNoDeletableTable);
  }
  remove.starTable = bindings_[std::size_t(source)].name;
}

void Resolver::insert(Insert& insert) {
  const TableDef* table = catalogue_.find(insert.table);
  if (!table) {
    throwUnknownSource(insert.table);
  }
  insert.table = table->name;
  if (insert.columns.isEmpty()) {
    for (const FieldDef& field : table->fields) insert.columns << field.name;
  }
  const Binding target{table->name, table, {}, false};
  insert.kinds.clear();
  for (QString& column : insert.columns) {
    const int field = target.find(column);
    if (field < 0) {
      throw Error(errors::kUnknownTargetColumn,
                  QString("Die INSERT-INTO-Anweisung enthält den unbekannten Feldnamen '%1'.").arg(column));
    }
    column = target.field(field).name;
    insert.kinds.push_back(storedKindOf(target.field(field).type));
  }
  std::size_t width = insert.values.size();
  if (insert.select) {
    select(*insert.select);
    width = expand(*insert.select, bindings_).size();
  } else {
    for (const ExpressionPtr& value : insert.values) expression(value, Place::Row);
  }
  if (width != insert.kinds.size()) {
    throw Error(errors::kValueCount);
  }
}

void Resolver::criterion(Expression& criterion, const Select& select) {
  bindings_ = bindSources(select.from, catalogue_);
  // Over a plain table the result's names are the table's.
  const bool plain = bindings_.size() == 1 && bindings_.front().table && select.items.size() == 1 &&
                     !select.items.front().expression && !select.unionNext;
  if (!plain) resultNames_ = expand(select, bindings_);
  overUnion_ = select.unionNext != nullptr;
  expression(criterion, Place::Row);
}

bool Resolver::replaceByResultName(Expression& expression) {
  auto* column = std::get_if<Column>(&expression.node);
  if (!column) return false;
  const QString name = column->table.isEmpty() ? column->name : column->table + u'.' + column->name;
  for (const ExpandedColumn& result : resultNames_) {
    if (!sameName(result.name, name)) continue;
    if (result.source >= 0) {
      set(*column, expression.kind, result.source, result.field);
    } else {
      expression.kind = result.expression->kind;
      if (!overUnion_) expression.node = std::move(clone(*result.expression)->node);
    }
    if (overUnion_) expression.node = Column{{}, result.name, -1};
    return true;
  }
  return false;
}

}  // namespace

void resolve(Statement& statement, const Catalogue& catalogue) {
  Resolver resolver(catalogue, nullptr);
  if (auto* select = std::get_if<Select>(&statement)) {
    resolver.select(*select);
  } else if (auto* update = std::get_if<Update>(&statement)) {
    resolver.update(*update);
  } else if (auto* remove = std::get_if<Delete>(&statement)) {
    resolver.remove(*remove);
  } else {
    resolver.insert(std::get<Insert>(statement));
  }
}

void resolve(Select& select, const Catalogue& catalogue) {
  Resolver(catalogue, nullptr).select(select);
}

void resolveCriterion(Expression& criterion, const Select& select, const Catalogue& catalogue) {
  Resolver(catalogue, nullptr).criterion(criterion, select);
}

}  // namespace qk::dao::sql

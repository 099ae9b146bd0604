#include "platform/dao/rows/select_plan.h"

#include <algorithm>

#include "platform/dao/engine/engine.h"
#include "platform/dao/sql/functions.h"
#include "platform/dao/sql/parser.h"
#include "platform/dao/sql/printer.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

using namespace sql;

constexpr int kCachedPlans = 200;

bool isPlainSource(const Source& source) {
  if (const auto* table = std::get_if<TableSource>(&source.node)) return table->file.isEmpty();
  if (const auto* join = std::get_if<Join>(&source.node))
    return isPlainSource(*join->left) && isPlainSource(*join->right);
  return false;
}

/// A row of the result is one row of each base table.
bool isRowForRow(const Select& select) {
  if (select.distinct || select.unionNext || select.having || !select.groupBy.empty() || select.from.empty())
    return false;
  for (const SourcePtr& source : select.from)
    if (!isPlainSource(*source)) return false;
  return std::none_of(select.items.begin(), select.items.end(), [](const SelectItem& item) {
    return item.expression && hasAggregate(*item.expression);
  });
}

void describeColumns(SelectPlan& plan) {
  const std::vector<ResultColumn> results = resultColumns(*plan.select, *plan.catalogue);
  plan.columns.reserve(results.size());
  for (const ResultColumn& result : results) {
    const int position = static_cast<int>(plan.columns.size());
    PlanColumn column;
    column.def = result.type;
    column.def.name = result.name;
    plan.columns.push_back(column);
    plan.ambiguous |= plan.positions.contains(result.name);
    plan.positions.insert(result.name, position);
    const QString folded = foldedName(result.name);
    if (!plan.positions.contains(folded)) plan.positions.insert(folded, position);
  }
}

void bindColumns(SelectPlan& plan) {
  const std::vector<ResultColumn> results = resultColumns(*plan.select, *plan.catalogue);
  for (size_t i = 0; i < results.size(); ++i) {
    if (results[i].source < 0 || results[i].baseColumn.isEmpty()) continue;
    const auto& fields = plan.sources[static_cast<size_t>(results[i].source)].table->def.fields;
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const FieldDef& candidate) {
      return sameName(candidate.name, results[i].baseColumn);
    });
    if (field == fields.end()) continue;
    plan.columns[i].source = results[i].source;
    plan.columns[i].baseField = static_cast<int>(field - fields.begin());
  }
}

/// Tables whose rows have a number of the engine's own are known by it only where no brackets stand around
/// their join, as they do in print when a RIGHT JOIN is turned round.
bool hidesKeys(const Source& source, const SelectPlan& plan, bool bracketed) {
  if (const auto* join = std::get_if<Join>(&source.node)) {
    const bool inner = bracketed || std::holds_alternative<Join>(printedRight(*join).node);
    return hidesKeys(printedLeft(*join), plan, bracketed) || hidesKeys(printedRight(*join), plan, inner);
  }
  const auto* table = std::get_if<TableSource>(&source.node);
  const TableInfo* info = table ? plan.catalogue->info(table->name) : nullptr;
  return bracketed && info && !info->query && !info->def.field(info->key.names.front());
}

bool collectSources(SelectPlan& plan) {
  bool first = true;
  for (const SourcePtr& source : plan.select->from) {
    const bool bracketed = !first && std::holds_alternative<Join>(source->node);
    if (hidesKeys(*source, plan, bracketed)) return false;
    first = false;
  }
  for (const BoundSource& bound : boundSources(*plan.select)) {
    const TableInfo* table = bound.table.isEmpty() ? nullptr : plan.catalogue->info(bound.table);
    if (!table || table->query) return false;
    plan.sources.push_back(
        {table, bound.alias.isEmpty() ? table->def.name : bound.alias, bound.outer, plan.keyWidth});
    plan.keyWidth += static_cast<int>(table->key.names.size());
  }
  return !plan.sources.empty();
}

/// An order term may name a column of the result; the key list has only the sources' columns.
OrderItem sourceOrder(const OrderItem& item, const Select& select) {
  OrderItem own{clone(*item.expression), item.descending};
  if (const auto* column = std::get_if<Column>(&item.expression->node); column && column->source < 0)
    for (const SelectItem& selected : select.items)
      if (selected.expression && sameName(selected.alias, column->name))
        own.expression = clone(*selected.expression);
  return own;
}

bool ordersByKey(const Select& select, const PlanSource& source) {
  if (select.orderBy.empty()) return true;
  const auto* column = std::get_if<Column>(&select.orderBy.front().expression->node);
  return column && !select.orderBy.front().descending &&
         sameName(column->name, source.table->key.names.front());
}

void writeParts(SelectPlan& plan, const Writer& writer) {
  const Select& select = *plan.select;
  for (const PlanSource& source : plan.sources)
    for (const QString& name : source.table->key.names) {
      plan.keyColumns.append(writer.column(source.qualifier, name));
      const FieldDef* field = source.table->def.field(name);
      const auto terms =
          writer.keyOrder(plan.keyColumns.last(), field ? field->type : FieldType::Long, source.outer);
      plan.keyOrder.insert(plan.keyOrder.end(), terms.begin(), terms.end());
    }
  plan.keys = writer.columnsOf(plan.keyColumns, select.from);
  plan.row = writer.bare(select);
  if (select.where)
    plan.where = plan.paged ? writer.conditionInKeyOrder(*select.where) : writer.condition(*select.where);
  for (const OrderItem& item : select.orderBy)
    plan.order.push_back(writer.orderTerm(sourceOrder(item, select)));
  plan.order.insert(plan.order.end(), plan.keyOrder.begin(), plan.keyOrder.end());
}

Statement parseSource(const Catalogue& catalogue, const QString& source) {
  const QString name = source.trimmed();
  if (const TableInfo* table = catalogue.info(name))
    return everythingOf(TableSource{table->def.name, {}, {}});
  const bool oneWord = std::none_of(name.begin(), name.end(), [](QChar c) { return c.isSpace(); });
  if (oneWord) throw Error(errors::kUnknownTable);
  return parseStatement(source);
}

}  // namespace

QVariant SelectPlan::value(const sql::Writer& writer, int column, const QVariant& native,
                           const Key& key) const {
  const PlanColumn& shown = columns[static_cast<size_t>(column)];
  if (keyed && native.isNull() && shown.def.type == FieldType::Boolean && shown.source >= 0) {
    const PlanSource& table = sources[static_cast<size_t>(shown.source)];
    if (!table.outer || !key[table.keyFirst].isNull()) return 0;
  }
  return writer.fromNative(native, shown.def.type);
}

NativeQuery SelectPlan::listed(const Writer& writer, const NativeQuery& rows) const {
  return writer.chosen(rows, {{where}, order, select->top});
}

NativeQuery SelectPlan::keyListing(const Writer& writer) const {
  return listed(writer, keys);
}

NativeQuery SelectPlan::rowListing(const Writer& writer) const {
  return keyed ? listed(writer, row) : whole;
}

NativeQuery SelectPlan::counting(const Writer& writer) const {
  return writer.chosen(writer.count(select->from), {{where}});
}

int SelectPlan::position(const QString& name) const {
  if (const auto found = positions.find(name); found != positions.end()) return *found;
  return positions.value(foldedName(name), -1);
}

int SelectPlan::position(const QString& name, int likely) const {
  const bool isLikely = !ambiguous && likely < static_cast<int>(columns.size()) &&
                        columns[static_cast<size_t>(likely)].def.name == name;
  return isLikely ? likely : position(name);
}

std::shared_ptr<const SelectPlan> SelectPlan::make(Engine& engine, const QString& source) {
  auto plan = std::make_shared<SelectPlan>();
  plan->catalogue = engine.catalogue();
  plan->text = source;
  Statement statement = parseSource(*plan->catalogue, source);
  auto* select = std::get_if<Select>(&statement);
  if (!select || !select->into.isEmpty()) throw Error(errors::kInvalidOperation);
  plan->select = std::make_unique<Select>(std::move(*select));
  plan->unresolved = clone(*plan->select);
  resolve(*plan->select, *plan->catalogue);
  describeColumns(*plan);

  plan->keyed = isRowForRow(*plan->select) && collectSources(*plan);
  if (!plan->keyed) {
    plan->whole = engine.writer().select(*plan->select);
    return plan;
  }
  plan->unresolved.reset();
  bindColumns(*plan);
  plan->manySide = sql::manySide(*plan->select, *plan->catalogue);
  plan->integerKey = plan->sources.size() == 1 && plan->sources.front().table->key.integer;
  plan->paged = plan->integerKey && !plan->select->top && ordersByKey(*plan->select, plan->sources.front());
  writeParts(*plan, engine.writer());
  return plan;
}

std::shared_ptr<const SelectPlan> PlanCache::get(Engine& engine, const QString& source) {
  const auto found = plans_.constFind(source);
  if (found != plans_.cend() && (*found)->catalogue == engine.catalogue()) return *found;
  const auto plan = SelectPlan::make(engine, source);
  if (plans_.size() >= kCachedPlans) plans_.clear();
  plans_.insert(source, plan);
  return plan;
}

}  // namespace qk::dao

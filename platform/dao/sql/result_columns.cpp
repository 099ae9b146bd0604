#include <QSet>
#include <algorithm>

#include "platform/dao/sql/bindings.h"
#include "platform/dao/sql/functions.h"
#include "platform/runtime/error.h"

namespace qk::dao::sql {
namespace {

FieldType typeOf(Kind kind) {
  switch (kind) {
    case Kind::Boolean:
      return FieldType::Boolean;
    case Kind::Number:
      return FieldType::Double;
    case Kind::Money:
      return FieldType::Currency;
    case Kind::Date:
      return FieldType::Date;
    case Kind::Byte:
      return FieldType::Byte;
    case Kind::Integer:
      return FieldType::Integer;
    case Kind::Long:
      return FieldType::Long;
    case Kind::Text:
    case Kind::Unknown:
      break;
  }
  return FieldType::Text;
}

const FieldDef* boundField(const Column& column, const Bindings& bindings) {
  if (column.source < 0 || column.source >= int(bindings.size())) return nullptr;
  const Binding& binding = bindings[std::size_t(column.source)];
  const int position = binding.find(column.name);
  return position < 0 ? nullptr : &binding.field(position);
}

FieldType typeOf(const Expression& expression, const Bindings& bindings) {
  if (const auto* column = std::get_if<Column>(&expression.node)) {
    if (const FieldDef* field = boundField(*column, bindings)) return field->type;
  }
  if (const auto* literal = std::get_if<Literal>(&expression.node)) {
    if (literal->value.userType() == QMetaType::LongLong) return FieldType::Long;
  }
  if (const auto* call = std::get_if<Call>(&expression.node)) {
    if (call->function->result == Function::Result::Whole) return FieldType::Long;
    // The greatest of a column is of the column's type; a sum may outgrow it.
    const Function::Id id = call->function->id;
    if (id == Function::Id::Max || id == Function::Id::Min) return typeOf(*call->arguments[0], bindings);
  }
  return typeOf(expression.kind);
}

/// Ends of an equality between two columns, gathered from a chain of AND.
void gatherEqualities(const Expression* condition,
                      std::vector<std::pair<const Column*, const Column*>>& pairs) {
  const auto* binary = condition ? std::get_if<Binary>(&condition->node) : nullptr;
  if (!binary) return;
  if (binary->op == BinaryOperator::And) {
    gatherEqualities(binary->left.get(), pairs);
    gatherEqualities(binary->right.get(), pairs);
  } else if (binary->op == BinaryOperator::Equal) {
    const auto* left = std::get_if<Column>(&binary->left->node);
    const auto* right = std::get_if<Column>(&binary->right->node);
    if (left && right && left->source != right->source) pairs.emplace_back(left, right);
  }
}

void gatherConditions(const Source& source, std::vector<std::pair<const Column*, const Column*>>& pairs) {
  const auto* join = std::get_if<Join>(&source.node);
  if (!join) return;
  gatherConditions(*join->left, pairs);
  gatherConditions(*join->right, pairs);
  gatherEqualities(join->on.get(), pairs);
}

}  // namespace

Kind kindOf(FieldType type) {
  switch (type) {
    case FieldType::Boolean:
      return Kind::Boolean;
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Single:
    case FieldType::Double:
      return Kind::Number;
    case FieldType::Currency:
      return Kind::Money;
    case FieldType::Date:
      return Kind::Date;
    case FieldType::Text:
    case FieldType::Memo:
      return Kind::Text;
    case FieldType::LongBinary:
      break;
  }
  return Kind::Unknown;
}

Kind storedKindOf(FieldType type) {
  switch (type) {
    case FieldType::Byte:
      return Kind::Byte;
    case FieldType::Integer:
      return Kind::Integer;
    case FieldType::Long:
      return Kind::Long;
    default:
      return kindOf(type);
  }
}

const FieldDef& Binding::field(int position) const {
  return table ? table->fields[std::size_t(position)] : columns[std::size_t(position)].type;
}

int Binding::find(const QString& column) const {
  for (int i = 0; i < size(); ++i) {
    if (sameName(field(i).name, column)) return i;
  }
  return -1;
}

void throwUnknownSource(const QString& name) {
  throw Error(errors::kUnknownTable,
              QString("Die Tabelle oder Abfrage '%1' wurde nicht gefunden.").arg(name));
}

int findBinding(const Bindings& bindings, const QString& name) {
  for (std::size_t i = 0; i < bindings.size(); ++i) {
    if (sameName(bindings[i].name, name)) return int(i);
  }
  return -1;
}

void bindSources(const Source& source, const Catalogue& catalogue, bool outer, Bindings& bindings) {
  if (const auto* join = std::get_if<Join>(&source.node)) {
    bindSources(*join->left, catalogue, outer || join->kind == JoinKind::Right, bindings);
    bindSources(*join->right, catalogue, outer || join->kind == JoinKind::Left, bindings);
    return;
  }
  Binding binding;
  binding.outer = outer;
  if (const auto* table = std::get_if<TableSource>(&source.node)) {
    binding.table = table->file.isEmpty() ? catalogue.find(table->name) : nullptr;
    if (!binding.table) {
      throwUnknownSource(table->name);
    }
    binding.name = table->alias.isEmpty() ? binding.table->name : table->alias;
  } else {
    const SelectSource& inner = std::get<SelectSource>(source.node);
    binding.columns = resultColumns(*inner.select, catalogue);
    binding.name = inner.alias;
  }
  if (!binding.name.isEmpty() && findBinding(bindings, binding.name) >= 0) {
    throw Error(errors::kAmbiguousName,
                QString("Die FROM-Klausel nennt '%1' mehr als einmal.").arg(binding.name));
  }
  bindings.push_back(std::move(binding));
}

Bindings bindSources(const std::vector<SourcePtr>& from, const Catalogue& catalogue) {
  Bindings bindings;
  for (const SourcePtr& source : from) bindSources(*source, catalogue, false, bindings);
  return bindings;
}

std::vector<ExpandedColumn> expand(const Select& select, const Bindings& bindings) {
  std::vector<ExpandedColumn> result;
  std::vector<bool> aliased;
  const auto star = [&](int source) {
    for (int field = 0; field < bindings[std::size_t(source)].size(); ++field) {
      result.push_back({bindings[std::size_t(source)].field(field).name, source, field, nullptr});
      aliased.push_back(false);
    }
  };
  for (const SelectItem& item : select.items) {
    if (!item.expression) {
      const int named = item.starTable.isEmpty() ? -1 : findBinding(bindings, item.starTable);
      for (int source = 0; source < int(bindings.size()); ++source) {
        if (named < 0 || named == source) star(source);
      }
      continue;
    }
    ExpandedColumn column{item.alias, -1, -1, item.expression.get()};
    if (const auto* bound = std::get_if<Column>(&item.expression->node); bound && bound->source >= 0) {
      column.source = bound->source;
      column.field = bindings[std::size_t(bound->source)].find(bound->name);
      if (item.alias.isEmpty()) column.name = bound->name;
    }
    if (column.name.isEmpty()) column.name = QString("Expr%1").arg(1000 + result.size());
    aliased.push_back(!item.alias.isEmpty());
    result.push_back(std::move(column));
  }

  if (bindings.size() < 2) return result;
  QSet<QString> seen, twice;
  for (const ExpandedColumn& column : result) {
    const QString folded = column.name.toCaseFolded();
    if (seen.contains(folded)) twice.insert(folded);
    seen.insert(folded);
  }
  for (std::size_t i = 0; i < result.size(); ++i) {
    ExpandedColumn& column = result[i];
    if (!aliased[i] && column.source >= 0 && twice.contains(column.name.toCaseFolded())) {
      column.name = bindings[std::size_t(column.source)].name + u'.' + column.name;
    }
  }
  return result;
}

std::vector<ResultColumn> resultColumns(const Select& select, const Bindings& bindings) {
  std::vector<ResultColumn> result;
  for (const ExpandedColumn& column : expand(select, bindings)) {
    ResultColumn out;
    out.name = column.name;
    if (column.source >= 0) {
      const Binding& binding = bindings[std::size_t(column.source)];
      out.type = binding.field(column.field);
      if (binding.table) {
        out.source = column.source;
        out.baseTable = binding.table->name;
        out.baseColumn = out.type.name;
      }
    } else {
      out.type.type = typeOf(*column.expression, bindings);
    }
    out.type.name = column.name;
    result.push_back(std::move(out));
  }
  return result;
}

std::vector<ResultColumn> resultColumns(const Select& select, const Catalogue& catalogue) {
  std::vector<ResultColumn> result = resultColumns(select, bindSources(select.from, catalogue));
  if (select.unionNext) {
    for (ResultColumn& column : result) {
      column.source = -1;
      column.baseTable.clear();
      column.baseColumn.clear();
    }
  }
  return result;
}

std::vector<BoundSource> boundSources(const Select& select) {
  struct Collector {
    std::vector<BoundSource> result;
    void add(const Source& source, bool outer) {
      if (const auto* table = std::get_if<TableSource>(&source.node)) {
        result.push_back({table->name, table->alias, outer});
      } else if (const auto* inner = std::get_if<SelectSource>(&source.node)) {
        result.push_back({{}, inner->alias, outer});
      } else {
        const Join& join = std::get<Join>(source.node);
        add(*join.left, outer || join.kind == JoinKind::Right);
        add(*join.right, outer || join.kind == JoinKind::Left);
      }
    }
  } collector;
  for (const SourcePtr& source : select.from) collector.add(*source, false);
  return collector.result;
}

int manySide(const std::vector<const Source*>& from, const Expression* where, const Bindings& bindings) {
  std::vector<std::pair<const Column*, const Column*>> pairs;
  for (const Source* source : from) gatherConditions(*source, pairs);
  gatherEqualities(where, pairs);
  const auto joined = [&](int source, const QString& field) {
    const auto isTable = [&](const Column* column) {
      return column->source >= 0 && bindings[std::size_t(column->source)].table != nullptr;
    };
    const auto isKey = [&](const Column* column) {
      return column->source == source && sameName(column->name, field);
    };
    return std::any_of(pairs.begin(), pairs.end(), [&](const auto& pair) {
      return (isKey(pair.first) && isTable(pair.second)) || (isKey(pair.second) && isTable(pair.first));
    });
  };
  for (int source = 0; source < int(bindings.size()); ++source) {
    const TableDef* table = bindings[std::size_t(source)].table;
    const IndexDef* key = table ? table->primary() : nullptr;
    bool whole = key != nullptr;
    for (int i = 0; whole && i < key->fields.size(); ++i) whole = joined(source, key->fields[i]);
    if (!whole && table) return source;
  }
  return 0;
}

int manySide(const Select& select, const Catalogue& catalogue) {
  std::vector<const Source*> from;
  for (const SourcePtr& source : select.from) from.push_back(source.get());
  return manySide(from, select.where.get(), bindSources(select.from, catalogue));
}

}  // namespace qk::dao::sql

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {
namespace {

ExpressionPtr copy(const ExpressionPtr& expression) {
  return expression ? clone(*expression) : nullptr;
}
SelectPtr copy(const SelectPtr& select) {
  return select ? clone(*select) : nullptr;
}
SourcePtr copy(const SourcePtr& source) {
  return source ? clone(*source) : nullptr;
}

template <typename T>
std::vector<T> copy(const std::vector<T>& nodes) {
  std::vector<T> result;
  result.reserve(nodes.size());
  for (const T& node : nodes) result.push_back(copy(node));
  return result;
}

Literal copy(const Literal& node) {
  return node;
}
Column copy(const Column& node) {
  return node;
}
Unary copy(const Unary& node) {
  return {node.op, copy(node.operand)};
}
Binary copy(const Binary& node) {
  return {node.op, copy(node.left), copy(node.right)};
}
Between copy(const Between& node) {
  return {copy(node.value), copy(node.low), copy(node.high), node.negated};
}
In copy(const In& node) {
  return {copy(node.value), copy(node.list), copy(node.select), node.negated};
}
IsNull copy(const IsNull& node) {
  return {copy(node.value), node.negated};
}
Call copy(const Call& node) {
  return {node.name, copy(node.arguments), node.star, node.function};
}

TableSource copy(const TableSource& node) {
  return node;
}
SelectSource copy(const SelectSource& node) {
  return {copy(node.select), node.alias};
}
Join copy(const Join& node) {
  return {node.kind, copy(node.left), copy(node.right), copy(node.on)};
}

}  // namespace

ExpressionPtr clone(const Expression& expression) {
  auto result = std::make_unique<Expression>();
  result->kind = expression.kind;
  std::visit([&](const auto& node) { result->node = copy(node); }, expression.node);
  return result;
}

SourcePtr clone(const Source& source) {
  auto result = std::make_unique<Source>();
  std::visit([&](const auto& node) { result->node = copy(node); }, source.node);
  return result;
}

SelectPtr clone(const Select& select) {
  auto result = std::make_unique<Select>();
  result->distinct = select.distinct;
  result->top = select.top;
  for (const SelectItem& item : select.items) {
    result->items.push_back({copy(item.expression), item.starTable, item.alias});
  }
  result->into = select.into;
  result->intoFile = select.intoFile;
  result->from = copy(select.from);
  result->where = copy(select.where);
  result->groupBy = copy(select.groupBy);
  result->having = copy(select.having);
  for (const OrderItem& item : select.orderBy) {
    result->orderBy.push_back({copy(item.expression), item.descending});
  }
  result->unionNext = copy(select.unionNext);
  result->unionAll = select.unionAll;
  return result;
}

Select everythingOf(decltype(Source::node) source) {
  Select select;
  select.items.emplace_back();
  select.from.push_back(std::make_unique<Source>());
  select.from.back()->node = std::move(source);
  return select;
}

}  // namespace qk::dao::sql

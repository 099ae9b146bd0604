#include "platform/dao/rows/keyed_rows.h"

#include <algorithm>
#include <limits>

#include "platform/dao/engine/engine.h"
#include "platform/dao/sql/parser.h"
#include "platform/dao/values/convert.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

constexpr int kFirstPage = 64;
constexpr int kLargestPage = 16384;
/// Upper limit of a table without rows.
constexpr qint64 kNoKey = std::numeric_limits<qint64>::min();

sql::ExpressionPtr expression(decltype(sql::Expression::node) node, sql::Kind kind) {
  auto made = std::make_unique<sql::Expression>();
  made->node = std::move(node);
  made->kind = kind;
  return made;
}

sql::ExpressionPtr binary(sql::BinaryOperator op, sql::ExpressionPtr left, sql::ExpressionPtr right) {
  return expression(sql::Binary{op, std::move(left), std::move(right)}, sql::Kind::Boolean);
}

struct Comparison {
  sql::BinaryOperator last;    // for the last field
  sql::BinaryOperator before;  // for those before it
  bool backwards;
};

Comparison comparisonOf(const QString& text) {
  using enum sql::BinaryOperator;
  if (text == "=") return {Equal, Equal, false};
  if (text == ">=") return {GreaterEqual, Greater, false};
  if (text == ">") return {Greater, Greater, false};
  if (text == "<=") return {LessEqual, Less, true};
  if (text == "<") return {Less, Less, true};
  throw Error(errors::kInvalidCall);
}

}  // namespace

KeyedRows::KeyedRows(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan)
    : engine_(std::move(engine)), plan_(std::move(plan)), pageSize_(kFirstPage) {}

void KeyedRows::restart() {
  listed_ = false;
  limit_.reset();
  last_.reset();
  pageSize_ = kFirstPage;
}

bool KeyedRows::mayCome(const Key& key) const {
  if (!paged()) return !listed_;
  if (listed_) return false;
  const qint64 number = key.first().toLongLong();
  return (!last_ || number > *last_) && (!limit_ || number <= *limit_);
}

bool KeyedRows::readKeys(KeyList& keys) {
  if (listed_) return false;
  if (paged()) return readPage(keys);
  readWhole(keys);
  listed_ = true;
  return true;
}

void KeyedRows::fixUpperLimit() {
  qint64 limit = kNoKey;
  const QString text = engine_->writer().endOfKeys(*plan_->sources.front().table, sql::End::Greatest);
  engine_->read(text, {}, [&](const NativeRow& row) {
    if (!row.first().isNull()) limit = row.first().toLongLong();
    return false;
  });
  limit_ = limit;  // only of a reading that didn't fail: the next try begins anew
}

bool KeyedRows::readPage(KeyList& keys) {
  if (!limit_) fixUpperLimit();
  if (limit_ == kNoKey) {
    listed_ = true;
    return false;
  }
  const sql::Writer& writer = engine_->writer();
  const sql::NativeQuery query = writer.chosen(
      plan_->keys,
      {{plan_->where, writer.within(plan_->keyColumns.first(), last_, *limit_)}, plan_->keyOrder, pageSize_});
  KeyList page(keys.width(), keys.isInteger());
  std::optional<qint64> last;
  engine_->read(query.text, query.values, [&](const NativeRow& row) {
    page.append(row);
    last = row.first().toLongLong();
    return true;
  });
  keys.append(page);
  if (last) last_ = last;
  listed_ = page.size() < pageSize_;
  pageSize_ = std::min(pageSize_ * 4, kLargestPage);
  return page.size() > 0;
}

std::vector<sql::NativeQuery> KeyedRows::order(bool backwards) const {
  if (indexFields_.isEmpty()) return plan_->order;
  const sql::Writer& writer = engine_->writer();
  std::vector<sql::NativeQuery> terms;
  for (const QString& field : indexFields_)
    terms.push_back(writer.orderTerm({indexColumn(field), backwards}));
  for (const sql::NativeQuery& key : plan_->keyOrder)
    terms.push_back(backwards ? writer.descending(key) : key);
  return terms;
}

void KeyedRows::readWhole(KeyList& keys) {
  const sql::Writer& writer = engine_->writer();
  const sql::NativeQuery query = indexFields_.isEmpty()
                                     ? plan_->keyListing(writer)
                                     : writer.chosen(plan_->keys, {{plan_->where}, order()});
  KeyList whole(keys.width(), keys.isInteger());
  engine_->read(query.text, query.values, [&](const NativeRow& row) {
    whole.append(row);
    return true;
  });
  keys.append(whole);
}

/// The text depends on nothing but which parts of the key are Null: mostly none.
bool KeyedRows::readRow(const Key& key, QVariantList& row) {
  bool found = false;
  const auto take = [&](const NativeRow& native) {
    row = native;
    found = true;
    return false;
  };
  const bool whole = std::none_of(key.begin(), key.end(), [](const QVariant& part) { return part.isNull(); });
  if (whole && !rowText_.isEmpty()) {
    engine_->read(rowText_, plan_->row.values + key, take);
    return found;
  }
  const sql::NativeQuery query = engine_->writer().atKey(plan_->row, plan_->keyColumns, key);
  if (whole) rowText_ = query.text;
  engine_->read(query.text, query.values, take);
  return found;
}

void KeyedRows::find(const QString& criterion, const std::function<bool(const Key&)>& take) {
  const sql::ExpressionPtr parsed = sql::parseCriterion(criterion);
  sql::resolveCriterion(*parsed, *plan_->select, *plan_->catalogue);
  const sql::Writer& writer = engine_->writer();
  const sql::NativeQuery condition =
      paged() ? writer.conditionInKeyOrder(*parsed) : writer.condition(*parsed);
  bool more = false;
  readFirst(condition, false, [&](const Key& key) {
    more = take(key);
    return false;
  });
  if (!more) return;
  const sql::NativeQuery all = writer.chosen(plan_->keys, {{plan_->where, condition}, order()});
  engine_->read(all.text, all.values, [&](const NativeRow& row) { return take(row); });
}

void KeyedRows::readFirst(const sql::NativeQuery& condition, bool backwards,
                          const std::function<bool(const Key&)>& take) {
  const sql::Writer& writer = engine_->writer();
  const sql::NativeQuery query =
      writer.first(writer.chosen(plan_->keys, {{plan_->where, condition}, order(backwards)}), 1);
  engine_->read(query.text, query.values, [&](const NativeRow& row) { return take(row); });
}

void KeyedRows::orderBy(const IndexDef& index) {
  if (plan_->sources.size() != 1) throw Error(errors::kNotSupported);
  indexFields_ = index.fields;
  restart();
}

sql::ExpressionPtr KeyedRows::indexColumn(const QString& name) const {
  const PlanSource& source = plan_->sources.front();
  const FieldDef* field = source.table->def.field(name);
  return expression(sql::Column{source.qualifier, field->name, 0}, sql::kindOf(field->type));
}

/// a > x OR (a = x AND b > y): everything behind the values in the index's order.
sql::NativeQuery KeyedRows::seekCondition(const QString& comparison, const QVariantList& values) const {
  const Comparison wanted = comparisonOf(comparison);
  const TableDef& table = plan_->sources.front().table->def;
  sql::ExpressionPtr condition;
  for (qsizetype i = values.size() - 1; i >= 0; --i) {
    const FieldDef& field = *table.field(indexFields_[i]);
    const auto compared = [&](sql::BinaryOperator op) {
      return binary(
          op, indexColumn(field.name),
          expression(sql::Literal{literalValue(convertedValue(values[i], field))}, sql::kindOf(field.type)));
    };
    sql::ExpressionPtr own = compared(condition ? wanted.before : wanted.last);
    if (!condition) {
      condition = std::move(own);
    } else if (wanted.before == sql::BinaryOperator::Equal) {
      condition = binary(sql::BinaryOperator::And, std::move(own), std::move(condition));
    } else {
      condition = binary(
          sql::BinaryOperator::Or, std::move(own),
          binary(sql::BinaryOperator::And, compared(sql::BinaryOperator::Equal), std::move(condition)));
    }
  }
  return engine_->writer().condition(*condition);
}

std::optional<Key> KeyedRows::seek(const QString& comparison, const QVariantList& values) {
  if (indexFields_.isEmpty()) throw Error(errors::kNoCurrentIndex);
  if (values.isEmpty() || values.size() > indexFields_.size()) throw Error(errors::kNoSuchIndex);
  std::optional<Key> found;
  readFirst(seekCondition(comparison, values), comparisonOf(comparison).backwards, [&](const Key& key) {
    found = key;
    return false;
  });
  return found;
}

}  // namespace qk::dao

#include "platform/dao/rows/stored_rows.h"

#include <QMultiHash>
#include <algorithm>

#include "platform/dao/engine/engine.h"
#include "platform/dao/sql/parser.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

/// Rows by the text of their first column, which is an ID in most lists: few are left to compare whole.
using RowsByFirst = QMultiHash<QString, NativeRow>;

bool holds(const RowsByFirst& rows, const NativeRow& row) {
  const auto [begin, end] = rows.equal_range(row.first().toString());
  return std::find(begin, end, row) != end;
}

}  // namespace

StoredRows::StoredRows(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan)
    : engine_(std::move(engine)), plan_(std::move(plan)) {}

void StoredRows::restart() {
  read_ = false;
  listed_ = false;
  rows_.clear();
}

void StoredRows::readRows() {
  if (read_) return;
  rows_.clear();  // what a reading left that failed
  engine_->read(plan_->whole.text, plan_->whole.values, [this](const NativeRow& row) {
    rows_.push_back(row);
    return true;
  });
  read_ = true;
}

bool StoredRows::readKeys(KeyList& keys) {
  if (listed_) return false;
  readRows();
  for (size_t i = 0; i < rows_.size(); ++i) keys.append({static_cast<qlonglong>(i)});
  listed_ = true;
  return true;
}

bool StoredRows::readRow(const Key& key, QVariantList& row) {
  readRows();
  row = rows_[key.first().toULongLong()];
  return true;
}

/// The engine decides which contents meet the criterion, the stored order which of them is first.
void StoredRows::find(const QString& criterion, const std::function<bool(const Key&)>& take) {
  sql::Select outer = sql::everythingOf(sql::SelectSource{sql::clone(*plan_->unresolved), "rows"});
  outer.where = sql::parseCriterion(criterion);
  sql::resolve(outer, *plan_->catalogue);
  const sql::NativeQuery query = engine_->writer().select(outer);

  readRows();
  RowsByFirst matching;
  engine_->read(query.text, query.values, [&](const NativeRow& row) {
    matching.insert(row.first().toString(), row);
    return true;
  });
  if (matching.isEmpty()) return;
  for (size_t i = 0; i < rows_.size(); ++i)
    if (holds(matching, rows_[i]) && !take({static_cast<qlonglong>(i)})) return;
}

bool StoredRows::mayCome(const Key&) const {
  return !listed_;
}

void StoredRows::orderBy(const IndexDef&) {
  throw Error(errors::kNotSupported);
}

std::optional<Key> StoredRows::seek(const QString&, const QVariantList&) {
  throw Error(errors::kNotSupported);
}

}  // namespace qk::dao

// Where a recordset's rows come from: listed by keys, or read whole.
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "platform/dao/rows/key_list.h"
#include "platform/dao/rows/select_plan.h"

namespace qk::dao {

class Engine;

class RowSource {
 public:
  virtual ~RowSource() = default;

  /// Reads more keys, in order. False when the list is complete.
  virtual bool readKeys(KeyList& keys) = 0;
  /// The row's native values; false when it's gone.
  virtual bool readRow(const Key& key, QVariantList& row) = 0;
  /// Keys of the rows that meet a criterion, in order, until `take` says false.
  virtual void find(const QString& criterion, const std::function<bool(const Key&)>& take) = 0;
  /// True while a key that isn't listed yet may still come.
  virtual bool mayCome(const Key& key) const = 0;
  /// True where the list is in the order of whole-number keys.
  virtual bool ascending() const = 0;
  /// Forgets what was listed.
  virtual void restart() = 0;

  /// Lists by an index from now on (restarts). 3251 unless the rows are those of one table.
  virtual void orderBy(const IndexDef& index) = 0;
  /// First row at or behind the values in that index's order ("=", ">=", ">"), or the last before ("<=",
  /// "<").
  virtual std::optional<Key> seek(const QString& comparison, const QVariantList& values) = 0;
};

std::unique_ptr<RowSource> rowsOf(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan);

}  // namespace qk::dao

// Rows on their way into the base tables of a select.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/dao/rows/select_plan.h"

namespace qk::dao {

class Engine;

class RowWriter {
 public:
  RowWriter(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan);

  /// 3027 where the rows can't be changed.
  void requireUpdatable() const;
  /// A buffer without a change.
  EditBuffer unchanged() const;
  /// A new row's: the presets, and the number where the table hands them out.
  EditBuffer newRow() const;
  /// That row is never stored: its number goes back.
  void discard(const EditBuffer& newRow) const;
  /// Converts to the column's type; 3164 for a column that can't be written.
  void set(EditBuffer& buffer, int column, const QVariant& value, bool added) const;

  /// Adds a row to the many side and gives the key of the new row.
  Key insert(const EditBuffer& buffer);
  /// Each changed column goes to its base table, all or none; 3167 when a row is gone. The key as it is
  /// afterwards.
  Key update(const Key& key, const EditBuffer& buffer);
  /// Deletes the row of the many side; 3167 when it's gone, but for a deletion that got no answer before.
  void remove(const Key& key);

 private:
  int autoNumberColumn() const;
  Key keyOf(const PlanSource& source, const Key& key) const;
  EditBuffer presets() const;
  std::shared_ptr<const RowChange> insertionOf(const EditBuffer& buffer) const;
  std::shared_ptr<const RowChange> updateOf(int source, const EditBuffer& buffer) const;
  /// With room for so many more.
  QVariantList nativesOf(const RowChange& change, const EditBuffer& buffer, qsizetype more = 0) const;
  void updateSource(int index, const Key& key, const EditBuffer& buffer, Key& changedKey);
  void refuseIncomplete(const EditBuffer& buffer, const PlanSource& source, bool added) const;

  std::shared_ptr<Engine> engine_;
  std::shared_ptr<const SelectPlan> plan_;
  std::optional<Key> unansweredRemoval_;
};

}  // namespace qk::dao

// What is to be written into a competition, as values: rows of tables, in the order in which they can be
// written. Whoever carries a plan out knows nothing of shooters.
#pragma once

#include <QString>
#include <QVariant>
#include <vector>

namespace qk::lists {

inline constexpr int kNoRow = -1;

struct PlannedValue {
  QString column;
  QVariant before;  ///< what stands there; of a new row nothing
  QVariant after;
  int made = kNoRow;  ///< `after` is the key of this row of the plan, an earlier one, which is new
};

struct PlannedRow {
  QString table;
  qint64 key = 0;  ///< 0: a new row
  std::vector<PlannedValue> values;
};

using Plan = std::vector<PlannedRow>;

}  // namespace qk::lists

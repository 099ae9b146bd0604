#include "platform/dao/rows/row_source.h"

#include "platform/dao/rows/keyed_rows.h"
#include "platform/dao/rows/stored_rows.h"

namespace qk::dao {

std::unique_ptr<RowSource> rowsOf(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan) {
  if (plan->keyed) return std::make_unique<KeyedRows>(std::move(engine), std::move(plan));
  return std::make_unique<StoredRows>(std::move(engine), std::move(plan));
}

}  // namespace qk::dao

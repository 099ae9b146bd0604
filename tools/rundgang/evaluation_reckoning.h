// The second opinion on the evaluation: the stored results from before and what the official did to them,
// against what stands in the competition; and every figure of the printed sheets.
#pragma once

#include "tools/rundgang/comparison.h"
#include "tools/rundgang/evaluation_day.h"

namespace qk {

struct ResultTables {
  std::vector<StoredRow> teilers, series;
};
ResultTables readResults(const QString& competition);

Reckoning reckonEvaluation(const QString& competition, const ResultTables& before,
                           const ResultJournal& journal, const std::vector<PrintedSheet>& sheets);

}  // namespace qk

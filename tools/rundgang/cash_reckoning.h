// The till's second opinion: what the cashier did, replayed on what stood in the competition before, against
// what stands there afterwards. Shares no line with the cash desk.
#pragma once

#include <QString>

#include "tools/rundgang/cash_evening.h"
#include "tools/rundgang/cash_journal.h"
#include "tools/rundgang/comparison.h"

namespace qk {

/// The cash tables as they stood at a moment.
struct CashTables {
  std::vector<StoredRow> payments, issued, stacks;
};
CashTables readCashTables(const QString& competition);

/// What the journal makes of `before`, against the competition and the sums on the printed sheets.
Reckoning reckonCash(const QString& competition, const CashTables& before, const CashJournal& journal,
                     const EveningPrints& prints);

}  // namespace qk

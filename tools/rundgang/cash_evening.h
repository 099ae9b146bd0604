// An evening at the cash desk, on the real window: every way in which a stake is sold, paid and taken back,
// and targets handed out.
#pragma once

#include "tools/rundgang/cash_journal.h"
#include "tools/rundgang/range.h"

namespace qk {

/// Sells at the desk that the office program opens for the shooter of a line.
void sellInTheOffice(Range& range, CashJournal& journal);

struct EveningPrints {  ///< paths of PDF files
  QString receipt;      ///< of the last purchase in the journal
  QString dayJournal, stakes;
};
/// Sells and hands targets out at the cash desk alone, and prints what a treasurer wants in the evening.
EveningPrints sellAtTheCashDesk(Range& range, CashJournal& journal);

}  // namespace qk

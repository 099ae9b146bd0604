// After the shooting: stored results are corrected on the real window, and two shooters get their sheets.
#pragma once

#include "tools/rundgang/range.h"
#include "tools/rundgang/result_journal.h"

namespace qk {

struct PrintedSheet {
  QString startNumber;
  bool byProfiles = false;
  QString pdf;
};

/// Corrects results of shooters 105 and 107.
void correctResults(Range& range, ResultJournal& journal);
/// The sheets of shooters 105 and 107, both kinds.
std::vector<PrintedSheet> printSheets(Range& range);

}  // namespace qk

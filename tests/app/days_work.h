// A day's work at the first line of a range office, for tests of what it costs the store.
#pragma once

#include "tests/app/range_office.h"

namespace qk::test {

/// The tables of a competition that grow with every day.
const QStringList& growingTables();

/// Reception, discarding, a restart with open shots, a change of shooter, transfer, storing, booking, a sale
/// at the cash desk.
void workADay(RangeOffice& office);

}  // namespace qk::test

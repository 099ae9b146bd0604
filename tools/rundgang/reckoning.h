// The second opinion: what the stations fired, by their own log, and what the operator did with it, against
// what stands in the competition. Reads log and file on ways of its own.
#pragma once

#include <QString>
#include <vector>

#include "tools/rundgang/comparison.h"
#include "tools/rundgang/journal.h"
#include "tools/rundgang/reckoning_log.h"

namespace qk {

Reckoning reckon(const QString& competition, const std::vector<FiredShot>& fired, const Journal& journal);

}  // namespace qk

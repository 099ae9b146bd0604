// What a discipline makes of ten sample shots, worked out by the transfer that the lines use.
#pragma once

#include <QString>

#include "platform/dao/changes.h"

namespace qk {

/// German lines: the shots, and the results that come of them. `discipline`: columns of its row; missing ones
/// are 0.
QString sampleText(const dao::RowValues& discipline);

}  // namespace qk

// What stands in a competition's table of shots, and what the stations' log says that must stand there.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include "tools/rundgang/range.h"

namespace qk::faults {

struct StoredShots {
  QSet<QString> keys;  ///< as the stations' log gives them: line, hit, date, time
  int rows = 0;
  int open = 0;    ///< rows neither booked nor discarded
  int booked = 0;  ///< rows
};

StoredShots storedShots(const QString& competition);

/// Says in one line what was fired and stored, and lists what is missing. True when every shot that was fired
/// is stored once.
bool reportShots(const QString& what, const Range& range, const StoredShots& store, QStringList missing);

}  // namespace qk::faults

// The command line of qk-station.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

#include "tools/station/station.h"

namespace qk {

struct StationOptions {
  QString folder;  ///< exchange folder with its final separator
  std::vector<int> lines = {1};
  int paceMs = 1000;
  quint64 seed = 1;
  QString logFile;     ///< empty: no log
  QString replayFile;  ///< empty: own shots
  QSet<Fault> faults;
  int faultPercent = 20;
  int shotLimit = 0;
  bool endWhenDone = false;
};

/// Reads the arguments behind the program's name. On a mistake *fault is a German sentence and the rest is
/// undefined.
StationOptions parseStationOptions(const QStringList& arguments, QString* fault);

QString stationHelp();

}  // namespace qk

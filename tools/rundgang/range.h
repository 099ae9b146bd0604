// A range for one walk: a folder of its own with settings, documents, exchange folder and demo competition,
// the stations as a process, and the program, started as often as the walk wants.
#pragma once

#include <QProcess>
#include <QString>
#include <memory>

#include "tools/driver/driven_program.h"

namespace qk {

struct RangeOptions {
  QString folder;  ///< must exist; holds no dot
  QString activeLines = "111";
  int pace = 60;  ///< milliseconds between two shots of a station
  int seed = 1;
  QStringList stationArguments;
};

class Range {
 public:
  explicit Range(RangeOptions options);
  ~Range();

  /// Stores a group of station disciplines, as the office would have on an earlier day.
  void addGroup(const QString& name, const QStringList& disciplines) const;
  std::unique_ptr<DrivenProgram> startProgram() const;
  void startStations();
  void stopStations();

  QString competition() const { return options_.folder + "/demo.qkk"; }
  QString stationLog() const { return options_.folder + "/stationen.log"; }
  QString exchangeFolder() const { return options_.folder + "/austausch/"; }
  QString picture(const QString& name) const { return options_.folder + "/" + name + ".png"; }
  QProcessEnvironment environment() const;
  /// Whether the program has a command waiting for a station.
  bool commandPending(int line) const;
  /// Whether a station's report waits for the program.
  bool reportPending(int line) const;

 private:
  RangeOptions options_;
  QProcess stations_;
};

}  // namespace qk

// A range for one walk: a folder of its own with settings, documents, exchange folder and demo competition,
// the stations as a process, and the program, started as often as the walk wants.
#pragma once

#include <QProcess>
#include <QString>
#include <memory>

#include "tools/driver/driven_program.h"

namespace qk {

struct RangeOptions {
  /// Must exist; holds no dot. A file "demo.qkk" in it that names an empty store on a server puts the
  /// competition there.
  QString folder;
  QString activeLines = "111";
  int pace = 60;  ///< milliseconds between two shots of a station
  int seed = 1;
  QStringList stationArguments = {};
  bool demo = true;  ///< false: who walks makes the competition himself
};

class Range {
 public:
  explicit Range(RangeOptions options);
  ~Range();

  /// Stores a group of station disciplines, as the office would have on an earlier day.
  void addGroup(const QString& name, const QStringList& disciplines) const;
  std::unique_ptr<DrivenProgram> startProgram() const;
  /// The program for master data on the same workstation. Without a path: on the competition that was open
  /// last, or whatever the program offers.
  std::unique_ptr<DrivenProgram> startMasterData(const QString& path = {}) const;
  /// The cash desk alone, on the same workstation.
  std::unique_ptr<DrivenProgram> startCashDesk() const;
  static QString masterDataProgram();
  /// A further desk on the same competition, a workstation with settings and folders of its own, with these
  /// lines.
  std::unique_ptr<DrivenProgram> startDesk(const QString& name, const QString& activeLines) const;
  void startStations();
  void stopStations();

  QString competition() const { return options_.folder + "/demo.qkk"; }
  QString stationLog() const { return options_.folder + "/stationen.log"; }
  QString exchangeFolder() const { return options_.folder + "/austausch/"; }
  QString file(const QString& name) const { return options_.folder + "/" + name; }
  QString picture(const QString& name) const { return file(name + ".png"); }
  QProcessEnvironment environment() const { return environmentOf(options_.folder); }
  /// Waits until the station has taken the command that a click on the program's window has just called for;
  /// the command before it was another one. Where the click calls for several, all that may be the last.
  void waitUntilTaken(DrivenProgram& program, int line, const QStringList& commands) const;
  /// Whether the program has a command waiting for a station.
  bool commandPending(int line) const;
  /// Whether a station's report waits for the program.
  bool reportPending(int line) const;

 private:
  /// The command that the program wrote last for a station, taken or not.
  QString lastCommand(int line) const;
  void makeDemo() const;
  /// Makes the folder of a workstation with its settings.
  void furnish(const QString& folder, const QString& activeLines) const;
  QProcessEnvironment environmentOf(const QString& folder) const;

  RangeOptions options_;
  QProcess stations_;
};

}  // namespace qk

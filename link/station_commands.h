// What a firing line's station is told: one table, from which the office sends and by which the simulated
// station reads.
//
//   "76 'Umschalten auf Preismodus"     code 76, the rest is sent too and means nothing
//   "45 bild.bmp"                       code 45, behind "45 " the argument
//
// A station knows a command by its code alone: two rows of one code are two reasons to send the same thing.
#pragma once

#include <QString>
#include <vector>

namespace qk {

/// Why the office sends something.
enum class Befehl {
  VorPreismodus,
  PreismodusEin,
  PreismodusAus,
  Anmelden,
  Nachkauf,
  Abmelden1,
  Abmelden2,
  Abmelden3,
  Vorbereiten,
  Starten,
  Stoppen,
  Antwort78,
  WerbefensterEin,
  WerbefensterAus,
  Windows,
  Herunterfahren
};

/// What the station does when it reads a code.
enum class StationAct {
  Nothing,
  EnterPriceMode,
  LeavePriceMode,
  LeaveToDesktop,
  Register,
  AddShots,
  Pause,
  GoOn,
  SignOff,
  ShowAdvert,
  HideAdvert,
  ShutDown
};

struct StationCommand {
  Befehl befehl;
  QString code;
  QString rest;      ///< what is always sent behind the code
  QString argument;  ///< in words what is sent behind that; empty when nothing is
  bool wait;         ///< whether the office waits until the station has taken the command before
  StationAct act;
  QString meaning;  ///< for people

  /// What goes out, less the argument.
  QString text() const { return code + rest; }
};

/// Every command once, in the order of Befehl.
const std::vector<StationCommand>& stationCommands();
const StationCommand& stationCommand(Befehl befehl);
/// The row that a station reads a command by: the first of those with its code. nullptr for what is none.
const StationCommand* readCommand(const QString& command);

}  // namespace qk

// The command routines of a firing line: what goes out in which order, what is asked before, which event
// follows. They need no window; the line control lends them its send routine, its timer and its labels.
//
// Every send and every box runs the event loop, and the line may be taken down in there: a routine then
// returns at once (LineSide::lives()). The LineSide outlives every routine that runs on it.
#pragma once

#include <QSet>
#include <QString>
#include <functional>

#include "link/linecontrol/line_disciplines.h"
#include "link/station_commands.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace qk {

enum class LineEvent { PreisModusGestartet, PreisModusBeendet, WettkampfBeendet, SchuetzeGesendet };

/// The line control as the commands see it.
class LineSide {
 public:
  virtual ~LineSide() = default;

  /// Queues one command; a failure is Error 13. `wanted`, which may be empty, is asked behind the wait for
  /// the station, whether it still is.
  virtual void Output_2_ESA(const QString& sCommand, bool bWarten, const std::function<bool()>& wanted) = 0;
  virtual bool lives() const = 0;
  /// Whether the line has its competition, without which it takes no shot; tries to open it when it hasn't.
  virtual bool opens() = 0;
  virtual QString startnummer() const = 0;
  virtual QString schuetzenName() const = 0;
  virtual void setTimerEnabled(bool enabled) = 0;
  virtual void clearShooterInput() = 0;   ///< the box of the start number
  virtual void clearShooterLabels() = 0;  ///< the five labels of the shooter
  virtual void raise(LineEvent event) = 0;
};

class LineCommands {
 public:
  LineCommands(const Workplace& workplace, LineSide& line, LineDisciplines& disciplines);

  // Each gives what it did, in words for the operator; they hold where something went out. Empty: the station
  // shows it.

  // These three ignore errors throughout.
  QString Set_Linie_PreisModus_ON();
  QString Set_Linie_PreisModus_OFF();
  QString Set_Abmelden_Schuetze();

  /// Registers the shooter with the selected disciplines. `bFrage` false sends only where none is selected.
  /// Reports its own failures.
  QString Set_Anmelden_SchuetzeDisziplinen(bool bFrage = true);
  /// Sends the additional shots of every row that has a number, while the line keeps its shooter. Reports its
  /// own failures. Does nothing while a former call for him still waits for the station: the same shots would
  /// go out twice, and be paid once.
  QString Nachkauf_Senden(bool bFrage);
  // The rest does nothing but send; a failure passes to the caller.
  QString Wettkampf_Vorbereiten();
  QString Wettkampf_Starten();
  QString Wettkampf_Stoppen();
  QString Set_Linie_Werbefenster_EIN(const QString& text);
  QString Set_Linie_Werbefenster_AUS();
  QString Set_Linie_ZurueckWindows();
  QString Set_Linie_ShutDown();

  /// The selected disciplines, or the additional shots, one a line. Reports its own failures; the empty text
  /// then.
  QString Get_HaeringDisziplinAuswahlNamen(bool bNachkauf);

 private:
  /// A failure passes to the caller.
  void send(Befehl befehl);
  void send(Befehl befehl, const QString& text);
  bool wantsToSend(bool bFrage);
  void sendExtras(Steps& step, const std::function<bool()>& wanted);
  /// Runs a statement whose failure disturbs nobody; false once the line is gone.
  bool quietly(const std::function<void()>& statement);

  Workplace workplace_;
  LineSide& line_;
  LineDisciplines& disciplines_;
  /// Whose additional shots go out: while one command waits for its station, a second press would send the
  /// same numbers once more.
  QSet<QString> extrasOf_;
};

}  // namespace qk

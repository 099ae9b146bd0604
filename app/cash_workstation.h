// The cash desk as a program of its own: one competition, no lines, numbered targets in sight.
#pragma once

#include <memory>

#include "app/competition_opening.h"
#include "app/ground/control_door.h"
#include "app/ground/global_variablen.h"
#include "app/ground/printing.h"
#include "cash/frmFinanz.h"
#include "platform/workplace.h"

namespace qk {

class CashWorkstation {
 public:
  /// All of the workplace and the values outlive it.
  CashWorkstation(const Workplace& workplace, GlobalVariablen& global);

  /// Opens the competition of the command line, the last one, or one that the operator chooses; the desk then
  /// waits for its first shooter. False when there is nothing to work on: the program is to end.
  bool form_load(const QString& sCommandLine);

  frmFinanz& window() { return window_; }

 private:
  void openDialog(Steps& step);

  Workplace workplace_;
  GlobalVariablen& global_;
  CompetitionOpening opening_;
  ProgramPapers papers_;
  ControlDoor reports_;
  frmFinanz window_;
};

}  // namespace qk

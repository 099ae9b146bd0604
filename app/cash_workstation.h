// The cash desk as a program of its own: one competition, no lines, numbered targets in sight.
#pragma once

#include <memory>

#include "app/competition_opening.h"
#include "app/ground/control_door.h"
#include "app/ground/global_variablen.h"
#include "app/ground/printing.h"
#include "app/watch/office_watch.h"
#include "cash/frmFinanz.h"
#include "platform/workplace.h"

namespace qk {

class CashWorkstation {
 public:
  /// All of the workplace and the values outlive it. `storage` is what the watch looks at.
  CashWorkstation(const Workplace& workplace, GlobalVariablen& global,
                  std::shared_ptr<Storage> storage = std::make_shared<Storage>());

  /// Opens the competition of the command line, the last one, or one that the operator chooses; the desk then
  /// waits for its first shooter. False when there is nothing to work on: the program is to end.
  bool form_load(const QString& sCommandLine);

  frmFinanz& window() { return window_; }
  OfficeWatch& watch() { return watch_; }

 private:
  void openDialog(Steps& step);

  Workplace workplace_;
  GlobalVariablen& global_;
  CompetitionOpening opening_;
  ProgramPapers papers_;
  ControlDoor reports_;
  frmFinanz window_;
  OfficeWatch watch_;
};

}  // namespace qk

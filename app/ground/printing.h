// The program's printer: what "Druckereinrichtung" sets up and everything prints on.
#pragma once

#include "platform/print/current_printer.h"
#include "platform/print/paper.h"
#include "platform/workplace.h"

namespace qk {

CurrentPrinter currentPrinter(const Workplace& workplace);

/// The question before something is printed on a printer that stands still.
AskAboutPaused fragtObEsWartet(const Workplace& workplace);

/// Its paper: without a question, and with one that begins with it.
struct ProgramPapers {
  explicit ProgramPapers(const Workplace& workplace)
      : current(currentPrinter(workplace), fragtObEsWartet(workplace)),
        asking(currentPrinter(workplace), fragtObEsWartet(workplace)) {}

  CurrentPaper current;
  PrinterPaper asking;
};

}  // namespace qk

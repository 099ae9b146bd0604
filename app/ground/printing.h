// The program's printer: what "Druckereinrichtung" sets up and everything prints on.
#pragma once

#include "platform/print/current_printer.h"
#include "platform/workplace.h"

namespace qk {

CurrentPrinter currentPrinter(const Workplace& workplace);

}  // namespace qk

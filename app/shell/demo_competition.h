// The demo competition of this workstation: made once, by the program beside this one that makes
// competitions.
#pragma once

#include <QString>

#include "app/ground/global_variablen.h"
#include "platform/workplace.h"

namespace qk {

/// Where it lies, with the exchange folder of its stations; with its final separator.
QString demoFolder(const GlobalVariablen& global);

/// The path of the demo competition, which is made if it isn't there; empty after a failure, which a box
/// tells. The settings get its exchange folder and six lines where they name none of their own.
QString demoCompetition(const Workplace& workplace, const GlobalVariablen& global);

}  // namespace qk

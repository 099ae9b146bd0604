// The data behind one print: a copy of a template in the folder of the environment variable `temp`, so that
// several workstations can print at once.
#pragma once

#include <QString>

#include "platform/workplace.h"

namespace qk {

/// A fresh copy of the template; its path. Errors pass; nothing is left then.
/// `sVorlage`: full path. `prefix`: with what the copy's name begins.
QString kopiereVorlage(const Workplace& workplace, const QString& sVorlage, const QString& prefix);

/// Removes it, with all that reading it has left. Nobody has it open.
void loescheDatendatei(const Workplace& workplace, const QString& path);

}  // namespace qk

// An exchange folder with the stations' configuration, as the target system would keep it: some disciplines
// of the demo competition, under the same names.
#pragma once

#include <QString>

namespace qk {

class Files;

/// Writes esa_preis.ini, the def files and the weapon and target files that they name; makes the folder.
/// Overwrites. Errors of platform/runtime/files.h.
void writeExchangeFolder(Files& files, const QString& folder);

}  // namespace qk

// The start of the program for a competition's master data.
#pragma once

namespace qk {

/// Runs until its window is closed; the process's exit status. The arguments are the path of a competition,
/// or nothing.
int startMasterData(int argc, char** argv);

}  // namespace qk

// The start of the program: one instance, one main window.
#pragma once

namespace qk {

/// Runs the program until the main window is unloaded; the process's exit status. The arguments are the path
/// of a competition file, or nothing.
int start(int argc, char** argv);

}  // namespace qk

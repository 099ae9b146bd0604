// What the operator sees while the program waits for the database server.
#pragma once

#include "platform/dao/waiting_sign.h"

class QMainWindow;

namespace qk {

/// A line in the window's status bar, and all windows painted anew, so that they can be moved and uncovered.
/// The window outlives the sign.
dao::WaitingSign showWaitingIn(QMainWindow& window);

}  // namespace qk

// What the operator sees while the program waits for the database server.
#pragma once

#include "platform/dao/waiting_sign.h"

class QStatusBar;

namespace qk {

/// A line in the status bar, and all windows painted anew, so that they can be moved and uncovered. The bar
/// outlives the sign.
dao::WaitingSign showWaitingIn(QStatusBar& bar);

}  // namespace qk

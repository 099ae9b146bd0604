// What the operator sees while the program waits for the database server, or is at long work in it.
#pragma once

#include "platform/dao/signs/waiting_sign.h"
#include "platform/dao/signs/work_sign.h"

class QStatusBar;

namespace qk {

/// A line in the status bar, and all windows painted anew, so that they can be moved and uncovered. The bar
/// outlives the sign.
dao::WaitingSign showWaitingIn(QStatusBar& bar);

/// The same while a long statement is done in pieces: what it does, and how much of it is done.
dao::WorkSign showWorkIn(QStatusBar& bar, const QString& what);

}  // namespace qk

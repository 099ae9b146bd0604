// Finds controls by object name inside a running program.
#pragma once

#include <QString>

class QAction;
class QWidget;

namespace qk::driver {

struct Found {
  QWidget* widget = nullptr;
  QAction* action = nullptr;
  QString problem;  ///< why there isn't exactly one
};

/// A path of object names, "cLine_2/cmdPreisModus"; each is looked for at any depth below the one before it.
/// Among several of one name the only visible one is meant.
Found find(const QString& path);

}  // namespace qk::driver

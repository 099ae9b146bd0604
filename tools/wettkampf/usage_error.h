// A wrong call of the tool.
#pragma once

#include <QString>

namespace qk {

struct UsageError {
  QString text;  ///< goes to the user as it stands
};

}  // namespace qk

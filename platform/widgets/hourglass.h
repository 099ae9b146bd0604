// The hourglass, for as long as it lives.
#pragma once

#include <QApplication>

namespace qk {

class Hourglass {
 public:
  Hourglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~Hourglass() { QApplication::restoreOverrideCursor(); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
};

}  // namespace qk

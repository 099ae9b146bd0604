// The hourglass, and the plain cursor of a window that opens under one; each for as long as it lives.
#pragma once

#include <QApplication>
#include <QCursor>
#include <vector>

namespace qk {

class Hourglass {
 public:
  Hourglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~Hourglass() { QApplication::restoreOverrideCursor(); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
};

/// Takes away every hourglass, and brings them back.
class PlainCursor {
 public:
  PlainCursor() {
    while (const QCursor* cursor = QApplication::overrideCursor()) {
      taken_.push_back(*cursor);
      QApplication::restoreOverrideCursor();
    }
  }
  ~PlainCursor() {
    for (auto cursor = taken_.rbegin(); cursor != taken_.rend(); ++cursor)
      QApplication::setOverrideCursor(*cursor);
  }
  PlainCursor(const PlainCursor&) = delete;
  PlainCursor& operator=(const PlainCursor&) = delete;

 private:
  std::vector<QCursor> taken_;
};

}  // namespace qk

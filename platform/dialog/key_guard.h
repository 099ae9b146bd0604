// Keeps a window that came unasked from being answered by what was meant for another.
//
// Whoever types a number while it comes up doesn't see it yet, and somebody in the middle of a double click
// doesn't either. It takes no key before a whole second has passed since it came and since the last key that
// it refused, and no click in its first half second.
#pragma once

#include <QDateTime>
#include <QObject>

class QWidget;

namespace qk {

class Clock;

class KeyGuard : public QObject {
  Q_OBJECT

 public:
  static constexpr int kQuietMilliseconds = 1000;
  static constexpr int kNoClickMilliseconds = 500;

  /// Guards from now on; goes with the window. The clock outlives it.
  KeyGuard(QWidget& window, const Clock& clock);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// A clock that was set back counts as passed: the window must not stay shut for an hour.
  bool passed(const QDateTime& since, int milliseconds) const;
  bool refuses(const QEvent& event);

  QWidget& window_;
  const Clock& clock_;
  QDateTime came_, lastKey_;
};

}  // namespace qk

#include "platform/dialog/key_guard.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include "platform/runtime/clock.h"

namespace qk {

KeyGuard::KeyGuard(QWidget& window, const Clock& clock)
    : QObject(&window), window_(window), clock_(clock), came_(clock.now()), lastKey_(came_) {
  qApp->installEventFilter(this);
}

bool KeyGuard::passed(const QDateTime& since, int milliseconds) const {
  const qint64 past = since.msecsTo(clock_.now());
  return past < 0 || past >= milliseconds;
}

bool KeyGuard::eventFilter(QObject* watched, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || widget->window() != &window_ || !refuses(*event)) return false;
  event->accept();  // nobody further up, and no shortcut, gets it either
  return true;
}

bool KeyGuard::refuses(const QEvent& event) {
  switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
      if (passed(lastKey_, kQuietMilliseconds)) return false;
      lastKey_ = clock_.now();
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
      return !passed(came_, kNoClickMilliseconds);
    default:
      return false;
  }
}

}  // namespace qk

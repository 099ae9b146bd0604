#include "platform/look/inside_screen.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace qk::look {

namespace {

constexpr const char* kFitted = "qkInnerhalb";

bool hasFrame(const QWidget& window) {
  const Qt::WindowType type = window.windowType();
  const bool framed = type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet || type == Qt::Tool;
  return window.isWindow() && framed && !(window.windowFlags() & Qt::FramelessWindowHint);
}

QMargins frameOf(const QWidget& window) {
  return window.windowHandle() ? window.windowHandle()->frameMargins() : QMargins();
}

}  // namespace

bool InsideScreen::eventFilter(QObject* watched, QEvent* event) {
  const bool shown = event->type() == QEvent::Show;
  if ((!shown && event->type() != QEvent::WindowActivate) || !watched->isWidgetType()) return false;
  auto& window = *static_cast<QWidget*>(watched);
  if (!hasFrame(window)) return false;
  const QMargins own = frameOf(window);
  if (!own.isNull()) lastFrame_ = own;
  if (!shown && window.property(kFitted).toBool()) return false;
  window.setProperty(kFitted, !shown);
  if (!window.isMaximized() && !window.isFullScreen()) fit(window, own);
  return false;
}

void InsideScreen::fit(QWidget& window, const QMargins& own) {
  const QMargins frame = own.isNull() ? lastFrame_ : own;
  const QPoint corner(frame.left(), frame.top());
  const QRect room = window.screen()->availableGeometry().marginsRemoved(frame);
  const QSize size = window.size().boundedTo(room.size()).expandedTo(window.minimumSizeHint());
  if (size != window.size()) window.resize(size);
  // Without a frame yet, the place is that of the frame to come.
  const QPoint at = own.isNull() ? window.pos() + corner : window.geometry().topLeft();
  // Where a window can't be wholly inside, its title bar is.
  const QPoint inside(std::max(room.left(), std::min(at.x(), room.right() + 1 - size.width())),
                      std::max(room.top(), std::min(at.y(), room.bottom() + 1 - size.height())));
  if (inside != at) window.move(inside - corner);
}

}  // namespace qk::look

#include "platform/widgets/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include "platform/look/plain_tip.h"

namespace qk {

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth(), QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect room = contentsRect();
  style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(),
                        fontMetrics().elidedText(text(), Qt::ElideRight, room.width()), foregroundRole());
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && fontMetrics().horizontalAdvance(text()) > contentsRect().width()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainTip(text()), this);
    return true;
  }
  return QLabel::event(event);
}

}  // namespace qk

#include "platform/look/path_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "platform/look/plain_tip.h"

namespace qk {

namespace {

// Room for this many characters is asked for, less is never taken.
constexpr int kWantedCharacters = 44;
constexpr int kLeastCharacters = 12;

}  // namespace

PathLabel::PathLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize PathLabel::sizeHint() const {
  const int wanted = kWantedCharacters * fontMetrics().averageCharWidth();
  return {std::min(wanted, QLabel::sizeHint().width()), QLabel::sizeHint().height()};
}

QSize PathLabel::minimumSizeHint() const {
  const int least = kLeastCharacters * fontMetrics().averageCharWidth();
  return {std::min(least, QLabel::sizeHint().width()), QLabel::sizeHint().height()};
}

bool PathLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const bool cut = fontMetrics().horizontalAdvance(text()) > contentsRect().width();
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainTip(cut ? text() : QString()), this);
  return true;
}

void PathLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawFrame(&painter);
  painter.setPen(palette().color(foregroundRole()));
  const QRect room = contentsRect();
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
}

}  // namespace qk

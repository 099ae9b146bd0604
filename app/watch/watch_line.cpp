#include "app/watch/watch_line.h"

#include <QAccessible>
#include <QPainter>
#include <QStyle>

#include "platform/look/alert.h"
#include "platform/look/plain_tip.h"

namespace qk {

namespace {

constexpr int kMargin = 4;

}  // namespace

WatchLine::WatchLine(QWidget* parent) : QToolButton(parent) {
  setFocusPolicy(Qt::NoFocus);
  setCursor(Qt::PointingHandCursor);
  hide();
}

void WatchLine::show(const ThreatBook& book) {
  const bool more = book.count() > count_ || book.level() > level_;
  level_ = book.level();
  count_ = book.count();
  // A mnemonic would take a key from the window.
  setText(book.line().replace('&', "&&"));
  const QString whole = book.standing().empty() ? QString() : book.standing().front().threat.what;
  setToolTip(plainTip(whole + "\nUmschalt+F1 zeigt, was zu tun ist."));
  setAccessibleName(book.line());
  setAccessibleDescription(whole);
  QFont face = parentWidget() ? parentWidget()->font() : font();
  face.setBold(level_ == ThreatLevel::Grave);
  setFont(face);
  setVisible(!book.standing().empty());
  updateGeometry();
  update();
  if (more && count_ > 0) {
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
  }
}

QSize WatchLine::sizeHint() const {
  const QSize size = fontMetrics().size(Qt::TextShowMnemonic, text());
  return {size.width() + 2 * kMargin, size.height() + kMargin};
}

void WatchLine::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QPalette colours = palette();
  if (level_ != ThreatLevel::Calm) {
    look::setAlertColours(colours);
    painter.fillRect(rect(), colours.window());
  } else if (underMouse()) {
    painter.fillRect(rect(), colours.midlight());
  }
  style()->drawItemText(&painter, rect(), Qt::AlignCenter | Qt::TextShowMnemonic, colours, true, text(),
                        QPalette::WindowText);
}

}  // namespace qk

#include "platform/look/marks.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

namespace qk::look {

void paintMark(QPainter& painter, const QRectF& box, Mark mark, const QColor& colour) {
  if (mark == Mark::None) return;
  const double side = std::min(box.width(), box.height());
  QRectF square(0, 0, side, side);
  square.moveCenter(box.center());
  const auto at = [&](double x, double y) {
    return QPointF(square.left() + x * side, square.top() + y * side);
  };
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, side / 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (mark == Mark::Tick) {
    painter.drawPolyline(QPolygonF({at(0.12, 0.55), at(0.4, 0.82), at(0.88, 0.2)}));
  } else {
    painter.drawLine(at(0.18, 0.18), at(0.82, 0.82));
    painter.drawLine(at(0.82, 0.18), at(0.18, 0.82));
  }
  painter.restore();
}

}  // namespace qk::look

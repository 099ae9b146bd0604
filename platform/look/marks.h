// Marks that speak by their shape, so that colour never speaks alone. Drawn, not written: a face that lacks
// the sign would show a box.
#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace qk::look {

enum class Mark { None, Tick, Cross };

/// In the middle of the box, as large as fits.
void paintMark(QPainter& painter, const QRectF& box, Mark mark, const QColor& colour);

}  // namespace qk::look

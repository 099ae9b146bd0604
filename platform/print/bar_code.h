// Bar codes as bars and gaps, ready to be drawn on anything.
#pragma once

#include <QString>
#include <vector>

class QPainter;
class QRectF;

namespace qk {

enum class BarCode { Code128, Code39, Ean13 };

struct Bars {
  std::vector<bool> modules;  ///< true is black; without the quiet zones at both sides
  QString problem;            ///< why there are none, in German
};

Bars barsOf(BarCode kind, const QString& text);

/// Quiet zones at both sides, in modules.
inline constexpr int kQuietModules = 10;

/// As wide as the box allows, in whole pixels of the device where it has them: a scanner wants even bars.
void paintBars(QPainter& painter, const QRectF& box, const Bars& bars);

}  // namespace qk

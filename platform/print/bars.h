// Bar codes drawn as bars, without a bar code font. Public standards: Code 128 (ISO/IEC 15417), Code 39
// (ISO/IEC 16388), EAN-13 (ISO/IEC 15420).
#pragma once

#include <QRectF>
#include <QString>
#include <vector>

class QPainter;

namespace qk {

enum class Symbology { Code128, Code39, Ean13 };

/// The standard's own name of it.
QString nameOf(Symbology symbology);

/// The symbol module by module, true where there is ink; without quiet zones. Empty when the symbology can't
/// hold the content. EAN-13 takes twelve digits, or thirteen with the right check digit.
std::vector<bool> barModules(Symbology symbology, const QString& content);

/// Paints the modules, each `module` device pixels wide, with the quiet zone that readers want on both sides.
/// Whole pixels only: bars that are blurred or of uneven width don't scan. Gives what was covered.
QRect paintBars(QPainter& painter, const QPoint& corner, const std::vector<bool>& modules, int module,
                int height);

/// The bars of a symbol in the middle of a box, as wide as it allows, each in whole pixels of a device that
/// has `scale` of them in one unit of the box.
std::vector<QRectF> barsIn(const QRectF& box, const std::vector<bool>& modules, double scale);

/// Paints those.
void paintBars(QPainter& painter, const QRectF& box, const std::vector<bool>& modules);

}  // namespace qk

#include "platform/print/positioned_labels.h"

#include <QFontMetricsF>

#include "platform/print/bar_reader.h"

namespace qk {

namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kMillimetresPerInch = 25.4;
// Two dots of a common label printer (203 dpi), the least that hand scanners read well.
constexpr double kModuleMillimetres = 0.25;
constexpr double kBarHeightMillimetres = 10, kBelowBarsMillimetres = 1;

double inTwips(double millimetres) {
  return millimetres / kMillimetresPerInch * kTwipsPerInch;
}

}  // namespace

double PositionedLabels::pixels(double twips) const {
  return twips * dotsPerInch() / kTwipsPerInch;
}

double PositionedLabels::twips(double pixels) const {
  return pixels * kTwipsPerInch / dotsPerInch();
}

QPoint PositionedLabels::corner() const {
  return QPointF(pixels(x_), pixels(y_)).toPoint();
}

void PositionedLabels::paintText(const QString& text, const Bars* bars) {
  QPainter& painter = begin();
  painter.setFont(qtFontOf(font_));
  const QFontMetricsF metrics = painter.fontMetrics();
  painter.drawText(QPointF(corner()) + QPointF(0, metrics.ascent()), text);
  painted(QRectF(corner(), QSizeF(metrics.horizontalAdvance(text), metrics.height())), bars);
  y_ += twips(metrics.lineSpacing());
}

void PositionedLabels::printLine(const QString& text) {
  paintText(text, nullptr);
}

void PositionedLabels::printBarcode(Symbology symbology, const QString& content, const QString& encoded) {
  const Bars bars{symbology, content};
  if (encoded.isEmpty()) return impossible(bars);
  if (drawsBars(font_, symbology, content, encoded)) return paintText(encoded, &bars);
  const std::vector<bool> modules = barModules(symbology, content);
  if (modules.empty()) return impossible(bars);
  QPainter& painter = begin();
  const int module = qMax(1, qRound(pixels(inTwips(kModuleMillimetres))));
  painted(paintBars(painter, corner(), modules, module, qRound(pixels(inTwips(kBarHeightMillimetres)))),
          &bars);
  y_ += inTwips(kBarHeightMillimetres + kBelowBarsMillimetres);
}

void PositionedLabels::endDocument() {
  x_ = y_ = 0;
  end();
}

}  // namespace qk

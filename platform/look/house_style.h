// Fusion with the house's distances: all of them follow the font, so that a larger one keeps the proportions.
#pragma once

#include <QProxyStyle>

namespace qk::look {

class HouseStyle : public QProxyStyle {
  Q_OBJECT

 public:
  HouseStyle() : QProxyStyle("fusion") {}

  /// Boxes for ticks and choices get a rim that stands out on either ground.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  /// A title that its column has no room for ends in an ellipsis.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  /// The mark of a chosen row keeps its colours, on a ground that it stands out from; tinted, it couldn't be
  /// told from the others. What is disabled fades on a light and a dark ground alike.
  QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                              const QStyleOption* option) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace qk::look

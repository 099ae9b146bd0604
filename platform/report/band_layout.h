// Places the elements of a band. Texts that grow push down what stands below them.
#pragma once

#include <QHash>

#include "platform/report/filling.h"
#include "platform/report/measure.h"
#include "platform/report/page_items.h"

namespace qk::report {

class BandLayout {
 public:
  BandLayout(Fonts& fonts, QString folder) : fonts_(fonts), folder_(std::move(folder)) {}

  /// Its height; the items go to `out` if there is one. Everything in units of a page.
  double lay(const Band& band, const Known& known, const QPointF& corner, double width, PageItems* out);

  /// A line of text in a box, cut where it is too long.
  void line(PageItems& out, int font, const QString& text, const QRectF& box, Align align,
            const QColor& colour) const;

 private:
  double layText(const TextElement& shape, const QRectF& box, const Known& known, PageItems* out) const;
  double layValues(const ValuesElement& shape, const QRectF& box, const Known& known, PageItems* out) const;
  void layShape(const Element& element, const QRectF& box, const Known& known, PageItems& out);
  void layPicture(const PictureElement& shape, const QRectF& box, const Known& known, PageItems& out);
  void layBars(const BarElement& shape, const QRectF& box, const Known& known, PageItems& out);

  Fonts& fonts_;
  QString folder_;  ///< of pictures
  QHash<QString, QImage> pictures_;
};

/// Gives every style of the report the number of its font.
void numberFonts(Definition& report, Fonts& fonts);

}  // namespace qk::report

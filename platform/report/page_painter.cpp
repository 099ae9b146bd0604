#include "platform/report/page_painter.h"

#include <QPainter>

#include "platform/print/bars.h"

namespace qk::report {

namespace {

class PagePainter {
 public:
  PagePainter(QPainter& painter, const Fonts& fonts) : painter_(painter), fonts_(fonts) {}

  void operator()(const TextItem& item) {
    if (item.font != font_) painter_.setFont(fonts_.font(font_ = item.font));
    pen(item.colour, 0);
    painter_.drawText(item.base, item.text);
  }

  void operator()(const LineItem& item) {
    pen(item.colour, item.thickness);
    painter_.drawLine(item.line);
  }

  void operator()(const BoxItem& item) {
    if (item.ground.isValid()) painter_.fillRect(item.place, item.ground);
    if (item.thickness <= 0) return;
    pen(item.colour, item.thickness);
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(item.place);
  }

  void operator()(const PictureItem& item) { painter_.drawImage(item.place, item.image); }

  void operator()(const BarItem& item) {
    const std::vector<bool> modules = barModules(item.kind, item.text);
    if (!modules.empty()) return paintBars(painter_, item.place, modules);
    (*this)(whyNoBars(item, fonts_));
  }

 private:
  void pen(const QColor& colour, double thickness) {
    if (colour == colour_ && thickness == thickness_) return;
    colour_ = colour;
    thickness_ = thickness;
    painter_.setPen(QPen(colour, thickness, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  }

  QPainter& painter_;
  const Fonts& fonts_;
  int font_ = -1;
  QColor colour_;
  double thickness_ = -1;
};

}  // namespace

TextItem whyNoBars(const BarItem& item, const Fonts& fonts) {
  const QString problem =
      QString("(\"%1\" lässt sich nicht als %2 drucken)").arg(item.text, nameOf(item.kind));
  return {item.place.topLeft() + QPointF(0, fonts.ascent(0)),
          {},
          fonts.elided(0, problem, item.place.width()),
          0,
          Qt::darkGray};
}

void paintPage(QPainter& painter, const PageItems& page, const Fonts& fonts) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  PagePainter paint(painter, fonts);
  for (const Item& item : page.items) std::visit(paint, item);
}

}  // namespace qk::report

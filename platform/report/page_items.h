// What stands on a page, placed: painted, searched and read back by tests. The unit is 1/1200 inch, from the
// corner of the sheet, whatever the device.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRectF>
#include <QString>
#include <variant>
#include <vector>

#include "platform/report/definition.h"

namespace qk::report {

inline constexpr double kUnitsPerMillimetre = 1200 / 25.4;
inline constexpr int kUnitsPerInch = 1200;

struct TextItem {
  QPointF base;  ///< where its base line begins
  QRectF place;  ///< what it covers
  QString text;  ///< one line
  int font = 0;  ///< of the layout's fonts
  QColor colour = Qt::black;
};

struct LineItem {
  QLineF line;
  double thickness = 0;
  QColor colour;
};

struct BoxItem {
  QRectF place;
  double thickness = 0;
  QColor colour;
  QColor ground;
};

struct PictureItem {
  QRectF place;
  QImage image;
};

struct BarItem {
  QRectF place;
  Symbology kind = Symbology::Code128;
  QString text;
};

using Item = std::variant<TextItem, LineItem, BoxItem, PictureItem, BarItem>;

struct PageItems {
  std::vector<Item> items;
};

}  // namespace qk::report

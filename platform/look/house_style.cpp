#include "platform/look/house_style.h"

#include <QApplication>
#include <QFontMetrics>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace qk::look {

namespace {

// Distances as parts of the font's height.
constexpr double kMargin = 0.70;
constexpr double kSpacing = 0.45;
constexpr double kSmallIcon = 1.15;
constexpr double kToolBarIcon = 1.70;

}  // namespace

int HouseStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  const int height = widget ? widget->fontMetrics().height() : QFontMetrics(QApplication::font()).height();
  const auto part = [height](double share) { return int(std::lround(height * share)); };
  switch (metric) {
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
      return part(kMargin);
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
      return part(kSpacing);
    case PM_ButtonIconSize:
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
      return std::max(16, part(kSmallIcon));
    case PM_ToolBarIconSize:
      return std::max(24, part(kToolBarIcon));
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return std::max(QProxyStyle::pixelMetric(metric, option, widget), height - 2);
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

}  // namespace qk::look

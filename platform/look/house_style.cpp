#include "platform/look/house_style.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace qk::look {

namespace {

// Distances as parts of the font's height.
constexpr double kMargin = 0.70;
constexpr double kSpacing = 0.45;
constexpr double kButtonMargin = 0.70;
constexpr double kHeaderMargin = 0.30;
constexpr double kCellMargin = 0.18;
constexpr double kSmallIcon = 1.15;
constexpr double kToolBarIcon = 1.70;

constexpr int kRimOpacity = 140;
constexpr int kFocusFrame = 2;  ///< pixels
constexpr double kDisabledOpacity = 0.5;

}  // namespace

void HouseStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  if (element == PE_FrameFocusRect && qobject_cast<const QAbstractItemView*>(widget)) {
    // The toolkit's own frame has the colour of a chosen row, on which it lies as a rule.
    const bool selected = option->state.testFlag(State_Selected);
    const QColor colour = option->palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    painter->save();
    painter->setPen(QPen(colour, kFocusFrame, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(1, 1, -1, -1));
    painter->restore();
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
  if (!box && element != PE_IndicatorRadioButton) return;
  const bool selected = element == PE_IndicatorItemViewItemCheck && option->state.testFlag(State_Selected);
  QColor rim = option->palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
  rim.setAlpha(kRimOpacity);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(rim);
  painter->setBrush(Qt::NoBrush);
  const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
  if (box)
    painter->drawRoundedRect(frame, 2, 2);
  else
    painter->drawEllipse(frame);
  painter->restore();
}

void HouseStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
  const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
  if (element != CE_HeaderLabel || !header) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  // The toolkit reckons with narrower margins than the house's.
  QStyleOptionHeader fitting = *header;
  fitting.text = header->fontMetrics.elidedText(header->text, Qt::ElideRight, header->rect.width());
  QProxyStyle::drawControl(element, &fitting, painter, widget);
}

QPixmap HouseStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                        const QStyleOption* option) const {
  if (mode != QIcon::Selected && mode != QIcon::Disabled)
    return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
  QPixmap result(pixmap.size());
  result.setDevicePixelRatio(pixmap.devicePixelRatio());
  result.fill(Qt::transparent);
  QPainter painter(&result);
  painter.setRenderHint(QPainter::Antialiasing);
  if (mode == QIcon::Selected) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(option->palette.base());
    painter.drawRoundedRect(QRectF(QPointF(), pixmap.deviceIndependentSize()), 2, 2);
    painter.drawPixmap(0, 0, pixmap);
  } else {
    painter.setOpacity(kDisabledOpacity);
    painter.drawPixmap(0, 0, QProxyStyle::generatedIconPixmap(mode, pixmap, option));
  }
  return result;
}

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
    case PM_ButtonMargin:
      return std::max(part(kButtonMargin), QProxyStyle::pixelMetric(metric, option, widget));
    case PM_HeaderMargin:
      return part(kHeaderMargin);
    case PM_FocusFrameHMargin:
      return part(kCellMargin);
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

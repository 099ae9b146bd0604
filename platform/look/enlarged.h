// What must be read from afar: a control in a multiple of its window's font.
#pragma once

#include <QFontMetrics>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace qk::look {

/// On a small screen a large font leaves less room for what is larger still: the factor goes down to 1 there.
inline void enlarge(QWidget& widget, QFont font, double factor, bool bold = true) {
  constexpr double kLinesOfTheScreen = 45;  // for which windows are designed
  const double room = std::min(1.0, widget.screen()->availableSize().height() /
                                        (kLinesOfTheScreen * QFontMetrics(font).lineSpacing()));
  font.setPointSizeF(font.pointSizeF() * std::max(1.0, factor * room));
  font.setBold(bold);
  widget.setFont(font);
}

}  // namespace qk::look

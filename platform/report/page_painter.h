// Paints a laid-out page on any device.
#pragma once

#include "platform/report/measure.h"
#include "platform/report/page_items.h"

class QPainter;

namespace qk::report {

/// The painter's unit is 1/1200 inch then, its origin the corner of the sheet: the caller has scaled it so.
void paintPage(QPainter& painter, const PageItems& page, const Fonts& fonts);

/// The sentence that stands in the place of bars that can't be drawn.
TextItem whyNoBars(const BarItem& item, const Fonts& fonts);

}  // namespace qk::report

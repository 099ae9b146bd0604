// How the watch speaks: sizes, times, and the page of details.
#pragma once

#include <QColor>
#include <QDateTime>
#include <QString>
#include <chrono>

#include "app/watch/threat_book.h"

namespace qk {

/// "312 MB", "1,4 GB".
QString sizeText(qint64 bytes);
/// "1,4 s".
QString secondsText(std::chrono::milliseconds time);
/// "15:02"; with the date ("21.11. 18:02") where that isn't today's, if `today` is given.
QString timeText(const QDateTime& time, const QDate& today = {});

/// What threatens and what has passed, as HTML; the links lead to pages of the handbook. `ground` is what a
/// heading stands on.
QString detailsHtml(const ThreatBook& book, const QDate& today, const QColor& ground, const QColor& link);

}  // namespace qk

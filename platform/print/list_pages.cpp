#include "platform/print/list_pages.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

namespace qk {

namespace {

constexpr int kWrap = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;
constexpr double kTitleGrowth = 1.5;

}  // namespace

ListPages::ListPages(QString title, QStringList head, std::vector<ListRow> rows, const QFont& font)
    : title_(std::move(title)),
      head_(std::move(head)),
      rows_(std::move(rows)),
      font_(font),
      titleFont_(font) {
  titleFont_.setPointSizeF(font.pointSizeF() * kTitleGrowth);
  titleFont_.setBold(true);
}

QFont ListPages::fontOf(const ListRow& row) const {
  QFont font = font_;
  font.setBold(row.bold);
  return font;
}

double ListPages::textLeft(const ListRow& row) const {
  return indentOf(row) + (row.mark == look::Mark::None ? 0 : 1.3 * line_);
}

double ListPages::heightOf(const ListRow& row) const {
  const double width = std::max(line_, page_.width() - textLeft(row));
  const QRectF room(0, 0, width, 1e6);
  return std::max(line_, QFontMetricsF(fontOf(row), device_).boundingRect(room, kWrap, row.text).height());
}

double ListPages::headHeight() const {
  return titleLine_ + line_ * static_cast<double>(head_.size() + 1);
}

/// What should stand on one page from this row on: a row at the margin with all that is set in below it, or,
/// where a page is too short for that, with the first of it.
double ListPages::heightTogether(size_t row, double room) const {
  const double own = places_[row].height;
  if (rows_[row].depth > 0) return own;
  double all = own;
  size_t behind = row + 1;
  for (; behind < rows_.size() && rows_[behind].depth > 0; ++behind) all += places_[behind].height;
  if (all <= room || behind == row + 1) return all;
  return own + places_[row + 1].height;
}

int ListPages::layOut(QPaintDevice& device, const QSizeF& page) {
  device_ = &device;
  page_ = page;
  line_ = QFontMetricsF(font_, &device).height();
  titleLine_ = QFontMetricsF(titleFont_, &device).height();
  const double bottom = page.height() - 2 * line_;  // the foot keeps its distance
  places_.assign(rows_.size(), {});
  pages_.clear();
  size_t first = 0;
  double top = headHeight();
  const auto turn = [&](size_t next) {
    pages_.emplace_back(first, next);
    first = next;
    top = 0;
  };
  for (size_t i = 0; i < rows_.size(); ++i) places_[i].height = heightOf(rows_[i]);
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (top + heightTogether(i, bottom) > bottom && i > first) turn(i);
    places_[i].top = top;
    top += places_[i].height;
  }
  turn(rows_.size());
  device_ = nullptr;
  return static_cast<int>(pages_.size());
}

void ListPages::paintHead(QPainter& painter) const {
  painter.setPen(Qt::black);
  painter.setFont(titleFont_);
  painter.drawText(QRectF(0, 0, page_.width(), titleLine_), Qt::AlignLeft | Qt::AlignVCenter, title_);
  painter.setFont(font_);
  double top = titleLine_;
  for (const QString& line : head_) {
    painter.drawText(QRectF(0, top, page_.width(), line_), Qt::AlignLeft | Qt::AlignVCenter, line);
    top += line_;
  }
}

void ListPages::paintFoot(QPainter& painter, int page) const {
  const QString number = QString("Seite %1 von %2").arg(page + 1).arg(pages_.size());
  painter.setPen(Qt::black);
  painter.setFont(font_);
  painter.drawText(QRectF(0, page_.height() - line_, page_.width(), line_), Qt::AlignRight | Qt::AlignVCenter,
                   number);
  if (page == 0) return;
  // A sheet that has come apart from the first says what it belongs to.
  const QFontMetricsF metrics(font_, painter.device());
  const double room = page_.width() - metrics.horizontalAdvance(number) - line_;
  painter.drawText(QRectF(0, page_.height() - line_, room, line_), Qt::AlignLeft | Qt::AlignVCenter,
                   metrics.elidedText(title_, Qt::ElideRight, room));
}

void ListPages::paint(QPainter& painter, int page) const {
  if (page == 0) paintHead(painter);
  const auto [first, behind] = rowsOn(page);
  for (size_t i = first; i < behind; ++i) {
    const ListRow& row = rows_[i];
    const Place& place = places_[i];
    look::paintMark(painter,
                    QRectF(indentOf(row), place.top, line_, line_).adjusted(0, line_ / 6, 0, -line_ / 6),
                    row.mark, row.colour);
    painter.setPen(row.colour);
    painter.setFont(fontOf(row));
    painter.drawText(QRectF(textLeft(row), place.top, page_.width() - textLeft(row), place.height), kWrap,
                     row.text);
  }
  paintFoot(painter, page);
}

}  // namespace qk

#include "platform/widgets/even_rows.h"

#include <QEvent>
#include <QStyle>
#include <algorithm>
#include <numeric>

namespace qk {

namespace {

int rowsFor(qsizetype count, int perRow) {
  return static_cast<int>((count + perRow - 1) / perRow);
}

int sum(const QList<int>& widths) {
  return std::accumulate(widths.begin(), widths.end(), 0);
}

}  // namespace

EvenRows::EvenRows(QWidget* parent) : QWidget(parent) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void EvenRows::setLeftGroup(int count) {
  leftGroup_ = count;
  place();
}

QList<QWidget*> EvenRows::shown() const {
  QList<QWidget*> widgets = findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
  widgets.removeIf([](const QWidget* widget) { return widget->isHidden(); });
  return widgets;
}

int EvenRows::spacing() const {
  return style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, this);
}

QList<int> EvenRows::columnWidths(int perRow) const {
  QList<int> widths(perRow);
  const QList<QWidget*> widgets = shown();
  for (qsizetype i = 0; i < widgets.size(); ++i)
    widths[i % perRow] = std::max(widths[i % perRow], widgets[i]->sizeHint().width());
  return widths;
}

int EvenRows::perRow(int width) const {
  const qsizetype count = shown().size();
  for (int rows = 1; rows < count; ++rows) {
    const int each = rowsFor(count, rows);
    if (sum(columnWidths(each)) + (each - 1) * spacing() <= width) return each;
  }
  return 1;
}

int EvenRows::rowHeight() const {
  int height = 0;
  for (const QWidget* widget : shown()) height = std::max(height, widget->sizeHint().height());
  return height;
}

int EvenRows::heightOf(int rows) const {
  return rows * rowHeight() + (rows - 1) * spacing();
}

QSize EvenRows::sizeHint() const {
  const int count = std::max(1, static_cast<int>(shown().size()));
  return {sum(columnWidths(count)) + (count - 1) * spacing(), heightOf(1)};
}

QSize EvenRows::minimumSizeHint() const {
  return {columnWidths(1).constFirst(), heightOf(1)};
}

int EvenRows::heightForWidth(int width) const {
  return heightOf(std::max(1, rowsFor(shown().size(), perRow(width))));
}

bool EvenRows::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) {
    updateGeometry();
    place();
  }
  return QWidget::event(event);
}

void EvenRows::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  place();
}

void EvenRows::place() {
  const QList<QWidget*> widgets = shown();
  if (widgets.isEmpty()) return;
  const int each = perRow(width());
  const int room = width() - (each - 1) * spacing();
  QList<int> widths = columnWidths(each);
  const bool grouped = leftGroup_ > 0 && each == widgets.size();
  // All of one width where that fits, else each what it needs and its part of the rest.
  if (!grouped && *std::max_element(widths.begin(), widths.end()) * each <= room) widths.fill(0);
  const int rest = std::max(0, room - sum(widths));
  for (int column = 0; column < each && !grouped; ++column)
    widths[column] += rest * (column + 1) / each - rest * column / each;
  const int height = rowHeight();
  for (qsizetype i = 0; i < widgets.size(); ++i) {
    const auto column = i % each;
    const int gap = grouped && column >= leftGroup_ ? rest : 0;
    const int left = std::accumulate(widths.begin(), widths.begin() + column, gap);
    widgets[i]->setGeometry(left + static_cast<int>(column) * spacing(),
                            static_cast<int>(i / each) * (height + spacing()), widths[column], height);
  }
}

}  // namespace qk

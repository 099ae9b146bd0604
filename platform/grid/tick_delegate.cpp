#include "platform/grid/tick_delegate.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include "platform/look/contrast.h"

namespace qk {

namespace {

bool isTickCell(const QModelIndex& index) {
  return index.data(Qt::CheckStateRole).isValid();
}

QStyle* styleOf(const QStyleOptionViewItem& option) {
  return option.widget ? option.widget->style() : QApplication::style();
}

}  // namespace

bool toggleTick(QAbstractItemModel* model, const QModelIndex& index) {
  if (!model->flags(index).testFlag(Qt::ItemIsUserCheckable)) return false;
  const bool ticked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  return model->setData(index, ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void TickDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  // The whole cell gets its frame at the end, not the text in it.
  option->state.setFlag(QStyle::State_HasFocus, false);
  if (!index.data(Qt::ForegroundRole).isValid()) return;
  const QVariant own = index.data(Qt::BackgroundRole);
  const QColor ground = own.isValid() ? own.value<QBrush>().color() : option->palette.color(QPalette::Base);
  const QColor chosen = option->palette.color(QPalette::Text);
  option->palette.setColor(QPalette::Text, look::readable(chosen, ground));
}

void TickDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  if (isTickCell(index))
    paintTick(painter, option, index);
  else
    QStyledItemDelegate::paint(painter, option, index);
  if (!option.state.testFlag(QStyle::State_HasFocus)) return;
  QStyleOptionFocusRect frame;
  frame.QStyleOption::operator=(option);
  frame.state.setFlag(QStyle::State_KeyboardFocusChange);
  styleOf(option)->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, painter, option.widget);
}

void TickDelegate::paintTick(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const bool ticked = cell.checkState == Qt::Checked;
  cell.features.setFlag(QStyleOptionViewItem::HasCheckIndicator, false);
  QStyle* style = styleOf(cell);
  style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);

  const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &cell, cell.widget),
                   style->pixelMetric(QStyle::PM_IndicatorHeight, &cell, cell.widget));
  QStyleOptionViewItem box = cell;
  box.rect = QStyle::alignedRect(cell.direction, Qt::AlignCenter, size, option.rect);
  box.state.setFlag(QStyle::State_HasFocus, false);
  box.state.setFlag(ticked ? QStyle::State_On : QStyle::State_Off);
  style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, cell.widget);
}

QSize TickDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  if (isTickCell(index)) {
    QStyle* style = styleOf(option);
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
    size.setWidth(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget) + 4 * margin);
  }
  return size;
}

bool TickDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                               const QModelIndex& index) {
  if (!isTickCell(index)) return QStyledItemDelegate::editorEvent(event, model, option, index);
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      secondClick_ = false;
      return false;
    case QEvent::MouseButtonDblClick:
      // Whether its release still comes here depends on the view: the second click acts now, or not at all.
      secondClick_ = true;
      break;
    case QEvent::MouseButtonRelease:
      if (std::exchange(secondClick_, false)) return false;
      break;
    default:
      return false;
  }
  const auto* mouse = static_cast<QMouseEvent*>(event);
  if (mouse->button() != Qt::LeftButton || !option.rect.contains(mouse->position().toPoint())) return false;
  if (secondClick_ && !ticksOnDoubleClick_) return false;
  return toggleTick(model, index);
}

}  // namespace qk

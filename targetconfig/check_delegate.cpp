#include "targetconfig/check_delegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "platform/look/plain_tip.h"

namespace qk {

look::Mark markOf(CheckState state) {
  switch (state) {
    case CheckState::Found:
      return look::Mark::Tick;
    case CheckState::Missing:
      return look::Mark::Cross;
    case CheckState::Plain:
      break;
  }
  return look::Mark::None;
}

std::optional<QColor> colourOf(CheckState state) {
  switch (state) {
    case CheckState::Found:
      return QColor(0, 128, 0);
    case CheckState::Missing:
      return QColor(255, 0, 0);
    case CheckState::Plain:
      break;
  }
  return std::nullopt;
}

CheckState CheckDelegate::stateOf(const QModelIndex& index) const {
  const auto row = static_cast<size_t>(index.row());
  return row < rows_.size() ? rows_[row].state : CheckState::Plain;
}

int CheckDelegate::indentOf(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int line = option.fontMetrics.height();
  const int depth = checkDepth(index.data().toString());
  return depth * 2 * line + (stateOf(index) == CheckState::Plain ? 0 : line + line / 3);
}

void CheckDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->text = option->text.mid(checkDepth(option->text)).replace(u'\t', u' ');
  option->font.setBold(stateOf(index) == CheckState::Missing);
  option->fontMetrics = QFontMetrics(option->font);
  option->state.setFlag(QStyle::State_Selected, false);
  option->state.setFlag(QStyle::State_HasFocus, false);
}

void CheckDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
  const CheckState state = stateOf(index);
  const int indent = indentOf(option, index);
  QStyleOptionViewItem text = option;
  text.rect.setLeft(option.rect.left() + indent);
  QStyledItemDelegate::paint(painter, text, index);
  const int line = option.fontMetrics.height();
  const QRect box(text.rect.left() - line, option.rect.top(), line, option.rect.height());
  look::paintMark(*painter, box.adjusted(line / 8, line / 8, -line / 8, -line / 8), markOf(state),
                  colourOf(state).value_or(Qt::black));
  if (!option.state.testFlag(QStyle::State_Selected)) return;
  painter->save();
  painter->setPen(QPen(option.palette.color(QPalette::Link), 2));
  painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
  painter->restore();
}

bool CheckDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  QStyleOptionViewItem shown = option;
  initStyleOption(&shown, index);
  const int room = option.rect.width() - indentOf(option, index) - shown.fontMetrics.averageCharWidth();
  const bool cut = shown.fontMetrics.horizontalAdvance(shown.text) > room;
  QToolTip::showText(event->globalPos(), plainTip(cut ? shown.text : QString()), view);
  return true;
}

}  // namespace qk

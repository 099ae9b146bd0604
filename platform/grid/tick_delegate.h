// Draws and edits the cells of a TextGrid: a check box in the middle of a tick cell, and the whole cell is
// its click area. The cell that has the keyboard gets the house's frame.
#pragma once

#include <QStyledItemDelegate>

namespace qk {

class TickDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  /// Whether the second click of a double click ticks back. A grid that acts on double clicks says no.
  void setTicksOnDoubleClick(bool ticks) { ticksOnDoubleClick_ = ticks; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void paintTick(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

  bool ticksOnDoubleClick_ = true;
  bool secondClick_ = false;
};

/// Ticks or unticks; false where the cell has no tick or may not be changed.
bool toggleTick(QAbstractItemModel* model, const QModelIndex& index);

}  // namespace qk

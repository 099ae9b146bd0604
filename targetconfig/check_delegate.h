// Draws a row of the configuration check: the leading tabs of its text as depth, its mark, its colour. The
// chosen row is framed, not filled: its colour stays.
#pragma once

#include <QStyledItemDelegate>

#include "platform/look/marks.h"
#include "targetconfig/configuration_check.h"

namespace qk {

look::Mark markOf(CheckState state);
/// Of the row's text; nothing where it has the usual colour.
std::optional<QColor> colourOf(CheckState state);

class CheckDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// The rows of the grid, in its order; they outlive the delegate.
  CheckDelegate(const std::vector<CheckRow>& rows, QObject* parent)
      : QStyledItemDelegate(parent), rows_(rows) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  /// A text that is cut stands whole in the tool tip.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  CheckState stateOf(const QModelIndex& index) const;
  int indentOf(const QStyleOptionViewItem& option, const QModelIndex& index) const;

  const std::vector<CheckRow>& rows_;
};

}  // namespace qk

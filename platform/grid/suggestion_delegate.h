// Edits the cells of a column with a list of suggestions: a field with a list to drop down. All by keyboard:
// Down and Up walk through the suggestions, Alt+Down or F4 drops the list, Enter takes over, Esc leaves the
// cell as it was. A choice from the dropped list is taken over at once. The field is called "cellEditor".
#pragma once

#include "platform/grid/suggestions.h"
#include "platform/grid/tick_delegate.h"

namespace qk {

class SuggestionDelegate : public TickDelegate {
  Q_OBJECT

 public:
  SuggestionDelegate(const Suggestions& suggestions, QObject* parent);

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 private:
  Suggestions suggestions_;
};

}  // namespace qk

// The grid of text cells on the screen: a view on a TextTable, all by keyboard.
//
// The row is what the operator chooses. Arrows, Home and End walk the rows; blank ticks the current row; F2
// or Enter edits, and so does typing a number: in the current cell, else in the row's first editable one.
// Alt+Down or F4 drops the list of suggestions, of the current cell or else of the row's first that has one.
// The current cell is always one that can be seen: keys never act on a hidden row. Tab leaves the grid. Given
// widths and heights (twips) are meant for the house's font and grow with a larger one.
#pragma once

#include <QTableView>

#include "platform/grid/suggestions.h"
#include "platform/grid/text_table.h"

namespace qk {

class TickDelegate;

class TextGrid : public QTableView {
  Q_OBJECT

 public:
  explicit TextGrid(QWidget* parent = nullptr);

  /// Its own table, until another is set. One set from outside isn't owned and must outlive the grid.
  TextTable* table() const { return table_; }
  void setTable(TextTable* table);

  int currentRow() const;  ///< counted with the header; 0 when there is none
  /// 0 takes the current row away; Error 9 outside. For a hidden row or cell the nearest one in sight is
  /// taken.
  void setCurrentRow(int row);
  void setCurrentCell(int row, int column);
  void showRow(int row);
  /// What an empty grid says in its middle.
  void setEmptyText(const QString& text);
  const QString& emptyText() const { return emptyText_; }
  /// The column that takes the room that is left; -1 for none.
  void setStretchColumn(int column);
  /// What the cells of a column suggest while they are edited; without entries it is a plain field again.
  void setSuggestions(int column, const Suggestions& suggestions);
  /// Whether a column in sight suggests anything.
  bool hasSuggestions() const;
  /// Opens the editor of a cell with a text that the cell doesn't hold: what was typed and couldn't be taken.
  /// As soon as the event loop runs, so that a listener of afterEdit may ask for it.
  void editAgain(int row, int column, const QString& text);

 Q_SIGNALS:
  void clickedAt(int row, int column);        ///< left button; rows counted with the header
  void doubleClickedAt(int row, int column);  ///< where it is connected, the second click doesn't tick back
  void contextMenuAt(const QPoint& globalPosition);  ///< the row under the pointer is current by then
  void afterEdit(int row, int column);
  /// The operator has drawn a column to another width; the table has it already.
  void columnDrawn(int column, int twips);

 protected:
  /// A title that is cut shows whole as the tool tip of its column.
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  void applySizes();
  void scheduleSizes();
  void applyColumnWidths();
  void applyRowHeights();
  int rowHeightOf(int row) const;
  int pixels(int twips, int logicalDpi) const;
  double growth() const;
  void keepDrawnColumn();
  int firstVisibleColumn() const;
  int rowInSight(int row) const;
  int columnInSight(int column) const;
  void standInSight();
  void askForPopup();
  bool tickCurrentRow();
  bool editCurrentRow(QKeyEvent* event, EditTrigger trigger);
  bool dropSuggestions();
  bool suggests(int column) const;

  TextTable* table_ = nullptr;
  TickDelegate* delegate_ = nullptr;
  QString emptyText_;
  int stretchColumn_ = -1;
  bool sizesScheduled_ = false;
  bool hasOwnHeights_ = false;
  bool drawing_ = false;  // the button is down on the header
  int drawnColumn_ = -1;
};

}  // namespace qk

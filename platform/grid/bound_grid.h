// The view of BoundRows: filter row, clicks on titles, marked rows, in-place editing. Design: bound_rows.h.
// Ctrl+Enter in a row or in a filter cell is a click on the title of its column.
//
//   rows_ = new BoundRows(report, this);
//   rows_->setColumns({{.field = "Name", .title = "Bezeichnung"}, …});
//   ui_->grid->setRows(rows_);                      // promoted to qk::BoundGrid in the form
//   rows_->open(*database_, "Select * from Artikel order by Name");
//
// Locked (the rule), it highlights whole rows, and several can be marked. Unlocked, cells are edited in
// place and boxes are ticked by mouse or space bar; a row is stored when the current row changes or the
// keyboard leaves the grid. Nothing typed is lost: what a field can't hold stands in its editor again, and a
// row that can't be stored stays the current one, edited, until it can, or until Esc drops the edit.
#pragma once

#include <QList>
#include <QStringList>
#include <QTableView>

namespace qk {

class BoundRows;
class FilterHeader;

class BoundGrid : public QTableView {
  Q_OBJECT

 public:
  using QTableView::edit;  // the public one
  explicit BoundGrid(QWidget* parent = nullptr);

  void setRows(BoundRows* rows);
  BoundRows* rows() const { return rows_; }

  /// A line below the titles with one filter text a column. `nameEnd` tells its cells from those of another
  /// grid in the same window.
  void setFilterRow(bool shown, const QString& nameEnd = {});
  QStringList filterTexts() const;                ///< by column
  void setFilterTexts(const QStringList& texts);  ///< makes no signal
  void clearFilterTexts() { setFilterTexts({}); }
  /// Marks a title with the arrow of its order; column -1 takes it away.
  void showOrder(int column, Qt::SortOrder order = Qt::AscendingOrder);

  void setUnlocked(bool unlocked);
  /// What F2 does.
  void editCurrent() { edit(currentIndex(), EditKeyPressed, nullptr); }
  /// Takes over what stands in an open editor and stores the row. False when something typed isn't stored.
  bool submitRow();

  int currentRow() const;  ///< -1 for none
  /// The nearest row that exists; nothing in an empty grid.
  void setCurrentRow(int row);
  /// Bookmarks of the marked rows from top to bottom. One row alone isn't marked, it is merely current.
  QList<QByteArray> markedRows() const;
  /// What an act is meant for: the marked rows, or the one that is selected, or the current one.
  QList<QByteArray> chosenRows() const;
  void clearMarks();
  /// Deletes the marked rows, or the current one when none is marked, and stands where the current one stood:
  /// on the same number, or on the last row. False when the operator gave up.
  bool removeMarked();

 Q_SIGNALS:
  void filterChanged();
  void titleClicked(int column);
  /// Someone wants to edit a cell of an unlocked grid whose column stays locked.
  void lockedEdited(int column);

 protected:
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void changeEvent(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class CellDelegate;

  void layOutColumns();
  QList<int> selectedRows() const;
  void editAgain(const QModelIndex& index, const QString& typed);
  void showColumn(int column);

  BoundRows* rows_ = nullptr;
  FilterHeader* header_;
  bool refused_ = false;  // a text goes back into its editor
};

}  // namespace qk

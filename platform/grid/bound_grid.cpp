#include "platform/grid/bound_grid.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

#include "platform/grid/bound_rows.h"
#include "platform/grid/filter_header.h"
#include "platform/grid/open_editors.h"
#include "platform/grid/tick_delegate.h"

namespace qk {

namespace {

constexpr int kUsualCharacters = 12;
constexpr int kNumberCharacters = 8;

}  // namespace

/// What the rows refuse goes back into its editor as it was typed.
class BoundGrid::CellDelegate : public TickDelegate {
 public:
  explicit CellDelegate(BoundGrid* grid) : TickDelegate(grid), grid_(grid) {}

  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
    const QString typed = static_cast<QLineEdit*>(editor)->text();
    if (!model->setData(index, typed, Qt::EditRole)) grid_->editAgain(index, typed);
  }

 protected:
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override {
    auto* editor = new QLineEdit(parent);
    editor->setFrame(false);
    return editor;
  }

 private:
  BoundGrid* grid_;
};

BoundGrid::BoundGrid(QWidget* parent) : QTableView(parent), header_(new FilterHeader(this)) {
  takeOverEditsBeforeActions();
  setHorizontalHeader(header_);
  // A title orders the list. That it also selects its column would mark every row, and leave an edited one.
  disconnect(header_, &QHeaderView::sectionPressed, this, nullptr);
  disconnect(header_, &QHeaderView::sectionEntered, this, nullptr);
  setItemDelegate(new CellDelegate(this));
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setAlternatingRowColors(true);
  setTabKeyNavigation(false);
  setSelectionMode(ExtendedSelection);
  setHorizontalScrollMode(ScrollPerPixel);
  setUnlocked(false);
  connect(header_, &FilterHeader::filterChanged, this, &BoundGrid::filterChanged);
  connect(header_, &FilterHeader::filterEntered, this, &BoundGrid::showColumn);
  connect(header_, &FilterHeader::filterLeft, this, [this](int column) {
    setFocus();
    if (!currentIndex().isValid() && rows_->rowCount() > 0) setCurrentIndex(rows_->index(0, column));
  });
  connect(header_, &QHeaderView::sectionClicked, this, &BoundGrid::titleClicked);
}

void BoundGrid::setRows(BoundRows* rows) {
  rows_ = rows;
  setModel(rows);
  layOutColumns();
  connect(rows, &QAbstractItemModel::modelReset, this, [this, columns = rows->columnCount()]() mutable {
    if (columns != rows_->columnCount()) layOutColumns();
    columns = rows_->columnCount();
  });
}

void BoundGrid::layOutColumns() {
  const QFontMetrics metrics = fontMetrics();
  verticalHeader()->setDefaultSectionSize(metrics.height() * 4 / 3);
  if (!rows_) return;
  for (int column = 0; column < rows_->columnCount(); ++column) {
    const BoundColumn& shown = rows_->columns()[static_cast<size_t>(column)];
    int characters = shown.characters;
    if (characters == 0) characters = rows_->holdsNumbers(column) ? kNumberCharacters : kUsualCharacters;
    const int title = header_->sectionSizeHint(column);
    setColumnWidth(column, std::max((characters + 2) * metrics.averageCharWidth(), title));
  }
}

void BoundGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) layOutColumns();
}

// --- the titles

void BoundGrid::setFilterRow(bool shown, const QString& nameEnd) {
  header_->setFilterRow(shown, nameEnd);
}

QStringList BoundGrid::filterTexts() const {
  return header_->filterTexts();
}

void BoundGrid::setFilterTexts(const QStringList& texts) {
  header_->setFilterTexts(texts);
}

void BoundGrid::showOrder(int column, Qt::SortOrder order) {
  header_->setSortIndicatorShown(column >= 0);
  header_->setSortIndicator(column, order);
}

/// Also where there is no row to scroll to.
void BoundGrid::showColumn(int column) {
  const int left = header_->sectionViewportPosition(column);
  const int right = left + header_->sectionSize(column);
  QScrollBar* bar = horizontalScrollBar();
  if (left < 0)
    bar->setValue(bar->value() + left);
  else if (right > viewport()->width())
    bar->setValue(bar->value() + std::min(left, right - viewport()->width()));
}

// --- rows

int BoundGrid::currentRow() const {
  return currentIndex().isValid() ? currentIndex().row() : -1;
}

void BoundGrid::setCurrentRow(int row) {
  const int last = rows_->count() - 1;
  if (last < 0) return;
  const int column = currentIndex().isValid() ? currentIndex().column() : 0;
  const QModelIndex index = rows_->index(std::clamp(row, 0, last), column);
  setCurrentIndex(index);
  scrollTo(index);
}

QList<int> BoundGrid::selectedRows() const {
  QList<int> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row)
      if (row < rows_->count()) rows.append(row);
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

QList<QByteArray> BoundGrid::markedRows() const {
  QList<QByteArray> bookmarks;
  const QList<int> rows = selectedRows();
  if (rows.size() < 2) return bookmarks;
  for (const int row : rows) bookmarks.append(rows_->bookmark(row));
  return bookmarks;
}

/// One row may be selected while another is current: a click with the control key takes a mark away, and
/// stands on that row.
QList<QByteArray> BoundGrid::chosenRows() const {
  QList<int> rows = selectedRows();
  if (rows.isEmpty() && currentRow() >= 0 && currentRow() < rows_->count()) rows.append(currentRow());
  QList<QByteArray> bookmarks;
  for (const int row : rows) bookmarks.append(rows_->bookmark(row));
  return bookmarks;
}

void BoundGrid::clearMarks() {
  const QModelIndex current = currentIndex();
  clearSelection();
  if (current.isValid()) setCurrentIndex(current);
}

bool BoundGrid::removeMarked() {
  const int row = currentRow();
  const bool done = rows_->removeBookmarked(chosenRows());
  clearSelection();
  setCurrentRow(row);
  return done;
}

// --- editing

void BoundGrid::setUnlocked(bool unlocked) {
  setSelectionBehavior(unlocked ? SelectItems : SelectRows);
  setEditTriggers(unlocked ? AnyKeyPressed | EditKeyPressed | DoubleClicked | SelectedClicked
                           : EditTriggers(NoEditTriggers));
  if (rows_) {
    const int row = currentRow();
    rows_->setUnlocked(unlocked);
    if (row >= 0) setCurrentRow(row);
  }
}

bool BoundGrid::submitRow() {
  QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
  if (editor) {
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
  }
  if (rows_ && !refused_) rows_->submitRow();
  return !refused_ && !(rows_ && rows_->isEdited());
}

/// Later, when the key or click that wanted it has been dealt with.
bool BoundGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  const bool typed = trigger == AnyKeyPressed && event->type() == QEvent::KeyPress &&
                     !static_cast<QKeyEvent*>(event)->text().trimmed().isEmpty();
  const bool wanted = trigger == DoubleClicked || trigger == EditKeyPressed || typed;
  if (wanted && rows_ && index.isValid() && rows_->isUnlocked() &&
      rows_->columns()[static_cast<size_t>(index.column())].locked)
    QTimer::singleShot(0, this, [this, column = index.column()] { Q_EMIT lockedEdited(column); });
  return QTableView::edit(index, trigger, event);
}

/// Later, when the editor that is about to close is gone.
void BoundGrid::editAgain(const QModelIndex& index, const QString& typed) {
  refused_ = true;
  QTimer::singleShot(0, this, [this, cell = QPersistentModelIndex(index), typed] {
    refused_ = false;
    if (!cell.isValid()) return;
    setCurrentIndex(cell);
    edit(cell);
    if (auto* editor = qobject_cast<QLineEdit*>(indexWidget(cell))) {
      editor->setText(typed);
      editor->selectAll();
    }
  });
}

void BoundGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (!rows_ || !rows_->isEdited() || current.row() == rows_->editedRow() || rows_->submitRow()) return;
  // An edit that is kept can be seen: its row is the current one again.
  QTimer::singleShot(0, this, [this, cell = QPersistentModelIndex(previous)] {
    if (cell.isValid() && cell.row() == rows_->editedRow()) setCurrentIndex(cell);
  });
}

/// The keyboard goes elsewhere, unless into an editor of this grid or another window.
void BoundGrid::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  const bool leaves =
      event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason;
  if (rows_ && leaves && !isAncestorOf(QApplication::focusWidget())) rows_->submitRow();
}

void BoundGrid::keyPressEvent(QKeyEvent* event) {
  if (isTitleKey(*event) && currentIndex().isValid()) {
    if (submitRow()) Q_EMIT titleClicked(currentIndex().column());
    return;
  }
  if (rows_ && rows_->isEdited() && event->matches(QKeySequence::Cancel)) return rows_->cancelRow();
  if (event->key() == Qt::Key_Space && rows_ && toggleTick(rows_, currentIndex())) return;
  QTableView::keyPressEvent(event);
}

}  // namespace qk

#include "platform/grid/text_grid.h"
#include "platform/look/plain_tip.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QFontInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/grid/open_editors.h"
#include "platform/grid/suggestion_delegate.h"
#include "platform/grid/tick_delegate.h"
#include "platform/runtime/error.h"

namespace qk {

namespace {

constexpr double kTwipsPerInch = 1440.0;
// Given widths were measured with a font of this size.
constexpr double kToldPointSize = 9.0;
// A column of the grid's own choice is never narrower than this many characters.
constexpr int kLeastCharacters = 4;
constexpr int kNarrowTwips = 1000;  ///< room for a figure or a label, no more

bool startsNumber(const QString& text) {
  return text.size() == 1 && (text.at(0).isDigit() || text.at(0) == QChar('-'));
}

}  // namespace

TextGrid::TextGrid(QWidget* parent) : QTableView(parent), delegate_(new TickDelegate(this)) {
  takeOverEditsBeforeActions();
  setItemDelegate(delegate_);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  setWordWrap(false);
  setAlternatingRowColors(true);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  // Widths look at the rows in sight only, so that they cost the same on a long table.
  horizontalHeader()->setResizeContentsPrecision(0);
  horizontalHeader()->setMinimumSectionSize(1);
  verticalHeader()->setMinimumSectionSize(1);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setTextElideMode(Qt::ElideRight);
  horizontalHeader()->viewport()->installEventFilter(this);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
    if (drawing_) drawnColumn_ = column;
  });
  connect(this, &QTableView::clicked, this,
          [this](const QModelIndex& index) { Q_EMIT clickedAt(index.row() + 1, index.column()); });
  connect(this, &QTableView::doubleClicked, this,
          [this](const QModelIndex& index) { Q_EMIT doubleClickedAt(index.row() + 1, index.column()); });
  setTable(new TextTable(0, this));
}

void TextGrid::setTable(TextTable* table) {
  if (table == table_) return;
  TextTable* former = table_;
  if (former) disconnect(former, nullptr, this, nullptr);
  table_ = table;
  setModel(table);
  if (former && former->parent() == this) delete former;
  connect(table, &TextTable::edited, this, &TextGrid::afterEdit);
  connect(table, &TextTable::sizesChanged, this, &TextGrid::scheduleSizes);
  connect(table, &TextTable::headerDataChanged, this, &TextGrid::scheduleSizes);
  connect(table, &TextTable::columnsInserted, this, &TextGrid::scheduleSizes);
  connect(table, &TextTable::rowsInserted, this, [this](const QModelIndex&, int first) {
    // The first rows decide the widths of the grid's own choice; later ones only widen when something else
    // asks.
    if (first == 0) scheduleSizes();
    viewport()->update();
  });
  connect(table, &TextTable::rowsRemoved, this, [this] {
    if (hasOwnHeights_) scheduleSizes();
    viewport()->update();
  });
  hasOwnHeights_ = false;
  scheduleSizes();
}

int TextGrid::currentRow() const {
  return currentIndex().row() + 1;
}

void TextGrid::setCurrentRow(int row) {
  if (row < 0 || row >= table_->rows()) throw Error(errors::kIndexOutOfRange);
  if (row == 0) {
    setCurrentIndex({});
    clearSelection();
    return;
  }
  setCurrentCell(row, currentIndex().isValid() ? currentIndex().column() : firstVisibleColumn());
}

void TextGrid::setCurrentCell(int row, int column) {
  if (row < 1 || row >= table_->rows() || column < 0 || column >= table_->columns())
    throw Error(errors::kIndexOutOfRange);
  setCurrentIndex(table_->index(row - 1, column));
  standInSight();
}

void TextGrid::showRow(int row) {
  if (row < 0 || row >= table_->rows()) throw Error(errors::kIndexOutOfRange);
  if (row > 0) scrollTo(table_->index(row - 1, firstVisibleColumn()));
}

void TextGrid::setEmptyText(const QString& text) {
  emptyText_ = text;
  viewport()->update();
}

void TextGrid::setStretchColumn(int column) {
  stretchColumn_ = column;
  scheduleSizes();
}

void TextGrid::setSuggestions(int column, const Suggestions& suggestions) {
  QAbstractItemDelegate* former = itemDelegateForColumn(column);
  setItemDelegateForColumn(
      column, suggestions.entries.isEmpty() ? nullptr : new SuggestionDelegate(suggestions, this));
  delete former;
}

bool TextGrid::hasSuggestions() const {
  for (int column = 0; column < table_->columns(); ++column)
    if (suggests(column)) return true;
  return false;
}

bool TextGrid::suggests(int column) const {
  return table_->columnWidth(column) != 0 && itemDelegateForColumn(column);
}

void TextGrid::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (table_->rows() > 1 || emptyText_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const int margin = fontMetrics().height();
  painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                   Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

bool TextGrid::eventFilter(QObject* watched, QEvent* event) {
  const QHeaderView* header = horizontalHeader();
  if (watched == header->viewport() && event->type() == QEvent::MouseButtonPress) drawing_ = true;
  if (watched == header->viewport() && event->type() == QEvent::MouseButtonRelease) keepDrawnColumn();
  if (event->type() != QEvent::ToolTip || watched != header->viewport())
    return QTableView::eventFilter(watched, event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int column = header->logicalIndexAt(help->pos());
  const bool cut = column >= 0 && header->sectionSizeHint(column) > header->sectionSize(column);
  const QString title = cut ? table_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString() : "";
  QToolTip::showText(help->globalPos(), plainTip(title), header->viewport());
  return true;
}

void TextGrid::keepDrawnColumn() {
  drawing_ = false;
  const int column = std::exchange(drawnColumn_, -1);
  if (column < 0 || column >= table_->columns()) return;
  const double twips = columnWidth(column) * kTwipsPerInch / logicalDpiX() / growth();
  table_->setColumnWidth(column, std::max(1, int(std::lround(twips))));
  Q_EMIT columnDrawn(column, table_->columnWidth(column));
}

void TextGrid::editAgain(int row, int column, const QString& text) {
  // The editor that the text came from is still there: it closes first.
  QTimer::singleShot(0, this, [this, cell = QPersistentModelIndex(table_->index(row - 1, column)), text] {
    if (!cell.isValid()) return;
    setFocus();
    setCurrentIndex(cell);
    if (!edit(cell, AllEditTriggers, nullptr)) return;
    if (auto* editor = qobject_cast<QLineEdit*>(indexWidget(cell))) {
      editor->setText(text);
      editor->selectAll();
    }
  });
}

void TextGrid::keyPressEvent(QKeyEvent* event) {
  standInSight();
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
    askForPopup();
    return;
  }
  const bool drops =
      event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier);
  if (drops && state() != EditingState && dropSuggestions()) return;
  const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
  if (state() != EditingState && plain) {
    switch (event->key()) {
      case Qt::Key_Space:
      case Qt::Key_Select:
        if (tickCurrentRow()) return;
        break;
      case Qt::Key_F2:
      case Qt::Key_Return:
      case Qt::Key_Enter:
        if (editCurrentRow(nullptr, EditKeyPressed)) return;
        break;
      default:
        if (startsNumber(event->text()) && editCurrentRow(event, AnyKeyPressed)) return;
        break;
    }
  }
  QTableView::keyPressEvent(event);
}

void TextGrid::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    askForPopup();
    return;
  }
  const QModelIndex under = indexAt(viewport()->mapFromGlobal(event->globalPos()));
  if (under.isValid()) setCurrentIndex(under);
  Q_EMIT contextMenuAt(event->globalPos());
}

void TextGrid::askForPopup() {
  const QRect cell = currentIndex().isValid() ? visualRect(currentIndex()) : QRect();
  const QPoint place = cell.isValid() ? cell.center() : viewport()->rect().center();
  Q_EMIT contextMenuAt(viewport()->mapToGlobal(place));
}

void TextGrid::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  // The base class makes a row current without marking it: the keys would act on a row that nobody sees.
  if (event->reason() == Qt::MouseFocusReason || selectionModel()->hasSelection()) return;
  const QModelIndex row = currentIndex().isValid() ? currentIndex() : moveCursor(MoveHome, Qt::NoModifier);
  if (row.isValid()) setCurrentRow(row.row() + 1);
}

void TextGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) scheduleSizes();
}

void TextGrid::showEvent(QShowEvent* event) {
  applySizes();
  QTableView::showEvent(event);
}

/// Whether somebody acts on double clicks is asked here and not when connections come and go: that news comes
/// while the toolkit holds its locks, and asking it back then waits for ever.
void TextGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  if (delegate_)
    delegate_->setTicksOnDoubleClick(!isSignalConnected(QMetaMethod::fromSignal(&TextGrid::doubleClickedAt)));
  QTableView::mouseDoubleClickEvent(event);
}

QModelIndex TextGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  const int count = table_->rowCount();
  if (count > 0 && (action == MoveHome || action == MoveEnd)) {
    const int step = action == MoveHome ? 1 : -1;
    int row = action == MoveHome ? 0 : count - 1;
    while (row >= 0 && row < count && isRowHidden(row)) row += step;
    if (row < 0 || row >= count) return currentIndex();
    const int column = currentIndex().isValid() ? currentIndex().column() : firstVisibleColumn();
    return table_->index(row, column);
  }
  return QTableView::moveCursor(action, modifiers);
}

void TextGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const bool forward = hint == QAbstractItemDelegate::EditNextItem;
  const bool back = hint == QAbstractItemDelegate::EditPreviousItem;
  QTableView::closeEditor(editor, forward || back ? QAbstractItemDelegate::NoHint : hint);
  if (forward || back) focusNextPrevChild(forward);
}

int TextGrid::firstVisibleColumn() const {
  for (int column = 0; column < table_->columns(); ++column)
    if (table_->columnWidth(column) != 0) return column;
  return 0;
}

/// The row itself, else the next one below that is in sight, else the one above; -1 when all are hidden.
/// The table is asked, not the view, which follows it later.
int TextGrid::rowInSight(int row) const {
  for (int below = row; below < table_->rows(); ++below)
    if (table_->rowHeight(below) != 0) return below;
  for (int above = row - 1; above > 0; --above)
    if (table_->rowHeight(above) != 0) return above;
  return -1;
}

int TextGrid::columnInSight(int column) const {
  for (int left = column; left >= 0; --left)
    if (table_->columnWidth(left) != 0) return left;
  return firstVisibleColumn();
}

void TextGrid::standInSight() {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return;
  const int row = rowInSight(current.row() + 1);
  if (row < 0) return setCurrentRow(0);
  const QModelIndex seen = table_->index(row - 1, columnInSight(current.column()));
  if (seen != current) setCurrentIndex(seen);
}

void TextGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  standInSight();
}

bool TextGrid::tickCurrentRow() {
  const int row = currentIndex().row();
  if (row < 0) return false;
  for (int column = 0; column < table_->columns(); ++column)
    if (table_->isTickColumn(column) && !isColumnHidden(column))
      return toggleTick(table_, table_->index(row, column));
  return false;
}

bool TextGrid::editCurrentRow(QKeyEvent* event, EditTrigger trigger) {
  if (!currentIndex().isValid()) return false;
  const auto editable = [this](int column) {
    return !isColumnHidden(column) && table_->isEditable(column) && !table_->isTickColumn(column);
  };
  int column = currentIndex().column();
  if (!editable(column)) {
    column = 0;
    while (column < table_->columns() && !editable(column)) ++column;
    if (column == table_->columns()) return false;
  }
  const QModelIndex cell = table_->index(currentIndex().row(), column);
  setCurrentIndex(cell);
  return edit(cell, trigger, event);
}

bool TextGrid::dropSuggestions() {
  if (!currentIndex().isValid()) return false;
  int column = currentIndex().column();
  if (!suggests(column)) {
    column = 0;
    while (column < table_->columns() && !suggests(column)) ++column;
    if (column == table_->columns()) return false;
  }
  const QModelIndex cell = table_->index(currentIndex().row(), column);
  setCurrentIndex(cell);
  if (!edit(cell, AllEditTriggers, nullptr)) return false;
  auto* box = qobject_cast<QComboBox*>(indexWidget(cell));
  if (box) box->showPopup();
  return box;
}

void TextGrid::scheduleSizes() {
  if (sizesScheduled_) return;
  sizesScheduled_ = true;
  QTimer::singleShot(0, this, [this] {
    if (sizesScheduled_) applySizes();
  });
}

void TextGrid::applySizes() {
  sizesScheduled_ = false;
  applyRowHeights();
  applyColumnWidths();
  standInSight();
}

double TextGrid::growth() const {
  return std::max(1.0, QFontInfo(font()).pointSizeF() / kToldPointSize);
}

int TextGrid::pixels(int twips, int logicalDpi) const {
  return std::max(1, int(std::lround(twips * logicalDpi / kTwipsPerInch * growth())));
}

void TextGrid::applyColumnWidths() {
  const int least = fontMetrics().averageCharWidth() * kLeastCharacters;
  for (int column = 0; column < table_->columns(); ++column) {
    const int given = table_->columnWidth(column);
    setColumnHidden(column, given == 0);
    if (given == 0) continue;
    const bool stretched = column == stretchColumn_;
    horizontalHeader()->setSectionResizeMode(column,
                                             stretched ? QHeaderView::Stretch : QHeaderView::Interactive);
    if (stretched) continue;
    if (given > kNarrowTwips || (given > 0 && table_->isTickColumn(column))) {
      setColumnWidth(column, pixels(given, logicalDpiX()));
    } else if (given > 0) {
      // Measured for a few figures in a small font: it must hold them in any.
      setColumnWidth(column, std::max(pixels(given, logicalDpiX()), sizeHintForColumn(column)));
    } else {
      const int wanted = std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
      setColumnWidth(column, std::max(least, wanted));
    }
  }
}

void TextGrid::applyRowHeights() {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  const int usual = fontMetrics().height() + fontMetrics().height() / 3;
  if (verticalHeader()->defaultSectionSize() != usual) verticalHeader()->setDefaultSectionSize(usual);
  const QVector<int> own = table_->rowsWithOwnHeight();
  if (hasOwnHeights_) {
    for (int row = 1; row < table_->rows(); ++row) {
      if (isRowHidden(row - 1)) setRowHidden(row - 1, false);
      setRowHeight(row - 1, usual);
    }
  }
  hasOwnHeights_ = !own.isEmpty();
  for (const int row : own) {
    const int height = rowHeightOf(row);
    setRowHidden(row - 1, height == 0);
    if (height > 0) setRowHeight(row - 1, height);
  }
}

int TextGrid::rowHeightOf(int row) const {
  const int given = table_->rowHeight(row);
  if (given >= 0) return given == 0 ? 0 : pixels(given, logicalDpiY());
  int height = fontMetrics().height();
  for (int column = 0; column < table_->columns(); ++column)
    if (const auto font = table_->cellLook(row, column).font)
      height = std::max(height, QFontMetrics(*font, viewport()).height());
  return height + height / 3;
}

}  // namespace qk

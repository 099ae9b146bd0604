#include "platform/grid/filter_header.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>

namespace qk {

bool isTitleKey(const QKeyEvent& event) {
  const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  return enter && event.modifiers().testFlag(Qt::ControlModifier);
}

FilterHeader::FilterHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setSectionsClickable(true);
  setHighlightSections(false);
  connect(this, &QHeaderView::sectionResized, this, &FilterHeader::placeCells);
  connect(this, &QHeaderView::sectionMoved, this, &FilterHeader::placeCells);
  connect(this, &QHeaderView::sectionCountChanged, this, &FilterHeader::makeCells);
}

void FilterHeader::setFilterRow(bool shown, const QString& nameEnd) {
  shown_ = shown;
  nameEnd_ = nameEnd;
  makeCells();
  updateGeometries();
}

QLineEdit* FilterHeader::filterCell(int column) const {
  return cells_[static_cast<size_t>(column)];
}

QStringList FilterHeader::filterTexts() const {
  QStringList texts;
  for (const QLineEdit* cell : cells_) texts.append(cell->text());
  return texts;
}

void FilterHeader::setFilterTexts(const QStringList& texts) {
  for (size_t i = 0; i < cells_.size(); ++i) {
    const QSignalBlocker quiet(cells_[i]);
    cells_[i]->setText(texts.value(static_cast<qsizetype>(i)));
  }
}

/// Cells stay while the columns do: the one that is typed in keeps its text and the keyboard. That columns
/// have gone the header may notice late, while somebody walks over its children: so a cell goes later.
void FilterHeader::makeCells() {
  const auto wanted = static_cast<size_t>(shown_ ? count() : 0);
  while (cells_.size() > wanted) {
    QLineEdit* cell = cells_.back();
    cells_.pop_back();
    cell->hide();
    cell->setObjectName({});
    cell->deleteLater();
  }
  while (cells_.size() < wanted) {
    const int column = static_cast<int>(cells_.size());
    const QString title = model()->headerData(column, Qt::Horizontal).toString();
    auto* cell = new QLineEdit(this);
    cell->setObjectName("filter_" + title + nameEnd_);
    cell->setAccessibleName("Filter " + title);
    cell->setToolTip("Zeigt die Zeilen, deren " + title +
                     " so beginnt; Strg+Eingabe ordnet die Liste danach");
    cell->installEventFilter(this);
    connect(cell, &QLineEdit::textChanged, this, &FilterHeader::filterChanged);
    cell->show();
    cells_.push_back(cell);
  }
  placeCells();
}

int FilterHeader::cellHeight() const {
  return cells_.empty() ? 0 : cells_.front()->sizeHint().height();
}

QSize FilterHeader::sizeHint() const {
  const QSize titles = QHeaderView::sizeHint();
  return {titles.width(), titles.height() + cellHeight()};
}

void FilterHeader::updateGeometries() {
  setViewportMargins(0, 0, 0, cellHeight());
  QHeaderView::updateGeometries();
  placeCells();
}

void FilterHeader::placeCells() {
  const int top = height() - cellHeight();
  for (size_t i = 0; i < cells_.size(); ++i) {
    const int column = static_cast<int>(i);
    cells_[i]->setVisible(sectionSize(column) >
                          0);  // a column that is being hidden isn't yet when it says so
    cells_[i]->setGeometry(sectionViewportPosition(column), top, sectionSize(column), cellHeight());
  }
}

bool FilterHeader::eventFilter(QObject* watched, QEvent* event) {
  const auto cell = std::find(cells_.begin(), cells_.end(), watched);
  if (cell != cells_.end()) {
    const int column = static_cast<int>(cell - cells_.begin());
    if (event->type() == QEvent::FocusIn) Q_EMIT filterEntered(column);
    if (event->type() == QEvent::KeyPress) {
      const auto& key = static_cast<const QKeyEvent&>(*event);
      if (isTitleKey(key)) {
        Q_EMIT sectionClicked(column);
        return true;
      }
      // An Enter that went on would press the window's preset button.
      if (key.key() == Qt::Key_Down || key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        Q_EMIT filterLeft(column);
        return true;
      }
    }
  }
  return QHeaderView::eventFilter(watched, event);
}

}  // namespace qk

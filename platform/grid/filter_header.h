// The titles of a grid with a line of filter cells below them, one a column. A filter cell has the name
// "filter_" + its column's title (and what the owner adds), and moves and hides with its column.
#pragma once

#include <QHeaderView>
#include <QStringList>
#include <vector>

class QKeyEvent;
class QLineEdit;

namespace qk {

/// Ctrl+Enter: what a click on a title is by the keyboard.
bool isTitleKey(const QKeyEvent& event);

class FilterHeader : public QHeaderView {
  Q_OBJECT

 public:
  explicit FilterHeader(QWidget* parent);

  void setFilterRow(bool shown, const QString& nameEnd = {});
  bool hasFilterRow() const { return shown_; }
  /// The texts by column. Setting them makes no signal.
  QStringList filterTexts() const;
  void setFilterTexts(const QStringList& texts);
  QLineEdit* filterCell(int column) const;

  QSize sizeHint() const override;

 Q_SIGNALS:
  void filterChanged();
  /// The keyboard is in that column's cell, which may stand outside the window.
  void filterEntered(int column);
  /// Down or Enter was pressed in a cell: the way into the rows.
  void filterLeft(int column);

 protected:
  void updateGeometries() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeCells();
  void placeCells();
  int cellHeight() const;

  bool shown_ = false;
  QString nameEnd_;
  std::vector<QLineEdit*> cells_;
};

}  // namespace qk

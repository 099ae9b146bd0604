// A row of buttons that becomes two or more of equal length where the window is too narrow for one.
#pragma once

#include <QWidget>

namespace qk {

/// Lays out its own children, in the order of their creation; none of them is ever cut or left out.
class EvenRows : public QWidget {
  Q_OBJECT

 public:
  explicit EvenRows(QWidget* parent = nullptr);

  /// In a single row the first so many stand at the left with the width they need, the others at the right.
  /// 0, as it is at first: all share the whole width.
  void setLeftGroup(int count);

  QSize sizeHint() const override;  ///< of a single row
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QList<QWidget*> shown() const;
  int spacing() const;
  /// How many children stand in each row at that width.
  int perRow(int width) const;
  /// Widths of the columns, without the room that is left over.
  QList<int> columnWidths(int perRow) const;
  int rowHeight() const;
  int heightOf(int rows) const;
  void place();

  int leftGroup_ = 0;
};

}  // namespace qk

// A grid of text cells in a window, as its tests drive it.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include "platform/grid/text_grid.h"

namespace qk::test {

// A grid as the rooms use it: ticks, a name, a hidden column, an editable number; and a neighbour for the
// focus.
struct GridWindow {
  GridWindow() {
    auto* layout = new QVBoxLayout(&widget);
    grid = new TextGrid(&widget);
    next = new QLineEdit(&widget);
    layout->addWidget(grid);
    layout->addWidget(next);
    table = grid->table();
    table->setColumns(4);
    table->setTickColumn(0, "-1");
    table->setColumnWidth(0, 400);
    table->setColumnWidth(1, 2000);
    table->setColumnWidth(2, 0);
    table->setColumnWidth(3, 1440);
    table->setEditable(3, true);
    table->setRightAligned(3, true);
    for (int i = 1; i <= 5; ++i) table->addRow({"0", "Name " + QString::number(i), "verborgen", "10"});
    widget.resize(500, 400);
    widget.show();
    widget.activateWindow();
    ready = QTest::qWaitForWindowActive(&widget);
    grid->setFocus();
  }
  QPoint at(int row, int column) const { return grid->visualRect(table->index(row - 1, column)).center(); }
  void click(int row, int column) {
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at(row, column));
  }
  /// Press, release, press, release, as the window system tells them.
  void doubleClick(int row, int column) {
    const QPoint place = grid->viewport()->mapTo(&widget, at(row, column));
    QTest::mouseDClick(widget.windowHandle(), Qt::LeftButton, {}, place);
  }
  QComboBox* list() const { return grid->viewport()->findChild<QComboBox*>(); }
  QLineEdit* editor() const { return grid->viewport()->findChild<QLineEdit*>(); }

  QWidget widget;
  TextGrid* grid;
  QLineEdit* next;
  TextTable* table;
  bool ready = false;
};

}  // namespace qk::test

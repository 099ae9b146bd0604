// The view of a grid of text cells, driven by real key and mouse events.
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

#include "platform/runtime/error.h"
#include "tests/platform/grid/grid_window.h"

using qk::TextGrid;
using qk::TextTable;
using qk::test::GridWindow;

class TestTextGrid : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    window = std::make_unique<GridWindow>();
    QVERIFY(window->ready);
  }
  void cleanup() { window.reset(); }

  void aClickAnywhereInTheCellTicks();
  void aClickBesideTicksNothing();
  void clickedComesAfterTheTick();
  void anEmptyTickIsUnticked();
  void blankTicksTheCurrentRow();
  void refusedColumnsStayAsTheyAre();
  void f2Edits();
  void enterEditsAndEscapeLeaves();
  void aDigitStartsEditing();
  void aLetterStartsNothing();
  void keysWithModifiersAreNotTheGrids();
  void whatCannotBeSeenIsNotTicked();
  void tabLeavesTheGrid();
  void tabOutOfTheEditorStoresAndLeaves();
  void arrowsHomeAndEnd();
  void hiddenRowsAreWalkedOver();
  void theCurrentCellIsInSight();
  void aHiddenColumnLeavesItsCell();
  void currentRowCountsWithTheHeader();
  void doubleClickTellsTheCell();
  void theSecondClickOfADoubleClick();
  void listenersMayGoFirst();
  void rightClickMakesTheRowCurrent();
  void theKeyboardAsksForThePopup();
  void theFocusShowsTheRowItStandsOn();
  void widthsComeFromTwips();
  void widthsOfTheGridsOwnChoice();
  void aNarrowColumnHoldsItsLabels();
  void widthsGrowWithTheFont();
  void heightsHideAndComeBack();
  void aLargeCellFontGetsItsRoom();
  void stretchedColumnTakesTheRest();
  void theEmptyTextShowsWhileEmpty();
  void aTableFromOutsideIsNotOwned();
  void aThousandRowsKeepTheView();
  void headersAreReadable();

 private:
  std::unique_ptr<GridWindow> window;
};

void TestTextGrid::aClickAnywhereInTheCellTicks() {
  QSignalSpy edits(window->grid, &TextGrid::afterEdit);
  const QRect cell = window->grid->visualRect(window->table->index(1, 0));
  QTest::mouseClick(window->grid->viewport(), Qt::LeftButton, {}, cell.topLeft() + QPoint(1, 1));
  QCOMPARE(window->table->text(2, 0), "-1");
  QTest::mouseClick(window->grid->viewport(), Qt::LeftButton, {}, cell.bottomRight() - QPoint(2, 2));
  QCOMPARE(window->table->text(2, 0), "0");
  QCOMPARE(edits.count(), 2);
  QCOMPARE(edits.at(0).at(0).toInt(), 2);
  QCOMPARE(edits.at(0).at(1).toInt(), 0);
}

void TestTextGrid::aClickBesideTicksNothing() {
  window->click(2, 1);
  QTest::mouseClick(window->grid->viewport(), Qt::RightButton, {}, window->at(2, 0));
  QTest::mousePress(window->grid->viewport(), Qt::LeftButton, {}, window->at(2, 0));
  QTest::mouseRelease(window->grid->viewport(), Qt::LeftButton, {}, window->at(3, 1));
  QCOMPARE(window->table->text(2, 0), "0");
  QCOMPARE(window->table->text(3, 0), "0");
}

void TestTextGrid::clickedComesAfterTheTick() {
  QStringList seen;
  QObject::connect(window->grid, &TextGrid::clickedAt, window->grid, [&](int row, int column) {
    seen.append(QString("%1 %2 %3").arg(row).arg(column).arg(window->table->text(row, 0)));
  });
  window->click(3, 0);
  window->click(4, 1);
  QCOMPARE(seen, (QStringList{"3 0 -1", "4 1 0"}));
}

void TestTextGrid::anEmptyTickIsUnticked() {
  const auto picture = [this](const QString& text) {
    window->table->setText(1, 0, text);
    return window->grid->viewport()->grab(window->grid->visualRect(window->table->index(0, 0))).toImage();
  };
  const QImage empty = picture("");
  QCOMPARE(empty, picture("0"));
  QVERIFY(empty != picture("-1"));
  QCOMPARE(picture("1"), picture("-1"));
  window->table->setText(1, 0, "");
  window->click(1, 0);
  QCOMPARE(window->table->text(1, 0), "-1");
}

void TestTextGrid::blankTicksTheCurrentRow() {
  window->grid->setCurrentRow(4);
  window->grid->setCurrentIndex(window->table->index(3, 1));
  QSignalSpy edits(window->grid, &TextGrid::afterEdit);
  QTest::keyClick(window->grid, Qt::Key_Space);
  QCOMPARE(window->table->text(4, 0), "-1");
  QTest::keyClick(window->grid, Qt::Key_Space);
  QCOMPARE(window->table->text(4, 0), "0");
  QCOMPARE(edits.count(), 2);
  window->grid->setCurrentIndex({});
  QTest::keyClick(window->grid, Qt::Key_Space);
  QCOMPARE(edits.count(), 2);
}

void TestTextGrid::refusedColumnsStayAsTheyAre() {
  window->table->setEditable(0, false);
  window->table->setEditable(3, false);
  window->click(2, 0);
  QTest::keyClick(window->grid, Qt::Key_Space);
  QTest::keyClick(window->grid, Qt::Key_F2);
  QVERIFY(!window->editor());
  QTest::keyClick(window->grid, Qt::Key_7);
  QVERIFY(!window->editor());
  window->doubleClick(2, 1);
  QVERIFY(!window->editor());
  QCOMPARE(window->table->text(2, 0), "0");
}

void TestTextGrid::f2Edits() {
  window->grid->setCurrentRow(2);
  QSignalSpy edits(window->grid, &TextGrid::afterEdit);
  QTest::keyClick(window->grid, Qt::Key_F2);
  QVERIFY(window->editor());
  QCOMPARE(window->editor()->text(), "10");
  QTest::keyClicks(window->editor(), "25");
  QTest::keyClick(window->editor(), Qt::Key_Return);
  QTRY_COMPARE(window->table->text(2, 3), "25");
  QCOMPARE(edits.count(), 1);
  QCOMPARE(edits.at(0).at(1).toInt(), 3);
}

void TestTextGrid::enterEditsAndEscapeLeaves() {
  window->grid->setCurrentRow(2);
  QTest::keyClick(window->grid, Qt::Key_Enter);
  QVERIFY(window->editor());
  QTest::keyClicks(window->editor(), "99");
  QTest::keyClick(window->editor(), Qt::Key_Escape);
  QCOMPARE(window->table->text(2, 3), "10");
  QTRY_VERIFY(!window->editor());
  QVERIFY(window->grid->hasFocus());
}

void TestTextGrid::aDigitStartsEditing() {
  window->grid->setCurrentRow(3);
  QTest::keyClick(window->grid, Qt::Key_7);
  QVERIFY(window->editor());
  QCOMPARE(window->editor()->text(), "7");
  QTest::keyClick(window->editor(), Qt::Key_Return);
  QTRY_COMPARE(window->table->text(3, 3), "7");
  QTRY_VERIFY(!window->editor());
  window->grid->setCurrentCell(3, 1);  // the row's editable cell is meant, wherever the current one is
  QTest::keyClick(window->grid, Qt::Key_Minus);
  QVERIFY(window->editor());
  QTest::keyClick(window->editor(), Qt::Key_5);
  QTest::keyClick(window->editor(), Qt::Key_Return);
  QTRY_COMPARE(window->table->text(3, 3), "-5");
}

void TestTextGrid::aLetterStartsNothing() {
  window->grid->setCurrentRow(3);
  QTest::keyClick(window->grid, Qt::Key_N);
  QVERIFY(!window->editor());
}

/// They belong to the window.
void TestTextGrid::keysWithModifiersAreNotTheGrids() {
  window->grid->setCurrentRow(3);
  for (const auto modifier : {Qt::ControlModifier, Qt::AltModifier}) {
    QTest::keyClick(window->grid, Qt::Key_Space, modifier);
    QCOMPARE(window->table->text(3, 0), "0");
    QTest::keyClick(window->grid, Qt::Key_Return, modifier);
    QVERIFY(!window->editor());
  }
}

void TestTextGrid::whatCannotBeSeenIsNotTicked() {
  window->grid->setCurrentRow(3);
  window->table->setColumnWidth(0, 0);
  QTRY_VERIFY(window->grid->isColumnHidden(0));
  QTest::keyClick(window->grid, Qt::Key_Space);
  QCOMPARE(window->table->text(3, 0), "0");
}

void TestTextGrid::tabLeavesTheGrid() {
  window->grid->setCurrentRow(1);
  QTest::keyClick(window->grid, Qt::Key_Tab);
  QVERIFY(window->next->hasFocus());
  QCOMPARE(window->grid->currentRow(), 1);
}

void TestTextGrid::tabOutOfTheEditorStoresAndLeaves() {
  window->grid->setCurrentRow(1);
  QTest::keyClick(window->grid, Qt::Key_4);
  QTest::keyClick(window->editor(), Qt::Key_Tab);
  QCOMPARE(window->table->text(1, 3), "4");
  QVERIFY(window->next->hasFocus());
}

void TestTextGrid::arrowsHomeAndEnd() {
  window->grid->setCurrentRow(1);
  QTest::keyClick(window->grid, Qt::Key_Down);
  QCOMPARE(window->grid->currentRow(), 2);
  QTest::keyClick(window->grid, Qt::Key_Up);
  QCOMPARE(window->grid->currentRow(), 1);
  QTest::keyClick(window->grid, Qt::Key_End);
  QCOMPARE(window->grid->currentRow(), 5);
  QTest::keyClick(window->grid, Qt::Key_Home);
  QCOMPARE(window->grid->currentRow(), 1);
}

void TestTextGrid::hiddenRowsAreWalkedOver() {
  window->table->setRowHeight(2, 0);
  window->table->setRowHeight(5, 0);
  QTRY_VERIFY(window->grid->isRowHidden(1));
  window->grid->setCurrentRow(1);
  QTest::keyClick(window->grid, Qt::Key_Down);
  QCOMPARE(window->grid->currentRow(), 3);
  QTest::keyClick(window->grid, Qt::Key_End);
  QCOMPARE(window->grid->currentRow(), 4);
}

void TestTextGrid::theCurrentCellIsInSight() {
  window->grid->setCurrentRow(1);
  for (const int row : {1, 2, 5}) window->table->setRowHeight(row, 0);
  // The keys come before the view has followed its table.
  QTest::keyClick(window->grid, Qt::Key_Space);
  QCOMPARE(window->table->text(1, 0), "0");
  QCOMPARE(window->table->text(3, 0), "-1");
  QCOMPARE(window->grid->currentRow(), 3);
  window->grid->setCurrentRow(5);
  QCOMPARE(window->grid->currentRow(), 4);
  window->grid->setCurrentCell(1, 2);  // hidden both ways
  QCOMPARE(window->grid->currentIndex(), window->table->index(2, 1));
  QCoreApplication::processEvents();
  for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_Down, Qt::Key_End, Qt::Key_Right, Qt::Key_PageUp,
                            Qt::Key_Up, Qt::Key_Home, Qt::Key_Left, Qt::Key_N, Qt::Key_N}) {
    QTest::keyClick(window->grid, key);
    QVERIFY(!window->grid->isRowHidden(window->grid->currentIndex().row()));
    QVERIFY(!window->grid->isColumnHidden(window->grid->currentIndex().column()));
  }
  // Typed letters look for a row: not for a hidden one.
  window->grid->setCurrentCell(4, 1);
  window->grid->keyboardSearch("Name 5");
  QCOMPARE(window->grid->currentRow(), 4);
  for (const int row : {3, 4}) window->table->setRowHeight(row, 0);
  QTest::keyClick(window->grid, Qt::Key_Space);
  QCOMPARE(window->grid->currentRow(), 0);
  QCOMPARE(window->table->text(4, 0), "0");
  QVERIFY_THROWS_EXCEPTION(qk::Error, window->grid->setCurrentCell(0, 1));
  QVERIFY_THROWS_EXCEPTION(qk::Error, window->grid->setCurrentCell(6, 1));
  QVERIFY_THROWS_EXCEPTION(qk::Error, window->grid->setCurrentCell(1, 4));
}

void TestTextGrid::aHiddenColumnLeavesItsCell() {
  window->grid->setCurrentIndex(window->table->index(1, 3));
  window->table->setColumnWidth(3, 0);
  QTRY_COMPARE(window->grid->currentIndex(), window->table->index(1, 1));
  for (const int column : {0, 1}) window->table->setColumnWidth(column, 0);
  window->table->setColumnWidth(3, 1440);
  QTRY_COMPARE(window->grid->currentIndex(), window->table->index(1, 3));
}

void TestTextGrid::currentRowCountsWithTheHeader() {
  TextGrid untouched;
  QCOMPARE(untouched.currentRow(), 0);
  window->grid->setCurrentRow(5);
  QCOMPARE(window->grid->currentRow(), 5);
  QCOMPARE(window->grid->currentIndex().row(), 4);
  window->grid->setCurrentRow(0);
  QCOMPARE(window->grid->currentRow(), 0);
  QVERIFY(!window->grid->selectionModel()->hasSelection());
  for (const int outside : {-1, 6}) {
    QVERIFY_THROWS_EXCEPTION(qk::Error, window->grid->setCurrentRow(outside));
    QVERIFY_THROWS_EXCEPTION(qk::Error, window->grid->showRow(outside));
  }
}

void TestTextGrid::doubleClickTellsTheCell() {
  QSignalSpy doubles(window->grid, &TextGrid::doubleClickedAt);
  window->doubleClick(3, 1);
  QCOMPARE(doubles.count(), 1);
  QCOMPARE(doubles.at(0).at(0).toInt(), 3);
  QCOMPARE(doubles.at(0).at(1).toInt(), 1);
}

void TestTextGrid::theSecondClickOfADoubleClick() {
  // Nobody listens: two quick clicks tick and untick.
  window->doubleClick(2, 0);
  QCOMPARE(window->table->text(2, 0), "0");
  // Somebody acts on the double click: what he has ticked stays ticked.
  QObject::connect(window->grid, &TextGrid::doubleClickedAt, window->grid,
                   [this](int row) { window->table->setText(row, 0, "-1"); });
  window->doubleClick(3, 0);
  QCOMPARE(window->table->text(3, 0), "-1");
}

void TestTextGrid::listenersMayGoFirst() {
  // Many: whether two objects share a lock of the toolkit is a matter of their addresses.
  std::vector<std::unique_ptr<QObject>> listeners;
  int heard = 0;
  for (int i = 0; i < 2000; ++i) {
    listeners.push_back(std::make_unique<QObject>());
    QObject::connect(window->grid, &TextGrid::doubleClickedAt, listeners.back().get(), [&heard] { ++heard; });
  }
  window->doubleClick(3, 1);
  QCOMPARE(heard, 2000);
  listeners.clear();
  window->doubleClick(2, 0);
  QCOMPARE(heard, 2000);
  QCOMPARE(window->table->text(2, 0), "0");
}

void TestTextGrid::rightClickMakesTheRowCurrent() {
  QSignalSpy menus(window->grid, &TextGrid::contextMenuAt);
  const QPoint place = window->at(4, 1);
  QContextMenuEvent event(QContextMenuEvent::Mouse, place, window->grid->viewport()->mapToGlobal(place));
  QApplication::sendEvent(window->grid->viewport(), &event);
  QCOMPARE(menus.count(), 1);
  QCOMPARE(menus.at(0).at(0).toPoint(), window->grid->viewport()->mapToGlobal(place));
  QCOMPARE(window->grid->currentRow(), 4);
}

void TestTextGrid::theKeyboardAsksForThePopup() {
  window->grid->setCurrentRow(2);
  QSignalSpy menus(window->grid, &TextGrid::contextMenuAt);
  QTest::keyClick(window->grid, Qt::Key_F10, Qt::ShiftModifier);
  QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
  QApplication::sendEvent(window->grid, &menuKey);
  QCOMPARE(menus.count(), 2);
  for (int i = 0; i < 2; ++i) {
    const QPoint place = window->grid->viewport()->mapFromGlobal(menus.at(i).at(0).toPoint());
    QCOMPARE(window->grid->indexAt(place).row(), 1);
  }
}

void TestTextGrid::theFocusShowsTheRowItStandsOn() {
  window->grid->setCurrentRow(0);
  window->next->setFocus();
  QTest::keyClick(window->next, Qt::Key_Backtab, Qt::ShiftModifier);
  QVERIFY(window->grid->hasFocus());
  QCOMPARE(window->grid->currentRow(), 1);
  QVERIFY(window->grid->selectionModel()->isRowSelected(0));
}

void TestTextGrid::widthsComeFromTwips() {
  QVERIFY(window->grid->isColumnHidden(2));
  QFont nine = window->grid->font();
  nine.setPointSizeF(9);
  window->grid->setFont(nine);
  QTRY_COMPARE(window->grid->columnWidth(3), window->grid->logicalDpiX());
  window->table->setColumnWidth(2, 2880);
  QTRY_VERIFY(!window->grid->isColumnHidden(2));
  QCOMPARE(window->grid->columnWidth(2), 2 * window->grid->logicalDpiX());
}

/// The first row decides; a long list doesn't move under who reads it.
void TestTextGrid::widthsOfTheGridsOwnChoice() {
  TextGrid grid;
  grid.table()->setColumns(2);
  grid.resize(600, 300);
  grid.show();
  QVERIFY(QTest::qWaitForWindowExposed(&grid));
  QCoreApplication::processEvents();
  const int character = grid.fontMetrics().averageCharWidth();
  QVERIFY(grid.columnWidth(0) >= 4 * character);
  const QString name(20, 'm');
  grid.table()->addRow({name, ""});
  QTRY_VERIFY(grid.columnWidth(0) >= grid.fontMetrics().horizontalAdvance(name));
  QVERIFY(grid.columnWidth(1) >= 4 * character);
  const int width = grid.columnWidth(0);
  grid.table()->addRow({QString(40, 'm'), ""});
  QCoreApplication::processEvents();
  QCOMPARE(grid.columnWidth(0), width);
}

void TestTextGrid::aNarrowColumnHoldsItsLabels() {
  window->table->setColumnWidth(2, 300);
  QTRY_VERIFY(!window->grid->isColumnHidden(2));
  QVERIFY(window->grid->columnWidth(2) >= window->grid->fontMetrics().horizontalAdvance("verborgen"));
}

void TestTextGrid::widthsGrowWithTheFont() {
  QFont font = window->grid->font();
  font.setPointSizeF(18);
  window->grid->setFont(font);
  QTRY_COMPARE(window->grid->columnWidth(3), 2 * window->grid->logicalDpiX());
  QVERIFY(window->grid->rowHeight(0) >= QFontMetrics(font).height());
}

void TestTextGrid::heightsHideAndComeBack() {
  const int usual = window->grid->rowHeight(2);
  window->table->setRowHeight(3, 0);
  QTRY_VERIFY(window->grid->isRowHidden(2));
  window->table->setRowHeight(3, -1);
  QTRY_VERIFY(!window->grid->isRowHidden(2));
  QCOMPARE(window->grid->rowHeight(2), usual);
  // A hidden row that goes takes its hiding along.
  window->table->setRowHeight(3, 0);
  QTRY_VERIFY(window->grid->isRowHidden(2));
  window->table->removeRow(3);
  QCoreApplication::processEvents();
  for (int row = 0; row < 4; ++row) QVERIFY(!window->grid->isRowHidden(row));
}

void TestTextGrid::aLargeCellFontGetsItsRoom() {
  const QFont large("Liberation Sans", 24);
  window->table->setCellLook(2, 1, {large, {}, {}});
  QTRY_VERIFY(window->grid->rowHeight(1) >= QFontMetrics(large).height());
  QVERIFY(window->grid->rowHeight(0) < QFontMetrics(large).height());
}

void TestTextGrid::stretchedColumnTakesTheRest() {
  window->grid->setStretchColumn(1);
  QTRY_COMPARE(window->grid->horizontalHeader()->length(), window->grid->viewport()->width());
  QVERIFY(window->grid->columnWidth(1) > window->grid->columnWidth(3));
}

void TestTextGrid::theEmptyTextShowsWhileEmpty() {
  const auto picture = [this] { return window->grid->viewport()->grab().toImage(); };
  window->table->setRows(1);
  const QImage bare = picture();
  window->grid->setEmptyText("Noch keine Zeilen");
  QVERIFY(picture() != bare);
  window->table->addRow();
  const QImage filled = picture();
  window->grid->setEmptyText({});
  QCOMPARE(filled, picture());
}

void TestTextGrid::aTableFromOutsideIsNotOwned() {
  TextTable outside(2);
  outside.addRow({"a", "b"});
  {
    TextGrid grid;
    QPointer<TextTable> own = grid.table();
    grid.setTable(&outside);
    QVERIFY(own.isNull());
    QCOMPARE(grid.table(), &outside);
    QCOMPARE(grid.model(), &outside);
  }
  QCOMPARE(outside.text(1, 1), "b");
}

void TestTextGrid::aThousandRowsKeepTheView() {
  window->grid->setCurrentRow(2);
  for (int i = 0; i < 1000; ++i) window->table->addRow({"", "x", "", "1"}, QString::number(i));
  QCOMPARE(window->grid->currentRow(), 2);
  QCoreApplication::processEvents();
  window->grid->showRow(1005);
  QVERIFY(
      window->grid->viewport()->rect().intersects(window->grid->visualRect(window->table->index(1004, 0))));
}

void TestTextGrid::headersAreReadable() {
  window->table->setText(0, 1, "Disziplin");
  QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(window->grid);
  QVERIFY(grid && grid->tableInterface());
  QCOMPARE(grid->tableInterface()->columnDescription(1), "Disziplin");
  QCOMPARE(grid->tableInterface()->cellAt(0, 1)->text(QAccessible::Name), "Name 1");
  QCOMPARE(grid->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), "nicht angewählt");
}

QTEST_MAIN(TestTextGrid)
#include "test_text_grid.moc"

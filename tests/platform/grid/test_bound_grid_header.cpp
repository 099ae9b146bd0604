// The titles of a bound grid and the filter cells below them.
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>

#include "platform/grid/filter_header.h"
#include "tests/platform/grid/bound_grid_bench.h"

using namespace qk;
using namespace qk::test;

class TestBoundGridHeader : public BoundGridBench {
  Q_OBJECT

 private Q_SLOTS:
  void init() { open(); }
  void cleanup() { close(); }

  void filterCellsSpeak();
  void filterCellsStandUnderTheirTitles();
  void aCellOutlivesTheChangeThatTakesIt();
  void columnsHoldTheirTitles();
  void titlesSpeak();
  void titlesAreClickedByKeyboard();
  void titlesMarkNothing();
};

void TestBoundGridHeader::filterCellsSpeak() {
  QSignalSpy changed(grid, &BoundGrid::filterChanged);
  grid->setFilterRow(true);
  auto& name = the<QLineEdit>(*grid, "filter_Name");
  QVERIFY(name.isVisible());
  type(*grid, "filter_Name", "Nr");
  QCOMPARE(grid->filterTexts(), (QStringList{"", "Nr", "", "", "", ""}));
  QVERIFY(changed.count() > 0);
  rows->open(*database, "Select * from Artikel where Name like 'Nr*'");
  QVERIFY(name.hasFocus());
  QTest::keyClick(&name, Qt::Key_Down);
  QVERIFY(grid->hasFocus());
  QCOMPARE(grid->currentRow(), 0);
  changed.clear();
  grid->clearFilterTexts();
  QCOMPARE(name.text(), "");
  QCOMPARE(changed.count(), 0);
  grid->setColumnWidth(0, 2000);
  QCoreApplication::processEvents();
  the<QLineEdit>(*grid, "filter_Am").setFocus();
  QVERIFY(grid->horizontalScrollBar()->value() > 0);  // the cell that is typed in is in sight
}

/// A window that goes hides its children one by one, and the header may notice only then that its rows, which
/// went before, have no columns any more.
void TestBoundGridHeader::aCellOutlivesTheChangeThatTakesIt() {
  QStandardItemModel model(2, 3);
  QTableView view;
  auto* header = new FilterHeader(&view);
  view.setHorizontalHeader(header);
  view.setModel(&model);
  header->setFilterRow(true);
  const QPointer<QLineEdit> first = header->filterCell(0), last = header->filterCell(2);
  model.setColumnCount(1);
  QCOMPARE(header->filterTexts().size(), 1);
  QVERIFY(last);
  QVERIFY(last->isHidden());
  QTRY_VERIFY(!last);
  QVERIFY(first);
}

void TestBoundGridHeader::filterCellsStandUnderTheirTitles() {
  grid->setFilterRow(true);
  QHeaderView* header = grid->horizontalHeader();
  const auto stand = [&] {
    QCoreApplication::processEvents();
    for (const auto& [column, name] : {std::pair{0, "ID"}, {1, "Name"}, {2, "Menge"}, {3, "Preis"}}) {
      auto& cell = the<QLineEdit>(*grid, QString("filter_") + name);
      QCOMPARE(cell.accessibleName(), QString("Filter ") + name);
      QCOMPARE(cell.isVisible(), !header->isSectionHidden(column));
      if (!cell.isVisible()) continue;
      QCOMPARE(cell.x(), header->sectionViewportPosition(column));
      QCOMPARE(cell.width(), header->sectionSize(column));
    }
  };
  stand();
  grid->setColumnWidth(1, 177);
  stand();
  header->moveSection(0, 2);
  stand();
  grid->setColumnHidden(2, true);
  stand();
}

void TestBoundGridHeader::columnsHoldTheirTitles() {
  const auto width = [this](int column, int characters) {
    const int title = grid->horizontalHeader()->sectionSizeHint(column);
    return std::max((characters + 2) * grid->fontMetrics().averageCharWidth(), title);
  };
  QCOMPARE(grid->columnWidth(1), width(1, 12));
  QCOMPARE(grid->columnWidth(2), width(2, 8));
  QVERIFY(width(1, 12) > width(2, 8));
  const int height = grid->rowHeight(0);
  QFont large = grid->font();
  large.setPointSizeF(2 * large.pointSizeF());
  grid->setFont(large);
  QCOMPARE(grid->columnWidth(1), width(1, 12));
  QVERIFY(grid->rowHeight(0) > height);
  rows->setColumns({{.field = "Menge", .title = "Wie viele davon noch da sind", .characters = 3}});
  const int title = grid->fontMetrics().horizontalAdvance("Wie viele davon noch da sind");
  QVERIFY(grid->columnWidth(0) >= title);
}

void TestBoundGridHeader::titlesSpeak() {
  QSignalSpy clicked(grid, &BoundGrid::titleClicked);
  QHeaderView* header = grid->horizontalHeader();
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                    QPoint(header->sectionViewportPosition(2) + 5, 5));
  QCOMPARE(clicked.count(), 1);
  QCOMPARE(clicked[0][0].toInt(), 2);
  grid->showOrder(2, Qt::DescendingOrder);
  QVERIFY(header->isSortIndicatorShown());
  QCOMPARE(header->sortIndicatorSection(), 2);
}

void TestBoundGridHeader::titlesAreClickedByKeyboard() {
  QSignalSpy clicked(grid, &BoundGrid::titleClicked);
  grid->setFocus();
  grid->setCurrentIndex({});
  QTest::keyClick(grid, Qt::Key_Return, Qt::ControlModifier);
  QCOMPARE(clicked.count(), 0);  // no column is current
  grid->setCurrentIndex(rows->index(1, 3));
  QTest::keyClick(grid, Qt::Key_Return, Qt::ControlModifier);
  QTest::keyClick(grid, Qt::Key_Return);
  QCOMPARE(clicked.count(), 1);
  QCOMPARE(clicked[0][0].toInt(), 3);
  grid->setFilterRow(true);
  QTest::keyClick(&the<QLineEdit>(*grid, "filter_Name"), Qt::Key_Enter, Qt::ControlModifier);
  QTest::keyClick(&the<QLineEdit>(*grid, "filter_Name"), Qt::Key_Enter);
  QCOMPARE(clicked.count(), 2);
  QCOMPARE(clicked[1][0].toInt(), 1);
}

void TestBoundGridHeader::titlesMarkNothing() {
  grid->setUnlocked(true);
  grid->setCurrentIndex(rows->index(3, 1));
  const QHeaderView* header = grid->horizontalHeader();
  const QPoint title(header->sectionViewportPosition(2) + 5, 5);
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
  QCOMPARE(grid->currentIndex(), rows->index(3, 1));
  QCOMPARE(grid->markedRows().size(), 0);
}

QTEST_MAIN(TestBoundGridHeader)
#include "test_bound_grid_header.moc"

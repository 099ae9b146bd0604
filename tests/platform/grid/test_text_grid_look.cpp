// What a grid of text cells shows of titles, colours and texts, and the widths that an operator draws.
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "platform/grid/text_grid.h"
#include "platform/grid/tick_delegate.h"
#include "platform/look/contrast.h"

using qk::TextGrid;
using qk::TextTable;

class TestTextGridLook : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup() { grid_.reset(); }
  void cutTitlesShowWholeUnderThePointer();
  void cellTextIsReadOnAnyGround_data();
  void cellTextIsReadOnAnyGround();
  void theCurrentCellIsSeen();
  void aDrawnColumnIsTold_data();
  void aDrawnColumnIsTold();
  void aTextThatWasRefusedStandsInItsEditor();

 private:
  std::unique_ptr<TextGrid> grid_;
};

void TestTextGridLook::init() {
  grid_ = std::make_unique<TextGrid>();
  TextTable& table = *grid_->table();
  table.setColumns(4);
  table.setColumnWidth(1, 2000);
  table.setColumnWidth(3, 1440);
  table.addRow({"", "Name", "", "10"});
  grid_->resize(500, 300);
  grid_->show();
}

void TestTextGridLook::cutTitlesShowWholeUnderThePointer() {
  TextTable& table = *grid_->table();
  table.setText(0, 1, "Bezeichnung des Wettbewerbs & <mehr>");
  table.setText(0, 3, "kurz");
  QHeaderView* header = grid_->horizontalHeader();
  const auto tip = [&](int column) {
    const QPoint at(header->sectionViewportPosition(column) + 5, header->height() / 2);
    QHelpEvent event(QEvent::ToolTip, at, header->viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(header->viewport(), &event);
    return QToolTip::text();
  };
  tip(3);
  QVERIFY(!QToolTip::isVisible());
  QCOMPARE(QTextDocumentFragment::fromHtml(tip(1)).toPlainText(), "Bezeichnung des Wettbewerbs & <mehr>");
  tip(3);
  QTRY_VERIFY(!QToolTip::isVisible());
}

void TestTextGridLook::cellTextIsReadOnAnyGround_data() {
  QTest::addColumn<QColor>("base");
  QTest::addColumn<QColor>("own");
  QTest::newRow("on the grid's light ground") << QColor(Qt::white) << QColor();
  QTest::newRow("on the grid's dark ground") << QColor(0x1e2023) << QColor();
  QTest::newRow("on its own ground") << QColor(Qt::white) << QColor(0x00007f);
}

void TestTextGridLook::cellTextIsReadOnAnyGround() {
  TextTable& table = *grid_->table();
  QFETCH(QColor, base);
  QFETCH(QColor, own);
  struct Shown : qk::TickDelegate {
    using TickDelegate::initStyleOption;
  } delegate;
  const auto textOn = [&](const QColor& fore) {
    TextTable::CellLook look{{}, fore, {}};
    if (own.isValid()) look.back = own;
    table.setCellLook(1, 1, look);
    QStyleOptionViewItem option;
    option.palette.setColor(QPalette::Base, base);
    delegate.initStyleOption(&option, table.index(0, 1));
    return option.palette.color(QPalette::Text);
  };
  const QColor ground = own.isValid() ? own : base;
  for (const QColor& fore : {QColor(0, 0, 255), QColor(255, 0, 255), QColor(Qt::black), QColor(Qt::white)}) {
    QVERIFY(qk::look::contrast(textOn(fore), ground) >= qk::look::kLeastContrast);
    if (qk::look::contrast(fore, ground) >= qk::look::kLeastContrast) QCOMPARE(textOn(fore), fore);
  }
}

/// Among the cells of the chosen row.
void TestTextGridLook::theCurrentCellIsSeen() {
  QVERIFY(QTest::qWaitForWindowActive(grid_.get()));
  grid_->setFocus();
  for (const int column : {0, 1}) {
    grid_->table()->setTickColumn(0, "-1");
    const auto picture = [&] {
      return grid_->viewport()->grab(grid_->visualRect(grid_->table()->index(0, column))).toImage();
    };
    grid_->setCurrentCell(1, 3);
    const QImage another = picture();
    grid_->setCurrentCell(1, column);
    QVERIFY(picture() != another);
  }
}

void TestTextGridLook::aDrawnColumnIsTold_data() {
  QTest::addColumn<double>("points");
  QTest::newRow("usual") << 9.0;
  QTest::newRow("large") << 18.0;
}

void TestTextGridLook::aDrawnColumnIsTold() {
  QFETCH(double, points);
  QFont font = grid_->font();
  font.setPointSizeF(points);
  grid_->setFont(font);
  QSignalSpy drawn(grid_.get(), &TextGrid::columnDrawn);
  grid_->table()->setColumnWidth(3, 2000);
  grid_->setColumnWidth(1, 100);
  QCOMPARE(drawn.count(), 0);  // nobody has drawn anything
  QVERIFY(QTest::qWaitForWindowExposed(grid_.get()));
  QCoreApplication::processEvents();
  QHeaderView* header = grid_->horizontalHeader();
  const int before = header->sectionSize(1);
  const QPoint edge(header->sectionViewportPosition(1) + before - 1, header->height() / 2);
  QTest::mouseMove(header->viewport(), edge);
  QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
  QTest::mouseMove(header->viewport(), edge + QPoint(20, 0));
  QTest::mouseMove(header->viewport(), edge + QPoint(40, 0));
  QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(40, 0));
  QCOMPARE(drawn.count(), 1);
  QCOMPARE(drawn.first().at(0).toInt(), 1);
  QCOMPARE(drawn.first().at(1).toInt(), grid_->table()->columnWidth(1));
  QCoreApplication::processEvents();
  QVERIFY(std::abs(header->sectionSize(1) - before - 40) <= 1);  // and it stays
}

void TestTextGridLook::aTextThatWasRefusedStandsInItsEditor() {
  grid_->table()->setEditable(3, true);
  connect(grid_.get(), &TextGrid::afterEdit, this, [this](int row, int column) {
    if (grid_->table()->text(row, column) != "12.5") return;
    grid_->table()->setText(row, column, "10");
    grid_->editAgain(row, column, "12.5");
  });
  QVERIFY(QTest::qWaitForWindowActive(grid_.get()));
  const QModelIndex cell = grid_->table()->index(0, 3);
  const auto editor = [&] { return qobject_cast<QLineEdit*>(grid_->indexWidget(cell)); };
  grid_->setFocus();
  grid_->setCurrentIndex(cell);
  QTest::keyClick(grid_.get(), Qt::Key_F2);
  QVERIFY(editor());
  editor()->setText("12.5");
  QTest::keyClick(editor(), Qt::Key_Return);
  QTRY_VERIFY(editor() && editor()->selectedText() == "12.5");  // the next key begins anew
  QCOMPARE(grid_->table()->text(1, 3), "10");
  QTest::keyClick(editor(), Qt::Key_Escape);
  QCOMPARE(grid_->table()->text(1, 3), "10");
}

QTEST_MAIN(TestTextGridLook)
#include "test_text_grid_look.moc"

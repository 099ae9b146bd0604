// What a grid of text cells shows of titles and colours.
#include <QHeaderView>
#include <QHelpEvent>
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

QTEST_MAIN(TestTextGridLook)
#include "test_text_grid_look.moc"

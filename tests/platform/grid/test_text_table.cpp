// The data of a grid of text cells: header row, row data, limits, ticks, looks, and what it tells a view.
#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include "platform/grid/text_table.h"
#include "platform/runtime/error.h"

using qk::TextTable;

namespace {

template <class Act>
int errorOf(Act&& act) {
  try {
    act();
  } catch (const qk::Error& error) {
    return error.number();
  }
  return 0;
}

}  // namespace

class TestTextTable : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void aNewTableHasItsHeaderOnly();
  void rowsGrowAndShrink();
  void columnsKeepWhatFits();
  void addRowTellsItsNumber();
  void removingARowMovesTheRest();
  void outsideIsError9();
  void rowDataIsFound();
  void clearCellsLeavesWhatIsAboveAndLeft();
  void aColumnThatWentTakesItsLookAlong();
  void ticksReadBothSpellings();
  void aTickWritesItsOwnText();
  void onlyAllowedColumnsTakeEdits();
  void setTextIsNoEdit();
  void anUnchangedTextTellsNobody();
  void looksReachTheView();
  void numbersStandRight();
  void sizesAreKept();
  void aColumnShowsItsTextsInAnotherForm();
  void rowsOfTheirOwnHeight();
  void addingTellsOneRowOnly();
  void theModelKeepsItsPromises();
};

void TestTextTable::aNewTableHasItsHeaderOnly() {
  TextTable table(3);
  QCOMPARE(table.rows(), 1);
  QCOMPARE(table.columns(), 3);
  QCOMPARE(table.rowCount(), 0);
  table.setText(0, 1, "Disziplin");
  QCOMPARE(table.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "Disziplin");
  QVERIFY(!table.headerData(1, Qt::Vertical, Qt::DisplayRole).isValid());
}

void TestTextTable::rowsGrowAndShrink() {
  TextTable table(2);
  table.setText(0, 0, "Kopf");
  table.setRows(4);
  QCOMPARE(table.rowCount(), 3);
  QCOMPARE(table.text(3, 1), QString());
  table.setText(1, 0, "bleibt");
  table.setRows(2);
  QCOMPARE(table.rowCount(), 1);
  QCOMPARE(table.text(1, 0), "bleibt");
  table.setRows(1);
  QCOMPARE(table.text(0, 0), "Kopf");
  QCOMPARE(errorOf([&] { table.setRows(0); }), 9);
}

void TestTextTable::columnsKeepWhatFits() {
  TextTable table(2);
  table.addRow({"a", "b"});
  table.setColumns(3);
  QCOMPARE(table.text(1, 1), "b");
  QCOMPARE(table.text(1, 2), QString());
  table.setColumns(1);
  QCOMPARE(table.text(1, 0), "a");
  QCOMPARE(errorOf([&] { table.text(1, 1); }), 9);
}

void TestTextTable::addRowTellsItsNumber() {
  TextTable table(3);
  QCOMPARE(table.addRow({"a"}, "eins"), 1);
  QCOMPARE(table.addRow({"b", "c", "d"}), 2);
  QCOMPARE(table.text(1, 2), QString());
  QCOMPARE(table.text(2, 2), "d");
  QCOMPARE(errorOf([&] { table.addRow({"1", "2", "3", "4"}); }), 9);
  QCOMPARE(table.rows(), 3);
}

void TestTextTable::removingARowMovesTheRest() {
  TextTable table(1);
  table.addRow({"a"}, "A");
  table.addRow({"b"}, "B");
  table.removeRow(1);
  QCOMPARE(table.rows(), 2);
  QCOMPARE(table.text(1, 0), "b");
  QCOMPARE(table.rowData(1), "B");
}

void TestTextTable::outsideIsError9() {
  TextTable table(2);
  table.addRow({"a", "b"});
  QCOMPARE(errorOf([&] { table.text(2, 0); }), 9);
  QCOMPARE(errorOf([&] { table.text(-1, 0); }), 9);
  QCOMPARE(errorOf([&] { table.text(1, 2); }), 9);
  QCOMPARE(errorOf([&] { table.text(1, -1); }), 9);
  QCOMPARE(errorOf([&] { table.setText(2, 0, "x"); }), 9);
  QCOMPARE(errorOf([&] { table.setText(0, 2, "x"); }), 9);
  QCOMPARE(errorOf([&] { table.rowData(2); }), 9);
  QCOMPARE(errorOf([&] { table.setRowData(2, "x"); }), 9);
  QCOMPARE(errorOf([&] { table.removeRow(2); }), 9);
  QCOMPARE(errorOf([&] { table.removeRow(0); }), 9);
  QCOMPARE(errorOf([&] { table.setColumnWidth(2, 100); }), 9);
  QCOMPARE(errorOf([&] { table.setRowHeight(2, 100); }), 9);
  QCOMPARE(errorOf([&] { table.setTickColumn(2, "1"); }), 9);
  QCOMPARE(errorOf([&] { table.clearCells(2, 0); }), 9);
  QCOMPARE(errorOf([&] { table.setCellLook(1, 2, {}); }), 9);
}

void TestTextTable::rowDataIsFound() {
  TextTable table(1);
  table.setRowData(0, "Kopf");
  table.addRow({"a"}, "A");
  table.addRow({"b"}, "B");
  table.addRow({"c"}, "B");
  QCOMPARE(table.findRow("B"), 2);
  QCOMPARE(table.findRow("Kopf"), -1);
  QCOMPARE(table.findRow("C"), -1);
  table.setRowData(2, "C");
  QCOMPARE(table.findRow("B"), 3);
}

void TestTextTable::clearCellsLeavesWhatIsAboveAndLeft() {
  TextTable table(3);
  for (int row = 0; row < 3; ++row) {
    if (row > 0) table.addRow();
    for (int column = 0; column < 3; ++column) table.setText(row, column, "x");
  }
  table.clearCells(1, 1);
  QCOMPARE(table.text(0, 2), "x");
  QCOMPARE(table.text(1, 0), "x");
  QCOMPARE(table.text(2, 0), "x");
  QCOMPARE(table.text(1, 1), QString());
  QCOMPARE(table.text(2, 2), QString());
  QSignalSpy titles(&table, &TextTable::headerDataChanged);
  table.clearCells(1, 0);
  QCOMPARE(titles.count(), 0);
  table.clearCells(0, 1);
  QCOMPARE(table.text(0, 0), "x");
  QCOMPARE(table.text(0, 2), QString());
  QCOMPARE(titles.count(), 1);
}

void TestTextTable::aColumnThatWentTakesItsLookAlong() {
  TextTable table(2);
  table.addRow();
  table.setCellLook(1, 1, {{}, QColor(Qt::red), {}});
  table.setColumns(1);
  QVERIFY(table.rowsWithOwnHeight().isEmpty());
  table.setColumns(2);
  QVERIFY(!table.cellLook(1, 1).fore);
}

void TestTextTable::ticksReadBothSpellings() {
  TextTable table(2);
  table.setTickColumn(0, "-1");
  for (const QString& text : {QString("-1"), QString("1"), QString("0"), QString(), QString("2")})
    table.addRow({text, text});
  QCOMPARE(table.data(table.index(0, 0), Qt::CheckStateRole).toInt(), int(Qt::Checked));
  QCOMPARE(table.data(table.index(1, 0), Qt::CheckStateRole).toInt(), int(Qt::Checked));
  QCOMPARE(table.data(table.index(2, 0), Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
  QCOMPARE(table.data(table.index(3, 0), Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
  QCOMPARE(table.data(table.index(4, 0), Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
  QVERIFY(!table.data(table.index(0, 0), Qt::DisplayRole).isValid());
  QVERIFY(!table.data(table.index(0, 1), Qt::CheckStateRole).isValid());
  QVERIFY(table.isTicked(1, 0));
  QVERIFY(!table.isTicked(4, 0));
}

void TestTextTable::aTickWritesItsOwnText() {
  TextTable table(2);
  table.setTickColumn(0, "-1");
  table.setTickColumn(1, "1");
  table.addRow();
  QSignalSpy edited(&table, &TextTable::edited);
  QVERIFY(table.setData(table.index(0, 0), Qt::Checked, Qt::CheckStateRole));
  QVERIFY(table.setData(table.index(0, 1), Qt::Checked, Qt::CheckStateRole));
  QCOMPARE(table.text(1, 0), "-1");
  QCOMPARE(table.text(1, 1), "1");
  QVERIFY(table.setData(table.index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
  QCOMPARE(table.text(1, 0), "0");
  QCOMPARE(edited.count(), 3);
  QCOMPARE(edited.at(2).at(0).toInt(), 1);
  QCOMPARE(edited.at(2).at(1).toInt(), 0);
}

void TestTextTable::onlyAllowedColumnsTakeEdits() {
  TextTable table(3);
  table.setTickColumn(0, "1");
  table.setEditable(2, true);
  table.addRow({"0", "Name", "5"});
  QVERIFY(table.flags(table.index(0, 0)).testFlag(Qt::ItemIsUserCheckable));
  QVERIFY(!table.flags(table.index(0, 0)).testFlag(Qt::ItemIsEditable));
  QVERIFY(!table.flags(table.index(0, 1)).testFlag(Qt::ItemIsEditable));
  QVERIFY(table.flags(table.index(0, 2)).testFlag(Qt::ItemIsEditable));
  QVERIFY(!table.setData(table.index(0, 1), "x", Qt::EditRole));
  QCOMPARE(table.text(1, 1), "Name");
  QVERIFY(table.setData(table.index(0, 2), "7", Qt::EditRole));
  QCOMPARE(table.text(1, 2), "7");
  table.setEditable(0, false);
  QVERIFY(!table.setData(table.index(0, 0), Qt::Checked, Qt::CheckStateRole));
  QCOMPARE(table.text(1, 0), "0");
}

void TestTextTable::setTextIsNoEdit() {
  TextTable table(1);
  table.addRow();
  QSignalSpy edited(&table, &TextTable::edited);
  QSignalSpy changed(&table, &TextTable::dataChanged);
  table.setText(1, 0, "x");
  QCOMPARE(edited.count(), 0);
  QCOMPARE(changed.count(), 1);
}

void TestTextTable::anUnchangedTextTellsNobody() {
  TextTable table(1);
  table.addRow({"x"});
  QSignalSpy changed(&table, &TextTable::dataChanged);
  table.setText(1, 0, "x");
  QCOMPARE(changed.count(), 0);
}

void TestTextTable::looksReachTheView() {
  TextTable table(2);
  table.addRow({"9,7", "x"});
  QFont font("Liberation Sans", 17);
  table.setCellLook(1, 0, {font, QColor(Qt::magenta), QColor(Qt::yellow)});
  QCOMPARE(table.data(table.index(0, 0), Qt::FontRole).value<QFont>().pointSize(), 17);
  QCOMPARE(table.data(table.index(0, 0), Qt::ForegroundRole).value<QBrush>().color(), QColor(Qt::magenta));
  QCOMPARE(table.data(table.index(0, 0), Qt::BackgroundRole).value<QBrush>().color(), QColor(Qt::yellow));
  QVERIFY(!table.data(table.index(0, 1), Qt::ForegroundRole).isValid());
  QVERIFY(table.cellLook(1, 0).font.has_value());
  QVERIFY(!table.cellLook(1, 1).font.has_value());
}

void TestTextTable::numbersStandRight() {
  TextTable table(2);
  table.addRow({"Name", "10"});
  table.setRightAligned(1, true);
  QVERIFY(table.data(table.index(0, 1), Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
  QVERIFY(table.data(table.index(0, 0), Qt::TextAlignmentRole).toInt() & Qt::AlignLeft);
  QVERIFY(table.headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
}

void TestTextTable::sizesAreKept() {
  TextTable table(2);
  table.addRow();
  QSignalSpy sizes(&table, &TextTable::sizesChanged);
  QCOMPARE(table.columnWidth(0), -1);
  QCOMPARE(table.rowHeight(1), -1);
  table.setColumnWidth(0, 743);
  table.setRowHeight(1, 0);
  QCOMPARE(table.columnWidth(0), 743);
  QCOMPARE(table.rowHeight(1), 0);
  QCOMPARE(sizes.count(), 2);
}

void TestTextTable::rowsOfTheirOwnHeight() {
  TextTable table(1);
  for (int i = 0; i < 4; ++i) table.addRow();
  QVERIFY(table.rowsWithOwnHeight().isEmpty());
  table.setRowHeight(2, 0);
  table.setCellLook(4, 0, {QFont("Liberation Sans", 20), {}, {}});
  QCOMPARE(table.rowsWithOwnHeight(), (QVector<int>{2, 4}));
}

void TestTextTable::aColumnShowsItsTextsInAnotherForm() {
  TextTable table(2);
  table.addRow({"a", "b"});
  QSignalSpy changed(&table, &TextTable::dataChanged);
  table.setDisplay(1, [](const QString& text) { return "<" + text + ">"; });
  QCOMPARE(changed.count(), 1);
  QCOMPARE(table.data(table.index(0, 1), Qt::DisplayRole).toString(), "<b>");
  QCOMPARE(table.data(table.index(0, 1), Qt::AccessibleTextRole).toString(), "<b>");
  QCOMPARE(table.data(table.index(0, 1), Qt::EditRole).toString(), "b");
  QCOMPARE(table.text(1, 1), "b");
  QCOMPARE(table.data(table.index(0, 0), Qt::DisplayRole).toString(), "a");
}

void TestTextTable::addingTellsOneRowOnly() {
  TextTable table(4);
  QSignalSpy inserted(&table, &TextTable::rowsInserted);
  QSignalSpy changed(&table, &TextTable::dataChanged);
  QSignalSpy layout(&table, &TextTable::layoutChanged);
  QSignalSpy reset(&table, &TextTable::modelReset);
  QSignalSpy sizes(&table, &TextTable::sizesChanged);
  for (int i = 0; i < 1000; ++i) table.addRow({"a", "b"}, QString::number(i));
  QCOMPARE(inserted.count(), 1000);
  QCOMPARE(inserted.last().at(1).toInt(), 999);
  QCOMPARE(inserted.last().at(2).toInt(), 999);
  QCOMPARE(changed.count() + layout.count() + reset.count() + sizes.count(), 0);
}

void TestTextTable::theModelKeepsItsPromises() {
  TextTable table(3);
  QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);
  table.setTickColumn(0, "-1");
  table.setRows(5);
  table.addRow({"-1", "a", "b"}, "k");
  table.setColumns(5);
  table.clearCells(0, 0);
  table.removeRow(3);
  table.setColumns(1);
  table.setRows(1);
  QCOMPARE(table.rowCount(), 0);
}

QTEST_MAIN(TestTextTable)
#include "test_text_table.moc"

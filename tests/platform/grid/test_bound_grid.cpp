// The bound grid over a real store: read as far as it is shown, filtered, marked, edited, deleted.
#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/rows/list_pace.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/count_text.h"
#include "platform/runtime/error.h"
#include "tests/platform/grid/bound_grid_bench.h"
#include "tests/support/drive.h"

using namespace qk;
using namespace qk::test;

class TestBoundGrid : public BoundGridBench {
  Q_OBJECT

 private Q_SLOTS:
  void init() { open(); }
  void cleanup() { close(); }

  void cellsAreGermanText();
  void columnsOfTheOwner();
  void aDeletedRowSaysSo();
  void aRowThatCouldntBeReadIsReadAgain();
  void rowsThatStayUnreadableAreReadNowAndThen();
  void aRowIsStoredWhenItIsLeft();
  void aRowIsStoredWhenTheKeyboardLeaves();
  void anotherRowStoresTheOneBefore();
  void anEmptiedCellIsNull();
  void aStoredEmptyTextBecomesNull();
  void boxesAreTicked();
  void lockedStaysLocked();
  void whatTheFieldCantHoldIsRefused();
  void theOwnerCompletesOrRefusesARow();
  void whatTheFieldCantHoldStaysInTheEditor();
  void aRefusedTextCanBeIgnored();
  void aFailedStoreKeepsTheEdit();
  void anIgnoredFailureGivesTheEditUp();
  void aRowThatCantBeStoredStaysCurrent();
  void submittingTakesOverTheOpenEditor();
  void theSpaceBarTicks();
  void rowsAreAddedByTyping();
  void anotherRowKeepsTheColumn();
  void theCurrentRowIsSeen();
  void markedRowsAreDeleted();
  void withoutMarksTheCurrentRowIsDeleted();
  void theFirstRowsAreDeletedInPortions();
  void deletingEndsWhenTheOperatorGivesUp();
  void aCheckRefusesWhatWasTyped();
  void lockedCellsSaySo();
  void oneSelectedRowIsChosen();
  void rowsThatLeftTheQueryArentDeleted();
  void aRowIsReadAnew();
  void readingsReportByThemselves();
  void bookmarksOutliveTheOrder();
  void theModelKeepsItsPromises();
  void theCountSaysHowFarTheListIs();
};

void TestBoundGrid::cellsAreGermanText() {
  QCOMPARE(rows->rowCount(), 6);
  QCOMPARE(rows->columnCount(), 6);
  QCOMPARE(cell(1, 1), "Nr 2");
  QCOMPARE(cell(1, 3), "2,5");
  QCOMPARE(cell(1, 5), "20.11.2026");
  QVERIFY(rows->index(0, 3).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
  QCOMPARE(rows->value(1, "menge").toInt(), 8);
}

void TestBoundGrid::columnsOfTheOwner() {
  rows->setColumns({{.field = "Preis",
                     .title = "Betrag",
                     .text = [](const QVariant& value) { return value.toString() + " Euro"; }},
                    {.field = "Gibt es nicht"},
                    {.field = "name"}});
  QCOMPARE(rows->columnCount(), 3);
  QCOMPARE(cell(0, 0), "1.5 Euro");
  QCOMPARE(cell(0, 1), "");
  QCOMPARE(cell(0, 2), "Nr 1");
  QCOMPARE(rows->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), "Betrag");
  QCOMPARE(rows->headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), "name");
}

void TestBoundGrid::aDeletedRowSaysSo() {
  database->execute("Delete * from Artikel where ID = 3");
  rows->refresh();
  QVERIFY(rows->waitForAll());
  database->execute("Delete * from Artikel where ID = 4");
  QCOMPARE(cell(2, 1), "#Gelöscht");
  QCOMPARE(cell(3, 1), "Nr 5");
}

namespace {

/// A table that is away for a while, as a server may be.
class AwayTable {
 public:
  AwayTable(dao::Database& database, const QString& name)
      : database_(database), def_(database.tableDef(name)) {
    database_.execute("SELECT * INTO Beiseite FROM " + name);
    database_.dropTable(name);
  }
  void comesBack() {
    database_.createTable(def_);
    QStringList fields;
    for (const dao::FieldDef& field : def_.fields) fields << field.name;
    const QString all = fields.join(", ");
    database_.execute(QString("INSERT INTO %1 (%2) SELECT %2 FROM Beiseite").arg(def_.name, all));
  }

 private:
  dao::Database& database_;
  dao::TableDef def_;
};

}  // namespace

void TestBoundGrid::aRowThatCouldntBeReadIsReadAgain() {
  AwayTable table(*database, "Artikel");
  rows->setColumns(rows->columns());  // nothing of what was read before stays
  for (const int row : {0, 1}) QCOMPARE(cell(row, 1), QString("#Fehler"));
  table.comesBack();
  const QSignalSpy changes(rows, &QAbstractItemModel::dataChanged);
  // One that can be read brings the others at once, not in a while.
  QCOMPARE(cell(5, 1), QString("Nr 6"));
  QCoreApplication::processEvents();
  QVERIFY(changes.count() >= 2);
  QCOMPARE(cell(0, 1), QString("Nr 1"));
  QCOMPARE(cell(1, 1), QString("Nr 2"));
}

void TestBoundGrid::rowsThatStayUnreadableAreReadNowAndThen() {
  AwayTable table(*database, "Artikel");
  rows->setColumns(rows->columns());
  QCOMPARE(cell(0, 1), QString("#Fehler"));
  table.comesBack();
  QTRY_COMPARE(cell(0, 1), QString("Nr 1"));
}

void TestBoundGrid::aRowIsStoredWhenItIsLeft() {
  grid->setUnlocked(true);
  typeAt(1, 1, "Zwei");
  QCOMPARE(cell(1, 1), "Zwei");
  QVERIFY(rows->isEdited());
  QCOMPARE(stored("Name"), "Nr 1,Nr 2,Nr 3,Nr 4,Nr 5,Nr 6");
  typeAt(1, 2, "22");
  grid->setCurrentIndex(rows->index(2, 1));
  QVERIFY(!rows->isEdited());
  QCOMPARE(stored("Name"), "Nr 1,Zwei,Nr 3,Nr 4,Nr 5,Nr 6");
  QCOMPARE(stored("Menge"), "9,22,7,6,5,4");
  QVERIFY(reports.isEmpty());
}

void TestBoundGrid::aRowIsStoredWhenTheKeyboardLeaves() {
  grid->setUnlocked(true);
  typeAt(0, 1, "Eins");
  elsewhere->setFocus();
  QCOMPARE(stored("Name"), "Eins,Nr 2,Nr 3,Nr 4,Nr 5,Nr 6");
}

void TestBoundGrid::anotherRowStoresTheOneBefore() {
  QVERIFY(rows->setValue(0, "Name", "Eins"));
  QVERIFY(rows->setValue(1, "Name", "Zwei"));
  QCOMPARE(rows->editedRow(), 1);
  QCOMPARE(stored("Name"), "Eins,Nr 2,Nr 3,Nr 4,Nr 5,Nr 6");
  // One that can't be stored keeps its edit, and the other gets none.
  database->execute("Delete * from Artikel where ID = 2");
  QVERIFY(!rows->setValue(2, "Name", "Drei"));
  QCOMPARE(rows->editedRow(), 1);
  QCOMPARE(cell(2, 1), "Nr 3");
}

void TestBoundGrid::anEmptiedCellIsNull() {
  grid->setUnlocked(true);
  typeAt(0, 1, "");
  QVERIFY(rows->submitRow());
  const auto recordset = database->openRecordset("Select * from Artikel where ID = 1");
  QVERIFY(!recordset->value("Name").isValid());
}

/// Another program may have stored it.
void TestBoundGrid::aStoredEmptyTextBecomesNull() {
  database->execute("Update Artikel set Name = '' where ID = 1");
  rows->refresh();
  QVERIFY(rows->waitForAll());
  grid->setUnlocked(true);
  const auto stored = [this] { return database->openRecordset("Artikel")->value("Name"); };
  QVERIFY(stored().isValid() && stored().toString().isEmpty());
  typeAt(0, 1, "");
  QVERIFY(rows->isEdited());
  QVERIFY(rows->submitRow());
  QVERIFY(!stored().isValid());
  typeAt(0, 1, "");  // Null it is: nothing to store
  QVERIFY(!rows->isEdited());
}

void TestBoundGrid::boxesAreTicked() {
  rows->setColumns({{.field = "Name"}, {.field = "Fertig", .checkBox = true}});
  QVERIFY(!(rows->flags(rows->index(2, 1)) & Qt::ItemIsUserCheckable));
  grid->setUnlocked(true);
  QVERIFY(rows->setData(rows->index(2, 1), Qt::Checked, Qt::CheckStateRole));
  QCOMPARE(rows->index(2, 1).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
  QCOMPARE(rows->index(2, 1).data(Qt::AccessibleTextRole).toString(), "ja");
  QCOMPARE(rows->index(1, 1).data(Qt::AccessibleTextRole).toString(), "nein");
  QVERIFY(rows->submitRow());
  QCOMPARE(stored("Fertig"), "0,0,-1,0,0,0");
}

void TestBoundGrid::lockedStaysLocked() {
  rows->setColumns({{.field = "Name", .locked = true}, {.field = "Menge"}});
  const auto editable = [this](int column) {
    return bool(rows->flags(rows->index(0, column)) & Qt::ItemIsEditable);
  };
  QVERIFY(!editable(0) && !editable(1));
  QCOMPARE(grid->selectionBehavior(), QAbstractItemView::SelectRows);
  grid->setUnlocked(true);
  QVERIFY(!editable(0) && editable(1));
  grid->setUnlocked(false);
  QVERIFY(!editable(1));
  rows->open(*database, "Select distinct Name, Menge from Artikel");
  grid->setUnlocked(true);
  QVERIFY(!editable(1));  // rows without a key
}

void TestBoundGrid::whatTheFieldCantHoldIsRefused() {
  grid->setUnlocked(true);
  QVERIFY(!rows->setData(rows->index(0, 2), "viele", Qt::EditRole));
  QCOMPARE(reports, QList<int>{3421});
  QVERIFY(!rows->isEdited());
  QCOMPARE(cell(0, 2), "9");
}

void TestBoundGrid::theOwnerCompletesOrRefusesARow() {
  grid->setUnlocked(true);
  rows->setBeforeUpdate([this](int row) {
    if (rows->value(row, "Name").toString() == "Spende") return false;
    return rows->setValue(row, "Menge", 0);
  });
  rows->setValue(0, "Name", "Spende");
  QVERIFY(!rows->submitRow());
  QCOMPARE(cell(0, 1), "Nr 1");
  rows->setValue(1, "Name", "Anders");
  QVERIFY(rows->submitRow());
  QCOMPARE(stored("Name"), "Nr 1,Anders,Nr 3,Nr 4,Nr 5,Nr 6");
  QCOMPARE(stored("Menge"), "9,0,7,6,5,4");
}

void TestBoundGrid::whatTheFieldCantHoldStaysInTheEditor() {
  grid->setUnlocked(true);
  typeAt(1, 3, "2.75");
  QCOMPARE(reports, QList<int>{3421});
  QCOMPARE(lastDescription, "In \"Preis\" steht eine Zahl mit Komma, zum Beispiel 2,5; \"2.75\" ist keine.");
  const auto editor = [] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); };
  QTRY_VERIFY(editor());
  QCOMPARE(editor()->text(), "2.75");
  QCOMPARE(editor()->selectedText(), "2.75");
  QVERIFY(!grid->submitRow());
  QCOMPARE(reports, (QList<int>{3421, 3421}));
  QTRY_VERIFY(editor());
  editor()->setText("2,75");
  QVERIFY(grid->submitRow());
  QCOMPARE(stored("Preis"), "1.5,2.75,3.5,4.5,5.5,6.5");
  QVERIFY(!rows->setValue(0, "Menge", "1e3"));
  QCOMPARE(lastDescription, "In \"Menge\" steht eine ganze Zahl, zum Beispiel 12; \"1e3\" ist keine.");
}

void TestBoundGrid::aRefusedTextCanBeIgnored() {
  grid->setUnlocked(true);
  answer = ErrorAnswer::Ignore;
  typeAt(1, 2, "viele");
  QCOMPARE(cell(1, 2), "8");
  QVERIFY(!rows->isEdited());
  QVERIFY(grid->hasFocus());
}

void TestBoundGrid::aFailedStoreKeepsTheEdit() {
  rows->setValue(3, "Name", "Zu spät");
  database->execute("Delete * from Artikel where ID = 4");
  QVERIFY(!rows->submitRow());
  QCOMPARE(reports, QList<int>{3167});
  QCOMPARE(rows->editedRow(), 3);
  QCOMPARE(cell(3, 1), "Zu spät");
  QVERIFY(!grid->submitRow());
  grid->setFocus();
  QTest::keyClick(grid, Qt::Key_Escape);
  QVERIFY(!rows->isEdited());
  QCOMPARE(cell(3, 1), "#Gelöscht");
  QVERIFY(grid->submitRow());
}

void TestBoundGrid::anIgnoredFailureGivesTheEditUp() {
  rows->setValue(3, "Name", "Zu spät");
  database->execute("Delete * from Artikel where ID = 4");
  answer = ErrorAnswer::Ignore;
  QVERIFY(rows->submitRow());
  QCOMPARE(reports, QList<int>{3167});
  QVERIFY(!rows->isEdited());
  QCOMPARE(cell(3, 1), "#Gelöscht");
}

void TestBoundGrid::aRowThatCantBeStoredStaysCurrent() {
  grid->setUnlocked(true);
  typeAt(3, 1, "Zu spät");
  database->execute("Delete * from Artikel where ID = 4");
  grid->setCurrentIndex(rows->index(0, 2));
  QTRY_COMPARE(grid->currentIndex(), rows->index(3, 1));
  QCOMPARE(reports, QList<int>{3167});
  QCOMPARE(cell(3, 1), "Zu spät");
  // Nor is the list sorted away under it.
  QSignalSpy clicked(grid, &BoundGrid::titleClicked);
  QTest::keyClick(grid, Qt::Key_Return, Qt::ControlModifier);
  QCOMPARE(clicked.count(), 0);
}

void TestBoundGrid::submittingTakesOverTheOpenEditor() {
  grid->setUnlocked(true);
  grid->setCurrentIndex(rows->index(0, 1));
  grid->edit(rows->index(0, 1));
  auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  QVERIFY(editor);
  editor->setText("Offen");
  QVERIFY(grid->submitRow());
  QCOMPARE(stored("Name"), "Offen,Nr 2,Nr 3,Nr 4,Nr 5,Nr 6");
}

void TestBoundGrid::theSpaceBarTicks() {
  rows->setColumns({{.field = "Name"}, {.field = "Fertig", .checkBox = true}});
  grid->setCurrentIndex(rows->index(2, 1));
  QTest::keyClick(grid, Qt::Key_Space);
  QVERIFY(!rows->isEdited());
  grid->setUnlocked(true);
  grid->setCurrentIndex(rows->index(2, 1));
  QTest::keyClick(grid, Qt::Key_Space);
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(rows->index(4, 1)).center());
  QVERIFY(grid->submitRow());
  QCOMPARE(stored("Fertig"), "0,0,-1,0,-1,0");
}

void TestBoundGrid::rowsAreAddedByTyping() {
  rows->setAppending(true);
  QCOMPARE(rows->rowCount(), 6);
  grid->setUnlocked(true);
  QCOMPARE(rows->rowCount(), 7);
  QVERIFY(rows->isNewRow(6));
  typeAt(6, 1, "Neu");
  QVERIFY(rows->submitRow());
  QCOMPARE(rows->rowCount(), 8);
  QCOMPARE(cell(6, 1), "Neu");
  QCOMPARE(cell(7, 1), "");
  QCOMPARE(stored("Name"), "Nr 1,Nr 2,Nr 3,Nr 4,Nr 5,Nr 6,Neu");
}

void TestBoundGrid::anotherRowKeepsTheColumn() {
  const auto place = [this] { return std::pair(grid->currentIndex().row(), grid->currentIndex().column()); };
  grid->setCurrentIndex({});
  grid->setCurrentRow(2);
  QCOMPARE(place(), std::pair(2, 0));
  grid->setCurrentIndex(rows->index(2, 3));
  grid->setCurrentRow(4);
  QCOMPARE(place(), std::pair(4, 3));
  grid->setCurrentRow(99);
  QCOMPARE(place(), std::pair(5, 3));
  grid->setCurrentRow(-1);
  QCOMPARE(place(), std::pair(0, 3));
}

void TestBoundGrid::theCurrentRowIsSeen() {
  QVERIFY(grid->alternatingRowColors());  // a row is followed across the window
  database->execute("INSERT INTO Artikel (Name) SELECT a.Name FROM Artikel AS a, Artikel AS b, Artikel AS c");
  rows->open(*database, "Select * from Artikel order by ID");
  QVERIFY(rows->waitForAll());
  grid->setCurrentIndex(rows->index(0, 1));
  grid->setFocus();
  const auto isSeen = [this] {
    return grid->viewport()->rect().contains(grid->visualRect(grid->currentIndex()).center());
  };
  for (int step = 0; step < 40; ++step) {
    QTest::keyClick(grid, Qt::Key_Down);
    QVERIFY2(isSeen(), qPrintable(QString::number(grid->currentIndex().row())));
  }
  QCOMPARE(grid->currentIndex().row(), 40);
  QTest::keyClick(grid, Qt::Key_Home, Qt::ControlModifier);
  QVERIFY(isSeen());
}

void TestBoundGrid::markedRowsAreDeleted() {
  grid->setCurrentIndex(rows->index(4, 1));
  QCOMPARE(grid->markedRows().size(), 0);
  grid->selectionModel()->select(rows->index(5, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  grid->selectionModel()->select(rows->index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  QCOMPARE(grid->markedRows(), (QList<QByteArray>{rows->bookmark(1), rows->bookmark(4), rows->bookmark(5)}));
  QVERIFY(grid->removeMarked());
  QCOMPARE(stored("ID"), "1,3,4");
  QCOMPARE(rows->rowCount(), 3);
  QCOMPARE(grid->currentRow(), 2);  // the number is gone: the last one
}

void TestBoundGrid::withoutMarksTheCurrentRowIsDeleted() {
  grid->setCurrentRow(1);
  QVERIFY(grid->removeMarked());
  QCOMPARE(stored("ID"), "1,3,4,5,6");
  QCOMPARE(grid->currentRow(), 1);
  for (int i = 0; i < 5; ++i) QVERIFY(grid->removeMarked());
  QCOMPARE(stored("ID"), "");
  QCOMPARE(grid->currentRow(), -1);
  QVERIFY(grid->removeMarked());
}

void TestBoundGrid::theFirstRowsAreDeletedInPortions() {
  rows->open(*database, "Select * from Artikel order by ID desc");
  QVERIFY(rows->waitForAll());
  QVERIFY(rows->removeFirst(0));
  QCOMPARE(stored("ID"), "1,2,3,4,5");
  QCOMPARE(cell(0, 0), "5");
  while (rows->count() > 0) QVERIFY(rows->removeFirst(1000));
  QCOMPARE(stored("ID"), "");
  QCOMPARE(rows->rowCount(), 0);
}

void TestBoundGrid::deletingEndsWhenTheOperatorGivesUp() {
  database->dropTable("Artikel");
  QVERIFY(!rows->removeFirst(1000));
  QVERIFY(!rows->removeBookmarked({rows->bookmark(1), rows->bookmark(2)}));
  QCOMPARE(reports, (QList<int>{3078, 3078}));
  QCOMPARE(rows->count(), 6);
}

void TestBoundGrid::aCheckRefusesWhatWasTyped() {
  QStringList asked;
  rows->setCheck([&](int row, const QString& field, const QVariant& value) {
    asked << QString("%1 %2 %3").arg(row).arg(field, value.toString());
    return value.toInt() < 100;
  });
  grid->setUnlocked(true);
  typeAt(1, 2, "100");
  const auto editor = [] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); };
  QTRY_VERIFY(editor());
  QCOMPARE(editor()->text(), "100");
  QVERIFY(!rows->isEdited());
  editor()->setText("99");
  QVERIFY(grid->submitRow());
  QCOMPARE(stored("Menge"), "9,99,7,6,5,4");
  // What the program itself stores isn't asked about.
  QVERIFY(rows->setValue(0, "Menge", 1000));
  QVERIFY(rows->submitRow());
  QCOMPARE(asked, (QStringList{"1 Menge 100", "1 Menge 99"}));
}

void TestBoundGrid::lockedCellsSaySo() {
  rows->setColumns({{.field = "Name"}, {.field = "Menge", .locked = true}});
  QSignalSpy wanted(grid, &BoundGrid::lockedEdited);
  const auto wish = [&](int column) {
    grid->setFocus();
    grid->setCurrentIndex(rows->index(2, column));
    QTest::keyClick(grid, Qt::Key_F2);
    QTest::keyClick(grid, Qt::Key_X);
    const QPoint cell = grid->visualRect(grid->currentIndex()).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell);
    grid->editCurrent();
    QCoreApplication::processEvents();
  };
  wish(1);
  QCOMPARE(wanted.count(), 0);
  grid->setUnlocked(true);
  wish(1);
  QCOMPARE(wanted.count(), 4);
  QCOMPARE(wanted.first().first().toInt(), 1);
  QTest::keyClick(grid, Qt::Key_Space);
  QTest::keyClick(grid, Qt::Key_Down);
  QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
  QCoreApplication::processEvents();
  QCOMPARE(wanted.count(), 4);
  grid->setCurrentIndex(rows->index(2, 0));
  grid->editCurrent();
  QVERIFY(qobject_cast<QLineEdit*>(QApplication::focusWidget()));
  QCoreApplication::processEvents();
  QCOMPARE(wanted.count(), 4);
}

void TestBoundGrid::oneSelectedRowIsChosen() {
  grid->setCurrentRow(2);
  QCOMPARE(grid->chosenRows(), QList<QByteArray>{rows->bookmark(2)});
  const auto click = [this](int row) {
    const QPoint cell = grid->visualRect(rows->index(row, 0)).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::ControlModifier, cell);
  };
  click(4);
  QCOMPARE(grid->chosenRows(), (QList<QByteArray>{rows->bookmark(2), rows->bookmark(4)}));
  click(2);  // takes its mark away; it is the current row now
  QCOMPARE(grid->currentRow(), 2);
  QCOMPARE(grid->chosenRows(), QList<QByteArray>{rows->bookmark(4)});
  QVERIFY(grid->removeMarked());
  QCOMPARE(stored("ID"), "1,2,3,4,6");
}

void TestBoundGrid::rowsThatLeftTheQueryArentDeleted() {
  dao::FieldDef key{.name = "Nr", .type = dao::FieldType::Long};
  database->createTable({"Lager", {key}, {{"PrimaryKey", {"Nr"}, true, true, true}}});
  for (const char* number : {"9", "8", "7"})
    database->execute(QString("INSERT INTO Lager (Nr) VALUES (%1)").arg(number));
  rows->open(*database,
             "SELECT Artikel.*, Lager.Nr FROM Artikel INNER JOIN Lager ON Artikel.Menge = Lager.Nr ORDER BY "
             "Artikel.ID");
  QVERIFY(rows->waitForAll());
  QCOMPARE(rows->count(), 3);
  database->execute("UPDATE Artikel SET Menge = 7 WHERE ID = 2");
  int removed = 0;
  QVERIFY(rows->removeBookmarked({rows->bookmark(0), rows->bookmark(1), rows->bookmark(2)}, &removed));
  QCOMPARE(removed, 2);
  QCOMPARE(rows->count(), 0);
  QCOMPARE(stored("ID"), "2,4,5,6");
}

void TestBoundGrid::aRowIsReadAnew() {
  QCOMPARE(cell(1, 1), "Nr 2");
  database->execute("UPDATE Artikel SET Name = 'Anders' WHERE ID = 2");
  QCOMPARE(cell(1, 1), "Nr 2");
  QVERIFY(rows->reread(1));
  QCOMPARE(cell(1, 1), "Anders");
  database->execute("DELETE * FROM Artikel WHERE ID = 2");
  QVERIFY(!rows->reread(1));
  QCOMPARE(cell(1, 1), "#Gelöscht");
}

void TestBoundGrid::readingsReportByThemselves() {
  int failures = 0;
  rows->setFetchReport([&](const Error&) {
    ++failures;
    return ErrorAnswer::Abort;
  });
  database->dropTable("Artikel");
  rows->refresh();
  QTRY_COMPARE(failures, 1);
  QVERIFY(rows->isBroken());
  QCOMPARE(reports, QList<int>());
}

void TestBoundGrid::bookmarksOutliveTheOrder() {
  const QByteArray third = rows->bookmark(2);
  rows->open(*database, "Select * from Artikel order by ID desc");
  QVERIFY(rows->waitForAll());
  QCOMPARE(rows->rowOf(third), 3);
  QCOMPARE(rows->findFirst("ID = 6"), 0);
}

void TestBoundGrid::theModelKeepsItsPromises() {
  const QAbstractItemModelTester tester(rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
  rows->setAppending(true);
  grid->setUnlocked(true);
  rows->setValue(6, "Name", "Neu");
  QVERIFY(rows->submitRow());
  rows->removeBookmarked({rows->bookmark(2), rows->bookmark(6)});
  rows->refresh();
  QVERIFY(rows->waitForAll());
  rows->removeFirst(0);
  rows->open(*database, "Select Name from Artikel");
  QVERIFY(rows->waitForAll());
}

void TestBoundGrid::theCountSaysHowFarTheListIs() {
  const auto text = [this] { return countText(*rows, "1 Artikel", "Artikel"); };
  const QScopedValueRollback noPatience(dao::listPace().firstRows, 0);
  rows->open(*database, "Select * from Artikel where Menge > 0");
  QCOMPARE(text(), QString("Wird gesucht…"));
  QVERIFY(rows->waitForAll());
  QCOMPARE(text(), QString("6 Artikel"));
  rows->open(*database, "Select * from Artikel where ID = 1");
  QVERIFY(rows->waitForAll());
  QCOMPARE(text(), QString("1 Artikel"));
}

QTEST_MAIN(TestBoundGrid)
#include "test_bound_grid.moc"

// The bound grid over a real store: read as far as it is shown, filtered, marked, edited, deleted.
#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/runtime/error.h"
#include "tests/support/drive.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

class TestBoundGrid : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();

  void cellsAreGermanText();
  void columnsOfTheOwner();
  void aDeletedRowSaysSo();
  void aRowThatCouldntBeReadIsReadAgain();
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
  void markedRowsAreDeleted();
  void withoutMarksTheCurrentRowIsDeleted();
  void theFirstRowsAreDeletedInPortions();
  void deletingEndsWhenTheOperatorGivesUp();
  void filterCellsSpeak();
  void filterCellsStandUnderTheirTitles();
  void columnsHoldTheirTitles();
  void titlesSpeak();
  void titlesAreClickedByKeyboard();
  void bookmarksOutliveTheOrder();
  void theModelKeepsItsPromises();

 private:
  QString cell(int row, int column) { return rows->index(row, column).data().toString(); }
  QString stored(const QString& field) {
    const auto recordset = database->openRecordset("Select * from Artikel order by ID");
    QStringList values;
    for (; !recordset->eof(); recordset->moveNext()) values.append(recordset->value(field).toString());
    return values.join(",");
  }
  void typeAt(int row, int column, const QString& text) {
    grid->setCurrentIndex(rows->index(row, column));
    grid->edit(rows->index(row, column));
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(editor);
    editor->selectAll();
    if (text.isEmpty())
      QTest::keyClick(editor, Qt::Key_Delete);
    else
      typeInto(*editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();  // the editor hands its text over from there
  }

  std::unique_ptr<QTemporaryDir> folder;
  std::unique_ptr<dao::Database> database;
  std::unique_ptr<QWidget> window;
  BoundGrid* grid = nullptr;
  BoundRows* rows = nullptr;
  QLineEdit* elsewhere = nullptr;
  QList<int> reports;
  QString lastDescription;
  ErrorAnswer answer = ErrorAnswer::Abort;
};

void TestBoundGrid::init() {
  folder = std::make_unique<QTemporaryDir>();
  prepareStore(folder->filePath("lager"));
  database = dao::Database::create(folder->filePath("lager"), {.durable = false});
  dao::FieldDef id{.name = "ID", .type = dao::FieldType::Long, .autoNumber = true};
  database->createTable({"Artikel",
                         {id,
                          {.name = "Name", .type = dao::FieldType::Text, .size = 20},
                          {.name = "Menge", .type = dao::FieldType::Long},
                          {.name = "Preis", .type = dao::FieldType::Double},
                          {.name = "Fertig", .type = dao::FieldType::Boolean},
                          {.name = "Am", .type = dao::FieldType::Date}},
                         {{"PrimaryKey", {"ID"}, true, true, true}}});
  const auto recordset = database->openRecordset("Artikel");
  for (int i = 1; i <= 6; ++i) {
    recordset->addNew();
    recordset->setValue("Name", QString("Nr %1").arg(i));
    recordset->setValue("Menge", 10 - i);
    recordset->setValue("Preis", i + 0.5);
    recordset->setValue("Am", QDateTime(QDate(2026, 11, 20), QTime(0, 0)));
    recordset->update();
  }
  reports.clear();
  answer = ErrorAnswer::Abort;
  window = std::make_unique<QWidget>();
  grid = new BoundGrid(window.get());
  elsewhere = new QLineEdit(window.get());
  auto* layout = new QVBoxLayout(window.get());
  layout->addWidget(grid);
  layout->addWidget(elsewhere);
  rows = new BoundRows(
      [this](const Error& error) {
        reports.append(error.number());
        lastDescription = error.description();
        return answer;
      },
      window.get());
  grid->setRows(rows);
  rows->open(*database, "Select * from Artikel order by ID");
  QVERIFY(rows->waitForAll());
  window->resize(700, 400);
  window->show();
  QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

void TestBoundGrid::cleanup() {
  window.reset();
  database.reset();
}

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

/// The table is away for a moment, as a server may be.
void TestBoundGrid::aRowThatCouldntBeReadIsReadAgain() {
  const dao::TableDef table = database->tableDef("Artikel");
  database->execute("SELECT * INTO Beiseite FROM Artikel");
  database->dropTable("Artikel");
  rows->setColumns(rows->columns());  // nothing of what was read before stays
  for (const int row : {0, 1}) QCOMPARE(cell(row, 1), QString("#Fehler"));
  database->createTable(table);
  database->execute(
      "INSERT INTO Artikel (ID, Name, Menge, Preis, Fertig, Am) SELECT ID, Name, Menge, Preis, Fertig, Am "
      "FROM "
      "Beiseite");
  const QSignalSpy changes(rows, &QAbstractItemModel::dataChanged);
  QTRY_VERIFY(changes.count() >= 2);
  QCOMPARE(cell(0, 1), QString("Nr 1"));
  QCOMPARE(cell(1, 1), QString("Nr 2"));
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

void TestBoundGrid::filterCellsSpeak() {
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

void TestBoundGrid::filterCellsStandUnderTheirTitles() {
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

void TestBoundGrid::columnsHoldTheirTitles() {
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

void TestBoundGrid::titlesSpeak() {
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

void TestBoundGrid::titlesAreClickedByKeyboard() {
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

QTEST_MAIN(TestBoundGrid)
#include "test_bound_grid.moc"

// The results editor: the real window on a competition, answered through real boxes.
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include "evaluation/result_table.h"
#include "platform/look/look.h"
#include "tests/evaluation/results_desk.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

class TestFrmSchuetzeErg : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { desk = std::make_unique<ResultsDesk>(); }
  void cleanup() { desk.reset(); }

  void theShooterAndHisResults();
  void registrationsInOneLine();
  void nobodysResults();
  void aShooterWithoutResults();
  void captions();
  void filtersAndTitles();
  void marksFallWithFilterAndOrder();
  void marking();
  void markingWaitsForTheRows();
  void markingThatFails();
  void printingHalfAListCanBeGivenUp();
  void theRightIsAskedFirst();
  void editingIsAToggle();
  void anEditIsStored();
  void whatIsntReadStandsInItsEditorAgain();
  void aDoubtfulValueIsAsked();
  void anImpossibleDateIsRefused();
  void theWeaponIsChecked();
  void anEditThatCantBeStored();
  void theRowStaysUntilItIsStored();
  void lockingStoresTheRow();
  void aTabWithAnUnstoredRowStays();
  void theDisciplineOpensItsChooser();
  void enterInAFilterClosesNothing();
  void keysOfTheWindow();
  void manners();

 private:
  BoundGrid& grid() { return desk->grid(); }
  /// Opens a list of more rows than come at once, with its first rows only. Returns how many there are.
  int openLong() {
    for (int i = 0; i < 6; ++i)
      desk->bench.store().execute(
          "INSERT INTO Schuss (Ergebnis, Startnummer, DisziID) SELECT Ergebnis, Startnummer, DisziID FROM "
          "Schuss WHERE DisziID = 3 AND Startnummer = '107'");
    desk->open();
    const int all = desk->rows().count();
    readFirst();
    return all;
  }
  void readFirst() {
    desk->rows().refresh();
    desk->rows().waitForFirst();
  }
  QPushButton& button(const char* name) { return the<QPushButton>(desk->window(), name); }
  void unlock() {
    click(desk->window(), "cmdEdit");
    QCOMPARE(button("cmdEdit").text(), "S&perren");
    QVERIFY(the<QLabel>(desk->window(), "lblStand").text().endsWith("F2 oder Eingabe ändert eine Zelle."));
  }
  QLineEdit* editor() { return desk->editor(); }

  std::unique_ptr<ResultsDesk> desk;
};

void TestFrmSchuetzeErg::theShooterAndHisResults() {
  desk->open();
  const auto text = [this](const char* label) { return the<QLabel>(desk->window(), label).text(); };
  QCOMPARE(text("lblName"), "Müller Jörg");
  QCOMPARE(text("lblStartnummer"), "107");
  QCOMPARE(text("lblVName"), "Schützenlust Äußere Au");
  QCOMPARE(text("lblGebdat"), "14.05.1998");
  QCOMPARE(text("lblMannName"), "Äußere Au I");
  QCOMPARE(text("lblKlasse"), "Herren I");
  QCOMPARE(desk->shown(result::Ergebnis), "50,5 7,5 23,5 123,4 300,1");
  QCOMPARE(desk->shown(result::Waffe), "LG LP LG LG LP");
  QCOMPARE(desk->grid().currentRow(), 0);
  desk->showSerien();
  QCOMPARE(desk->shown(result::Ergebnis), "391 380 101,5");
  QCOMPARE(desk->shown(result::Datum), "21.11.2026 10:00:00 20.11.2026 10:00:00 21.11.2026 11:00:00");
  QCOMPARE(desk->grid().currentRow(), 0);
}

void TestFrmSchuetzeErg::registrationsInOneLine() {
  desk->bench.fill(R"(
Zeilen MeldeDisziplin
  ID | MeldeDisziplin
  1  | Luftgewehr
  2  | Luftpistole
Zeilen Schuetzen_SPO_Anmeldungen
  ID | SchuetzeID | SPOID | MannID
  1  | 71         | 1     | 5
  2  | 71         | 2     | 0
  3  | 72         | 2     | 5
)");
  desk->open();
  QCOMPARE(the<QLabel>(desk->window(), "lblSPO").text(), "Luftgewehr - Äußere Au I - Luftpistole - ");
}

void TestFrmSchuetzeErg::nobodysResults() {
  desk->bench.store().execute("UPDATE Schuss SET Startnummer = '999' WHERE ID = 1");
  desk->open("999");
  QCOMPARE(the<QLabel>(desk->window(), "lblName").text(), "");
  QCOMPARE(the<QLabel>(desk->window(), "lblKlasse").text(), "");
  QCOMPARE(desk->shown(result::Ergebnis), "123,4");
  desk->open("");
  QCOMPARE(the<QLabel>(desk->window(), "lblName").text(), "");
  QCOMPARE(desk->rows().count(), 0);
}

void TestFrmSchuetzeErg::aShooterWithoutResults() {
  desk->open("108");
  desk->bench.store().execute("DELETE * FROM Schuss");
  desk->open("108");
  QCOMPARE(desk->count(), "");
  // Nothing is asked, nothing done.
  click(desk->window(), "cmdDelete");
  click(desk->window(), "cmdChangeDiszi");
  trigger(desk->window(), "mnuEditSelAlle");
  QVERIFY(desk->boxes.asked().isEmpty());
}

void TestFrmSchuetzeErg::captions() {
  desk->open();
  QCOMPARE(desk->window().windowTitle(), "Ergebnisse Schütze");
  auto& tabs = the<QTabWidget>(desk->window(), "SSTab1");
  QCOMPARE(tabs.tabText(0), "&Teiler - Ergebnisse");
  QCOMPARE(tabs.tabText(1), "&Serien - Ergebnisse");
  QCOMPARE(button("cmdOK").text(), "&OK");
  QCOMPARE(button("cmdEdit").text(), "&Bearbeiten");
  QCOMPARE(button("cmdDelete").text(), "&Löschen");
  QCOMPARE(button("cmdChangeDiszi").text().remove('&'), "Disziplin wechseln...");
  QCOMPARE(the<QAction>(desk->window(), "mnuDateiPrintEdit").text(), "Druckereinrichtung...");
  QCOMPARE(desk->count(), "5 Serien");
  desk->showSerien();
  QCOMPARE(desk->count(), "3 Serien");
  QStringList titles;
  for (int column = 0; column < grid().model()->columnCount(); ++column)
    titles << grid().model()->headerData(column, Qt::Horizontal).toString();
  QCOMPARE(titles, resultColumns());
}

void TestFrmSchuetzeErg::filtersAndTitles() {
  desk->open();
  type(desk->window(), "filter_Waffe_1", "lp");
  QCOMPARE(desk->shown(result::Ergebnis), "7,5 300,1");
  QCOMPARE(desk->count(), "2 Serien");
  QVERIFY(the<QLineEdit>(desk->window(), "filter_Waffe_1").hasFocus());
  desk->clickTitle(result::Ergebnis);
  QCOMPARE(desk->shown(result::Ergebnis), "7,5 300,1");
  desk->clickTitle(result::Ergebnis);
  QCOMPARE(desk->shown(result::Ergebnis), "300,1 7,5");
  QCOMPARE(grid().horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
  click(desk->window(), "cmdClearFilter");
  QCOMPARE(desk->shown(result::Ergebnis), "300,1 123,4 50,5 23,5 7,5");
  QCOMPARE(the<QLineEdit>(desk->window(), "filter_Waffe_1").text(), "");
  desk->showSerien();  // has its own filter and order
  QCOMPARE(desk->shown(result::Ergebnis), "391 380 101,5");
  type(desk->window(), "filter_Disziplin_2", "LG Z");
  QCOMPARE(desk->shown(result::Ergebnis), "101,5");
  type(desk->window(), "filter_Disziplin_2", "'");
  QCOMPARE(desk->count(), "");
}

void TestFrmSchuetzeErg::marksFallWithFilterAndOrder() {
  desk->open();
  desk->select(1);
  desk->mark(2);
  QCOMPARE(the<QLabel>(desk->window(), "lblMarkiert").text(), "2 markiert");
  desk->clickTitle(result::Datum);
  QCOMPARE(grid().markedRows().size(), 0);
  QCOMPARE(the<QLabel>(desk->window(), "lblMarkiert").text(), "");
  trigger(desk->window(), "mnuEditSelAlle");
  QCOMPARE(grid().markedRows().size(), 5);
  type(desk->window(), "filter_Waffe_1", "LP");
  QCOMPARE(grid().markedRows().size(), 0);
  click(desk->window(), "cmdClearFilter");
  QCOMPARE(grid().markedRows().size(), 0);
  QCOMPARE(grid().currentRow(), 0);
}

void TestFrmSchuetzeErg::marking() {
  desk->open();
  desk->select(3);
  trigger(desk->window(), "mnuEditSelAlle");
  QCOMPARE(grid().markedRows().size(), 5);
  trigger(desk->window(), "mnuEditSelNone");
  QCOMPARE(grid().markedRows().size(), 0);
  desk->showSerien();
  QCOMPARE(the<QLabel>(desk->window(), "lblMarkiert").text(), "");
  trigger(desk->window(), "mnuEditSelAlle");
  QCOMPARE(the<QLabel>(desk->window(), "lblMarkiert").text(), "3 markiert");
}

void TestFrmSchuetzeErg::markingWaitsForTheRows() {
  const int all = openLong();
  QVERIFY(desk->rows().count() < all);
  bool hourglass = false;
  const auto reading = connect(&desk->rows(), &BoundRows::rowsInserted, &desk->window(), [&] {
    hourglass = QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
  });
  trigger(desk->window(), "mnuEditSelAlle");
  disconnect(reading);
  QCOMPARE(grid().markedRows().size(), all);
  QVERIFY(hourglass);
  QVERIFY(!QApplication::overrideCursor());
}

void TestFrmSchuetzeErg::markingThatFails() {
  const QString text = "Fehler beim Markieren der Ergebnisse!";
  const int all = openLong();
  dao::Database& store = desk->bench.store();
  const dao::TableDef disciplines = store.tableDef("Disziplin");
  const Error error = desk->breakListing();
  const int first = desk->rows().count();
  QVERIFY(first > 2 && first < all);
  const auto mark = [this](int row) {
    grid().selectionModel()->select(desk->rows().index(row, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
  };
  mark(0);
  mark(1);
  desk->expectError(error, text, BoxAnswer::Abort);
  trigger(desk->window(), "mnuEditSelAlle");
  QVERIFY(desk->boxes.done());
  QCOMPARE(grid().markedRows().size(), 2);
  // There again, it is read, although the list had ended.
  store.createTable(disciplines);
  desk->bench.fill("Zeilen Disziplin\n  ID | Name\n  3 | LG Teiler\n  4 | LP Teiler\n  5 | LG Ring-Teiler\n");
  trigger(desk->window(), "mnuEditSelAlle");
  QCOMPARE(grid().markedRows().size(), all);
  // Whoever goes on marks what is there, and sees that it isn't all.
  readFirst();
  store.dropTable("Disziplin");
  desk->expectError(error, text, BoxAnswer::Ignore);
  trigger(desk->window(), "mnuEditSelAlle");
  QVERIFY(desk->boxes.done());
  QCOMPARE(grid().markedRows().size(), first);
  QCOMPARE(desk->count(), QString("%1 Serien, nicht alle gelesen").arg(first));
  desk->expectError(error, text, BoxAnswer::Retry);
  desk->expectError(error, text, BoxAnswer::Abort);
  trigger(desk->window(), "mnuEditSelAlle");
  QVERIFY(desk->boxes.done());
  QCOMPARE(grid().markedRows().size(), 0);
}

void TestFrmSchuetzeErg::printingHalfAListCanBeGivenUp() {
  openLong();
  const Error error = desk->breakListing();
  for (const BoxAnswer answer : {BoxAnswer::Abort, BoxAnswer::Ignore}) {
    QCOMPARE(desk->current.names, QStringList());
    desk->expectError(error, "Fehler beim Laden der Ergebnisse!", answer);
    trigger(desk->window(), "mnuDateiPrint");
    QVERIFY(desk->boxes.done());
  }
  QCOMPARE(desk->current.names, QStringList("Teiler"));
}

void TestFrmSchuetzeErg::theRightIsAskedFirst() {
  desk->global.bErgebnisseAendern = false;
  desk->open();
  for (const char* name : {"cmdEdit", "cmdDelete", "cmdChangeDiszi"}) {
    desk->boxes.expect(kRight).titled("Hinweis").with(BoxButtons::Ok).showing(BoxIcon::Critical);
    click(desk->window(), name);
    QVERIFY(desk->boxes.done());
  }
  QCOMPARE(button("cmdEdit").text(), "&Bearbeiten");
  QVERIFY(!desk->rows().isUnlocked());
}

void TestFrmSchuetzeErg::editingIsAToggle() {
  desk->open();
  QCOMPARE(grid().selectionBehavior(), QAbstractItemView::SelectRows);
  const auto open = [this] {
    QStringList editable;
    for (int column = 0; column < 4; ++column)
      if (desk->rows().flags(desk->rows().index(0, column)) & Qt::ItemIsEditable)
        editable << resultColumns()[column];
    return editable.join(" ");
  };
  QCOMPARE(open(), "");
  desk->select(2);
  unlock();
  QCOMPARE(open(), "Ergebnis Waffe Datum");
  QCOMPARE(grid().selectionBehavior(), QAbstractItemView::SelectItems);
  QCOMPARE(grid().currentRow(), 2);
  desk->showSerien();
  QCOMPARE(open(), "Ergebnis Waffe Datum");
  click(desk->window(), "cmdEdit");
  QCOMPARE(button("cmdEdit").text(), "&Bearbeiten");
  QCOMPARE(open(), "");
  desk->select(0);
  QTest::keyClick(&grid(), Qt::Key_F2);
  QVERIFY(!editor());
}

void TestFrmSchuetzeErg::anEditIsStored() {
  desk->open();
  unlock();
  desk->typeAt(3, result::Ergebnis, "124,5");
  QVERIFY(desk->rows().isEdited());
  QCOMPARE(desk->stored("Schuss", 1), "123,4|LG|20.11.2026 10:41:07|3");
  desk->typeAt(3, result::Waffe, "LP");
  desk->typeAt(3, result::Datum, "19.11.2026 08:00:00");
  desk->select(0);  // leaving the row stores it
  QCOMPARE(desk->stored("Schuss", 1), "124,5|LP|19.11.2026 08:00:00|3");
  desk->showSerien();
  desk->typeAt(1, result::Ergebnis, "381");
  desk->select(0);
  QCOMPARE(desk->stored("SchussSerien", 1), "381|LG|20.11.2026 10:00:00|1");
  // The names of disciplines are nobody's to change here.
  QCOMPARE(desk->bench.read("Select * from Disziplin order by ID", {"Name"}).first(), "LG Meister");
}

void TestFrmSchuetzeErg::whatIsntReadStandsInItsEditorAgain() {
  desk->open();
  unlock();
  desk->expectError(
      Error(3421, "In \"Ergebnis\" steht eine Zahl mit Komma, zum Beispiel 2,5; \"12.5\" ist keine."),
      "Fehler beim Bearbeiten der Ergebnisse!", BoxAnswer::Abort);
  desk->typeAt(1, result::Ergebnis, "12.5");
  QVERIFY(desk->boxes.done());
  QVERIFY(editor());
  QCOMPARE(editor()->text(), "12.5");
  QTest::keyClick(editor(), Qt::Key_Escape);
  QVERIFY(!desk->rows().isEdited());
  desk->boxes
      .expect("Ein Ergebnis ohne Zahl gibt es nicht.\r\nBitte eine Zahl eingeben oder die Zeile löschen.")
      .titled("Hinweis");
  desk->typeAt(1, result::Ergebnis, "");
  QVERIFY(editor());
  QCOMPARE(editor()->text(), "");
  QTest::keyClick(editor(), Qt::Key_Escape);
  desk->select(0);
  QCOMPARE(desk->stored("Schuss", 7), "7,5|LP|03.12.2025 10:00:00|3");
}

void TestFrmSchuetzeErg::aDoubtfulValueIsAsked() {
  const QString question =
      "12000: Ein Teiler in LG Teiler liegt zwischen 0,0 und 9.999,9.\r\nTrotzdem übernehmen?";
  desk->open();
  unlock();
  desk->boxes.expect(question, BoxAnswer::No).with(BoxButtons::YesNo).presetting(BoxAnswer::No);
  desk->typeAt(1, result::Ergebnis, "12000");
  QVERIFY(editor());
  QCOMPARE(editor()->text(), "12000");
  QTest::keyClick(editor(), Qt::Key_Escape);
  desk->boxes.expect(question, BoxAnswer::Yes);
  desk->typeAt(1, result::Ergebnis, "12000");
  QVERIFY(desk->boxes.done());
  desk->select(0);
  QCOMPARE(desk->stored("Schuss", 7), "12000|LP|03.12.2025 10:00:00|3");
  desk->showSerien();
  desk->boxes.expect("401: Eine Serie in LG Meister liegt zwischen 0 und 400.\r\nTrotzdem übernehmen?",
                     BoxAnswer::Yes);
  desk->typeAt(0, result::Ergebnis, "401");
  desk->select(1);
  QCOMPARE(desk->stored("SchussSerien", 2), "401|LG|21.11.2026 10:00:00|1");
}

void TestFrmSchuetzeErg::anImpossibleDateIsRefused() {
  desk->open();
  unlock();
  desk->boxes
      .expect("\"31.02.2026\" ist kein Datum.\r\nBitte so eingeben: 20.11.2026 oder 20.11.2026 10:41:07")
      .titled("Hinweis")
      .showing(BoxIcon::Exclamation);
  desk->typeAt(2, result::Datum, "31.02.2026");
  QVERIFY(editor());
  QCOMPARE(editor()->text(), "31.02.2026");
  editor()->setText("28.02.2026");
  QTest::keyClick(editor(), Qt::Key_Return);
  QCoreApplication::processEvents();
  desk->select(0);
  QCOMPARE(desk->stored("Schuss", 2), "23,5|LG|28.02.2026|3");
  desk->boxes.expect("Der 20.11.2062 liegt in der Zukunft.\r\nTrotzdem übernehmen?", BoxAnswer::No);
  desk->typeAt(2, result::Datum, "20.11.2062");
  QVERIFY(editor());
  QTest::keyClick(editor(), Qt::Key_Escape);
}

void TestFrmSchuetzeErg::theWeaponIsChecked() {
  desk->open();
  unlock();
  desk->boxes.expect("Waffe \"KK\": In LG Teiler wird mit LG, LP geschossen.\r\nTrotzdem übernehmen?",
                     BoxAnswer::Yes);
  desk->typeAt(1, result::Waffe, "KK");
  desk->typeAt(4, result::Waffe, "KK");  // LP Teiler names no weapons
  desk->select(0);
  QCOMPARE(desk->stored("Schuss", 7), "7,5|KK|03.12.2025 10:00:00|3");
  QCOMPARE(desk->stored("Schuss", 3), "300,1|KK|21.11.2026 09:00:00|4");
  desk->expectError(Error(3163), "Fehler beim Bearbeiten der Ergebnisse!", BoxAnswer::Ignore);
  desk->typeAt(1, result::Waffe, "Zimmerstutzen");
  QVERIFY(!desk->rows().isEdited());
}

void TestFrmSchuetzeErg::anEditThatCantBeStored() {
  desk->open();
  unlock();
  desk->typeAt(1, result::Ergebnis, "8,5");
  desk->other().execute("DELETE * FROM Schuss WHERE ID = 7");
  const QString text = "Fehler beim Bearbeiten der Ergebnisse!";
  desk->expectError(Error(3167), text, BoxAnswer::Retry);
  desk->expectError(Error(3167), text, BoxAnswer::Abort);
  desk->select(0);
  QVERIFY(desk->boxes.done());
  QTRY_COMPARE(grid().currentRow(), 1);
  QVERIFY(desk->rows().isEdited());
  desk->expectError(Error(3167), text, BoxAnswer::Ignore);
  desk->select(0);
  QVERIFY(!desk->rows().isEdited());
  QCOMPARE(desk->rows().index(1, result::Ergebnis).data().toString(), "#Gelöscht");
}

void TestFrmSchuetzeErg::theRowStaysUntilItIsStored() {
  desk->open();
  unlock();
  desk->typeAt(1, result::Ergebnis, "8,5");
  desk->other().execute("DELETE * FROM Schuss WHERE ID = 7");
  const QString text = "Fehler beim Bearbeiten der Ergebnisse!";
  // Neither a title nor a filter takes it away, nor do the buttons or closing.
  desk->expectError(Error(3167), text, BoxAnswer::Abort);
  desk->clickTitle(result::Datum);
  QVERIFY(desk->rows().isEdited());
  desk->expectError(Error(3167), text, BoxAnswer::Abort);
  the<QLineEdit>(desk->window(), "filter_Waffe_1").setText("LG");
  QCOMPARE(the<QLineEdit>(desk->window(), "filter_Waffe_1").text(), "");
  QVERIFY(desk->rows().isEdited());
  for (const char* name : {"cmdDelete", "cmdChangeDiszi", "cmdEdit", "cmdClearFilter", "cmdOK"}) {
    QCoreApplication::processEvents();
    desk->expectError(Error(3167), text, BoxAnswer::Abort);
    the<QPushButton>(desk->window(), name).click();
    QVERIFY2(desk->boxes.done(), name);
    QVERIFY(desk->rows().isEdited());
  }
  QVERIFY(desk->window().isVisible());
  QCOMPARE(desk->rows().index(1, result::Ergebnis).data().toString(), "8,5");
  grid().setFocus();
  QTest::keyClick(&grid(), Qt::Key_Escape);  // drops the edit
  QVERIFY(!desk->rows().isEdited());
  QVERIFY(desk->window().isVisible());
  click(desk->window(), "cmdOK");
  QVERIFY(!desk->window().isVisible());
}

void TestFrmSchuetzeErg::lockingStoresTheRow() {
  desk->open();
  unlock();
  desk->select(1);
  QTest::keyClick(&grid(), Qt::Key_F2);
  QVERIFY(editor());
  editor()->setText("9,5");
  click(desk->window(), "cmdEdit");
  QCOMPARE(desk->stored("Schuss", 7), "9,5|LP|03.12.2025 10:00:00|3");
  unlock();
  QTest::keyClick(&grid(), Qt::Key_F2);
  editor()->setText("9,6");
  desk->window().close();
  QVERIFY(!desk->window().isVisible());
  QCOMPARE(desk->stored("Schuss", 7), "9,6|LP|03.12.2025 10:00:00|3");
}

void TestFrmSchuetzeErg::aTabWithAnUnstoredRowStays() {
  desk->open();
  unlock();
  desk->typeAt(1, result::Ergebnis, "8,5");
  desk->other().execute("DELETE * FROM Schuss WHERE ID = 7");
  desk->expectError(Error(3167), "Fehler beim Bearbeiten der Ergebnisse!", BoxAnswer::Abort);
  desk->showSerien();
  QCOMPARE(the<QTabWidget>(desk->window(), "SSTab1").currentIndex(), 0);
  QVERIFY(desk->rows().isEdited());
  desk->rows().cancelRow();
  desk->showSerien();
  QCOMPARE(the<QTabWidget>(desk->window(), "SSTab1").currentIndex(), 1);
}

void TestFrmSchuetzeErg::theDisciplineOpensItsChooser() {
  desk->open();
  const auto wish = [this](auto act) {
    desk->activate();
    grid().setFocus();
    grid().setCurrentIndex(desk->rows().index(1, result::Disziplin));
    act();
    QCoreApplication::processEvents();
  };
  const std::vector<std::function<void()>> acts{
      [this] { QTest::keyClick(&grid(), Qt::Key_F2); }, [this] { QTest::keyClick(&grid(), Qt::Key_Return); },
      [this] { QTest::keyClick(&grid(), Qt::Key_X); },
      [this] {
        const QPoint cell = grid().visualRect(grid().currentIndex()).center();
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, cell);
        QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, cell);
      }};
  for (const auto& act : acts) {
    if (&act != &acts[1]) wish(act);  // locked: Enter would close, the others do nothing
    unlock();
    desk->boxes.expectWindow("frmListDiszi", [](QWidget& chooser) { click(chooser, "cmdCancel"); });
    wish(act);
    QVERIFY(desk->boxes.done());
    QVERIFY(!desk->rows().isEdited());
    click(desk->window(), "cmdEdit");
  }
}

void TestFrmSchuetzeErg::enterInAFilterClosesNothing() {
  desk->open();
  press(desk->window(), "filter_Waffe_1", Qt::Key_Return);
  QVERIFY(desk->window().isVisible());
  QVERIFY(grid().hasFocus());
}

void TestFrmSchuetzeErg::keysOfTheWindow() {
  desk->open();
  QSignalSpy help(&desk->window(), &frmSchuetzeErg::helpWanted);
  QTest::keyClick(&grid(), Qt::Key_F1);
  QCOMPARE(help.count(), 1);
  QTest::keyClick(&grid(), Qt::Key_A, Qt::ControlModifier);
  QCOMPARE(grid().markedRows().size(), 5);
  QTest::keyClick(&grid(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
  QCOMPARE(grid().markedRows().size(), 0);
  // The other tab, and the keyboard in its rows.
  QTest::keyClick(&grid(), Qt::Key_Tab, Qt::ControlModifier);
  QCOMPARE(the<QTabWidget>(desk->window(), "SSTab1").currentIndex(), 1);
  QVERIFY(grid().hasFocus());
  QCOMPARE(grid().objectName(), "TDBGrid2");
  QTest::keyClick(&grid(), Qt::Key_P, Qt::ControlModifier);
  QCOMPARE(desk->current.names, QStringList("Serien"));
  QTest::keyClick(&grid(), Qt::Key_W, Qt::ControlModifier);
  QVERIFY(!desk->window().isVisible());
}

void TestFrmSchuetzeErg::manners() {
  desk->open();
  QCOMPARE(badManners(desk->window()), QStringList());
  unlock();
  QCOMPARE(badManners(desk->window()), QStringList());
}

QTEST_MAIN(TestFrmSchuetzeErg)
#include "test_frm_schuetze_erg.moc"

// What the results editor does to a competition: deleting, moving and copying; with other desks at work, and
// a store that refuses.
#include <QApplication>
#include <QCheckBox>
#include <QListWidget>
#include <QRegularExpression>
#include <QTest>

#include "evaluation/frmListDiszi.h"
#include "evaluation/result_table.h"
#include "platform/look/look.h"
#include "tests/evaluation/results_desk.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kGone =
    "Dieses Ergebnis ist inzwischen gelöscht oder in einer anderen Disziplin. Die Liste wird neu gelesen.";
const QString kDeleting = "Fehler beim Löschen des Ergebnisses!";
const QString kUpdating = "Fehler beim Updaten des Ergebnisses!";
const QString kMoveQuestion = "Gewählte Ergebnisse wirklich der neuen Disziplin zuordnen?";

}  // namespace

class TestResultActs : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { desk = std::make_unique<ResultsDesk>(); }
  void cleanup() { desk.reset(); }

  void oneResultIsDeleted();
  void theLastRowIsCurrentWhenTheLastGoes();
  void markedRowsAreDeleted();
  void oneMarkedRowIsMeant();
  void hiddenRowsStay();
  void sayingNoDeletesNothing();
  void deletingManyCanBeStopped();
  void anotherDeskWasFaster();
  void theQuestionShowsWhatIsStored();
  void aRefusedDeletion_data();
  void aRefusedDeletion();

  void movingTheCurrentRow();
  void movingMarkedRows();
  void movingUnderAnHourglass();
  void movingAllOfADiscipline();
  void copyingKeepsTheOriginals();
  void eachQuestionOfAChange_data();
  void eachQuestionOfAChange();
  void aCancelledChange();
  void aRefusedChange_data();
  void aRefusedChange();
  void aListThatBreaksOffAfterTheChange();
  void theListOfDisciplines();
  void aDisciplineThatTheListDoesntOffer();
  void aListThatCantBeRead();

  void aCompetitionThatIsGone();
  void readingThatFails();

 private:
  BoundGrid& grid() { return desk->grid(); }
  void expectDeletion(const QString& text, BoxAnswer answer = BoxAnswer::Yes) {
    desk->boxes.expect(text, answer)
        .titled("Frage")
        .with(BoxButtons::YesNo)
        .showing(BoxIcon::Question)
        .presetting(BoxAnswer::No);
  }
  /// The chooser: an entry, two ticks, OK.
  void expectChoice(const QString& entry, bool copy = false, bool all = false) {
    desk->boxes.expectWindow("frmListDiszi", [=](QWidget& chooser) {
      tick(chooser, "lstDisziplinen", entry);
      the<QCheckBox>(chooser, "chkErgCopy").setChecked(copy);
      the<QCheckBox>(chooser, "chkAllChange").setChecked(all);
      click(chooser, "cmdOK");
    });
  }
  Expectation& expectQuestion(const QString& text, BoxAnswer answer = BoxAnswer::Yes) {
    return desk->boxes.expect(text, answer)
        .titled("Hinweis")
        .with(BoxButtons::YesNo)
        .presetting(BoxAnswer::No);
  }
  QString disciplines(const QString& table) {
    QStringList rows = desk->bench.read("Select * from " + table + " order by ID", {"ID", "DisziID"});
    static const QRegularExpression assigned("^\\d{2,}");
    return rows.replaceInStrings(assigned, "new").join(" ");
  }

  std::unique_ptr<ResultsDesk> desk;
};

void TestResultActs::oneResultIsDeleted() {
  desk->open();
  desk->select(1);
  expectDeletion("Wollen Sie den Teiler: 7,5 wirklich löschen?");
  click(desk->window(), "cmdDelete");
  QCOMPARE(desk->ids("Schuss"), "1 2 3 4 5 6");
  QCOMPARE(desk->shown(result::Ergebnis), "50,5 23,5 123,4 300,1");
  QCOMPARE(desk->count(), "4 Serien");
  QCOMPARE(desk->news(), "1 Teiler gelöscht.");
  QCOMPARE(grid().currentRow(), 1);  // the row that stands there now
  desk->showSerien();
  grid().setFocus();
  expectDeletion("Wollen Sie die Serie: 391 wirklich löschen?");
  QTest::keyClick(&grid(), Qt::Key_Delete);
  QCOMPARE(desk->ids("SchussSerien"), "1 3 4");
  QCOMPARE(desk->news(), "1 Serie gelöscht.");
}

void TestResultActs::theLastRowIsCurrentWhenTheLastGoes() {
  desk->open();
  desk->select(4);
  expectDeletion("Wollen Sie den Teiler: 300,1 wirklich löschen?");
  click(desk->window(), "cmdDelete");
  QCOMPARE(grid().currentRow(), 3);
  trigger(desk->window(), "mnuEditSelAlle");
  expectDeletion("Wollen Sie die 4 Teiler wirklich löschen?");
  click(desk->window(), "cmdDelete");
  QCOMPARE(grid().currentRow(), -1);
  QCOMPARE(desk->count(), "");
  QCOMPARE(desk->ids("Schuss"), "5 6");
}

void TestResultActs::markedRowsAreDeleted() {
  desk->open();
  desk->showSerien();
  desk->select(0);
  desk->mark(1);
  expectDeletion("Wollen Sie die 2 Serien wirklich löschen?");
  click(desk->window(), "cmdDelete");
  QCOMPARE(desk->ids("SchussSerien"), "3 4");
  QCOMPARE(grid().markedRows().size(), 0);
  QCOMPARE(grid().currentRow(), 0);
  QCOMPARE(desk->ids("Schuss"), "1 2 3 4 5 6 7");
}

void TestResultActs::oneMarkedRowIsMeant() {
  desk->open();
  desk->select(1);
  desk->mark(2);
  desk->mark(1);  // takes the mark away, and stands there
  QCOMPARE(grid().currentRow(), 1);
  expectDeletion("Wollen Sie den Teiler: 23,5 wirklich löschen?");
  click(desk->window(), "cmdDelete");
  QCOMPARE(desk->ids("Schuss"), "1 3 4 5 6 7");
}

void TestResultActs::hiddenRowsStay() {
  desk->open();
  trigger(desk->window(), "mnuEditSelAlle");
  type(desk->window(), "filter_Waffe_1", "LP");
  desk->rows().waitForAll();
  expectDeletion("Wollen Sie den Teiler: 7,5 wirklich löschen?");
  click(desk->window(), "cmdDelete");
  QCOMPARE(desk->ids("Schuss"), "1 2 3 4 5 6");
  trigger(desk->window(), "mnuEditSelAlle");
  expectDeletion("Wollen Sie den Teiler: 300,1 wirklich löschen?");
  click(desk->window(), "cmdDelete");
  click(desk->window(), "cmdClearFilter");
  QCOMPARE(desk->shown(result::Ergebnis), "50,5 23,5 123,4");
}

void TestResultActs::sayingNoDeletesNothing() {
  desk->open();
  expectDeletion("Wollen Sie den Teiler: 50,5 wirklich löschen?", BoxAnswer::No);
  click(desk->window(), "cmdDelete");
  trigger(desk->window(), "mnuEditSelAlle");
  expectDeletion("Wollen Sie die 5 Teiler wirklich löschen?", BoxAnswer::No);
  click(desk->window(), "cmdDelete");
  QCOMPARE(desk->ids("Schuss"), "1 2 3 4 5 6 7");
  QCOMPARE(grid().markedRows().size(), 5);  // he may have meant to look again
}

void TestResultActs::deletingManyCanBeStopped() {
  for (int i = 0; i < 6; ++i)
    desk->bench.store().execute(
        "INSERT INTO Schuss (Ergebnis, Startnummer, DisziID) SELECT Ergebnis, Startnummer, DisziID FROM "
        "Schuss WHERE DisziID = 3 AND Startnummer = '107'");
  for (const char* how : {"cmdStop", "close"}) {
    desk->open();
    const int before = desk->rows().count();
    trigger(desk->window(), "mnuEditSelAlle");
    expectDeletion("Wollen Sie die " + QString::number(before) + " Teiler wirklich löschen?");
    bool seen = false;
    // The first rows are gone: the next turn of the event loop is the operator's.
    bool posted = false;
    const auto once = connect(&desk->rows(), &BoundRows::rowsRemoved, &desk->window(), [&] {
      if (std::exchange(posted, true)) return;
      QMetaObject::invokeMethod(
          &desk->window(),
          [&] {
            seen = the<QWidget>(desk->window(), "prgDelete").isVisible();
            QVERIFY(!the<QPushButton>(desk->window(), "cmdDelete").isEnabled());
            QVERIFY(!grid().isEnabled());
            if (QString(how) == "close")
              desk->window().close();
            else
              click(desk->window(), how);
          },
          Qt::QueuedConnection);
    });
    the<QPushButton>(desk->window(), "cmdDelete").click();
    disconnect(once);
    QVERIFY(seen);
    QVERIFY(desk->window().isVisible());
    const int left = desk->rows().count();
    QVERIFY(left > 0 && left < before);
    QCOMPARE(desk->news(), QString("%1 von %2 Teiler gelöscht; die Liste zeigt, was noch da ist.")
                               .arg(before - left)
                               .arg(before));
    QVERIFY(!the<QPushButton>(desk->window(), "cmdStop").isVisible());
    QVERIFY(the<QPushButton>(desk->window(), "cmdDelete").isEnabled());
  }
  trigger(desk->window(), "mnuEditSelAlle");
  expectDeletion("Wollen Sie die " + QString::number(desk->rows().count()) + " Teiler wirklich löschen?");
  click(desk->window(), "cmdDelete");
  QCOMPARE(desk->rows().count(), 0);
  QCOMPARE(desk->ids("Schuss"), "5 6");
}

void TestResultActs::anotherDeskWasFaster() {
  desk->open();
  // One row: deleted there, or moved there to another discipline.
  for (const char* act :
       {"DELETE * FROM Schuss WHERE ID = 4", "UPDATE Schuss SET DisziID = 777 WHERE ID = 7"}) {
    desk->select(0);
    desk->other().execute(act);
    desk->boxes.expect(kGone).titled("Hinweis");
    click(desk->window(), "cmdDelete");
    QVERIFY(desk->boxes.done());
  }
  QCOMPARE(desk->shown(result::Ergebnis), "23,5 123,4 300,1");
  desk->other().execute("UPDATE Schuss SET DisziID = 777 WHERE ID = 2");
  desk->select(0);
  desk->boxes.expect(kGone);
  click(desk->window(), "cmdChangeDiszi");
  QCOMPARE(desk->shown(result::Ergebnis), "123,4 300,1");
  // Among marked ones: what was moved there is neither moved nor deleted here.
  trigger(desk->window(), "mnuEditSelAlle");
  desk->other().execute("UPDATE Schuss SET DisziID = 777 WHERE ID = 1");
  desk->grid().selectionModel()->setCurrentIndex(desk->rows().index(1, 0), QItemSelectionModel::NoUpdate);
  expectChoice("LG Ring-Teiler");
  expectQuestion(kMoveQuestion);
  click(desk->window(), "cmdChangeDiszi");
  QCOMPARE(disciplines("Schuss"), "1|777 2|777 3|5 5|3 6|777 7|777");
  desk->other().execute("UPDATE Schuss SET DisziID = 3 WHERE ID = 1");
  desk->other().execute("UPDATE Schuss SET DisziID = 4 WHERE ID = 3");
  click(desk->window(), "cmdClearFilter");
  desk->rows().waitForAll();
  desk->other().execute("UPDATE Schuss SET DisziID = 4 WHERE ID = 1");
  trigger(desk->window(), "mnuEditSelAlle");
  expectDeletion("Wollen Sie die 2 Teiler wirklich löschen?");
  click(desk->window(), "cmdDelete");
  QCOMPARE(desk->news(), "1 von 2 Teiler gelöscht; die Liste zeigt, was noch da ist.");
  QCOMPARE(desk->ids("Schuss"), "1 2 5 6 7");
  QCOMPARE(desk->shown(result::Ergebnis), "123,4");
}

void TestResultActs::theQuestionShowsWhatIsStored() {
  desk->open();
  desk->other().execute("UPDATE Schuss SET Ergebnis = 51.5 WHERE ID = 4");
  expectDeletion("Wollen Sie den Teiler: 51,5 wirklich löschen?", BoxAnswer::No);
  click(desk->window(), "cmdDelete");
  QCOMPARE(desk->rows().index(0, result::Ergebnis).data().toString(), "51,5");
}

void TestResultActs::aRefusedDeletion_data() {
  QTest::addColumn<int>("answer");
  QTest::addColumn<QString>("left");
  QTest::addColumn<QString>("news");
  QTest::newRow("abort") << int(BoxAnswer::Abort) << "1 2 3 5 6"
                         << "2 von 5 Teiler gelöscht; die Liste zeigt, was noch da ist.";
  QTest::newRow("ignore") << int(BoxAnswer::Ignore) << "2 5 6"
                          << "4 von 5 Teiler gelöscht; die Liste zeigt, was noch da ist.";
}

void TestResultActs::aRefusedDeletion() {
  QFETCH(int, answer);
  QFETCH(QString, left);
  QFETCH(QString, news);
  refuse(desk->bench.path("Pokal.qkk"), StoreAct::Delete, "Schuss", "ID", 2);
  const Error error =
      Workbench::failureOf([this] { desk->other().execute("DELETE * FROM Schuss WHERE ID = 2"); });
  desk->open();
  trigger(desk->window(), "mnuEditSelAlle");
  expectDeletion("Wollen Sie die 5 Teiler wirklich löschen?");
  desk->expectError(error, kDeleting, BoxAnswer::Retry);
  desk->expectError(error, kDeleting, BoxAnswer(answer));
  click(desk->window(), "cmdDelete");
  QVERIFY(desk->boxes.done());
  QCOMPARE(desk->ids("Schuss"), left);
  QCOMPARE(desk->news(), news);
}

void TestResultActs::movingTheCurrentRow() {
  desk->open();
  desk->select(1);
  expectChoice("LP Teiler");
  expectQuestion(kMoveQuestion);
  click(desk->window(), "cmdChangeDiszi");
  QCOMPARE(disciplines("Schuss"), "1|3 2|3 3|4 4|5 5|3 6|777 7|4");
  QCOMPARE(desk->news(), "1 Teiler verschoben nach LP Teiler.");
  // The selection stays on it, wherever it stands now.
  QCOMPARE(desk->shown(result::Ergebnis), "50,5 23,5 123,4 7,5 300,1");
  QCOMPARE(grid().currentRow(), 3);
  desk->showSerien();
  desk->select(2);
  expectChoice("LG Meister");
  expectQuestion(kMoveQuestion);
  click(desk->window(), "cmdChangeDiszi");
  QCOMPARE(disciplines("SchussSerien"), "1|1 2|1 3|1 4|1");
  QCOMPARE(disciplines("Schuss"), "1|3 2|3 3|4 4|5 5|3 6|777 7|4");
}

void TestResultActs::movingMarkedRows() {
  desk->open();
  desk->select(0);
  desk->mark(2);
  desk->mark(4);
  expectChoice("LP Teiler");
  expectQuestion(kMoveQuestion);
  click(desk->window(), "cmdChangeDiszi");
  QCOMPARE(disciplines("Schuss"), "1|3 2|4 3|4 4|4 5|3 6|777 7|3");
  QCOMPARE(desk->news(), "3 Teiler verschoben nach LP Teiler.");
}

void TestResultActs::movingUnderAnHourglass() {
  desk->open();
  desk->select(0);
  desk->mark(1);
  desk->mark(2);
  // Each row is read anew: the current one before anything is chosen, the marked ones after the question.
  QList<bool> hourglasses;
  const auto reading = connect(&desk->rows(), &BoundRows::dataChanged, &desk->window(), [&] {
    const QCursor* cursor = QApplication::overrideCursor();
    hourglasses << (cursor && cursor->shape() == Qt::WaitCursor);
  });
  expectChoice("LP Teiler");
  expectQuestion(kMoveQuestion).during([] { QVERIFY(!QApplication::overrideCursor()); });
  click(desk->window(), "cmdChangeDiszi");
  disconnect(reading);
  QCOMPARE(hourglasses, QList<bool>({false, true, true, true}));
  QVERIFY(!QApplication::overrideCursor());
}

void TestResultActs::movingAllOfADiscipline() {
  desk->open();
  desk->showSerien();
  type(desk->window(), "filter_Ergebnis_2", "380");
  desk->rows().waitForAll();
  expectChoice("LG Zehntel", false, true);
  expectQuestion("Alle Ergebnisse des Schützen wirklich der neuen Disziplin zuordnen?");
  click(desk->window(), "cmdChangeDiszi");
  // All of that discipline, hidden ones too; not those of another shooter, nor any teiler.
  QCOMPARE(disciplines("SchussSerien"), "1|2 2|2 3|2 4|1");
  QCOMPARE(disciplines("Schuss"), "1|3 2|3 3|4 4|5 5|3 6|777 7|3");
  QCOMPARE(desk->news(), "2 Serien verschoben nach LG Zehntel.");
  QCOMPARE(desk->shown(result::Ergebnis), "380");
}

void TestResultActs::copyingKeepsTheOriginals() {
  desk->open();
  desk->select(3);
  expectChoice("LP Teiler", true);
  expectQuestion("Gewählte Ergebnisse wirklich in die neue Disziplin kopieren?");
  click(desk->window(), "cmdChangeDiszi");
  QCOMPARE(disciplines("Schuss"), "1|3 2|3 3|4 4|5 5|3 6|777 7|3 new|4");
  QCOMPARE(desk->stored("Schuss", desk->ids("Schuss", "ID > 7").toInt()), "123,4|LG|20.11.2026 10:41:07|4");
  QCOMPARE(desk->news(), "1 Teiler kopiert nach LP Teiler.");
  QCOMPARE(desk->count(), "6 Serien");
  QCOMPARE(grid().currentRow(), 3);  // the original
}

void TestResultActs::eachQuestionOfAChange_data() {
  QTest::addColumn<bool>("copy");
  QTest::addColumn<bool>("all");
  for (const bool copy : {false, true})
    for (const bool all : {false, true})
      QTest::addRow("%s %s", copy ? "copy" : "move", all ? "all" : "chosen") << copy << all;
}

void TestResultActs::eachQuestionOfAChange() {
  QFETCH(bool, copy);
  QFETCH(bool, all);
  desk->open();
  const QStringList before = desk->everything();
  expectChoice("LP Teiler", copy, all);
  expectQuestion(changeQuestion({.bCopy = copy, .bChangeAll = all}), BoxAnswer::No);
  click(desk->window(), "cmdChangeDiszi");
  QVERIFY(desk->boxes.done());
  QCOMPARE(desk->everything(), before);
}

void TestResultActs::aCancelledChange() {
  desk->open();
  const QStringList before = desk->everything();
  desk->boxes.expectWindow("frmListDiszi", [](QWidget& chooser) { click(chooser, "cmdCancel"); });
  click(desk->window(), "cmdChangeDiszi");
  desk->boxes.expectWindow("frmListDiszi",
                           [](QWidget& chooser) { press(chooser, "lstDisziplinen", Qt::Key_Escape); });
  click(desk->window(), "cmdChangeDiszi");
  QVERIFY(desk->boxes.done());
  QCOMPARE(desk->everything(), before);
}

void TestResultActs::aRefusedChange_data() {
  QTest::addColumn<bool>("copy");
  QTest::newRow("move") << false;
  QTest::newRow("copy") << true;
}

void TestResultActs::aRefusedChange() {
  QFETCH(bool, copy);
  const QString path = desk->bench.path("Pokal.qkk");
  copy ? refuse(path, StoreAct::Insert, "Schuss", "DisziID", 4)
       : refuse(path, StoreAct::Update, "Schuss", "ID", 2);
  const Error error = Workbench::failureOf([&] {
    desk->other().execute(copy ? "INSERT INTO Schuss (DisziID) VALUES (4)"
                               : "UPDATE Schuss SET DisziID = 4 WHERE ID = 2");
  });
  desk->open();
  const QStringList before = desk->everything();
  for (const BoxAnswer answer : {BoxAnswer::Abort, BoxAnswer::Ignore}) {
    desk->select(2);
    expectChoice("LP Teiler", copy, true);
    expectQuestion(changeQuestion({.bCopy = copy, .bChangeAll = true}));
    desk->expectError(error, kUpdating, BoxAnswer::Retry);
    desk->expectError(error, kUpdating, answer);
    click(desk->window(), "cmdChangeDiszi");
    QVERIFY(desk->boxes.done());
    QCOMPARE(desk->everything(), before);
    QCOMPARE(grid().currentRow(), 2);
    QCOMPARE(desk->news(), answer == BoxAnswer::Abort
                               ? QString()
                               : QString("0 Teiler %1 nach LP Teiler.").arg(copy ? "kopiert" : "verschoben"));
  }
}

void TestResultActs::aListThatBreaksOffAfterTheChange() {
  desk->open();
  expectChoice("LP Teiler", false, true);
  expectQuestion(changeQuestion({.bChangeAll = true})).during([this] {
    const Error error = desk->breakListing();
    desk->expectError(error, kUpdating, BoxAnswer::Ignore);  // reading the rows
    desk->expectError(error, kUpdating, BoxAnswer::Ignore);  // looking for the current one
  });
  click(desk->window(), "cmdChangeDiszi");
  QVERIFY(desk->boxes.done());
  QCOMPARE(disciplines("Schuss"), "1|3 2|3 3|4 4|4 5|3 6|777 7|3");
  QCOMPARE(desk->news(), "1 Teiler verschoben nach LP Teiler.");
}

void TestResultActs::theListOfDisciplines() {
  desk->open();
  const auto entries = [](QWidget& chooser) {
    auto& list = the<QListWidget>(chooser, "lstDisziplinen");
    QStringList texts;
    for (int i = 0; i < list.count(); ++i) texts << list.item(i)->text();
    return texts.join(", ") + ": " + (list.currentItem() ? list.currentItem()->text() : "none");
  };
  desk->select(1);
  desk->boxes.expectWindow("frmListDiszi", [&](QWidget& chooser) {
    QCOMPARE(chooser.windowTitle(), "Disziplinen");
    QCOMPARE(entries(chooser), "LG Teiler, LP Teiler, LG Ring-Teiler: LG Teiler");
    QCOMPARE(the<QCheckBox>(chooser, "chkErgCopy").text().remove('&'), "Ergebniss(e) kopieren");
    QCOMPARE(the<QCheckBox>(chooser, "chkAllChange").text().remove('&'),
             "Alle Ergebnisse der Disziplin wechseln");
    QVERIFY(!the<QCheckBox>(chooser, "chkErgCopy").isChecked());
    QVERIFY(!the<QCheckBox>(chooser, "chkAllChange").isChecked());
    QCOMPARE(badManners(chooser), QStringList());
    click(chooser, "cmdCancel");
  });
  click(desk->window(), "cmdChangeDiszi");
  desk->showSerien();
  desk->boxes.expectWindow("frmListDiszi", [&](QWidget& chooser) {
    QCOMPARE(entries(chooser), "LG Meister, LG Zehntel: LG Meister");
    click(chooser, "cmdCancel");
  });
  click(desk->window(), "cmdChangeDiszi");

  frmListDiszi chooser(desk->bench.TestWorkplace::workplace(desk->messageBoxes), desk->bench.store());
  chooser.setTeiler(true);
  chooser.setId(4);
  chooser.setChangeAll(true);
  chooser.show();
  QVERIFY(the<QCheckBox>(chooser, "chkAllChange").isChecked());
  the<QCheckBox>(chooser, "chkErgCopy").setChecked(true);
  click(chooser, "cmdOK");
  QCOMPARE(chooser.lId(), 4);
  QVERIFY(chooser.bCopy() && chooser.bChangeAll());
  // An empty list gives 0.
  desk->bench.store().execute("DELETE * FROM Disziplin");
  chooser.show();
  click(chooser, "cmdOK");
  QCOMPARE(chooser.lId(), 0);
}

void TestResultActs::aDisciplineThatTheListDoesntOffer() {
  desk->bench.store().execute("UPDATE SchussSerien SET DisziID = 6 WHERE ID = 2");
  desk->open();
  desk->showSerien();
  desk->select(0);
  QCOMPARE(desk->rows().index(0, result::Disziplin).data().toString(), "Ehrenscheibe");
  desk->boxes.expectWindow("frmListDiszi", [](QWidget& chooser) {
    auto& list = the<QListWidget>(chooser, "lstDisziplinen");
    const auto& ok = the<QPushButton>(chooser, "cmdOK");
    QVERIFY(list.selectedItems().isEmpty());
    QVERIFY(!ok.isEnabled());
    press(chooser, "lstDisziplinen", Qt::Key_Return);
    QVERIFY(chooser.isVisible());
    press(chooser, "lstDisziplinen", Qt::Key_Home);
    press(chooser, "lstDisziplinen", Qt::Key_Space);
    QVERIFY(ok.isEnabled());
    list.clearSelection();
    QVERIFY(!ok.isEnabled());
    tick(chooser, "lstDisziplinen", "LG Zehntel");
    press(chooser, "lstDisziplinen", Qt::Key_Return);
    QVERIFY(!chooser.isVisible());
  });
  expectQuestion(kMoveQuestion);
  click(desk->window(), "cmdChangeDiszi");
  QCOMPARE(disciplines("SchussSerien"), "1|1 2|2 3|2 4|1");
}

void TestResultActs::aListThatCantBeRead() {
  desk->open();
  const QStringList before = desk->everything();
  frmListDiszi chooser(desk->bench.TestWorkplace::workplace(desk->messageBoxes), desk->bench.store());
  desk->bench.store().dropTable("Disziplin");
  const Error error =
      Workbench::failureOf([this] { desk->bench.store().openRecordset("Select * from Disziplin"); });
  desk->expectError(error, "Fehler beim Ladend der Disziplinen.", BoxAnswer::Retry);
  desk->expectError(error, "Fehler beim Ladend der Disziplinen.", BoxAnswer::Abort);
  chooser.setId(3);
  chooser.show();
  QVERIFY(desk->boxes.done());
  click(chooser, "cmdOK");
  QCOMPARE(chooser.lId(), 0);
  QCOMPARE(desk->everything(), before);
}

void TestResultActs::aCompetitionThatIsGone() {
  frmSchuetzeErg& window = desk->make();
  window.setWettkampf(desk->bench.path("fehlt.qkk"));
  const Error error(3024);
  desk->expectError(error, "Fehler beim Suchen der Startnummer!", BoxAnswer::Retry);
  desk->expectError(error, "Fehler beim Suchen der Startnummer!", BoxAnswer::Abort);
  QVERIFY(!window.LoadSchuetzen());
  desk->expectError(error, "Fehler beim Suchen der Startnummer!", BoxAnswer::Ignore);
  QVERIFY(window.LoadSchuetzen());
  desk->expectError(error, "Fehler beim Laden der Ergebnisse!", BoxAnswer::Abort);
  QVERIFY(!window.LoadErgebnisse());
  desk->expectError(error, "Fehler beim Laden der Ergebnisse!", BoxAnswer::Ignore);
  QVERIFY(!window.LoadErgebnisse());
  // Nothing of it falls over what isn't there.
  window.show();
  type(window, "filter_Waffe_1", "L");
  desk->clickTitle(result::Datum);
  for (const char* name : {"cmdDelete", "cmdChangeDiszi", "cmdEdit", "cmdClearFilter"}) click(window, name);
  trigger(window, "mnuEditSelAlle");
  QVERIFY(desk->boxes.done());
}

void TestResultActs::readingThatFails() {
  frmSchuetzeErg& window = desk->make();
  QVERIFY(window.LoadSchuetzen());
  desk->bench.store().dropTable("SchussSerien");
  const Error error =
      Workbench::failureOf([this] { desk->bench.store().openRecordset("Select * from SchussSerien"); });
  desk->expectError(error, "Fehler beim Laden der Ergebnisse!", BoxAnswer::Retry);
  desk->expectError(error, "Fehler beim Laden der Ergebnisse!", BoxAnswer::Ignore);
  QVERIFY(window.LoadErgebnisse());
  window.show();
  QCOMPARE(desk->shown(result::Ergebnis), "50,5 7,5 23,5 123,4 300,1");
  desk->showSerien();
  QCOMPARE(desk->rows().count(), 0);
  desk->expectError(error, "Fehler beim Laden der Ergebnisse!", BoxAnswer::Abort);
  type(window, "filter_Waffe_2", "L");
  QVERIFY(desk->boxes.done());
  // Rows of a former query don't stand there for a new one.
  the<QTabWidget>(window, "SSTab1").setCurrentIndex(0);
  desk->bench.store().dropTable("Schuss");
  const Error gone =
      Workbench::failureOf([this] { desk->bench.store().openRecordset("Select * from Schuss"); });
  desk->expectError(gone, "Fehler beim Laden der Ergebnisse!", BoxAnswer::Abort);
  type(window, "filter_Waffe_1", "L");
  QVERIFY(desk->boxes.done());
  QCOMPARE(desk->rows().count(), 0);
}

QTEST_MAIN(TestResultActs)
#include "test_result_acts.moc"

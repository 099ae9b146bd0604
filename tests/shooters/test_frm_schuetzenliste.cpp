// The list of shooters on its real window.
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTest>
#include <memory>

#include "platform/dao/recordset.h"
#include "platform/dao/rows/list_pace.h"
#include "platform/grid/bound_rows.h"
#include "platform/look/look.h"
#include "platform/runtime/error.h"
#include "shooters/frmSchuetzenListe.h"
#include "tests/shooters/competition.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFrmSchuetzenListe : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    place = std::make_unique<TestWorkplace>();
    database = newCompetition(place->path("Wettkampf.qkk"));
  }
  void cleanup() {
    dialog.reset();
    database.reset();
    place.reset();
  }

  void startNumbersSortByTheirValue();
  void onlySevenColumnsAreShown();
  void noShootersAreToldOnTheEmptyList();
  void theFirstRowAndTheSearchFieldAreReady();
  void whoComesBackToOneShooterSearches();
  void aPartOfTheNameMatchesAnywhere();
  void theEmptyFieldShowsAllAgain();
  void aQuoteBreaksTheQuery();
  void aDoubledQuoteFindsTheName();
  void arrowsWalkFromTheSearchField();
  void okTakesTheSelectedRow();
  void enterChooses();
  void aDoubleClickChooses();
  void cancellingChoosesNothing_data();
  void cancellingChoosesNothing();
  void okWithoutAMatchChoosesNothing();
  void aMissingFileIsReported();
  void theLastOfManyCanBeChosen();
  void enterChoosesFromTheListThatComes();
  void arrowsWalkTheListThatComes();
  void theWindowLivesWhileAKeyWaits_data();
  void theWindowLivesWhileAKeyWaits();
  void aKeyDoesNotWaitForAllRows();
  void aSearchThatComesFirstIsNoOccasionForTheNote();
  void manners();

 private:
  void open(const QString& file = "Wettkampf.qkk") {
    dialog = std::make_unique<frmSchuetzenListe>(place->workplace());
    dialog->setWettkampf(place->path(file));
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    rows().waitForAll();
  }
  BoundRows& rows() { return *dialog->findChild<BoundRows*>(); }
  void addSome() {
    addRow(*database, "Verein", {{"ID", 1}, {"Name", "SV Ährenfeld"}, {"Kurzname", "Ähr"}});
    addRow(*database, "Mannschaften", {{"ID", 7}, {"MannName", "Ährenfeld I"}});
    addShooter(*database, {1, "10", "Müller, Jörg", 1, 7});
    addShooter(*database, {2, "2a", "Ärmel, Ute"});
    addShooter(*database, {3, "A1", "Schmüller, Änne"});
    addShooter(*database, {4, "107", "Weiß, Inge", 1});
  }
  /// Shooters 1 to count, whose start numbers run the other way.
  void addMany(int count) {
    database->execute("INSERT INTO Schützen (ID, Startnummer, Name) VALUES (1, '" + QString::number(count) +
                      "', 'Schütze 1')");
    for (int filled = 1; filled < count; filled *= 2)
      database->execute(QString("INSERT INTO Schützen (ID, Startnummer, Name) SELECT ID + %1, "
                                "%2 - ID - %1 & '', 'Schütze ' & (ID + %1) FROM Schützen WHERE ID + %1 <= %3")
                            .arg(filled)
                            .arg(count + 1)
                            .arg(count));
  }
  /// Many shooters, and the text of a search for numbers 1 and 2 among them that takes far longer than any
  /// patience: nearly each beginning of each name fits nearly to its end.
  QString addSlow() {
    constexpr int kName = 50;
    addMany(100'000);
    const QString text = QString("a").repeated(kName / 2) + "b";
    database->execute("UPDATE Schützen SET Name = '" + QString("a").repeated(kName) + "'");
    database->execute("UPDATE Schützen SET Name = '" + text + "' WHERE Startnummer IN ('1', '2')");
    return text;
  }
  QTableView& list() { return the<QTableView>(*dialog, "VSFlexGrid1"); }
  QLineEdit& search() { return the<QLineEdit>(*dialog, "txtSuchname"); }
  QStringList numbers() {
    rows().waitForAll();
    QStringList result;
    for (int row = 0; row < list().model()->rowCount(); ++row)
      result.append(list().model()->index(row, 1).data().toString());
    return result;
  }
  static QString failureOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const Error& error) {
      return QString("Fehler: %1 - %2\n").arg(error.number()).arg(error.description());
    }
    return "kein Fehler";
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> database;
  std::unique_ptr<frmSchuetzenListe> dialog;
};

void TestFrmSchuetzenListe::startNumbersSortByTheirValue() {
  addSome();
  open();
  QCOMPARE(dialog->windowTitle(), "Schützenliste");
  QCOMPARE(the<QLabel>(*dialog, "lblSuchname").text().remove('&'), "Schützenname");
  QCOMPARE(the<QPushButton>(*dialog, "cmdOK").text(), "&OK");
  QCOMPARE(the<QPushButton>(*dialog, "cmdCancel").text(), "&Abbrechen");
  QCOMPARE(numbers(), (QStringList{"A1", "2a", "10", "107"}));
}

void TestFrmSchuetzenListe::onlySevenColumnsAreShown() {
  addSome();
  open();
  QList<int> shown;
  for (int column = 0; column < list().model()->columnCount(); ++column)
    if (!list().isColumnHidden(column)) shown.append(column);
  QCOMPARE(shown, (QList<int>{1, 4, 12, 25, 26, 27, 29}));
  QVERIFY(list().verticalHeader()->isHidden());  // row numbers would be taken for start numbers
  QStringList cells;
  for (const int column : shown) cells.append(list().model()->index(2, column).data().toString());
  QCOMPARE(cells, (QStringList{"10", "Müller, Jörg", "04.03.1980", "SV Ährenfeld", "Ährenfeld I", "", "A1"}));
}

void TestFrmSchuetzenListe::noShootersAreToldOnTheEmptyList() {
  bool visible = false;
  place->dialogs.expect("Es sind noch keine Schützen im Wettkampf erfasst!").titled("Hinweis").during([&] {
    visible = dialog->isVisible();
  });
  open();
  QTRY_VERIFY(place->dialogs.done());
  QVERIFY(visible);
  QVERIFY(dialog->isVisible());
  QCOMPARE(list().model()->rowCount(), 0);
  // A search that finds nothing is no occasion for the note.
  type(*dialog, "txtSuchname", "x");
}

void TestFrmSchuetzenListe::theFirstRowAndTheSearchFieldAreReady() {
  addSome();
  open();
  QVERIFY(search().hasFocus());
  QCOMPARE(list().currentIndex().row(), 0);
  QVERIFY(list().selectionModel()->isRowSelected(0));
}

void TestFrmSchuetzenListe::whoComesBackToOneShooterSearches() {
  addShooter(*database, {1, "10", "Müller, Jörg"});
  open();
  list().setFocus();
  QVERIFY(!search().hasFocus());
  QEvent back(QEvent::WindowActivate);
  QCoreApplication::sendEvent(dialog.get(), &back);
  QVERIFY(search().hasFocus());
}

void TestFrmSchuetzenListe::aPartOfTheNameMatchesAnywhere() {
  addSome();
  open();
  type(*dialog, "txtSuchname", "müller");
  QCOMPARE(numbers(), (QStringList{"A1", "10"}));
  QCOMPARE(the<QLabel>(*dialog, "lblAnzahl").text(), "2 Schützen");
  type(*dialog, "txtSuchname", "Inge");
  QCOMPARE(numbers(), QStringList{"107"});
  QCOMPARE(the<QLabel>(*dialog, "lblAnzahl").text(), "1 Schütze");
  // It is the shooter's name that counts, not the club's.
  type(*dialog, "txtSuchname", "Ährenfeld");
  QCOMPARE(numbers(), QStringList());
}

void TestFrmSchuetzenListe::theEmptyFieldShowsAllAgain() {
  addSome();
  open();
  type(*dialog, "txtSuchname", "Inge");
  search().clear();
  QCOMPARE(numbers(), (QStringList{"A1", "2a", "10", "107"}));
}

void TestFrmSchuetzenListe::aQuoteBreaksTheQuery() {
  addSome();
  open();
  type(*dialog, "txtSuchname", "Inge");
  const QString failure = failureOf([this] {
    database->openRecordset(
        "Select * from Schützenliste WHERE Schützen.Name like '*O'*' order by val(Startnummer)");
  });
  const QString hint = "Ein Hochkomma im Namen bitte doppelt eingeben: O''Con findet O'Connor.";
  place->dialogs.expect(failure + "Fehler bei txtSuchname_Change_err!\n" + hint, BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore)
      .showing(BoxIcon::Exclamation);
  search().setText("O'");
  QVERIFY(place->dialogs.done());
  // What stood there before was found for another text.
  QCOMPARE(numbers(), QStringList());
  QCOMPARE(the<QLabel>(*dialog, "lblAnzahl").text(), hint);
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sStartnummer(), QString());
}

void TestFrmSchuetzenListe::aDoubledQuoteFindsTheName() {
  addSome();
  database->execute("UPDATE Schützen SET Name = 'O''Connor Inge' WHERE Startnummer = '107'");
  open();
  place->dialogs.expect(
      failureOf([this] {
        database->openRecordset(
            "Select * from Schützenliste WHERE Schützen.Name like '*O'*' order by "
            "val(Startnummer)");
      }) + "Fehler bei txtSuchname_Change_err!\nEin Hochkomma im Namen bitte doppelt eingeben: "
           "O''Con findet O'Connor.",
      BoxAnswer::Ignore);
  search().setText("O'");
  QCOMPARE(numbers(), QStringList());
  search().setText("O''C");
  QCOMPARE(numbers(), QStringList{"107"});
}

void TestFrmSchuetzenListe::arrowsWalkFromTheSearchField() {
  addSome();
  open();
  QTest::keyClick(&search(), Qt::Key_Down);
  QTest::keyClick(&search(), Qt::Key_Down);
  QCOMPARE(list().currentIndex().row(), 2);
  QTest::keyClick(&search(), Qt::Key_Up);
  QCOMPARE(list().currentIndex().row(), 1);
  QVERIFY(search().hasFocus());
}

void TestFrmSchuetzenListe::okTakesTheSelectedRow() {
  addSome();
  open();
  const QPoint third = list().visualRect(list().model()->index(2, 4)).center();
  QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, third);
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sStartnummer(), "10");
  QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void TestFrmSchuetzenListe::enterChooses() {
  addSome();
  open();
  type(*dialog, "txtSuchname", "müller");
  QTest::keyClick(&search(), Qt::Key_Down);
  QTest::keyClick(&search(), Qt::Key_Return);
  QCOMPARE(dialog->sStartnummer(), "10");
  QVERIFY(!dialog->isVisible());
}

void TestFrmSchuetzenListe::aDoubleClickChooses() {
  addSome();
  open();
  const QPoint fourth = list().visualRect(list().model()->index(3, 1)).center();
  QTest::mouseDClick(dialog->windowHandle(), Qt::LeftButton, {},
                     list().viewport()->mapTo(dialog.get(), fourth));
  QCOMPARE(dialog->sStartnummer(), "107");
  QVERIFY(!dialog->isVisible());
}

void TestFrmSchuetzenListe::cancellingChoosesNothing_data() {
  QTest::addColumn<QString>("by");
  for (const char* way : {"cmdCancel", "mnuDateiCancel", "Esc", "close"}) QTest::newRow(way) << way;
}

void TestFrmSchuetzenListe::cancellingChoosesNothing() {
  QFETCH(QString, by);
  addSome();
  open();
  QTest::keyClick(&search(), Qt::Key_Down);
  if (by == "cmdCancel") click(*dialog, by);
  if (by == "mnuDateiCancel") trigger(*dialog, by);
  if (by == "Esc") QTest::keyClick(&search(), Qt::Key_Escape);
  if (by == "close") dialog->close();
  QVERIFY(!dialog->isVisible());
  QCOMPARE(dialog->sStartnummer(), "");
}

void TestFrmSchuetzenListe::okWithoutAMatchChoosesNothing() {
  addSome();
  open();
  type(*dialog, "txtSuchname", "gibt es nicht");
  click(*dialog, "cmdOK");
  QVERIFY(!dialog->isVisible());
  QCOMPARE(dialog->sStartnummer(), "");
}

void TestFrmSchuetzenListe::aMissingFileIsReported() {
  const QString failure = failureOf([this] { dao::Database::open(place->path("fehlt.qkk")); });
  place->dialogs.expect(failure + "Fehler bei Form_Load_err!", BoxAnswer::Abort);
  open("fehlt.qkk");
  QVERIFY(place->dialogs.done());
  search().setText("x");
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sStartnummer(), "");
}

void TestFrmSchuetzenListe::theLastOfManyCanBeChosen() {
  addMany(300);
  open();
  QCOMPARE(list().model()->rowCount(), 300);
  list().setFocus();
  QTest::keyClick(&list(), Qt::Key_End, Qt::ControlModifier);
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sStartnummer(), "300");
}

void TestFrmSchuetzenListe::enterChoosesFromTheListThatComes() {
  addMany(20000);
  open();
  search().setText("Schütze 12345");
  QTest::keyClick(&search(), Qt::Key_Return);
  QTRY_VERIFY(!dialog->isVisible());
  QCOMPARE(dialog->sStartnummer(), "7656");
}

void TestFrmSchuetzenListe::arrowsWalkTheListThatComes() {
  addMany(20000);
  open();
  search().setText("Schütze 1234");  // with 12340 to 12349, sorted from the greatest on
  QTest::keyClick(&search(), Qt::Key_Down);
  QTest::keyClick(&search(), Qt::Key_Return);
  QTRY_VERIFY(!dialog->isVisible());
  QCOMPARE(dialog->sStartnummer(), QString::number(20001 - 12348));
}

void TestFrmSchuetzenListe::theWindowLivesWhileAKeyWaits_data() {
  QTest::addColumn<int>("key");
  QTest::addColumn<QString>("chosen");
  QTest::newRow("Enter") << int(Qt::Key_Return) << "2";
  QTest::newRow("Esc") << int(Qt::Key_Escape) << "";
  QTest::newRow("another search") << int(Qt::Key_X) << "";
}

void TestFrmSchuetzenListe::theWindowLivesWhileAKeyWaits() {
  QFETCH(int, key);
  QFETCH(QString, chosen);
  const QString slow = addSlow();
  open();
  search().setText(slow);
  QTest::keyClick(&search(), Qt::Key_Down);
  QTest::keyClick(&search(), Qt::Key_Return);
  // Counted before it has any, the list loses no key.
  Q_EMIT rows().counted();
  QCoreApplication::processEvents();
  QCOMPARE(rows().count(), 0);
  QVERIFY(dialog->isVisible());
  QCOMPARE(the<QLabel>(*dialog, "lblAnzahl").text(), "Wird sortiert…");
  if (key == Qt::Key_Escape) QTest::keyClick(&search(), Qt::Key_Escape);
  if (key == Qt::Key_X) {
    // What waited was for the search before.
    search().setText("gibt es nicht");
    QVERIFY(rows().waitForAll());
    QCoreApplication::processEvents();
    QVERIFY(dialog->isVisible());
    dialog->reject();
  }
  QTRY_VERIFY(!dialog->isVisible());
  QCOMPARE(dialog->sStartnummer(), chosen);
}

void TestFrmSchuetzenListe::aKeyDoesNotWaitForAllRows() {
  addMany(20000);
  open();
  const QScopedValueRollback noPatience(dao::listPace().firstRows, 0);
  search().setText("Schütze");
  QTest::keyClick(&search(), Qt::Key_Down);
  QCOMPARE(rows().count(), 0);
  int rowOfThePart = -1;
  connect(&rows(), &BoundRows::counted, dialog.get(), [&] {
    if (rowOfThePart >= 0 || rows().count() == 0 || rows().isComplete()) return;
    // Behind what the window has set off with the same news.
    QTimer::singleShot(0, dialog.get(), [&] {
      if (rowOfThePart < 0 && !rows().isComplete()) rowOfThePart = list().currentIndex().row();
    });
  });
  QTRY_VERIFY(rows().isComplete());
  QCOMPARE(rowOfThePart, 1);
}

void TestFrmSchuetzenListe::aSearchThatComesFirstIsNoOccasionForTheNote() {
  addSome();
  dialog = std::make_unique<frmSchuetzenListe>(place->workplace());
  dialog->setWettkampf(place->path("Wettkampf.qkk"));
  dialog->show();
  search().setText("gibt es nicht");
  QVERIFY(rows().waitForAll());
  QCoreApplication::processEvents();
  QCOMPARE(the<QLabel>(*dialog, "lblAnzahl").text(), "0 Schützen");
}

void TestFrmSchuetzenListe::manners() {
  addSome();
  open();
  QCOMPARE(badManners(*dialog), QStringList());
}

QTEST_MAIN(TestFrmSchuetzenListe)
#include "test_frm_schuetzenliste.moc"

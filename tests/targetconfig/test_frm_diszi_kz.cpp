// The discipline keys on their real window and a real store.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "app/ground/global_variablen.h"
#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/look/look.h"
#include "platform/schema/schema_build.h"
#include "targetconfig/frmDisziKZ.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kWarning = "Das Bearbeiten des Standardvorlage ist derzeit nicht möglich!";
const QString kEditFailed = "Fehler beim Bearbeiten der Disziplinen!";
enum Column { Name, Key, Target, Factor, Shown, Preset };

}  // namespace

class TestFrmDisziKZ : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init();
  void cleanup();

  void showsTheTableInItsOrder();
  void aRowIsStoredWhenItIsLeft();
  void closingStoresTheRow();
  void closingStoresWhatIsStillTyped();
  void anEmptiedCellIsNull();
  void yesAndNoAreTicks();
  void nonsenseIsNoNumber();
  void aFailedStoreLosesNothing();
  void allAreHiddenAndShown();
  void aRowThatCantBeHiddenIsReported();
  void hidingStoresTheEditedRowFirst();
  void anEmptyTableStaysEmpty();
  void choosingReturnsTheRow();
  void choosingWithTheMouse();
  void editingChoosesNothing();
  void choosingNothing();
  void choosingARowThatIsGone();
  void nothingToChooseFrom();
  void theTemplateWarns();
  void theTemplateWarnsWhenChoosingToo();
  void aMissingDatabaseIsReported();
  void keysMayRepeat();
  void manners();

 private:
  void open(bool bAuswahl = false, qint32 lId = 0) { openFile(file, bAuswahl, lId); }
  void openFile(const QString& path, bool bAuswahl = false, qint32 lId = 0) {
    dialog = std::make_unique<frmDisziKZ>(place->workplace(), global);
    dialog->setDataBase(path);
    dialog->setAuswahl(bAuswahl);
    dialog->setLId(lId);
    dialog->setBOK(true);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
  }
  BoundGrid& grid() { return the<BoundGrid>(*dialog, "TDBGrid1"); }
  QModelIndex index(int row, int column) { return grid().rows()->index(row, column); }
  QString cell(int row, int column) { return index(row, column).data().toString(); }
  QLineEdit& editor() {
    auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (!edit) throw DriveError("no cell is being edited");
    return *edit;
  }
  void startTyping(int row, int column, const QString& text) {
    grid().setCurrentIndex(index(row, column));
    QTest::keyClick(&grid(), Qt::Key_F2);
    editor().selectAll();
    if (text.isEmpty()) QTest::keyClick(&editor(), Qt::Key_Delete);
    typeInto(editor(), text);
  }
  void typeAt(int row, int column, const QString& text) {
    startTyping(row, column, text);
    QTest::keyClick(&editor(), Qt::Key_Return);
    QCoreApplication::processEvents();  // the editor hands its text over from there
  }
  QVariant stored(int id, const QString& field) {
    return database->openRecordset("Select * from MeldeDisziplin where ID = " + QString::number(id))
        ->value(field);
  }
  int count(const QString& where) {
    return database->openRecordset("Select count(*) as n from MeldeDisziplin where " + where)
        ->value("n")
        .toInt();
  }
  /// From now on that row can't be changed; the failure that comes of it.
  Error lockRow(int id) {
    refuseChanges(file, "MeldeDisziplin", id);
    try {
      database->execute(QString("UPDATE MeldeDisziplin SET Anzeigen = 0 where ID = %1").arg(id));
    } catch (const Error& error) {
      return error;
    }
    throw DriveError("the row isn't locked");
  }
  Expectation& expectFailure(int number, const QString& description, const QString& text, BoxAnswer answer) {
    return place->dialogs.expect(QString("Fehler: %1 - %2\n%3").arg(number).arg(description, text), answer)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .showing(BoxIcon::Exclamation);
  }

  std::unique_ptr<TestWorkplace> place;
  GlobalVariablen global;
  QString file;
  std::unique_ptr<dao::Database> database;
  std::unique_ptr<frmDisziKZ> dialog;
};

void TestFrmDisziKZ::init() {
  place = std::make_unique<TestWorkplace>();
  file = place->path("Pokal.qkk");
  static const StoreOriginal original(
      [](const QString& path) { buildSchema(*dao::Database::create(path), embeddedSchema("LeerSA.txt")); });
  original.copyTo(file);
  database = dao::Database::open(file);
  global.SystemVerzeichnis = place->path("system/");
}

void TestFrmDisziKZ::cleanup() {
  dialog.reset();
  database.reset();
  place.reset();
}

void TestFrmDisziKZ::showsTheTableInItsOrder() {
  open();
  QCOMPARE(dialog->windowTitle(), "Diziplinen-Schlüssel");
  QStringList titles;
  for (int column = 0; column < grid().rows()->columnCount(); ++column)
    titles << grid().rows()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  QCOMPARE(titles, (QStringList{"MeldeDisziplin", "MeldeKZ", "ScheibenKZ", "TeilerfaktorESA", "Anzeigen",
                                "Vorbelegen"}));
  QCOMPARE(grid().rows()->rowCount(), 23);
  QCOMPARE(cell(0, Name), "Luftgewehr");
  QCOMPARE(cell(1, Key), "1.11");
  QCOMPARE(cell(4, Factor), "1,5");
  QVERIFY(index(4, Factor).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
  QCOMPARE(grid().currentRow(), 0);
  QVERIFY(!the<QPushButton>(*dialog, "cmdOK").isVisible());
  QCOMPARE(the<QPushButton>(*dialog, "cmdCancel").text(), "Schließen");
  QCOMPARE(the<QPushButton>(*dialog, "cmdHideAll").text(), "Alle ausblenden");
  QCOMPARE(the<QPushButton>(*dialog, "cmdShowAll").text(), "Alle anzeigen");
  QCOMPARE(the<QLabel>(*dialog, "lblStand").text(), "23 Disziplinen");
  QVERIFY(!dialog->bOK());
}

void TestFrmDisziKZ::aRowIsStoredWhenItIsLeft() {
  open();
  typeAt(1, Name, "Luftgewehr sitzend");
  typeAt(1, Factor, "1,25");
  QCOMPARE(stored(2, "MeldeDisziplin").toString(), "Luftgewehr Auflage");
  QVERIFY(the<QLabel>(*dialog, "lblStand").text().startsWith("geändert"));
  QTest::keyClick(&grid(), Qt::Key_Down);
  QCOMPARE(stored(2, "MeldeDisziplin").toString(), "Luftgewehr sitzend");
  QCOMPARE(stored(2, "TeilerfaktorESA").toDouble(), 1.25);
  QCOMPARE(the<QLabel>(*dialog, "lblStand").text(), "23 Disziplinen");
}

void TestFrmDisziKZ::closingStoresTheRow() {
  open();
  typeAt(0, Key, "1.19");
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QVERIFY(!dialog->bOK());
  QCOMPARE(stored(1, "MeldeKZ").toString(), "1.19");
}

void TestFrmDisziKZ::closingStoresWhatIsStillTyped() {
  open();
  startTyping(0, Key, "1.19");
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QCOMPARE(stored(1, "MeldeKZ").toString(), "1.19");
}

void TestFrmDisziKZ::anEmptiedCellIsNull() {
  open();
  typeAt(0, Target, "");
  typeAt(0, Factor, "");
  QTest::keyClick(&grid(), Qt::Key_Down);
  QVERIFY(!stored(1, "ScheibenKZ").isValid());
  QVERIFY(!stored(1, "TeilerfaktorESA").isValid());
  QCOMPARE(count("ScheibenKZ is null"), 1);
}

void TestFrmDisziKZ::yesAndNoAreTicks() {
  open();
  QCOMPARE(index(2, Shown).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
  grid().setCurrentIndex(index(2, Shown));
  QTest::keyClick(&grid(), Qt::Key_Space);
  QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(index(2, Preset)).center());
  QTest::keyClick(&grid(), Qt::Key_Up);
  QCOMPARE(stored(3, "Anzeigen").toInt(), -1);
  QCOMPARE(stored(3, "Vorbelegen").toInt(), -1);
}

void TestFrmDisziKZ::nonsenseIsNoNumber() {
  open();
  const QString saying =
      "In \"TeilerfaktorESA\" steht eine Zahl mit Komma, zum Beispiel 2,5; \"2.5\" ist keine.";
  expectFailure(3421, saying, kEditFailed, BoxAnswer::Abort);
  typeAt(0, Factor, "2.5");
  QTRY_VERIFY(qobject_cast<QLineEdit*>(QApplication::focusWidget()));
  QCOMPARE(editor().text(), "2.5");
  // The window doesn't close over it, either.
  expectFailure(3421, saying, kEditFailed, BoxAnswer::Abort);
  click(*dialog, "cmdCancel");
  QVERIFY(dialog->isVisible());
  QTRY_VERIFY(qobject_cast<QLineEdit*>(QApplication::focusWidget()));
  QCOMPARE(editor().text(), "2.5");
  editor().setText("2,5");
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QCOMPARE(stored(1, "TeilerfaktorESA").toDouble(), 2.5);
}

void TestFrmDisziKZ::aFailedStoreLosesNothing() {
  open();
  typeAt(1, Name, "Mein langer Name");
  database->execute("Delete * from MeldeDisziplin where ID = 2");
  const QString gone = errorDescription(3167);
  expectFailure(3167, gone, kEditFailed, BoxAnswer::Abort);
  QTest::keyClick(&grid(), Qt::Key_Down);
  QTRY_COMPARE(grid().currentRow(), 1);
  QCOMPARE(cell(1, Name), "Mein langer Name");
  expectFailure(3167, gone, kEditFailed, BoxAnswer::Abort);
  click(*dialog, "cmdCancel");
  QVERIFY(dialog->isVisible());
  QCOMPARE(cell(1, Name), "Mein langer Name");
  database->execute(
      "INSERT INTO MeldeDisziplin (ID, MeldeDisziplin, MeldeKZ) VALUES (2, 'wieder da', '1.11')");
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QCOMPARE(stored(2, "MeldeDisziplin").toString(), "Mein langer Name");
}

void TestFrmDisziKZ::allAreHiddenAndShown() {
  open();
  grid().setCurrentIndex(index(9, Name));
  click(*dialog, "cmdHideAll");
  QCOMPARE(count("Anzeigen = 0"), 23);
  QCOMPARE(grid().currentRow(), 0);
  QCOMPARE(index(0, Shown).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
  grid().setCurrentIndex(index(9, Name));
  click(*dialog, "cmdShowAll");
  QCOMPARE(count("Anzeigen = -1"), 23);
  QCOMPARE(count("Vorbelegen = -1"), 2);
  QCOMPARE(grid().currentRow(), 0);
  QCOMPARE(index(22, Shown).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
}

void TestFrmDisziKZ::aRowThatCantBeHiddenIsReported() {
  const Error locked = lockRow(2);
  open();
  const QString text = "Fehler bei cmdHideAll_Click_err!";
  expectFailure(locked.number(), locked.description(), text, BoxAnswer::Abort);
  click(*dialog, "cmdHideAll");
  QCOMPARE(count("Anzeigen = 0 and MeldeKZ <= '1.11'"), 1);
  expectFailure(locked.number(), locked.description(), text, BoxAnswer::Retry);
  expectFailure(locked.number(), locked.description(), text, BoxAnswer::Ignore);
  click(*dialog, "cmdHideAll");
  QCOMPARE(count("Anzeigen = 0"), 22);
  QCOMPARE(index(1, Shown).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
  expectFailure(locked.number(), locked.description(), "Fehler bei cmdShowAll_Click_err!", BoxAnswer::Ignore);
  click(*dialog, "cmdShowAll");
  QCOMPARE(count("Anzeigen = 0"), 0);
}

void TestFrmDisziKZ::hidingStoresTheEditedRowFirst() {
  open();
  startTyping(3, Name, "Neuer Name");
  click(*dialog, "cmdHideAll");
  QCOMPARE(stored(4, "MeldeDisziplin").toString(), "Neuer Name");
  QCOMPARE(stored(4, "Anzeigen").toInt(), 0);
}

void TestFrmDisziKZ::anEmptyTableStaysEmpty() {
  database->execute("Delete * from MeldeDisziplin");
  open();
  QCOMPARE(grid().rows()->rowCount(), 0);
  click(*dialog, "cmdHideAll");
  click(*dialog, "cmdShowAll");
  QCOMPARE(grid().rows()->rowCount(), 0);
  QCOMPARE(the<QLabel>(*dialog, "lblStand").text(), "0 Disziplinen");
}

void TestFrmDisziKZ::choosingReturnsTheRow() {
  open(true, 13);
  QVERIFY(!the<QPushButton>(*dialog, "cmdHideAll").isVisible());
  QVERIFY(!the<QPushButton>(*dialog, "cmdShowAll").isVisible());
  QCOMPARE(grid().selectionBehavior(), QAbstractItemView::SelectRows);
  QCOMPARE(cell(grid().currentRow(), Name), "Luftpistole");
  QTest::keyClick(&grid(), Qt::Key_F2);
  QVERIFY(grid().hasFocus());  // nothing is edited here
  QTest::keyClick(&grid(), Qt::Key_Down);
  QTest::keyClick(&grid(), Qt::Key_Return);
  QVERIFY(!dialog->isVisible());
  QVERIFY(dialog->bOK());
  QCOMPARE(dialog->sDisziplin(), "Luftpistole Auflage");
  QCOMPARE(dialog->sKey(), "2.11");
  QCOMPARE(dialog->lId(), 14);
}

void TestFrmDisziKZ::choosingWithTheMouse() {
  open(true, 999);
  QCOMPARE(grid().currentRow(), 0);
  const QPoint second = grid().visualRect(index(1, Key)).center();
  QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, second);
  QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, second);
  QVERIFY(dialog->bOK());
  QCOMPARE(dialog->lId(), 2);
}

/// Where the table is edited a double click edits, and no row is preset.
void TestFrmDisziKZ::editingChoosesNothing() {
  open(false, 13);
  QCOMPARE(grid().currentRow(), 0);
  const QPoint second = grid().visualRect(index(1, Key)).center();
  QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, second);
  QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, second);
  QVERIFY(dialog->isVisible());
  QVERIFY(!dialog->bOK());
  QTest::keyClick(&editor(), Qt::Key_Escape);
}

void TestFrmDisziKZ::choosingNothing() {
  open(true, 13);
  QVERIFY(the<QPushButton>(*dialog, "cmdCancel").text() != "Schließen");
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QVERIFY(!dialog->bOK());
  QCOMPARE(dialog->lId(), 13);
}

void TestFrmDisziKZ::choosingARowThatIsGone() {
  for (int times = 0; times < 4; ++times)
    database->execute(
        "INSERT INTO MeldeDisziplin (MeldeDisziplin) SELECT MeldeDisziplin FROM MeldeDisziplin");
  open(true);
  // What was never in sight wasn't read yet.
  database->execute("Delete * from MeldeDisziplin where MeldeKZ = '5.10'");
  QTest::keyClick(&grid(), Qt::Key_End, Qt::ControlModifier);
  QCOMPARE(cell(grid().currentRow(), Name), "#Gelöscht");
  expectFailure(3167, errorDescription(3167), "Fehler bei cmdOK_Click_err!", BoxAnswer::Abort);
  click(*dialog, "cmdOK");
  QVERIFY(dialog->isVisible());
  QVERIFY(!dialog->bOK());
}

void TestFrmDisziKZ::nothingToChooseFrom() {
  database->execute("Delete * from MeldeDisziplin");
  open(true);
  QVERIFY(!the<QPushButton>(*dialog, "cmdOK").isEnabled());
}

void TestFrmDisziKZ::theTemplateWarns() {
  global.SystemVerzeichnis = place->path() + "/";
  const QString templatePath = place->path("LeerSA.mdb");
  QVERIFY(QFile::copy(file, templatePath));
  place->dialogs.expect(kWarning).with(BoxButtons::Ok).showing(BoxIcon::None);
  openFile(templatePath);
  QVERIFY(place->dialogs.done());
  typeAt(0, Name, "Doch bearbeitet");
  click(*dialog, "cmdCancel");
  database = dao::Database::open(templatePath);
  QCOMPARE(stored(1, "MeldeDisziplin").toString(), "Doch bearbeitet");
}

void TestFrmDisziKZ::theTemplateWarnsWhenChoosingToo() {
  global.SystemVerzeichnis = place->path() + "/";
  QVERIFY(QFile::copy(file, place->path("LeerSA.mdb")));
  place->dialogs.expect(kWarning);
  openFile(place->path("LeerSA.mdb"), true, 2);
  QVERIFY(place->dialogs.done());
  click(*dialog, "cmdOK");
  QCOMPARE(dialog->sKey(), "1.11");
}

void TestFrmDisziKZ::aMissingDatabaseIsReported() {
  expectFailure(3024, Error(3024).description(), "Fehler bei Form_Load_err!", BoxAnswer::Abort);
  openFile(place->path("fehlt.qkk"));
  QVERIFY(dialog->isVisible());
  click(*dialog, "cmdHideAll");
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
}

void TestFrmDisziKZ::keysMayRepeat() {
  database->execute("UPDATE MeldeDisziplin SET MeldeKZ = '1.10' where ID < 4");
  open();
  QStringList keys;
  for (int row = 0; row < 3; ++row) keys << cell(row, Key);
  QCOMPARE(keys, (QStringList{"1.10", "1.10", "1.10"}));
  typeAt(1, Name, "Der mittlere");
  click(*dialog, "cmdCancel");
  QCOMPARE(count("MeldeDisziplin = 'Der mittlere'"), 1);
}

void TestFrmDisziKZ::manners() {
  open();
  QCOMPARE(badManners(*dialog), QStringList());
  open(true);
  QCOMPARE(badManners(*dialog), QStringList());
}

QTEST_MAIN(TestFrmDisziKZ)
#include "test_frm_diszi_kz.moc"

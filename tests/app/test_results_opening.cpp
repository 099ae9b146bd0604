// The way from the main window to the results editor.
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>

#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

namespace {

/// The editor fails as it is shown, so many times.
class FailingEditor : public QObject {
 public:
  explicit FailingEditor(int times) : times_(times) { qApp->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && watched->objectName() == "frmSchuetzeErg" && times_-- > 0)
      throw Error(91);
    return false;
  }

 private:
  int times_;
};

}  // namespace

class TestResultsOpening : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void withoutAShooterThereIsNoEditor();
  void theEditorOpensForTheShooterOfTheLine();
  void whatIsBookedStandsThere();
  void helpOpensItsPage();
  void aCompetitionThatCantBeRead();
  void anEditorThatFails();
};

void TestResultsOpening::withoutAShooterThereIsNoEditor() {
  RangeOffice office;
  QVERIFY(office.open());
  for (const char* entry : {"mnuEditErgebnisse", "ErgEdit"}) {
    office.boxes.expect("Kein Schütze gewählt!").titled("Hinweis").with(BoxButtons::Ok);
    trigger(office.window(), entry);
    QVERIFY(office.boxes.done());
  }
}

void TestResultsOpening::theEditorOpensForTheShooterOfTheLine() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.chooseShooter(1, "105");
  office.show(2);
  office.chooseShooter(2, "107");
  int shown = 0;
  for (const char* entry : {"mnuEditErgebnisse", "ErgEdit"}) {
    office.boxes.expectWindow("frmSchuetzeErg", [&](QWidget& editor) {
      ++shown;
      QCOMPARE(the<QLabel>(editor, "lblName").text(), "Müller Jörg");
      QCOMPARE(the<QLabel>(editor, "lblStartnummer").text(), "107");
      click(editor, "cmdOK");
    });
    trigger(office.window(), entry);
  }
  QCOMPARE(shown, 2);
}

void TestResultsOpening::whatIsBookedStandsThere() {
  RangeOffice office;
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.database()->execute(
      "INSERT INTO Schuss (Ergebnis, Startnummer, DisziID, Datum, WTyp) VALUES (123.4, '107', 6, "
      "'20.11.2026', "
      "'LG')");
  const int before = office.rowsOf("Select * from Schuss where Startnummer = '107'");
  office.boxes.expectWindow("frmSchuetzeErg", [&](QWidget& editor) {
    auto& grid = the<BoundGrid>(editor, "TDBGrid1");
    QVERIFY(grid.rows()->waitForAll());
    QCOMPARE(grid.rows()->count(), before);
    office.boxes.expect("Wollen Sie den Teiler: 123,4 wirklich löschen?", BoxAnswer::Yes).titled("Frage");
    grid.setCurrentRow(grid.rows()->findFirst("Ergebnis = 123.4"));
    click(editor, "cmdDelete");
    click(editor, "cmdOK");
  });
  trigger(office.window(), "mnuEditErgebnisse");
  QCOMPARE(office.rowsOf("Select * from Schuss where Startnummer = '107'"), before - 1);
}

void TestResultsOpening::helpOpensItsPage() {
  RangeOffice office;
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.boxes.expectWindow("frmSchuetzeErg", [&](QWidget& editor) {
    editor.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &editor);
    QTest::keyClick(&the<BoundGrid>(editor, "TDBGrid1"), Qt::Key_F1);
    auto& help = the<QWidget>(editor, "frmHilfe");
    QVERIFY(help.isVisible());
    QVERIFY(the<QTextBrowser>(help, "txtSeite").toHtml().contains("ergebnisse.html") ||
            the<QTextBrowser>(help, "txtSeite").toPlainText().startsWith("Ergebnisse eines Schützen"));
    help.close();
    click(editor, "cmdOK");
  });
  trigger(office.window(), "mnuEditErgebnisse");
  QVERIFY(office.boxes.done());
}

void TestResultsOpening::aCompetitionThatCantBeRead() {
  RangeOffice office;
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.database()->dropTable("SchussSerien");
  const auto failure = [&] {
    try {
      office.database()->openRecordset("Select * from SchussSerien");
    } catch (const Error& error) {
      return "Fehler: " + QString::number(error.number()) + " - " + error.description();
    }
    return QString();
  }();
  office.boxes.expect(failure + "\nFehler beim Laden der Ergebnisse!", BoxAnswer::Abort);
  trigger(office.window(), "mnuEditErgebnisse");
  QVERIFY(office.boxes.done());
}

void TestResultsOpening::anEditorThatFails() {
  RangeOffice office;
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  const auto expectFailure = [&](BoxAnswer answer) {
    office.boxes
        .expect("Fehler: 91 - " + errorDescription(91) + "\nFehler beim Bearbeiten des Ergebnisses!", answer)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .showing(BoxIcon::Exclamation);
  };
  for (const BoxAnswer answer : {BoxAnswer::Abort, BoxAnswer::Ignore}) {
    const FailingEditor failing(2);
    expectFailure(BoxAnswer::Retry);
    expectFailure(answer);
    trigger(office.window(), "mnuEditErgebnisse");
    QVERIFY(office.boxes.done());
  }
  const FailingEditor failing(1);
  expectFailure(BoxAnswer::Retry);
  office.boxes.expectWindow("frmSchuetzeErg", [](QWidget& editor) { click(editor, "cmdOK"); });
  trigger(office.window(), "mnuEditErgebnisse");
  QVERIFY(office.boxes.done());
}

QTEST_MAIN(TestResultsOpening)
#include "test_results_opening.moc"

// The window in which lists come in, on its real widgets.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <memory>

#include "masterdata/making/competition.h"
#include "masterdata/windows/import_window.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/look/look.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kFilter = "Listen (*.csv;*.txt;*.tsv)|*.csv;*.txt;*.tsv|Alle Dateien (*.*)|*.*";
const QByteArray kList =
    "Startnummer;Nachname;Vorname;Geburtsdatum;Geschlecht;Verein;Wohnsitz des Mitglieds\r\n"
    "900;Huber;Anna;1.2.80;w;Neuland;Öd\r\n"
    "107;Müller;Jörg;14.05.1928;m;Edelweiß Höfen;\r\n"
    "901;Fehler;Fritz;31.02.1980;m;;\r\n";

}  // namespace

class TestImportWindow : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    place = std::make_unique<TestWorkplace>();
    static const StoreOriginal original(makeDemoCompetition);
    original.copyTo(place->path("demo.qkk"));
    database = dao::Database::open(place->path("demo.qkk"));
    window =
        std::make_unique<ImportWindow>(place->workplace(), *database, lists::ListKind::Shooters, nullptr);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
  }
  void cleanup() {
    window.reset();
    database.reset();
    place.reset();
  }

  void anEmptyWindowSaysWhatItWants();
  void aFileIsJudgedAtOnce();
  void verdictsNarrowThePreview();
  void aColumnAssignedByHandIsJudgedAnew();
  void taking();
  void aFileThatIsGoneChangesNothing();
  void manners();

 private:
  void choose(const QByteArray& content = kList) {
    place->files.write(place->path("liste.csv"), content);
    place->dialogs.expectOpenFile(kFilter, place->path("liste.csv"));
    click(*window, "cmdDatei");
  }
  QTableView& preview() { return the<QTableView>(*window, "gridVorschau"); }
  QComboBox& box(const QString& name) { return the<QComboBox>(*window, name); }
  QString text(const char* label) { return the<QLabel>(*window, label).text(); }
  bool enabled(const char* button) { return the<QPushButton>(*window, button).isEnabled(); }
  QStringList choices(const QComboBox& of) {
    QStringList texts;
    for (int i = 0; i < of.count(); ++i) texts << of.itemText(i);
    return texts;
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> database;
  std::unique_ptr<ImportWindow> window;
};

void TestImportWindow::anEmptyWindowSaysWhatItWants() {
  QCOMPARE(text("lblStand"), "Es ist noch keine Datei gewählt.");
  QVERIFY(!enabled("cmdUebernehmen"));
  QVERIFY(enabled("cmdAusgeben"));
  QVERIFY(!the<QPushButton>(*window, "cmdStopp").isVisible());
}

void TestImportWindow::aFileIsJudgedAtOnce() {
  choose();
  QCOMPARE(preview().model()->rowCount(), 3);
  QCOMPARE(choices(box("cboUrteil")),
           (QStringList{"alle: 3", "neu: 1", "geändert: 1", "fehlerhaft: 1", "bekannt: 0"}));
  QVERIFY(enabled("cmdUebernehmen"));
  QVERIFY(the<QPlainTextEdit>(*window, "txtEinzelheiten").toPlainText().startsWith("Zeile 2, neu: "));
  QCOMPARE(text("lblStand"), "");
  auto& columns = the<QTableWidget>(*window, "tabSpalten");
  QCOMPARE(columns.rowCount(), 7);
  QCOMPARE(columns.item(5, 1)->text(), "Neuland");
  QCOMPARE(box("cboSpalte_5").currentText(), "Verein");
  QCOMPARE(box("cboSpalte_6").currentText(), "(nicht gelesen)");
}

void TestImportWindow::verdictsNarrowThePreview() {
  choose();
  box("cboUrteil").setCurrentIndex(3);
  QCOMPARE(preview().model()->rowCount(), 1);
  QVERIFY(the<QPlainTextEdit>(*window, "txtEinzelheiten").toPlainText().contains("31.02.1980"));
}

void TestImportWindow::aColumnAssignedByHandIsJudgedAnew() {
  choose();
  press(*window, "cboSpalte_6", Qt::Key_O);  // "Ort" is the first of that letter
  QTRY_COMPARE(box("cboSpalte_6").currentText(), "Ort");
  QTRY_VERIFY(the<QPlainTextEdit>(*window, "txtEinzelheiten").toPlainText().contains("Ort: Öd"));
}

void TestImportWindow::taking() {
  choose();
  place->dialogs.expect("Soll übernommen werden: 1 neu, 1 geändert?\nEine fehlerhafte Zeile bleibt draußen.",
                        BoxAnswer::Yes);
  click(*window, "cmdUebernehmen");
  QCOMPARE(text("lblErfolg"), "Übernommen: 1 neu, 1 geändert.");
  QCOMPARE(window->done(), "Übernommen: 1 neu, 1 geändert.");
  QVERIFY(!enabled("cmdUebernehmen"));
  QCOMPARE(text("lblStand"), "Nichts davon ist neu oder geändert.");
  QCOMPARE(
      database->openRecordset("Select Name from Schützen where Startnummer = '900'")->value(0).toString(),
      "Huber Anna");
}

void TestImportWindow::aFileThatIsGoneChangesNothing() {
  choose();
  place->dialogs.expectOpenFile(kFilter, place->path("fehlt.csv"));
  place->dialogs.expect("Fehler: 53 - " + errorDescription(53) + "\nDie Liste konnte nicht gelesen werden.",
                        BoxAnswer::Abort);
  click(*window, "cmdDatei");
  QCOMPARE(preview().model()->rowCount(), 3);
  QVERIFY(enabled("cmdUebernehmen"));
}

void TestImportWindow::manners() {
  choose();
  QCOMPARE(badManners(*window).join('\n'), QString());
}

QTEST_MAIN(TestImportWindow)
#include "test_import_window.moc"

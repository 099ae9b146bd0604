// The window of the handbook, by keyboard.
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <memory>

#include "app/shell/frmHilfe.h"
#include "platform/look/look.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFrmHilfe : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    place = std::make_unique<TestWorkplace>();
    place->files.makeFolder(place->path("buch"));
    write("inhalt.html", "<a href=\"a.html\">Anfang</a> <a href=\"b.html\">Störungen</a>");
    write("a.html", "<h1>Anfang</h1><a href=\"b.html#tief\">weiter</a> Flagge und noch eine Flagge");
    write("b.html",
          "<h1>Störungen</h1>" + QString("<p>Zeile</p>").repeated(200) + "<a name=\"tief\"></a>Flagge");
    open(place->path("buch"));
  }
  void cleanup() {
    window.reset();
    place.reset();
  }

  void opensOnTheContents();
  void contentsChooseThePage();
  void backAndForward();
  void linksLeadToTheirPlace();
  void searchNarrowsTheContents();
  void enterFindsTheNextPlace();
  void colourFollowsTheWindow();
  void missingHandbook();
  void manners();

 private:
  void write(const QString& file, const QString& html) {
    place->files.write(place->path("buch/" + file), html.toUtf8());
  }
  void open(const QString& folder) {
    window = std::make_unique<frmHilfe>(place->workplace(), folder);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
  }
  QListWidget& contents() { return the<QListWidget>(*window, "lstInhalt"); }
  QTextBrowser& page() { return the<QTextBrowser>(*window, "txtSeite"); }
  bool shows(const QString& text) { return page().toPlainText().startsWith(text); }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<frmHilfe> window;
};

void TestFrmHilfe::opensOnTheContents() {
  QCOMPARE(contents().count(), 3);
  QCOMPARE(contents().currentItem()->text(), "Inhalt");
  QVERIFY(contents().hasFocus());
  QVERIFY(!the<QPushButton>(*window, "cmdZurueck").isEnabled());
  QVERIFY(!the<QPushButton>(*window, "cmdVor").isEnabled());
}

void TestFrmHilfe::contentsChooseThePage() {
  press(*window, "lstInhalt", Qt::Key_Down);
  QVERIFY(shows("Anfang"));
  QTest::keyClick(window.get(), Qt::Key_F6);
  QVERIFY(page().hasFocus());
  QTest::keyClick(window.get(), Qt::Key_F6);
  QVERIFY(contents().hasFocus());
}

void TestFrmHilfe::backAndForward() {
  contents().setCurrentRow(1);
  contents().setCurrentRow(2);
  QTest::keyClick(window.get(), Qt::Key_Left, Qt::AltModifier);
  QVERIFY(shows("Anfang"));
  QCOMPARE(contents().currentRow(), 1);
  QTest::keyClick(window.get(), Qt::Key_Right, Qt::AltModifier);
  QVERIFY(shows("Störungen"));
  click(*window, "cmdZurueck");
  click(*window, "cmdZurueck");
  QCOMPARE(contents().currentRow(), 0);
  QVERIFY(!the<QPushButton>(*window, "cmdZurueck").isEnabled());
  contents().setCurrentRow(2);
  QVERIFY(!the<QPushButton>(*window, "cmdVor").isEnabled());
}

void TestFrmHilfe::linksLeadToTheirPlace() {
  contents().setCurrentRow(1);
  QTest::keyClick(&page(), Qt::Key_Tab);
  QTest::keyClick(&page(), Qt::Key_Return);
  QVERIFY(shows("Störungen"));
  QVERIFY(page().verticalScrollBar()->value() > 0);
}

void TestFrmHilfe::searchNarrowsTheContents() {
  QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
  QVERIFY(the<QLineEdit>(*window, "txtSuche").hasFocus());
  type(*window, "txtSuche", "zeile");
  QCOMPARE(contents().count(), 1);
  QCOMPARE(contents().item(0)->text(), "Störungen");
  type(*window, "txtSuche", "Gibtesnicht");
  QCOMPARE(contents().count(), 0);
  press(*window, "txtSuche", Qt::Key_Return);
  QVERIFY(window->isVisible());
}

void TestFrmHilfe::enterFindsTheNextPlace() {
  type(*window, "txtSuche", "flagge");
  QCOMPARE(contents().count(), 2);
  press(*window, "txtSuche", Qt::Key_Return);
  QVERIFY(shows("Anfang"));
  const int first = page().textCursor().position();
  QCOMPARE(page().textCursor().selectedText(), "Flagge");
  press(*window, "txtSuche", Qt::Key_Return);
  QVERIFY(page().textCursor().position() > first);
  press(*window, "txtSuche", Qt::Key_Return);
  QVERIFY(shows("Störungen"));
  press(*window, "txtSuche", Qt::Key_Return);
  QVERIFY(shows("Anfang"));
}

void TestFrmHilfe::colourFollowsTheWindow() {
  const QString light = page().document()->defaultStyleSheet();
  look::apply(*qApp, look::Scheme::Dark);
  QCoreApplication::processEvents();
  QVERIFY(page().document()->defaultStyleSheet() != light);
  look::apply(*qApp, look::Scheme::Light);
}

void TestFrmHilfe::missingHandbook() {
  open(place->path("fehlt"));
  QCOMPARE(contents().count(), 0);
  QVERIFY(shows("Seite fehlt"));
}

void TestFrmHilfe::manners() {
  QCOMPARE(badManners(*window), QStringList());
}

QTEST_MAIN(TestFrmHilfe)
#include "test_frm_hilfe.moc"

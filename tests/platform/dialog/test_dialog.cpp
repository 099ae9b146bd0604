// The real boxes: what they show, what Enter and Esc answer, and the program-wide error report.
#include <QApplication>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "platform/dialog/font_convert.h"
#include "platform/dialog/message_boxes.h"
#include "platform/runtime/error.h"
#include "tests/support/drive.h"
#include "tests/support/real_boxes.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

Q_DECLARE_METATYPE(BoxButtons)
Q_DECLARE_METATYPE(BoxAnswer)

class TestDialog : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void escAndEnter_data();
  void escAndEnter();
  void aPresetTakesEnter();
  void textStandsAsTold();
  void everyButtonAnswers();
  void anHourglassIsPutAside();
  void parentIsTheActiveWindow();
  void aParentThatGoesTakesItsBoxAlong();
  void aLongTitleStandsThereWhole();
  void theFolderDialogShowsItsWholePrompt();
#ifndef Q_OS_WIN
  void aPathOfAnotherPlatformIsNotProposed();
#endif
  void inputs();
  void aPasswordCannotBeReadOnTheScreen();
  void fontWithColour();
  void filters();
  void fontsAndColours();
  void errorReport();
  void errorReportAnswers();
  void aLossIsAskedAboutOnceMore_data();
  void aLossIsAskedAboutOnceMore();
  void aLossIsGivenUpOnlyOnce();
  void nothingLostAsksNothing();
  void confirmAndNote();

 private:
  /// Presses a key in the box that comes next.
  void pressInNextBox(Qt::Key key) {
    QTimer::singleShot(0, this, [key] {
      QWidget* box = QApplication::activeModalWidget();
      QVERIFY(box);
      QTest::keyClick(box, key);
    });
  }

  const TestClock clock_;
};

void TestDialog::escAndEnter_data() {
  QTest::addColumn<BoxButtons>("buttons");
  QTest::addColumn<BoxAnswer>("onEsc");
  QTest::addColumn<BoxAnswer>("onEnter");
  QTest::newRow("Ok") << BoxButtons::Ok << BoxAnswer::Ok << BoxAnswer::Ok;
  QTest::newRow("Ok, Cancel") << BoxButtons::OkCancel << BoxAnswer::Cancel << BoxAnswer::Ok;
  QTest::newRow("Yes, No") << BoxButtons::YesNo << BoxAnswer::No << BoxAnswer::Yes;
  QTest::newRow("Retry, Cancel") << BoxButtons::RetryCancel << BoxAnswer::Cancel << BoxAnswer::Retry;
  QTest::newRow("Abort, Retry, Ignore")
      << BoxButtons::AbortRetryIgnore << BoxAnswer::Abort << BoxAnswer::Retry;
}
void TestDialog::escAndEnter() {
  QFETCH(BoxButtons, buttons);
  QFETCH(BoxAnswer, onEsc);
  QFETCH(BoxAnswer, onEnter);
  MessageBoxes dialogs(clock_);
  pressInNextBox(Qt::Key_Escape);
  QCOMPARE(dialogs.show({.text = "Text", .buttons = buttons}), onEsc);
  pressInNextBox(Qt::Key_Return);
  QCOMPARE(dialogs.show({.text = "Text", .buttons = buttons}), onEnter);
}

void TestDialog::aPresetTakesEnter() {
  MessageBoxes dialogs(clock_);
  pressInNextBox(Qt::Key_Return);
  QCOMPARE(dialogs.show({.text = "Text", .buttons = BoxButtons::YesNo, .preset = BoxAnswer::No}),
           BoxAnswer::No);
  pressInNextBox(Qt::Key_Return);
  QCOMPARE(
      dialogs.show({.text = "Text", .buttons = BoxButtons::AbortRetryIgnore, .preset = BoxAnswer::Ignore}),
      BoxAnswer::Ignore);
}

void TestDialog::textStandsAsTold() {
  MessageBoxes dialogs(clock_);
  QString text;
  QString title;
  Qt::TextFormat format = Qt::AutoText;
  QTimer::singleShot(0, this, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    text = box->text();
    title = box->windowTitle();
    format = box->textFormat();
    box->accept();
  });
  dialogs.note("<b>A & B</b>\r\nzwei\n\ndrei", BoxIcon::Critical, "Fehler");
  QCOMPARE(text, "<b>A & B</b>\r\nzwei\n\ndrei");
  QCOMPARE(title, "Fehler");
  QCOMPARE(format, Qt::PlainText);
}

void TestDialog::everyButtonAnswers() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  for (const BoxButtons buttons : {BoxButtons::Ok, BoxButtons::OkCancel, BoxButtons::YesNo,
                                   BoxButtons::RetryCancel, BoxButtons::AbortRetryIgnore})
    for (const BoxAnswer answer : answersOf(buttons)) {
      boxes.expect("Text", answer).with(buttons).presetting(presetOf({.text = "Text", .buttons = buttons}));
      QCOMPARE(dialogs.show({.text = "Text", .buttons = buttons}), answer);
    }
}

void TestDialog::anHourglassIsPutAside() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  constexpr int kHourglasses = 2;
  for (int i = 0; i < kHourglasses; ++i) QApplication::setOverrideCursor(Qt::WaitCursor);
  bool plain = false;
  boxes.expect("Text").during([&] { plain = !QApplication::overrideCursor(); });
  dialogs.note("Text");
  QVERIFY(plain);
  for (int i = 0; i < kHourglasses; ++i) {
    QVERIFY(QApplication::overrideCursor());
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();
  }
  QVERIFY(!QApplication::overrideCursor());
}

void TestDialog::parentIsTheActiveWindow() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  QWidget window;
  window.show();
  QApplication::setActiveWindow(&window);
  QWidget* outerParent = nullptr;
  QWidget* innerParent = nullptr;
  QWidget* outer = nullptr;
  boxes.expect("außen").during([&] {
    outer = QApplication::activeModalWidget();
    outerParent = outer->parentWidget();
    boxes.expect("innen").during([&] { innerParent = QApplication::activeModalWidget()->parentWidget(); });
    dialogs.note("innen");
  });
  dialogs.note("außen");
  QCOMPARE(outerParent, &window);
  QCOMPARE(innerParent, outer);
}

void TestDialog::aParentThatGoesTakesItsBoxAlong() {
  MessageBoxes dialogs(clock_);
  auto* window = new QWidget;
  window->show();
  QApplication::setActiveWindow(window);
  QTimer::singleShot(0, this, [window] { delete window; });
  QCOMPARE(dialogs.show({.text = "Text", .buttons = BoxButtons::YesNo}), BoxAnswer::No);
}

void TestDialog::aLongTitleStandsThereWhole() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  const QString title = "Nachkauf an Linie 12 wirklich senden";
  const int least = QFontMetrics(QApplication::font()).horizontalAdvance(title);
  int box = 0, input = 0;
  boxes.expect("Ja?").titled(title).during([&] { box = QApplication::activeModalWidget()->width(); });
  dialogs.note("Ja?", BoxIcon::None, title);
  boxes.expectInput("Wert:", std::nullopt).titled(title).during([&] {
    input = QApplication::activeModalWidget()->width();
  });
  dialogs.input("Wert:", title, {});
  // Beside the title stand the icon and the buttons of the window.
  QVERIFY2(box > least + 60, qPrintable(QString::number(box)));
  QVERIFY2(input > least + 60, qPrintable(QString::number(input)));
}

void TestDialog::theFolderDialogShowsItsWholePrompt() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  const QString prompt = "Bitte den <b>Ordner</b> auswählen:\r\n" + place.path("ein/sehr/langer/Weg/dorthin");
  boxes.expectFolder(prompt, place.path()).titled("Bitte den <b>Ordner</b> auswählen:").during([&] {
    auto* dialog = QApplication::activeModalWidget();
    auto* label = dialog->findChild<QLabel*>("lblPrompt");
    QVERIFY(label && label->isVisible());
    QCOMPARE(label->text(), prompt);
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QVERIFY(label->height() >= 2 * label->fontMetrics().height());
    // It stands above all else, in nobody's way.
    for (const QWidget* other : dialog->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
      QVERIFY2(other == label || other->isHidden() || !other->geometry().intersects(label->geometry()),
               qPrintable(other->objectName()));
  });
  QCOMPARE(dialogs.chooseFolder(prompt, place.path()), place.path());
}

#ifndef Q_OS_WIN
/// What stations usually have: nobody here could choose it, and chosen it would become a file of that name.
void TestDialog::aPathOfAnotherPlatformIsNotProposed() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  QString named = "?";
  boxes.expectFolder("Ordner:", "").during([&] {
    named = the<QLineEdit>(*QApplication::activeModalWidget(), "fileNameEdit").text();
  });
  dialogs.chooseFolder("Ordner:", "C:\\Haering\\Netz\\");
  QCOMPARE(named, "");
}
#endif

void TestDialog::inputs() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  Qt::TextFormat format = Qt::AutoText;
  boxes.expectInput("Wert <i>:", "9,7").titled("Eingabe").during([&] {
    format = QApplication::activeModalWidget()->findChild<QLabel*>()->textFormat();
  });
  QCOMPARE(dialogs.input("Wert <i>:", "Eingabe", "1"), "9,7");
  QCOMPARE(format, Qt::PlainText);
  boxes.expectInput("Wert:", std::nullopt);
  QCOMPARE(dialogs.input("Wert:", "", "vorgelegt"), "");
}

void TestDialog::aPasswordCannotBeReadOnTheScreen() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  auto echo = QLineEdit::Normal;
  boxes.expectInput("Passwort:", "ge heim ß").titled("Anmeldung").during([&] {
    echo = QApplication::activeModalWidget()->findChild<QLineEdit*>()->echoMode();
  });
  QCOMPARE(dialogs.password("Passwort:", "Anmeldung"), "ge heim ß");
  QCOMPARE(echo, QLineEdit::Password);
  boxes.expectInput("Passwort:", std::nullopt);
  QCOMPARE(dialogs.password("Passwort:", ""), "");
}

void TestDialog::fontWithColour() {
  TestWorkplace place;
  RealBoxes boxes;
  MessageBoxes dialogs(clock_);
  boxes.expectFont(FontChoice{"Liberation Sans;14;0;-1;0;0", 0}).during([&] {
    boxes.expectWindow("QColorDialog", [](QWidget& chooser) {
      auto& colours = static_cast<QColorDialog&>(chooser);
      colours.setCurrentColor(QColor(1, 2, 3));
      colours.accept();
    });
    click(*QApplication::activeModalWidget(), "cmdFarbe");
  });
  const auto chosen = dialogs.chooseFont({"Liberation Sans;10;0;0;0;0", 0});
  QVERIFY(chosen);
  QCOMPARE(chosen->font, "Liberation Sans;14;0;-1;0;0");
  QCOMPARE(chosen->colour, 0x030201u);
  boxes.expectFont(std::nullopt);
  QVERIFY(!dialogs.chooseFont({"Liberation Sans;10;0;0;0;0", 0}));
}

void TestDialog::filters() {
  QCOMPARE(nameFilters("Wettkampf (*.abc)|*.abc|Alle Dateien (*.*)|*.*"),
           QStringList({"Wettkampf (*.abc) (*.abc)", "Alle Dateien (*.*) (*)"}));
  QCOMPARE(nameFilters("Bilder|*.bmp;*.png"), QStringList("Bilder (*.bmp *.png)"));
  QCOMPARE(nameFilters(""), QStringList());
}

void TestDialog::fontsAndColours() {
  const FontSpec spec{"DejaVu Sans", 8.25, true, false, true, true};
  QCOMPARE(fromFont(toFont(spec)), spec);
  QCOMPARE(toColour(16711680), QColor(0, 0, 255));
  QCOMPARE(toColour(255), QColor(255, 0, 0));
  QCOMPARE(fromColour(QColor(255, 255, 255)), 16777215u);
  QFont pixels("DejaVu Sans");
  pixels.setPixelSize(20);
  QVERIFY(fromFont(pixels).size > 0);
}

void TestDialog::errorReport() {
  TestWorkplace place;
  place.dialogs.expect("Fehler: 53 - Datei nicht gefunden\nFehler bei X_err!", BoxAnswer::Ignore)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore)
      .showing(BoxIcon::Exclamation);
  QCOMPARE(FehlerAnzeigen(place.dialogs, Error(53), "Fehler bei X_err!"), ErrorAnswer::Ignore);
  place.dialogs.expect("Fehler: 13 - Typen unverträglich\n", BoxAnswer::Abort).titled("Eigener");
  QCOMPARE(FehlerAnzeigen(place.dialogs, Error(13), "", "Eigener"), ErrorAnswer::Abort);
  place.dialogs.expect("3021 - Kein aktueller Datensatz.\nText", BoxAnswer::Retry).titled("Fehler");
  QCOMPARE(fehlerReport(place.dialogs, "Text", {}, false)(Error(3021)), ErrorAnswer::Retry);
}

void TestDialog::errorReportAnswers() {
  TestWorkplace place;
  const QString text = "Fehler: 70 - Zugriff verweigert\nFehler bei X_err!";
  place.dialogs.expect(text, BoxAnswer::Retry);
  place.dialogs.expect(text, BoxAnswer::Ignore);
  place.dialogs.expect(text, BoxAnswer::Abort);
  int tries = 0;
  QVERIFY(!reported(fehlerReport(place.dialogs, "Fehler bei X_err!"), [&](Steps& step) {
    step([&] {
      ++tries;
      throw Error(70);
    });
    step([] { throw Error(70); });
    QFAIL("abort leaves");
  }));
  QCOMPARE(tries, 2);
}

void TestDialog::aLossIsAskedAboutOnceMore_data() {
  QTest::addColumn<BoxAnswer>("given");
  QTest::addColumn<QString>("question");
  QTest::newRow("abort") << BoxAnswer::Abort << "Alles weg?";
  QTest::newRow("ignore") << BoxAnswer::Ignore << "Etwas weg?";
}
void TestDialog::aLossIsAskedAboutOnceMore() {
  QFETCH(BoxAnswer, given);
  QFETCH(QString, question);
  TestWorkplace place;
  const ErrorReport report = reportOfALoss(
      place.dialogs, fehlerReport(place.dialogs, "X"),
      [](ErrorAnswer answer) { return QString(answer == ErrorAnswer::Abort ? "Alles weg?" : "Etwas weg?"); });
  const QString failure = "Fehler: 70 - Zugriff verweigert\nX";
  // No: the failure stands there again, and all three answers are free.
  place.dialogs.expect(failure, given).presetting(BoxAnswer::Retry);
  place.dialogs.expect(question, BoxAnswer::No)
      .titled("Hinweis")
      .with(BoxButtons::YesNo)
      .showing(BoxIcon::Exclamation)
      .presetting(BoxAnswer::No);
  place.dialogs.expect(failure, BoxAnswer::Retry);
  QCOMPARE(report(Error(70)), ErrorAnswer::Retry);
  place.dialogs.expect(failure, given);
  place.dialogs.expect(question, BoxAnswer::Yes);
  QCOMPARE(report(Error(70)), given == BoxAnswer::Abort ? ErrorAnswer::Abort : ErrorAnswer::Ignore);
}

void TestDialog::aLossIsGivenUpOnlyOnce() {
  TestWorkplace place;
  const ErrorReport report = reportOfALoss(place.dialogs, fehlerReport(place.dialogs, "X"),
                                           [](ErrorAnswer) { return QString("Weg?"); });
  const QString failure = "Fehler: 70 - Zugriff verweigert\nX";
  place.dialogs.expect(failure, BoxAnswer::Ignore);
  place.dialogs.expect("Weg?", BoxAnswer::Yes);
  place.dialogs.expect(failure, BoxAnswer::Abort);
  QVERIFY(!reported(report, [](Steps& step) {
    step([] { throw Error(70); });
    step([] { throw Error(70); });
  }));
}

void TestDialog::nothingLostAsksNothing() {
  TestWorkplace place;
  const ErrorReport report =
      reportOfALoss(place.dialogs, fehlerReport(place.dialogs, "X"), [](ErrorAnswer) { return QString(); });
  place.dialogs.expect("Fehler: 70 - Zugriff verweigert\nX", BoxAnswer::Abort);
  QCOMPARE(report(Error(70)), ErrorAnswer::Abort);
}

void TestDialog::confirmAndNote() {
  TestWorkplace place;
  place.dialogs.expect("Ja?", BoxAnswer::Yes)
      .titled("Hinweis")
      .with(BoxButtons::YesNo)
      .showing(BoxIcon::Question);
  QVERIFY(place.dialogs.confirm("Ja?"));
  place.dialogs.expect("Nein?", BoxAnswer::No).presetting(BoxAnswer::No).showing(BoxIcon::Information);
  QVERIFY(!place.dialogs.confirm("Nein?", BoxIcon::Information, BoxAnswer::No));
  place.dialogs.expect("So").titled("Hinweis").with(BoxButtons::Ok).showing(BoxIcon::None);
  place.dialogs.note("So");
}

QTEST_MAIN(TestDialog)
#include "test_dialog.moc"

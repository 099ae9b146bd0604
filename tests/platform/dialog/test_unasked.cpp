// Boxes that nobody called: what they say, and which keys and clicks they don't take.
#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "platform/dialog/key_guard.h"
#include "platform/dialog/message_boxes.h"
#include "platform/runtime/unasked.h"
#include "tests/support/test_time.h"

using namespace qk;
using namespace qk::test;

class TestUnasked : public QObject {
  Q_OBJECT

  TestClock clock_;

  static QMessageBox& box() { return *qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
  /// As the platform delivers it: to the window, shortcuts first.
  static void key(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(QApplication::activeModalWidget()->windowHandle(), key, with);
  }
  static void clickOn(QMessageBox::StandardButton button) {
    QAbstractButton* target = box().button(button);
    QTest::mouseClick(box().windowHandle(), Qt::LeftButton, {},
                      target->mapTo(&box(), target->rect().center()));
  }
  /// Shows a box with three buttons while `drive` works it; what it answered.
  BoxAnswer shown(const std::function<void()>& drive) {
    MessageBoxes dialogs(clock_);
    QTimer::singleShot(0, this, [&] {
      drive();
      // Nothing answered: the test ends all the same, with an answer that none of them expects.
      if (QApplication::activeModalWidget())
        static_cast<QDialog*>(QApplication::activeModalWidget())->done(0);
    });
    return dialogs.show({.text = "Text", .title = "Fehler", .buttons = BoxButtons::AbortRetryIgnore});
  }
  static bool open() { return QApplication::activeModalWidget() != nullptr; }

 private Q_SLOTS:
  void init() { QCOMPARE(Unasked::current(), std::nullopt); }

  void whatIsTypedAsItComesUpAnswersNothing() {
    const Unasked unasked("Station 3");
    const BoxAnswer answer = shown([this] {
      for (const Qt::Key typed : {Qt::Key_1, Qt::Key_0, Qt::Key_7, Qt::Key_Return, Qt::Key_Enter,
                                  Qt::Key_Space, Qt::Key_Escape, Qt::Key_A, Qt::Key_I}) {
        key(typed);
        key(typed, Qt::AltModifier);
        QVERIFY(open());
      }
      clock_.advance(KeyGuard::kQuietMilliseconds);
      key(Qt::Key_Return);
      QVERIFY(!open());
    });
    QCOMPARE(answer, BoxAnswer::Retry);
  }

  void keysThatStillComeKeepItShut() {
    const Unasked unasked("Station 3");
    const BoxAnswer answer = shown([this] {
      for (int i = 0; i < 5; ++i) {
        clock_.advance(KeyGuard::kQuietMilliseconds - 1);
        key(Qt::Key_Escape);
        QVERIFY(open());
      }
      clock_.advance(KeyGuard::kQuietMilliseconds);
      key(Qt::Key_Escape);
      QVERIFY(!open());
    });
    QCOMPARE(answer, BoxAnswer::Abort);
  }

  void aDoubleClickMeantForSomethingElseAnswersNothing() {
    const Unasked unasked("Station 3");
    const BoxAnswer answer = shown([this] {
      clickOn(QMessageBox::Abort);
      QVERIFY(open());
      clock_.advance(KeyGuard::kNoClickMilliseconds - 1);
      clickOn(QMessageBox::Abort);
      QVERIFY(open());
      clock_.advance(1);
      clickOn(QMessageBox::Ignore);
      QVERIFY(!open());
    });
    QCOMPARE(answer, BoxAnswer::Ignore);
  }

  void aClockSetBackDoesNotShutItForLong() {
    const Unasked unasked("Station 3");
    const BoxAnswer answer = shown([this] {
      clock_.advance(-3'600'000);
      key(Qt::Key_Return);
      QVERIFY(!open());
    });
    QCOMPARE(answer, BoxAnswer::Retry);
  }

  void whatWasCalledAnswersAtOnce() {
    QCOMPARE(shown([] {
               QVERIFY(box().informativeText().isEmpty());
               key(Qt::Key_Return);
               QVERIFY(!open());
             }),
             BoxAnswer::Retry);
  }

  void saysWhatItSpeaksOf() {
    const Unasked unasked("<b>Station 3</b>");
    shown([] {
      QCOMPARE(box().text(), "Text");
      QCOMPARE(box().informativeText(),
               "<b>Station 3</b>\nTasten gelten hier erst, wenn eine Sekunde lang keine kam.");
      auto* label = box().findChild<QLabel*>("qt_msgbox_informativelabel");
      QVERIFY(label && label->isVisible());
      QCOMPARE(label->textFormat(), Qt::PlainText);
    });
  }

  void anInputBoxIsGuardedToo() {
    const Unasked unasked("Station 3");
    MessageBoxes dialogs(clock_);
    QTimer::singleShot(0, this, [this] {
      key(Qt::Key_7);
      key(Qt::Key_Return);
      QVERIFY(open());
      clock_.advance(KeyGuard::kQuietMilliseconds);
      key(Qt::Key_8);
      key(Qt::Key_Return);
      QVERIFY(!open());
    });
    QCOMPARE(dialogs.input("Wert:", "Eingabe", {}), "8");
  }

  void whatIsCalledBehindItIsTheOperators() {
    const Unasked unasked("Station 3");
    shown([this] {
      QCOMPARE(Unasked::current(), std::nullopt);
      QCOMPARE(shown([] {
                 key(Qt::Key_Return);
                 QVERIFY(box().text() == "Text");
               }),
               BoxAnswer::Retry);
    });
    QCOMPARE(Unasked::current(), QString("Station 3"));
  }

  void waitsBelongToTheOperator() {
    EventLoopWaits waits;
    const Unasked unasked("Station 3");
    QStringList seen;
    const auto note = [&] { seen << Unasked::current().value_or("gerufen"); };
    QTimer::singleShot(0, this, note);
    waits.runMessageLoop();
    QTimer::singleShot(0, this, note);
    waits.sleep(5);
    note();
    {
      const Unasked inner("Drucker");
      note();
    }
    note();
    QCOMPARE(seen, (QStringList{"gerufen", "gerufen", "Station 3", "Drucker", "Station 3"}));
  }
};

QTEST_MAIN(TestUnasked)
#include "test_unasked.moc"

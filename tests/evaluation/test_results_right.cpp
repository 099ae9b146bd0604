// Without the right to change results nothing changes: every control, key and short cut of the window.
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>
#include <QTest>

#include "platform/look/look.h"
#include "tests/evaluation/results_desk.h"

using namespace qk;
using namespace qk::test;

class TestResultsRight : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { desk = std::make_unique<ResultsDesk>(); }
  void cleanup() { desk.reset(); }

  void withoutTheRightNothingChanges();

 private:
  BoundGrid& grid() { return desk->grid(); }

  std::unique_ptr<ResultsDesk> desk;
};

/// Every control, every key and every short cut of the window.
void TestResultsRight::withoutTheRightNothingChanges() {
  desk->global.bErgebnisseAendern = false;
  desk->open();
  const QStringList before = desk->everything();
  int asked = 0;
  const auto nothingChanged = [&](const QString& what) {
    QVERIFY2(desk->everything() == before, qPrintable(what));
    QVERIFY2(!desk->rows().isUnlocked() && !desk->rows().isEdited(), qPrintable(what));
    QVERIFY2(!qobject_cast<QLineEdit*>(QApplication::focusWidget()) ||
                 QApplication::focusWidget()->objectName().startsWith("filter_"),
             qPrintable(what));
    asked = int(desk->boxes.asked().size());
  };
  const auto at = [this](int column) {
    desk->activate();
    grid().setFocus();
    grid().setCurrentIndex(desk->rows().index(0, column));
  };
  for (const int tab : {0, 1}) {
    auto& tabs = the<QTabWidget>(desk->window(), "SSTab1");
    tabs.setCurrentIndex(tab);
    for (const char* name : {"cmdEdit", "cmdDelete", "cmdChangeDiszi"}) {
      desk->boxes.expect(kRight);
      click(desk->window(), name);
      nothingChanged(name);
    }
    // Keys at every cell; Del is the button's.
    for (int column = 0; column < 4; ++column) {
      for (int key = Qt::Key_Escape + 1; key <= Qt::Key_F35; ++key) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter) continue;  // OK
        at(column);
        if (key == Qt::Key_Delete) desk->boxes.expect(kRight);
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&grid(), &press);
        QVERIFY2(desk->boxes.done(), qPrintable(QKeySequence(key).toString()));
      }
      for (const Qt::Key key : {Qt::Key_F1, Qt::Key_F2, Qt::Key_F3, Qt::Key_F4, Qt::Key_F5, Qt::Key_F6,
                                Qt::Key_F7, Qt::Key_F8, Qt::Key_F9, Qt::Key_F11, Qt::Key_F12}) {
        at(column);
        QTest::keyClick(&grid(), key);
      }
      for (const char letter : {'a', '5', 'x', ' ', '+', '-', ','}) {
        at(column);
        QTest::keyClick(&grid(), letter);
      }
      for (const Qt::KeyboardModifiers with :
           {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier})
        for (int key = Qt::Key_A; key <= Qt::Key_Z; ++key) {
          if (key == Qt::Key_P || key == Qt::Key_W) continue;  // prints, closes
          at(column);
          QTest::keyClick(&grid(), Qt::Key(key), with);
        }
      const QPoint cell = grid().visualRect(desk->rows().index(0, column)).center();
      QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, cell);
      QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, cell);
      QTest::mouseClick(grid().viewport(), Qt::RightButton, {}, cell);
      QCoreApplication::processEvents();
      nothingChanged(QString("cell %1 of tab %2").arg(column).arg(tab));
    }
    // Mnemonics of every control, as an operator hits them.
    for (int key = Qt::Key_A; key <= Qt::Key_Z; ++key) {
      if (QString("BLW").contains(QChar(key)))
        desk->boxes.expect(kRight);
      else if (QString("ODMTSN").contains(QChar(key)))
        continue;  // OK, menus, tabs, a button that isn't shown
      at(0);
      QTest::keyClick(&grid(), Qt::Key(key), Qt::AltModifier);
      QCoreApplication::processEvents();
      QTRY_VERIFY2(desk->boxes.done(), qPrintable(QString("Alt+") + QChar(key)));
      nothingChanged(QString("Alt+") + QChar(key));
    }
    for (const char* name : {"mnuEditSelAlle", "mnuEditSelNone"}) {
      trigger(desk->window(), name);
      nothingChanged(name);
    }
    for (const char* name : {"Ergebnis", "Waffe", "Disziplin", "Datum"}) {
      const QString cell = QString("filter_%1_%2").arg(name).arg(tab + 1);
      type(desk->window(), cell, "9");
      press(desk->window(), cell, Qt::Key_Delete);
      click(desk->window(), "cmdClearFilter");
      nothingChanged(cell);
    }
  }
  QVERIFY(asked > 10);
  QVERIFY(desk->boxes.done());
  // The table knows every control that acts.
  QStringList buttons;
  for (const auto* each : desk->window().findChildren<QPushButton*>()) buttons << each->objectName();
  buttons.sort();
  QCOMPARE(buttons,
           (QStringList{"cmdChangeDiszi", "cmdClearFilter", "cmdDelete", "cmdEdit", "cmdOK", "cmdStop"}));
  QStringList entries;
  for (const QAction* each : desk->window().findChildren<QAction*>())
    if (each->objectName().startsWith("mnu")) entries << each->objectName();
  entries.sort();
  QCOMPARE(entries, (QStringList{"mnuDateiClose", "mnuDateiPrint", "mnuDateiPrintEdit",
                                 "mnuDateiPrintPreview", "mnuEditSelAlle", "mnuEditSelNone"}));
  QCOMPARE(desk->window().findChildren<QShortcut*>().size(), 1);  // F1
}

QTEST_MAIN(TestResultsRight)
#include "test_results_right.moc"

// Windows on a real screen of 1366 x 768 under a real window manager: none hangs over the edge with its
// frame.
#include <QDialog>
#include <QScreen>
#include <QTest>

#include "platform/look/look.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestWindowPlace : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void theScreenIsTheSmallest() {
    QCOMPARE(QGuiApplication::platformName(), QString("xcb"));
    QCOMPARE(QGuiApplication::primaryScreen()->size(), QSize(1366, 768));
  }

  void largeWindowsOpenInside_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("window");
    QTest::newRow("browser") << "mnuEditSchussAlle"
                             << "frmHaeringSchussAlle";
    QTest::newRow("generator") << "mnuHaeringEsaPreisIni"
                               << "frmHaeringDEF";
    QTest::newRow("keys") << "mnuDisziplinenSPOWettkampf"
                          << "frmDisziKZ";
    QTest::newRow("checker") << "mnuHaeringEsaPreisIniCheck"
                             << "frmHaeringIniPruefung";
    QTest::newRow("groups") << "mnuHaeringGruppenDisziplinen"
                            << "frmHaeringGruppenDisziplinen";
    QTest::newRow("settings") << "mnuOptEinstellungen"
                              << "frmHaeringEinstellungen";
  }
  void largeWindowsOpenInside() {
    QFETCH(QString, action);
    QFETCH(QString, window);
    RangeOffice office("1");
    QVERIFY(office.open());
    office.window().showMaximized();
    QTRY_VERIFY(isFramed(office.window()));
    QString place;
    office.boxes.expectWindow(window, [&](QWidget& shown) {
      QVERIFY(QTest::qWaitForWindowActive(&shown));
      QTRY_VERIFY(isFramed(shown));
      const QRect room = shown.screen()->availableGeometry();
      QTRY_VERIFY2(room.contains(shown.frameGeometry()), qPrintable(inWords(shown.frameGeometry())));
      place = inWords(shown.frameGeometry());
      shown.close();
    });
    if (window == "frmHaeringDEF")
      office.boxes.expect("Sollen die Settings neu eingelesen werden?", BoxAnswer::No);
    office.action(action).trigger();
    QVERIFY(!place.isEmpty());
  }

  void whereItsUserPutsItAWindowStays() {
    QDialog window;
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_VERIFY(isFramed(window));
    window.move(1200, 600);
    QTRY_COMPARE(window.pos(), QPoint(1200, 600));
    QDialog other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    other.close();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents();
    QCOMPARE(window.pos(), QPoint(1200, 600));
  }

  void aWindowLargerThanTheScreenShrinks() {
    QDialog window;
    window.resize(3000, 2000);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_VERIFY2(window.screen()->availableGeometry().contains(window.frameGeometry()),
                 qPrintable(inWords(window.frameGeometry())));
  }

 private:
  static bool isFramed(const QWidget& window) {
    return window.frameGeometry().top() < window.geometry().top();
  }
  static QString inWords(const QRect& place) {
    return QString("%1,%2 %3 x %4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  look::apply(application);
  TestWindowPlace test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_window_place.moc"

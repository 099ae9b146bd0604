// The line in the status bar: its colours tell what threatens, whatever the mouse does.
#include <QTest>

#include "app/watch/watch_line.h"
#include "platform/look/alert.h"

using namespace qk;

namespace {

ThreatBook bookWith(ThreatLevel level) {
  ThreatBook book;
  Threat threat;
  threat.key = "platz";
  threat.level = level;
  threat.line = "Wenig Platz & wenig Zeit";
  threat.what = "Wenig Platz auf dem Datenträger.";
  book.update({threat}, QDateTime(QDate(2026, 11, 22), QTime(10, 0)));
  return book;
}

}  // namespace

class TestWatchLine : public QObject {
  Q_OBJECT

 private:
  QWidget window_;
  WatchLine line_{&window_};

  /// The colour of the line's ground, below no letter.
  QRgb ground(bool underMouse) {
    line_.setAttribute(Qt::WA_UnderMouse, underMouse);
    line_.resize(line_.sizeHint());
    return line_.grab().toImage().pixel(0, 0);
  }
  QRgb alert() {
    QPalette colours = line_.palette();
    look::setAlertColours(colours);
    return colours.color(QPalette::Window).rgb();
  }
  QRgb marked() { return line_.palette().color(QPalette::Midlight).rgb(); }

 private Q_SLOTS:
  void initTestCase() {
    window_.show();
    QVERIFY(alert() != marked());
  }

  void aThreatKeepsItsColourUnderTheMouse() {
    for (const ThreatLevel level : {ThreatLevel::Warning, ThreatLevel::Grave}) {
      line_.show(bookWith(level));
      QCOMPARE(ground(false), alert());
      QCOMPARE(ground(true), alert());
    }
  }

  void whatIsCalmIsMarkedUnderTheMouse() {
    line_.show(bookWith(ThreatLevel::Calm));
    QCOMPARE(ground(true), marked());
    QVERIFY(ground(false) != marked());
    QVERIFY(ground(false) != alert());
  }

  void onlyWhatIsGraveStandsInBold() {
    line_.show(bookWith(ThreatLevel::Warning));
    QVERIFY(!line_.font().bold());
    line_.show(bookWith(ThreatLevel::Grave));
    QVERIFY(line_.font().bold());
  }

  void nothingToSayIsHidden() {
    line_.show(bookWith(ThreatLevel::Warning));
    QVERIFY(line_.isVisible());
    line_.show(ThreatBook());
    QVERIFY(!line_.isVisible());
  }

  void aNameWithAnAmpersandTakesNoKey() {
    line_.show(bookWith(ThreatLevel::Warning));
    QCOMPARE(line_.text(), QString("Wenig Platz && wenig Zeit"));
    QVERIFY(line_.shortcut().isEmpty());
  }
};

QTEST_MAIN(TestWatchLine)
#include "test_watch_line.moc"

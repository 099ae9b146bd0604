// What the status bar says: quietly what was done, and for as long as it lasts that the exchange folder is
// away.
#include <QDir>
#include <QLabel>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>
#include <QToolButton>

#include "targetconfig/station_files.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kMissing = "Austauschordner fehlt";

}  // namespace

class TestStatusLine : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void aMissingFolderShowsWhileItLasts();
  void aFolderThatGoesInPriceModeShows();
  void nobodyLooksWithoutNeed();
  void anotherFolderEndsTheTrouble();
  void commandsAreTold();
  void aCommandThatFailsIsTold();
  void aRefusedQuestionSaysNothing();
  void discardedShotsAreCounted();
  void clearingIsTold();
  void allBeforeADisciplineSaysWhatComesFirst();

 private:
  static QString status(RangeOffice& office) { return office.window().statusBar()->currentMessage(); }
  static bool visibleIn(RangeOffice& office, QWidget& where) {
    return the<QLabel>(where, "lblAustausch").isVisible() && office.hasWindow();
  }
  /// What the watch says, once it has looked.
  static QString inStatusBar(RangeOffice& office) {
    if (!QTest::qWaitFor([&] { return !office.window().watch().keeper().isLooking(); }))
      failTest("a look doesn't come back");
    const auto& line = the<QToolButton>(*office.window().statusBar(), "cmdWarnungen");
    return line.isVisible() ? line.text() : QString();
  }
  /// A second goes by.
  static void second(RangeOffice& office) {
    inStatusBar(office);
    office.place.clock.advance(1000);
    auto* timer = office.window().watch().keeper().findChild<QTimer*>();
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
  }
  static void takeAway(RangeOffice& office) {
    QVERIFY(QDir().rename(office.folder, office.folder + "-fort"));
  }
  static void bringBack(RangeOffice& office) {
    QVERIFY(QDir().rename(office.folder + "-fort", office.folder));
  }
};

void TestStatusLine::aMissingFolderShowsWhileItLasts() {
  RangeOffice office("11");
  QVERIFY(office.open());
  QVERIFY(inStatusBar(office) != kMissing);
  office.activate();
  takeAway(office);
  QTest::keyClick(&office.window(), Qt::Key_F5);
  QCOMPARE(inStatusBar(office), kMissing);
  QVERIFY(visibleIn(office, office.line(1)));
  office.show(2);
  QVERIFY(visibleIn(office, office.line(2)));
  second(office);
  QCOMPARE(inStatusBar(office), kMissing);
  bringBack(office);
  second(office);
  QVERIFY(inStatusBar(office) != kMissing);
  QVERIFY(!visibleIn(office, office.line(2)));
  office.show(1);
  QVERIFY(!visibleIn(office, office.line(1)));
}

void TestStatusLine::aFolderThatGoesInPriceModeShows() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.press(1, "cmdPreisModus");
  takeAway(office);
  second(office);
  QCOMPARE(inStatusBar(office), kMissing);
  trigger(office.window(), "linienfrei");
  bringBack(office);
  second(office);
  QVERIFY(inStatusBar(office) != kMissing);
}

void TestStatusLine::nobodyLooksWithoutNeed() {
  RangeOffice office("1");
  QVERIFY(office.open());
  takeAway(office);
  second(office);
  QVERIFY(inStatusBar(office) != kMissing);
  bringBack(office);
  office.press(1, "cmdPreisModus");
  takeAway(office);
  second(office);
  QCOMPARE(inStatusBar(office), kMissing);
}

void TestStatusLine::anotherFolderEndsTheTrouble() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.activate();
  takeAway(office);
  QTest::keyClick(&office.window(), Qt::Key_F5);
  QCOMPARE(inStatusBar(office), kMissing);
  QVERIFY(visibleIn(office, office.line(1)));
  // Lines that are built meanwhile say it as well.
  office.boxes.expect(iniMissingText(office.folder + "/" + EsaPreisIni));
  office.window().Load_Settings();
  QVERIFY(visibleIn(office, office.line(1)));
  office.set("Netzverzeichnis", office.folder + "-fort/");
  office.window().Load_Settings();
  QVERIFY(inStatusBar(office) != kMissing);
  QVERIFY(!visibleIn(office, office.line(1)));
}

void TestStatusLine::commandsAreTold() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.show(2);
  office.press(2, "cmdPreisModus");
  QCOMPARE(status(office), QString("Linie 2: Preismodus ein"));
  office.chooseShooter(2, "107");
  office.boxes.expect("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?", BoxAnswer::Yes);
  office.press(2, "cmdSendenSchuetzenDisziplinen");
  QCOMPARE(status(office), QString("Linie 2: Müller Jörg an die Station gesendet"));
  office.press(2, "cmdAbmeldenSchuetze");
  QCOMPARE(status(office), QString("Linie 2: Schütze abgemeldet"));
  office.press(2, "Command2");
  QCOMPARE(status(office), QString("Linie 2: Preismodus beendet"));
}

void TestStatusLine::aCommandThatFailsIsTold() {
  RangeOffice office("1");
  QVERIFY(office.open());
  takeAway(office);
  office.press(1, "cmdPreisModus");
  QCOMPARE(status(office), QString("Linie 1: Nicht gesendet: Der Austauschordner nimmt keine Befehle an."));
}

void TestStatusLine::aRefusedQuestionSaysNothing() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.boxes.expect("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?", BoxAnswer::No);
  office.press(1, "cmdSendenSchuetzenDisziplinen");
  QCOMPARE(status(office), QString());
}

void TestStatusLine::discardedShotsAreCounted() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  for (int hit : {1, 2, 3}) office.fire(1, shotRecord(1, hit, "9,7", "123,4"));
  office.window().statusBar()->clearMessage();
  office.boxes.expect("Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?",
                      BoxAnswer::No);
  trigger(office.window(), "Löschen");
  QCOMPARE(status(office), QString());
  office.boxes.expect("Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?",
                      BoxAnswer::Yes);
  trigger(office.window(), "Löschen");
  QCOMPARE(status(office), QString("Linie 1: 3 Schüsse verworfen"));
}

void TestStatusLine::clearingIsTold() {
  RangeOffice office("1");
  QVERIFY(office.open());
  trigger(office.window(), "mnuHaeringTransferClear");
  QCOMPARE(status(office), QString("Der Austauschordner ist geleert."));
  // Not where nothing was cleared: an old command would still be there when the share comes back.
  office.window().statusBar()->clearMessage();
  QVERIFY(QDir().rename(office.folder, office.folder + "-weg"));
  trigger(office.window(), "mnuHaeringTransferClear");
  QCOMPARE(status(office), QString());
}

void TestStatusLine::allBeforeADisciplineSaysWhatComesFirst() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  const QString before = status(office);
  office.press(1, "m_cmdAlleWaehlenHaering");
  QCOMPARE(status(office), before);  // there is nothing to choose
  office.fire(1, shotRecord(1, 1, "9,7", "123,4"));
  const QString first = "Linie 1: Zuerst rechts eine Disziplin ankreuzen (F11), dann die Schüsse wählen.";
  office.boxes
      .expect(
          "Es sind mehr Schuss (1) angewählt, als momentan in Tarvex (0) aufgenommen werden "
          "können!\r\nBitte wählen Sie andere Tarvex Disziplinen oder weniger Schuss zum Übernehmen")
      .during([&] { QCOMPARE(status(office), first); });
  office.press(1, "m_cmdAlleWaehlenHaering");
  QCOMPARE(status(office), first);
}

QTEST_MAIN(TestStatusLine)
#include "test_status_line.moc"

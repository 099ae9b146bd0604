// What stands beside a line's text in the tree: open shots, and a command that waits for its station.
#include <QTest>

#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestLineWork : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void countsOpenShots();
  void countSurvivesARestart();
  void waitsForTheStation();
  void inactiveLineHasNoPlace();

 private:
  static QString work(RangeOffice& office, int position) {
    return office.tree().topLevelItem(position - 1)->text(1);
  }
  static QString inWords(RangeOffice& office, int position) {
    return office.tree().topLevelItem(position - 1)->statusTip(0);
  }
};

void TestLineWork::countsOpenShots() {
  RangeOffice office("101");
  QVERIFY(office.open());
  QCOMPARE(work(office, 2), "");
  QCOMPARE(inWords(office, 2), "Linie 3: frei");
  office.show(3);
  office.chooseShooter(3, "107");
  office.press(3, "cmdPreisModus");
  office.fire(3, shotRecord(3, 1, "9,7", "123,4"));
  QCOMPARE(work(office, 2), "1");
  QCOMPARE(inWords(office, 2), "Linie 3: im Preismodus, 1 offener Schuss");
  office.fire(3, shotRecord(3, 2, "9,7", "123,4"));
  QCOMPARE(work(office, 2), "2");
  QCOMPARE(inWords(office, 2), "Linie 3: im Preismodus, 2 offene Schüsse");
  QCOMPARE(work(office, 1), "");
  QVERIFY(office.node(2).startsWith(" 3 - "));
  office.boxes.expect("Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?",
                      BoxAnswer::Yes);
  office.press(3, "m_cmdVerwerfen");
  QCOMPARE(work(office, 2), "");
}

void TestLineWork::countSurvivesARestart() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  office.fire(1, shotRecord(1, 1, "9,7", "123,4"));
  office.drop();
  QVERIFY(office.open());
  QCOMPARE(work(office, 1), "1");
  QCOMPARE(inWords(office, 1), "Linie 1: frei, 1 offener Schuss");
}

void TestLineWork::waitsForTheStation() {
  RangeOffice office("11");
  QVERIFY(office.open());
  trigger(office.window(), "linienstop");
  QString seen, words;
  office.place.waits.inSleep(1, [&] {
    seen = work(office, 1);
    words = inWords(office, 1);
    office.takeCommand(1);
  });
  office.action("wkvorbereiten").trigger();
  QCOMPARE(seen, "wartet");
  QCOMPARE(words, "Linie 1: im Preismodus, wartet auf die Station");
  QCOMPARE(work(office, 1), "");
}

void TestLineWork::inactiveLineHasNoPlace() {
  RangeOffice office("10");
  QVERIFY(office.open());
  Q_EMIT office.line(2).workChanged(1);
  QCOMPARE(work(office, 1), "");
}

QTEST_MAIN(TestLineWork)
#include "test_line_work.moc"

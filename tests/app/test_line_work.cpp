// What stands beside a line's text in the tree: open shots, and a command that waits for its station.
#include <QListWidget>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QStyledItemDelegate>
#include <QTest>

#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Counts how often the list asks for the size of an entry: what a layout costs.
class CountingDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    ++asked;
    return QStyledItemDelegate::sizeHint(option, index);
  }
  mutable int asked = 0;
};

}  // namespace

class TestLineWork : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void countsOpenShots();
  void countSurvivesARestart();
  void waitsForTheStation();
  void inactiveLineHasNoPlace();
  void sumLinesCostTheSameEach();
  void storingSaysSoQuietly();

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

void TestLineWork::sumLinesCostTheSameEach() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.press(1, "cmdPreisModus");
  auto& list = the<QListWidget>(office.window(), "lstInfo");
  const auto layoutsOf = [&](int lines) {
    list.clear();
    QCoreApplication::processEvents();
    CountingDelegate counting;
    list.setItemDelegate(&counting);
    QStringList sums;
    for (int i = 1; i <= lines; ++i) sums += "22;Serie " + QString::number(i);
    office.send(1, sums);
    office.tick(1);
    if (list.count() != lines) failTest("lines are missing");
    // The last one is selected and can be seen.
    const QString last = QString("L1 - Serie %1").arg(lines);
    if (!QTest::qWaitFor([&] { return list.currentItem() && list.currentItem()->text() == last; }))
      failTest("the last line isn't selected");
    if (!list.viewport()->rect().intersects(list.visualItemRect(list.currentItem())))
      failTest("the last line can't be seen");
    list.setItemDelegate(nullptr);
    return counting.asked;
  };
  const int few = layoutsOf(100);
  const int many = layoutsOf(1000);
  QVERIFY2(many <= 12 * few, qPrintable(QString("%1 sizes for 100 lines, %2 for 1000").arg(few).arg(many)));
}

void TestLineWork::storingSaysSoQuietly() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  for (int hit = 1; hit <= 10; ++hit) office.fire(1, shotRecord(1, hit, "9,7", "123,4", "LG Serie 10"));
  office.tickEntry(1, "m_lstDisziTarvex", "LG Serie 10");
  office.place.random.give({0.1, 0.2});
  office.press(1, "m_cmdAlleWaehlenHaering");
  office.activate();
  QTest::keyClick(&office.window(), Qt::Key_F9);
  const QString said = "Linie 1: 1 Serie für Müller Jörg gespeichert, 10 Schüsse verbucht.";
  QCOMPARE(office.window().statusBar()->currentMessage(), said);
  // The hint of what the mouse points at comes and goes before it.
  for (const QString hint : {"Hinweis", ""}) {
    QStatusTipEvent tip(hint);
    QCoreApplication::sendEvent(&office.window(), &tip);
    QCOMPARE(office.window().statusBar()->currentMessage(), hint.isEmpty() ? said : hint);
  }
}

QTEST_MAIN(TestLineWork)
#include "test_line_work.moc"

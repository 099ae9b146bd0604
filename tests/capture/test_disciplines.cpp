// Check lists, kinds of discipline, layout code and the choice by a station's name.

#include <QSignalSpy>
#include <QTest>

#include "capture/check_list.h"
#include "capture/discipline_loader.h"
#include "tests/capture/shots.h"

using namespace qk;
using namespace qk::test;

class TestDisciplines : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void kinds_data();
  void kinds();
  void layoutCodes_data();
  void layoutCodes();
  void stationNames_data();
  void stationNames();
  void checkListOutside();
  void anEntryIsMadeCurrentEachTime();
  void onlyTheOperatorsTickIsAnnounced();
};

void TestDisciplines::kinds_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<int>("kind");
  QTest::newRow("teiler") << "Teiler" << static_cast<int>(DisciplineKind::Teiler);
  QTest::newRow("ring-teiler") << "RT 10" << static_cast<int>(DisciplineKind::RingTeiler);
  QTest::newRow("ring") << "Ring 10" << static_cast<int>(DisciplineKind::Ring);
  QTest::newRow("none") << "Nichts" << static_cast<int>(DisciplineKind::None);
}

void TestDisciplines::kinds() {
  QFETCH(QString, text);
  QFETCH(int, kind);
  QCOMPARE(static_cast<int>(kindOf(*discipline(1, text))), kind);
}

void TestDisciplines::layoutCodes_data() {
  QTest::addColumn<QString>("disciplineText");
  QTest::addColumn<QString>("code");
  QTest::newRow("nothing ticked") << ""
                                  << "";
  QTest::newRow("whole rings") << "Ring 10"
                               << "1";
  QTest::newRow("tenths") << "Ring 10 Zehntel"
                          << "2";
  QTest::newRow("ring-teiler, with tenths too") << "RT 10 Zehntel"
                                                << "3";
  QTest::newRow("half tenths") << "Ring 10 Halbe"
                               << "14";
  QTest::newRow("half tenths of a ring-teiler") << "RT 10 Halbe"
                                                << "34";
  QTest::newRow("a teiler sets no column") << "Teiler Halbe"
                                           << "";
  QTest::newRow("all kinds, in order of the code") << "Ring 10 Halbe Zehntel + RT 10 + Ring 20 + Ring 30"
                                                   << "1234";
}

void TestDisciplines::layoutCodes() {
  QFETCH(QString, disciplineText);
  QFETCH(QString, code);
  QCOMPARE(layoutCode(collected(disciplines(disciplineText))), code);
}

void TestDisciplines::stationNames_data() {
  QTest::addColumn<QString>("name");
  QTest::addColumn<bool>("listed");
  QTest::newRow("end of a discipline") << "Luftgewehr" << true;
  QTest::newRow("whatever the case") << "LUFTGEWEHR" << true;
  QTest::newRow("a leading 20 is no part of the name") << "20 Luftgewehr" << true;
  QTest::newRow("any leading 20") << "2010m Luftgewehr" << true;
  QTest::newRow("blanks go with the 20") << "20 Luftgewehr " << true;
  QTest::newRow("blanks stay without it") << "Luftgewehr " << false;
  QTest::newRow("end of a combination") << "Pokal" << true;
  QTest::newRow("middle of a discipline") << "10m" << false;
  QTest::newRow("longer than the entry") << "Das 10m Luftgewehr" << false;
  QTest::newRow("nothing ends every entry") << "" << true;
}

void TestDisciplines::stationNames() {
  QFETCH(QString, name);
  QFETCH(bool, listed);
  CheckList disciplineList, combinationList;
  disciplineList.add("10m Luftgewehr", 1);
  combinationList.add("Sommerpokal", 2);
  QCOMPARE(WettbewerbInListen(name, disciplineList, combinationList), listed);
}

void TestDisciplines::checkListOutside() {
  CheckList list;
  list.add("eins", 1);
  QVERIFY_THROWS_EXCEPTION(Error, list.text(1));
  QVERIFY_THROWS_EXCEPTION(Error, list.setTicked(-1, true));
  QVERIFY_THROWS_EXCEPTION(Error, list.setCurrent(1));
  list.setCurrent(0);
  list.clear();
  QCOMPARE(list.count(), 0);
  QCOMPARE(list.current(), -1);
}

void TestDisciplines::anEntryIsMadeCurrentEachTime() {
  CheckList list;
  list.add("eins", 1);
  QSignalSpy current(&list, &CheckList::currentChanged);
  list.setCurrent(0);
  list.setCurrent(0);
  QCOMPARE(current.count(), 2);
}

void TestDisciplines::onlyTheOperatorsTickIsAnnounced() {
  CheckList list;
  list.add("eins", 1);
  list.add("zwei", 2);
  QSignalSpy ticked(&list, &CheckList::ticked);
  QSignalSpy shown(&list, &CheckList::dataChanged);
  list.setTicked(0, true);
  QCOMPARE(ticked.count(), 0);
  QCOMPARE(shown.count(), 1);
  QVERIFY(list.setData(list.index(1), Qt::Checked, Qt::CheckStateRole));
  QCOMPARE(ticked.count(), 1);
  QCOMPARE(ticked.at(0).at(0).toInt(), 1);
  QCOMPARE(list.tickedCount(), 2);
  QCOMPARE(list.data(list.index(1), Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Checked));
  QCOMPARE(list.data(list.index(1), Qt::DisplayRole).toString(), QString("zwei"));
  QVERIFY(list.flags(list.index(1)) & Qt::ItemIsUserCheckable);
  list.untickAll();
  QCOMPARE(list.tickedCount(), 0);
}

QTEST_APPLESS_MAIN(TestDisciplines)
#include "test_disciplines.moc"

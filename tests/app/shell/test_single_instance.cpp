// One running program of a kind per workstation.
#include <QFile>
#include <QSignalSpy>
#include <QSysInfo>
#include <QTest>

#include "app/shell/single_instance.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestSingleInstance : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void oneInstancePerSettingsAndKind();
  void theSecondBringsTheFirstToTheFront();
  void aCrashLeavesNoLock();
};

void TestSingleInstance::oneInstancePerSettingsAndKind() {
  TestWorkplace place;
  SingleInstance first(place.path("einstellungen"), "instanz");
  QVERIFY(first.begin());
  SingleInstance other(place.path("andere"), "instanz");
  QVERIFY(other.begin());
  SingleInstance desk(place.path("einstellungen"), "kasse");
  QVERIFY(desk.begin());
  SingleInstance secondDesk(place.path("einstellungen"), "kasse");
  QVERIFY(!secondDesk.begin());
  SingleInstance masterData(place.path("einstellungen"), "stammdaten");
  QVERIFY(masterData.begin());
}

void TestSingleInstance::theSecondBringsTheFirstToTheFront() {
  TestWorkplace place;
  SingleInstance first(place.path("einstellungen"), "instanz");
  QVERIFY(first.begin());
  QSignalSpy front(&first, &SingleInstance::comeToFront);
  SingleInstance second(place.path("einstellungen"), "instanz");
  QVERIFY(!second.begin());
  QTRY_COMPARE(front.count(), 1);
}

void TestSingleInstance::aCrashLeavesNoLock() {
  TestWorkplace place;
  {
    // What a killed process leaves: a lock file of a process that is no more.
    QFile lock(place.path("einstellungen.instanz"));
    QVERIFY(lock.open(QIODevice::WriteOnly));
    lock.write("4194303\nqk-intarso\n" + QSysInfo::machineHostName().toUtf8() + "\n" +
               QSysInfo::machineUniqueId() + "\n" + QSysInfo::bootUniqueId() + "\n");
  }
  SingleInstance again(place.path("einstellungen"), "instanz");
  QVERIFY(again.begin());
}

QTEST_MAIN(TestSingleInstance)
#include "test_single_instance.moc"

// Work on master data keeps this process's locks on the competition's file, and holds none while somebody is
// asked.
#include <QTest>

#include "masterdata/pages/page.h"
#include "tests/masterdata/windows/master_desk.h"
#include "tests/support/lock_watch.h"

using namespace qk;
using namespace qk::test;

class TestMasterLocks : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void aDaysWorkKeepsItsLocks() {
    MasterDesk desk;
    LockWatch watch(desk.competition);
    QVERIFY(desk.open());
    for (const Page& page : masterDataPages()) desk.show(page.key);
    desk.show("Vereine");
    desk.key(Qt::Key_N, Qt::ControlModifier);
    desk.setField("feld_Vereine_Name", "Neu");
    desk.key(Qt::Key_S, Qt::ControlModifier);
    desk.boxes.expect("Der Verein »Neu« löschen?", BoxAnswer::Yes).during([&] {
      desk.execute("UPDATE Wettkampf SET Ort = 'Nebenan'");
    });
    trigger(desk.window(), "mnuLoeschen");
    desk.key(Qt::Key_F5);
    desk.boxes.expectOpenFile("Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*", desk.competition);
    trigger(desk.window(), "mnuOeffnen");
    QVERIFY(hasReadLock(desk.competition));
    QVERIFY(watch.looks() > 100);
    QVERIFY2(watch.losses() == 0, qPrintable(watch.firstLoss()));
    QCOMPARE(desk.value("SELECT Ort FROM Wettkampf"), QString("Nebenan"));
  }
};

QTEST_MAIN(TestMasterLocks)
#include "test_master_locks.moc"

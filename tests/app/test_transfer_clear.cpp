// "Offene Linienbefehle löschen": what is deleted, and what lines do meanwhile.
#include <QApplication>
#include <QTest>

#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestTransferClear : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void deletesWhatLinesLeft();
  void noLineReadsWhileItIsCleared();
  void aWholeReportIsReadWhileItIsCleared();
};

void TestTransferClear::deletesWhatLinesLeft() {
  RangeOffice office("11");
  QVERIFY(office.open());
  trigger(office.window(), "mnuHaeringTransferClear");
  office.press(1, "cmdPreisModus");
  office.send(2, {"22;alt"});
  bool hourglass = false;
  office.place.files.before([&](FileStep step, const QString&) {
    hourglass |= step == FileStep::Remove && QApplication::overrideCursor() &&
                 QApplication::overrideCursor()->shape() == Qt::WaitCursor;
  });
  trigger(office.window(), "mnuHaeringTransferClear");
  office.place.files.before({});
  QVERIFY(hourglass);
  QVERIFY(office.place.files.list(office.folder, "HS*").isEmpty());
  QVERIFY(!QApplication::overrideCursor());
  office.set("Netzverzeichnis", office.folder);
  office.send(2, {"22;alt"});
  trigger(office.window(), "mnuHaeringTransferClear");
  QCOMPARE(office.place.files.list(office.folder, "HS*").size(), 2);
}

/// Between a station's data and its flag nobody may read: that would end the program.
void TestTransferClear::noLineReadsWhileItIsCleared() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  office.send(1, {shotRecord(1, 1, "9,7", "123,4")});
  int ticks = 0;
  office.place.files.before([&](FileStep step, const QString& path) {
    if (step != FileStep::Remove || !path.endsWith("HSlav1.ctl")) return;
    ++ticks;
    office.tick(1);
  });
  trigger(office.window(), "mnuHaeringTransferClear");
  office.place.files.before({});
  QCOMPARE(ticks, 1);
  QCOMPARE(office.line(1).nOffeneSchuss(), 0);
  office.fire(1, shotRecord(1, 2, "9,7", "123,4"));
  QCOMPARE(office.line(1).nOffeneSchuss(), 1);
}

/// A box about a file that can't be deleted may stand there for minutes.
void TestTransferClear::aWholeReportIsReadWhileItIsCleared() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  bool sent = false;
  office.place.files.before([&](FileStep step, const QString& path) {
    if (sent || step != FileStep::Remove || !path.endsWith("HServ1.nrt")) return;
    sent = true;
    office.fire(1, shotRecord(1, 1, "9,7", "123,4"));
  });
  trigger(office.window(), "mnuHaeringTransferClear");
  office.place.files.before({});
  QVERIFY(sent);
  QCOMPARE(office.line(1).nOffeneSchuss(), 1);
}

QTEST_MAIN(TestTransferClear)
#include "test_transfer_clear.moc"

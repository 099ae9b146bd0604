// What open shots take of the memory comes back when they are booked: the program runs for ten hours.
#include <QTest>

#include "tests/app/full_lines.h"

using namespace qk;
using namespace qk::test;

class TestLineMemory : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void bookingGivesTheMemoryBack();
};

/// Counted in the heap, so that it repeats. The first time around makes what is kept for good.
void TestLineMemory::bookingGivesTheMemoryBack() {
  constexpr int kLines = 3, kShots = 120;
  FullLines range(kLines);
  range.load(kShots);
  range.book();
  const qint64 empty = allocatedBytes();
  range.load(kShots);
  QCOMPARE(range.openShots(), kLines * kShots);
  const qint64 full = allocatedBytes();
  range.book();
  QCOMPARE(range.openShots(), 0);
  const qint64 booked = allocatedBytes();
  QVERIFY(full - empty > kLines * kShots * qint64(sizeof(HaeringSchuss)));
  QVERIFY2(booked - empty < (full - empty) / 10,
           qPrintable(QString("%1 of %2 bytes stay").arg(booked - empty).arg(full - empty)));
}

QTEST_MAIN(TestLineMemory)
#include "test_line_memory.moc"

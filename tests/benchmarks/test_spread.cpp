// What stands in a row that was taken many times, and that its two sides take turns.
#include <QtTest>

#include "benchmarks/spread.h"

namespace qk::bench {

class TestSpread : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void theMiddleAndItsQuartiles_data();
  void theMiddleAndItsQuartiles();
  void oneFigureHasNoQuartiles();
  void bothTakeTurns();
};

void TestSpread::theMiddleAndItsQuartiles_data() {
  QTest::addColumn<QList<double>>("values");
  QTest::addColumn<double>("median");
  QTest::addColumn<double>("lower");
  QTest::addColumn<double>("upper");
  QTest::newRow("one") << QList<double>{7} << 7.0 << 7.0 << 7.0;
  QTest::newRow("odd") << QList<double>{4, 1, 3, 2, 5} << 3.0 << 2.0 << 4.0;
  QTest::newRow("between two") << QList<double>{4, 2, 1, 3} << 2.5 << 1.75 << 3.25;
  QTest::newRow("one far off") << QList<double>{100, 1, 1, 1, 2} << 1.0 << 1.0 << 2.0;
}

void TestSpread::theMiddleAndItsQuartiles() {
  QFETCH(QList<double>, values);
  const Spread spread(std::vector<double>(values.begin(), values.end()));
  QVERIFY(spread.quartiles.has_value());
  QTEST(spread.median, "median");
  QTEST(spread.quartiles->lower, "lower");
  QTEST(spread.quartiles->upper, "upper");
}

void TestSpread::oneFigureHasNoQuartiles() {
  const Spread spread = 1.5;
  QCOMPARE(spread.median, 1.5);
  QVERIFY(!spread.quartiles);
}

void TestSpread::bothTakeTurns() {
  QString order;
  // The second of a pair always takes four times as long: neither side may gain by it.
  const auto taken = [&](char side) {
    order += QLatin1Char(side);
    return order.size() % 2 == 0 ? 4.0 : 1.0;
  };
  const Spread spread = ratioInTurns([&] { return 2 * taken('h'); }, [&] { return taken('b'); });
  QString expected;
  for (int turn = 0; turn < kTurns; ++turn) expected += turn % 2 == 0 ? "hb" : "bh";
  QCOMPARE(order, expected);
  QCOMPARE(spread.quartiles->lower, 0.5);
  QCOMPARE(spread.quartiles->upper, 8.0);
  QCOMPARE(spread.median, (0.5 + 8.0) / 2);
}

}  // namespace qk::bench

QTEST_GUILESS_MAIN(qk::bench::TestSpread)
#include "test_spread.moc"

// Readings, number texts and money.
#include <QTest>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"
#include "tests/support/error_of.h"

using namespace qk;
using namespace qk::test;

class TestNumbers : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void strict_data();
  void strict();
  void strictRefuses_data();
  void strictRefuses();
  void prefix_data();
  void prefix();
  void tolerant_data();
  void tolerant();
  void beyondAllRange();
  void text_data();
  void text();
  void formats_data();
  void formats();
  void wholeNumbers();
  void money();
  void moneyText_data();
  void moneyText();
};

void TestNumbers::strict_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<double>("value");
  QTest::newRow("comma") << "9,7" << 9.7;
  QTest::newRow("whole") << "17" << 17.0;
  QTest::newRow("negative") << "-0,25" << -0.25;
  QTest::newRow("plus") << "+3" << 3.0;
  QTest::newRow("outer blanks") << "  10,9 " << 10.9;
  QTest::newRow("nothing before the comma") << ",5" << 0.5;
  QTest::newRow("nothing behind the comma") << "5," << 5.0;
  QTest::newRow("leading zeros") << "007" << 7.0;
  QTest::newRow("too small to tell") << "0," + QString(400, '0') + "1" << 0.0;
}
void TestNumbers::strict() {
  QFETCH(QString, text);
  QFETCH(double, value);
  QCOMPARE(parseStrict(text), value);
  QVERIFY(isNumeric(text));
}

void TestNumbers::strictRefuses_data() {
  QTest::addColumn<QString>("text");
  for (const char* text : {"", " ", "9.7", "1e3", "1.000,5", "1,2,3", ",", "-", "+-1", "- 1", "1 2", "12a",
                           "0x1F", "NAN", "inf", "٣", "1,5-"})
    QTest::newRow(qPrintable(QString("<%1>").arg(text))) << QString(text);
}
void TestNumbers::strictRefuses() {
  QFETCH(QString, text);
  QCOMPARE(errorOf([&] { parseStrict(text); }), 13);
  QVERIFY(!isNumeric(text));
}

void TestNumbers::prefix_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<double>("value");
  QTest::newRow("stops at the comma") << "9,7" << 9.0;
  QTest::newRow("decimal point") << "9.7" << 9.7;
  QTest::newRow("one point only") << "1.2.3" << 1.2;
  QTest::newRow("stops at a letter") << "12abc" << 12.0;
  QTest::newRow("no exponent") << "1e3" << 1.0;
  QTest::newRow("leading blanks") << " \t -4.5x" << -4.5;
  QTest::newRow("sign alone") << "-" << 0.0;
  QTest::newRow("point alone") << "." << 0.0;
  QTest::newRow("nothing") << "" << 0.0;
  QTest::newRow("letters") << "abc" << 0.0;
}
void TestNumbers::prefix() {
  QFETCH(QString, text);
  QFETCH(double, value);
  QCOMPARE(parsePrefix(text), value);
}

void TestNumbers::tolerant_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<double>("value");
  QTest::newRow("comma") << "9,7" << 9.7;
  QTest::newRow("group and comma") << "1.234,5" << 1234.5;
  QTest::newRow("points are dropped") << "12.50" << 1250.0;
  QTest::newRow("amount") << "1.573,45 €" << 1573.45;
  QTest::newRow("second comma stops") << "1,2,3" << 1.2;
  QTest::newRow("nothing") << "" << 0.0;
}
void TestNumbers::tolerant() {
  QFETCH(QString, text);
  QFETCH(double, value);
  QCOMPARE(parseTolerant(text), value);
}

void TestNumbers::beyondAllRange() {
  const QString huge(400, '9');
  QCOMPARE(errorOf([&] { parseStrict(huge); }), 6);
  QCOMPARE(errorOf([&] { parsePrefix(huge); }), 6);
  QVERIFY(!isNumeric(huge));
  QVERIFY(!readPrefix(huge));
  QVERIFY(!readPrefix(u"abc"));
  QCOMPARE(readPrefix(u"0x").value(), 0.0);
}

void TestNumbers::text_data() {
  QTest::addColumn<double>("value");
  QTest::addColumn<QString>("text");
  QTest::newRow("sum of tenths") << 0.1 + 0.2 << "0,3";
  QTest::newRow("whole") << 100.0 << "100";
  QTest::newRow("large") << 1e20 << "1E+20";
  QTest::newRow("15 digits") << 123456789012345.0 << "123456789012345";
  QTest::newRow("third") << 1.0 / 3 << "0,333333333333333";
  QTest::newRow("negative") << -9.7 << "-9,7";
  QTest::newRow("negative nothing") << -0.0 << "0";
  QTest::newRow("small") << 0.0001 << "0,0001";
  QTest::newRow("smaller") << 0.00001 << "1E-05";
  QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << "INF";
}
void TestNumbers::text() {
  QFETCH(double, value);
  QFETCH(QString, text);
  QCOMPARE(numberText(value), text);
}

void TestNumbers::formats_data() {
  QTest::addColumn<double>("value");
  QTest::addColumn<int>("decimals");
  QTest::addColumn<bool>("grouped");
  QTest::addColumn<QString>("text");
  QTest::newRow("halves away from zero") << 12.35 << 1 << false << "12,4";
  QTest::newRow("negative halves too") << -12.35 << 1 << false << "-12,4";
  QTest::newRow("below the half") << 12.349 << 1 << false << "12,3";
  QTest::newRow("carries through") << 99.95 << 1 << false << "100,0";
  QTest::newRow("sum of tenths") << 1.05 + 0.1 << 1 << false << "1,2";
  QTest::newRow("grouped") << 1234567.25 << 1 << true << "1.234.567,3";
  QTest::newRow("grouped short") << 123.0 << 1 << true << "123,0";
  QTest::newRow("grouped carry") << 999.96 << 1 << true << "1.000,0";
  QTest::newRow("small") << 0.04 << 2 << false << "0,04";
  QTest::newRow("rounds to nothing") << -0.04 << 1 << false << "0,0";
  QTest::newRow("up from nothing") << 0.05 << 1 << false << "0,1";
  QTest::newRow("far below") << 0.0000001 << 1 << false << "0,0";
  QTest::newRow("no decimals") << 2.5 << 0 << false << "3";
  QTest::newRow("half of one") << 0.5 << 0 << false << "1";
  QTest::newRow("below half of one") << 0.4 << 0 << false << "0";
  QTest::newRow("nothing") << 0.0 << 2 << true << "0,00";
  QTest::newRow("large") << 1e20 << 0 << true << "100.000.000.000.000.000.000";
  QTest::newRow("more decimals than digits") << 1.5 << 4 << false << "1,5000";
}
void TestNumbers::formats() {
  QFETCH(double, value);
  QFETCH(int, decimals);
  QFETCH(bool, grouped);
  QFETCH(QString, text);
  QCOMPARE(formatNumber(value, decimals, grouped), text);
}

void TestNumbers::wholeNumbers() {
  QCOMPARE(toInt16(2.5), std::int16_t(2));
  QCOMPARE(toInt16(3.5), std::int16_t(4));
  QCOMPARE(toInt16(-2.5), std::int16_t(-2));
  QCOMPARE(toInt16(32767.4), std::int16_t(32767));
  QCOMPARE(errorOf([] { toInt16(32767.5); }), 6);
  QCOMPARE(errorOf([] { toInt16(-32769); }), 6);
  QCOMPARE(toInt32(2147483647.0), 2147483647);
  QCOMPARE(errorOf([] { toInt32(2147483648.0); }), 6);
  QCOMPARE(errorOf([] { toInt32(std::nan("")); }), 6);
}

void TestNumbers::money() {
  QCOMPARE(Money::fromDouble(1.5).units(), 15000);
  QCOMPARE(Money::fromDouble(0.00005).units(), 0);
  QCOMPARE(Money::fromDouble(1.00005).units(), 10000);
  QCOMPARE(Money::fromDouble(0.00015).units(), 2);
  QCOMPARE(Money::fromDouble(-1573.45).units(), -15734500);
  QCOMPARE(errorOf([] { Money::fromDouble(1e15); }), 6);
  QCOMPARE(errorOf([] { Money::fromDouble(std::nan("")); }), 6);
  Money sum;
  for (int i = 0; i < 10; ++i) sum += Money::fromDouble(0.1);
  QCOMPARE(sum, Money::fromDouble(1));
  QVERIFY(-sum < Money());
  const Money large = Money::fromUnits(1234567890123456);
  QCOMPARE(Money::fromDouble(large.toDouble()), large);
  const Money most = Money::fromUnits(std::numeric_limits<std::int64_t>::max());
  const Money least = Money::fromUnits(std::numeric_limits<std::int64_t>::min());
  const Money one = Money::fromUnits(1);
  QCOMPARE(most - one + one, most);
  QCOMPARE(least + one - one, least);
  QCOMPARE((most + least).units(), -1);
  for (const auto& beyond : std::vector<std::function<Money()>>{
           [&] { return most + one; }, [&] { return least + -one; }, [&] { return least - one; },
           [&] { return most - -one; }, [&] { return -least; }, [&] { return Money() - least; }})
    QCOMPARE(errorOf(beyond), 6);
}

void TestNumbers::moneyText_data() {
  QTest::addColumn<qint64>("units");
  QTest::addColumn<QString>("plain");
  QTest::addColumn<QString>("currency");
  QTest::newRow("amount") << qint64(15734500) << "1573,45"
                          << "1.573,45 €";
  QTest::newRow("nothing") << qint64(0) << "0"
                           << "0,00 €";
  QTest::newRow("whole") << qint64(20000) << "2"
                         << "2,00 €";
  QTest::newRow("negative") << qint64(-15000) << "-1,5"
                            << "-1,50 €";
  QTest::newRow("half a cent") << qint64(50) << "0,005"
                               << "0,01 €";
  QTest::newRow("negative half a cent") << qint64(-50) << "-0,005"
                                        << "-0,01 €";
  QTest::newRow("too little to show") << qint64(-49) << "-0,0049"
                                      << "0,00 €";
  QTest::newRow("million") << qint64(10000000000) << "1000000"
                           << "1.000.000,00 €";
  QTest::newRow("lowest") << std::numeric_limits<qint64>::min() << "-922337203685477,5808"
                          << "-922.337.203.685.477,58 €";
}
void TestNumbers::moneyText() {
  QFETCH(qint64, units);
  QFETCH(QString, plain);
  QFETCH(QString, currency);
  QCOMPARE(Money::fromUnits(units).toText(), plain);
  QCOMPARE(Money::fromUnits(units).toCurrencyText(), currency);
}

QTEST_APPLESS_MAIN(TestNumbers)
#include "test_numbers.moc"

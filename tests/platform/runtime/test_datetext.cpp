// Dates as text and back.
#include <QTest>

#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"

using namespace qk;

class TestDateText : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void writes();
  void reads_data();
  void reads();
  void refuses_data();
  void refuses();
  void everyTextReadsBack();
};

void TestDateText::writes() {
  QCOMPARE(dateText(QDateTime(QDate(2026, 11, 20), QTime(0, 0))), "20.11.2026");
  QCOMPARE(dateText(QDateTime(QDate(2026, 1, 2), QTime(10, 41, 7))), "02.01.2026 10:41:07");
  QCOMPARE(dateText(QDateTime(QDate(2026, 1, 2), QTime(0, 0, 0, 900))), "02.01.2026");
  QCOMPARE(dateText(QDateTime(dateZero().date(), QTime(10, 41, 7))), "10:41:07");
  QCOMPARE(dateText(dateZero()), "00:00:00");
  QCOMPARE(dateText(QDateTime()), "");
  QCOMPARE(dateZero().date(), QDate(1899, 12, 30));
}

void TestDateText::reads_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QDateTime>("value");
  const auto at = [](int y, int m, int d, QTime t = QTime(0, 0)) { return QDateTime(QDate(y, m, d), t); };
  QTest::newRow("date") << "20.11.2026" << at(2026, 11, 20);
  QTest::newRow("short") << "1.2.2026" << at(2026, 2, 1);
  QTest::newRow("two-digit year") << "01.02.29" << at(2029, 2, 1);
  QTest::newRow("two-digit year of the last century") << "01.02.30" << at(1930, 2, 1);
  QTest::newRow("time") << "20.11.2026 10:41:07" << at(2026, 11, 20, QTime(10, 41, 7));
  QTest::newRow("no seconds") << "20.11.2026 9:41" << at(2026, 11, 20, QTime(9, 41));
  QTest::newRow("blanks") << " 20.11.2026  10:41:07 " << at(2026, 11, 20, QTime(10, 41, 7));
  QTest::newRow("iso") << "2026-11-20" << at(2026, 11, 20);
  QTest::newRow("iso time") << "2026-11-20 10:41:07" << at(2026, 11, 20, QTime(10, 41, 7));
  QTest::newRow("iso T") << "2026-11-20T10:41:07.250" << at(2026, 11, 20, QTime(10, 41, 7, 250));
  QTest::newRow("only time") << "10:41:07" << at(1899, 12, 30, QTime(10, 41, 7));
  QTest::newRow("leap day") << "29.02.2028" << at(2028, 2, 29);
}
void TestDateText::reads() {
  QFETCH(QString, text);
  QFETCH(QDateTime, value);
  QVERIFY(isDate(text));
  QCOMPARE(parseDate(text), value);
}

void TestDateText::refuses_data() {
  QTest::addColumn<QString>("text");
  for (const char* text :
       {"", "abc", "29.02.2026", "32.01.2026", "1.13.2026", "20.11.", "20.11.202", "20.11.2026x",
        "20.11.2026 25:00", "20.11.2026 10", "2026-11", "26-11-20", "20/11/2026", "12", "10:61",
        "10:41 10:42", "20.11.2026T10:00", "2026-11-20T", "1,5"})
    QTest::newRow(qPrintable(QString("<%1>").arg(text))) << QString(text);
}
void TestDateText::refuses() {
  QFETCH(QString, text);
  QVERIFY(!isDate(text));
  try {
    parseDate(text);
    QFAIL("read");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 13);
  }
}

void TestDateText::everyTextReadsBack() {
  for (const QDateTime& value :
       {dateZero(), dateZero().addSecs(59), QDateTime(QDate(1950, 6, 1), QTime(23, 59, 59)),
        QDateTime(QDate(2026, 11, 20), QTime(0, 0))})
    QCOMPARE(parseDate(dateText(value)), value);
}

QTEST_APPLESS_MAIN(TestDateText)
#include "test_datetext.moc"

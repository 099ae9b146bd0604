// What the cash desk works out from values alone: amounts, article numbers, scans, sums.
#include <QTest>
#include <memory>

#include "cash/amounts.h"
#include "cash/article_number.h"
#include "cash/booking.h"
#include "cash/cash_rows.h"
#include "cash/receipt.h"
#include "cash/scan.h"
#include "platform/runtime/error.h"

using namespace qk;

namespace {

using Table = std::unique_ptr<TextTable>;

Table filled(const QStringList& rows) {
  auto table = std::make_unique<TextTable>();
  richteKassenTabelleEin(*table);
  for (const QString& row : rows) {
    const QStringList cells = row.split('|');
    table->addRow({"", cells.at(0), cells.at(1), cells.at(2), ""}, "1");
  }
  return table;
}

Money euro(const QString& text) {
  return BetragAusText(text);
}

}  // namespace

class TestCashValues : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void amountsAsTyped_data();
  void amountsAsTyped();
  void whatNoMoneyHoldsIsSaid();
  void storedAmountsAreReadStrictly_data();
  void storedAmountsAreReadStrictly();
  void cellsShowHowTheyAreRead();
  void articleNumbers_data();
  void articleNumbers();
  void scannedStartNumbers_data();
  void scannedStartNumbers();
  void fastKeysAreAScan();
  void slowKeysAreNone();
  void shortRunsAreNone();
  void aClockSetBackEndsTheRun();
  void totals();
  void nothingAtAllIsNoSum();
  void toBePaid();
  void theChange();
  void theTeamOnAReceipt();
  void receiptRows();
  void whatABrokenBookingSays();
};

void TestCashValues::amountsAsTyped_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("read");
  QTest::newRow("comma") << "12,50"
                         << "12,5";
  QTest::newRow("point") << "12.50"
                         << "1250";
  QTest::newRow("group and comma") << "1.234,50"
                                   << "1234,5";
  QTest::newRow("two commas") << "1,2,3"
                              << "1,2";
  QTest::newRow("negative") << "-5"
                            << "-5";
  QTest::newRow("with the sign of the euro") << "15,00 €"
                                             << "15";
  QTest::newRow("text") << "fünf"
                        << "0";
  QTest::newRow("nothing") << ""
                           << "0";
  QTest::newRow("a million millions") << "1000000000000"
                                      << "1000000000000";
  QTest::newRow("more than four decimals") << "0,00015"
                                           << "0,0002";
}

void TestCashValues::amountsAsTyped() {
  QFETCH(QString, text);
  QFETCH(QString, read);
  QCOMPARE(BetragAusText(text).toText(), read);
}

void TestCashValues::whatNoMoneyHoldsIsSaid() {
  try {
    BetragAusText("9999999999999999");
    QFAIL("read");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 6);
    QCOMPARE(error.description(), "Der Betrag »9999999999999999« ist zu groß.");
  }
  QVERIFY_THROWS_EXCEPTION(Error, euro("922337203685477") + euro("922337203685477"));
}

void TestCashValues::storedAmountsAreReadStrictly_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("read");  // empty: refused
  QTest::newRow("comma") << "12,50"
                         << "12,5";
  QTest::newRow("whole") << " 12 "
                         << "12";
  QTest::newRow("negative") << "-5"
                            << "-5";
  QTest::newRow("point") << "12.50"
                         << "";
  QTest::newRow("two commas") << "1,2,3"
                              << "";
  QTest::newRow("text") << "fünf"
                        << "";
  QTest::newRow("nothing") << ""
                           << "";
}

void TestCashValues::storedAmountsAreReadStrictly() {
  QFETCH(QString, text);
  QFETCH(QString, read);
  if (!read.isEmpty()) {
    QCOMPARE(BetragStrikt(text).toText(), read);
    return;
  }
  try {
    BetragStrikt(text);
    QFAIL("read");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 13);
    QVERIFY(error.description().contains("»" + text + "« ist kein Betrag"));
  }
}

void TestCashValues::cellsShowHowTheyAreRead() {
  const Table held = filled({"Startgeld|0|12.50", "Verzehr|-1|9999999999999999"});
  const TextTable& table = *held;
  const auto shown = [&table](int row) {
    return table.data(table.index(row - 1, CashColumn::Betrag), Qt::DisplayRole).toString();
  };
  QCOMPARE(shown(1), "1.250,00 €");
  QCOMPARE(table.text(1, CashColumn::Betrag), "12.50");
  QCOMPARE(shown(2), "9999999999999999");
  QVERIFY(!table.isTicked(1, CashColumn::Offen));
  QVERIFY(table.isTicked(2, CashColumn::Offen));
}

void TestCashValues::articleNumbers_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("number");
  QTest::newRow("typed") << "123"
                         << "123";
  QTest::newRow("typed with zeros") << "00123"
                                    << "00123";
  QTest::newRow("scanned, filled up") << "4000000001234"
                                      << "123";
  QTest::newRow("scanned, another country") << "4012345678901"
                                            << "401234567890";
  QTest::newRow("scanned, leading zeros") << "0012345678905"
                                          << "1234567890";
  QTest::newRow("scanned, wrong check digit") << "4000000001239"
                                              << "123";
  QTest::newRow("thirteen letters") << "4000ABCDEFGHI"
                                    << "ABCDEFGH";
  QTest::newRow("twelve digits") << "400000000123"
                                 << "400000000123";
  QTest::newRow("nothing but zeros") << "0000000000000"
                                     << "";
}

void TestCashValues::articleNumbers() {
  QFETCH(QString, text);
  QFETCH(QString, number);
  QCOMPARE(ArtikelNummerAusText(text), number);
}

void TestCashValues::scannedStartNumbers_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("number");
  QTest::newRow("typed") << "107"
                         << "107";
  QTest::newRow("label") << "BC.107.1.23"
                         << "107";
  QTest::newRow("label of a combination") << "BC.107.2.4"
                                          << "107";
  QTest::newRow("dots in the number") << "BC.5.1.1.23"
                                      << "5.1";
  QTest::newRow("a number like a label's end") << "BC.1.1.1.23"
                                               << "1.1";
  QTest::newRow("small letters") << "bc.7a.1.23"
                                 << "7a";
  QTest::newRow("typed with dots") << "5.1"
                                   << "5.1";
  QTest::newRow("no kind of label") << "BC.107.3.23"
                                    << "BC.107.3.23";
  QTest::newRow("cut off") << "BC.107"
                           << "BC.107";
}

void TestCashValues::scannedStartNumbers() {
  QFETCH(QString, text);
  QFETCH(QString, number);
  QCOMPARE(StartnummerAusEtikett(text), number);
}

void TestCashValues::fastKeysAreAScan() {
  QDateTime now(QDate(2026, 11, 20), QTime(10, 0));
  ScanRun run;
  QVERIFY(!run.key("4", now));
  for (const char* key : {"0", "0"}) QVERIFY(run.key(key, now = now.addMSecs(49)));
  QVERIFY(run.runs(now.addMSecs(49)));
  QCOMPARE(run.enter(now.addMSecs(49)), "400");
  QCOMPARE(run.enter(now.addMSecs(50)), "");
  QVERIFY(!run.key("1", now.addMSecs(51)));
}

void TestCashValues::slowKeysAreNone() {
  QDateTime now(QDate(2026, 11, 20), QTime(10, 0));
  ScanRun run;
  run.key("4", now);
  QVERIFY(!run.key("0", now = now.addMSecs(50)));
  QVERIFY(run.key("0", now = now.addMSecs(10)));
  QVERIFY(run.key("0", now = now.addMSecs(10)));
  QCOMPARE(run.enter(now.addMSecs(50)), "");
}

void TestCashValues::shortRunsAreNone() {
  const QDateTime now(QDate(2026, 11, 20), QTime(10, 0));
  ScanRun run;
  run.key("1", now);
  run.key("5", now);
  QCOMPARE(run.enter(now), "");
  for (const char* key : {"1", "0", "0"}) run.key(key, now);
  QCOMPARE(run.enter(now), "100");
}

void TestCashValues::aClockSetBackEndsTheRun() {
  const QDateTime now(QDate(2026, 11, 20), QTime(10, 0));
  ScanRun run;
  run.key("1", now);
  QVERIFY(!run.key("2", now.addMSecs(-10)));
}

void TestCashValues::totals() {
  const CashSums sums = summen(*filled({"Startgeld|0|15", "Festabend|-1|12,5", "Alt|1|2"}));
  QCOMPARE(sums.Gesamt.toText(), "29,5");
  QCOMPARE(sums.Bezahlt.toText(), "15");
  QCOMPARE(sums.Offen.toText(), "14,5");
}

void TestCashValues::nothingAtAllIsNoSum() {
  const CashSums sums = summen(*filled({}));
  QCOMPARE(sums.Gesamt, Money());
  QCOMPARE(sums.Offen, Money());
}

void TestCashValues::toBePaid() {
  QCOMPARE(zuBezahlen(*filled({"Startgeld|0|15", "Festabend|-1|12,5", "Alt|1|2"})).toText(), "17");
  QCOMPARE(zuBezahlen(*filled({"Startgeld|0|12.50"})).toText(), "1250");
}

void TestCashValues::theChange() {
  QVERIFY(!rueckgeld("", euro("15")));
  QCOMPARE(rueckgeld("20", euro("15"))->toText(), "5");
  QCOMPARE(rueckgeld("10", euro("15"))->toText(), "-5");
  QCOMPARE(rueckgeld("x", euro("15"))->toText(), "-15");
}

void TestCashValues::theTeamOnAReceipt() {
  QCOMPARE(belegMannschaft("Grünau I", "Luftgewehr"), "Grünau I (Luftgewehr)");
  QCOMPARE(belegMannschaft("Luftgewehr Grünau", "Luftgewehr"), "Luftgewehr Grünau");
  QCOMPARE(belegMannschaft("Grünau I", ""), "Grünau I");
}

void TestCashValues::receiptRows() {
  const Table held = filled({"Startgeld|0|15"});
  TextTable& table = *held;
  table.setText(1, CashColumn::Datum, "19.11.2026");
  QCOMPARE(belegZeilen(table).front().Datum, "19.11.2026");
  QCOMPARE(belegZeilen(table, "20.11.2026").front().Datum, "20.11.2026");
  QCOMPARE(belegZeilen(table).front().Betrag, "15");
}

void TestCashValues::whatABrokenBookingSays() {
  BookingOutcome outcome;
  outcome.fehler = Error(3021);
  const QString cause = "Fehler: 3021 - " + errorDescription(3021) + "\r\n\r\n";
  QCOMPARE(buchungsFehlerText(outcome, 3), cause + "Es wurde noch keine Zeile des Kaufs gespeichert.");
  outcome.gespeichert = 2;
  QCOMPARE(buchungsFehlerText(outcome, 3),
           cause +
               "Von 3 Zeilen des Kaufs sind 2 gespeichert; sie sind in der Liste gekennzeichnet.\r\n"
               "Vor dem nächsten Verbuchen entfernen, sonst werden sie doppelt gebucht.");
}

QTEST_MAIN(TestCashValues)
#include "test_cash_values.moc"

// The encoders against a second reckoning that reads the symbols back.
#include <QRandomGenerator>
#include <QTest>

#include "cash/barcode_text.h"
#include "tests/cash/symbol_reader.h"

using namespace qk;
using namespace qk::test;

class TestBarcodeText : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void code128Symbols_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("begin");  // before checksum and stop
    const auto c = [](int code) { return QString(QChar(static_cast<ushort>(code))); };
    QTest::newRow("letters") << "BC" << c(209) + "BC";
    QTest::newRow("four digits at the start") << "1234" << c(210) + c(12 + 32) + c(34 + 32);
    QTest::newRow("two digits stay in B") << "12" << c(209) + "12";
    QTest::newRow("odd digits end in B") << "12345" << c(210) + c(12 + 32) + c(34 + 32) + c(205) + "5";
    QTest::newRow("four digits at the end") << "A1234" << c(209) + "A" + c(204) + c(12 + 32) + c(34 + 32);
    QTest::newRow("four digits within stay in B") << "A1234B" << c(209) + "A1234B";
    QTest::newRow("six digits within")
        << "A123456B" << c(209) + "A" + c(204) + c(12 + 32) + c(34 + 32) + c(56 + 32) + c(205) + "B";
    QTest::newRow("pairs from 95 on") << "95999400" << c(210) + c(200) + c(204) + c(94 + 32) + c(32);
    QTest::newRow("a label") << "BC.107.1.23" << c(209) + "BC.107.1.23";
  }
  void code128Symbols() {
    QFETCH(QString, text);
    QFETCH(QString, begin);
    const QString symbols = Code128Text(text);
    QCOMPARE(symbols.chopped(2), begin);
    QCOMPARE(decoded128(symbols), std::optional(text));
  }

  void code128Refuses() {
    QCOMPARE(Code128Text(""), QString());
    QCOMPARE(Code128Text("Ä"), QString());
    QCOMPARE(Code128Text("a\tb"), QString());
    QCOMPARE(Code128Text(QString("a") + QChar(127)), QString());
    QVERIFY(!Code128Text(QString("a") + QChar(203)).isEmpty());
  }

  void code128ChecksumBeyondNinetyFour() {
    // A checksum of 95 and more takes the upper characters.
    bool seen = false;
    for (int i = 0; i < 1000; ++i) {
      const QString symbols = Code128Text(QString::number(i));
      if (valueOf128(symbols[symbols.size() - 2]) < 95) continue;
      seen = true;
      QVERIFY(symbols[symbols.size() - 2].unicode() >= 200);
    }
    QVERIFY(seen);
  }

  void code128ReadsBack() {
    QRandomGenerator random(20261122);
    for (int run = 0; run < 1000; ++run) {
      QString text;
      for (int i = random.bounded(1, 24); i > 0; --i)
        text += QChar(static_cast<ushort>(random.bounded(2) ? random.bounded(u'0', u'9' + 1)
                                                            : random.bounded(32, 127)));
      QCOMPARE(decoded128(Code128Text(text)), std::optional(text));
    }
  }

  void code39() {
    QCOMPARE(Code39Text(""), QString());
    QCOMPARE(Code39Text("BC.107.1.23"), "*BC.107.1.23*");
  }

  void ean13KnownSymbols() {
    QCOMPARE(EAN13Text("400638133393"), "4AKGDSL*dddjdb+");
    QCOMPARE(decoded13(EAN13Text("400638133393")), "4006381333931");
  }

  void ean13Refuses() {
    for (const QString& text :
         QStringList{"", "40063813339", "4006381333931", "40063813339x", "40063813339 "})
      QCOMPARE(EAN13Text(text), QString());
    QCOMPARE(EAN13Text("40063813339" + QString(QChar(0x0663))), QString());
  }

  void ean13EveryFirstDigit() {
    for (int first = 0; first < 10; ++first) {
      const QString digits = QString::number(first) + "12345678903";
      const QString back = decoded13(EAN13Text(digits));
      QCOMPARE(back.left(12), digits);
      QVERIFY(checks13(back));
    }
  }

  void ean13EveryShooter() {
    for (int kind = 1; kind <= 2; ++kind)
      for (int shooter = 0; shooter < 10000; ++shooter) {
        const QString content = labelContentEan(shooter, kind, 23);
        const QString back = decoded13(EAN13Text(content));
        if (back.left(12) != content || !checks13(back)) QFAIL(qPrintable(content));
      }
  }

  void contents() {
    QCOMPARE(labelContent("107", 1, 23), "BC.107.1.23");
    QCOMPARE(labelContent("1.07", 2, 5), "BC.1.07.2.5");
    QCOMPARE(labelContentEan(7, 1, 23), "400000710023");
    QCOMPARE(labelContentEan(123456, 2, 98765), "400345628765");
  }

  void byKind() {
    QCOMPARE(barcodeText(BarcodeKind::Code39, "A"), "*A*");
    QCOMPARE(barcodeText(BarcodeKind::Code128, "BC"), Code128Text("BC"));
    QCOMPARE(barcodeText(BarcodeKind::Ean13, "400638133393"), EAN13Text("400638133393"));
  }
};

QTEST_GUILESS_MAIN(TestBarcodeText)
#include "test_barcode_text.moc"

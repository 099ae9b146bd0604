// The encoded texts drawn by a bar code font and read back; and which fonts are none.
#include <QFontDatabase>
#include <QRandomGenerator>
#include <QTest>

#include "cash/barcode_text.h"
#include "platform/print/bar_reader.h"
#include "platform/print/picture_labels.h"
#include "tests/support/bar_font.h"

using namespace qk;
using namespace qk::test;

namespace {

constexpr int kSamples = 300;

FontSpec font(BarFont kind, double size = 36) {
  FontSpec spec;
  spec.name = nameOf(kind);
  spec.size = size;
  return spec;
}

QString randomText(QRandomGenerator& random, const QString& alphabet) {
  QString text;
  const int length = 1 + random.bounded(14);
  for (int i = 0; i < length; ++i) text += alphabet[random.bounded(static_cast<int>(alphabet.size()))];
  return text;
}

QString printable() {
  QString all;
  for (ushort c = 33; c < 127; ++c) all += QChar(c);
  return all + "0123456789012345678901234567890123456789";  // runs of digits take another table
}

}  // namespace

class TestBarcodeFonts : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    for (BarFont kind : {BarFont::Code128, BarFont::Code39, BarFont::Ean13})
      QVERIFY(QFontDatabase::addApplicationFontFromData(barFont(kind)) >= 0);
  }

  void code128() {
    QRandomGenerator random(20261120);
    for (int i = 0; i < kSamples; ++i) {
      const QString content = randomText(random, printable());
      QVERIFY2(drawsBars(font(BarFont::Code128), Symbology::Code128, content, Code128Text(content)),
               qPrintable(content));
    }
  }

  void code39() {
    QRandomGenerator random(20261121);
    for (int i = 0; i < kSamples; ++i) {
      const QString content = randomText(random, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-.$/+%");
      QVERIFY2(drawsBars(font(BarFont::Code39), Symbology::Code39, content, Code39Text(content)),
               qPrintable(content));
    }
  }

  void ean13() {
    for (int first = 0; first < 10; ++first)
      for (int i = 0; i < 20; ++i) {
        const QString content = QString::number(first) + QString::number(12345678901 + 4321 * i);
        QVERIFY2(drawsBars(font(BarFont::Ean13), Symbology::Ean13, content, EAN13Text(content)),
                 qPrintable(content));
      }
  }

  void fontsThatAreNone() {
    const QString encoded = Code128Text("BC.107.1.23");
    FontSpec text;
    text.name = "DejaVu Sans";
    text.size = 36;
    QVERIFY(!drawsBars(text, Symbology::Code128, "BC.107.1.23", encoded));
    text.name = "Gibt es nicht";
    QVERIFY(!drawsBars(text, Symbology::Code128, "BC.107.1.23", encoded));
    QVERIFY(!drawsBars(font(BarFont::Code39), Symbology::Code128, "BC.107.1.23", encoded));
    QVERIFY(!drawsBars(font(BarFont::Code128), Symbology::Code128, "BC.107.1.24", encoded));
    QVERIFY(!drawsBars(font(BarFont::Code128), Symbology::Code128, "", ""));
  }

  void aFontOfAnotherKindGivesWayToBars() {
    PictureLabels label({{100, 60}, {2, 2, 2, 2}});
    label.setFont(font(BarFont::Code39));
    label.printBarcode(Symbology::Code128, "BC.107.1.23", Code128Text("BC.107.1.23"));
    label.endDocument();
    QVERIFY(!label.leavesPaper() && !label.unreadable());
    QCOMPARE(readBars(label.pictures().first(), Symbology::Code128), "BC.107.1.23");
  }

  void aSmallFontIsTooNarrow_data() {
    QTest::addColumn<double>("points");
    QTest::addColumn<bool>("unreadable");
    QTest::newRow("large") << 36.0 << false;
    QTest::newRow("small") << 8.0 << true;
  }
  void aSmallFontIsTooNarrow() {
    QFETCH(double, points);
    QFETCH(bool, unreadable);
    PictureLabels label({{100, 60}, {2, 2, 2, 2}});
    label.moveTo(300, 300);
    label.setFont(font(BarFont::Code128, points));
    label.printBarcode(Symbology::Code128, "BC.107.1.23", Code128Text("BC.107.1.23"));
    label.endDocument();
    QCOMPARE(label.unreadable(), unreadable);
  }

  void whatLeavesThePaper() {
    PictureLabels label({{100, 60}, {2, 2, 2, 2}});
    label.moveTo(0, 3100);  // 54.7 mm down, of 56
    label.setFont(font(BarFont::Code128));
    label.printLine("x");
    label.endDocument();
    QVERIFY(label.leavesPaper());
    QCOMPARE(label.pictures().size(), 1);
    QCOMPARE(label.pictures().first().size(), QSize(799, 480));
  }

  void anotherWay() {
    PictureLabels label({{100, 60}, {2, 2, 2, 2}});
    label.setLandscape(true);
    label.printBarcode(Symbology::Code39, "A", "*A*");
    label.endDocument();
    QCOMPARE(label.pictures().first().size(), QSize(480, 799));
  }

  void textOverTheBars() {
    PictureLabels label({{100, 60}, {2, 2, 2, 2}});
    label.printBarcode(Symbology::Code128, "BC.107.1.23", Code128Text("BC.107.1.23"));
    FontSpec text;
    text.name = "DejaVu Sans";
    text.size = 60;
    text.bold = true;
    label.setFont(text);
    label.moveTo(0, -400);
    label.printLine("MMMMMMMM");
    label.endDocument();
    QVERIFY(label.unreadable());
  }
};

QTEST_MAIN(TestBarcodeFonts)
#include "test_barcode_fonts.moc"

// What is drawn is read by another library, as a scanner would.
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTest>

#include "platform/print/bars.h"
#include "tests/support/read_bars.h"

using namespace qk;
using namespace qk::test;

namespace {

QImage drawn(const std::vector<bool>& modules, int module) {
  QImage image(static_cast<int>(modules.size() + 40) * module, 60 + 20 * module, QImage::Format_Grayscale8);
  image.fill(Qt::white);
  QPainter painter(&image);
  paintBars(painter, {5, 7}, modules, module, 50 + 10 * module);
  return image;
}

}  // namespace

class TestBars : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void whatAScannerReads_data() {
    QTest::addColumn<Symbology>("symbology");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("read");
    QTest::newRow("Code 128") << Symbology::Code128 << "BC.107.1.23"
                              << "BC.107.1.23";
    QTest::newRow("Code 128 of digits") << Symbology::Code128 << "123456"
                                        << "123456";
    QTest::newRow("Code 39") << Symbology::Code39 << "BC.107.1.23"
                             << "BC.107.1.23";
    QTest::newRow("EAN-13") << Symbology::Ean13 << "400638133393"
                            << "4006381333931";
    QTest::newRow("EAN-13 with its check digit") << Symbology::Ean13 << "4006381333931"
                                                 << "4006381333931";
  }
  void whatAScannerReads() {
    QFETCH(Symbology, symbology);
    QFETCH(QString, content);
    QFETCH(QString, read);
    for (int module : {1, 2, 3}) QCOMPARE(barsOn(drawn(barModules(symbology, content), module)), read);
  }

  void randomContents() {
    QRandomGenerator random(39);
    const QString alphabet39 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
    for (int run = 0; run < 200; ++run) {
      QString any, of39;
      for (int i = 0; i < 12; ++i) {
        any += QChar(static_cast<ushort>(random.bounded(33, 127)));
        of39 += alphabet39[random.bounded(alphabet39.size())];
      }
      of39 = of39.trimmed() + "X";
      QCOMPARE(barsOn(drawn(barModules(Symbology::Code128, any), 2)), any);
      QCOMPARE(barsOn(drawn(barModules(Symbology::Code39, of39), 2)), of39);
    }
  }

  void whatASymbologyCantHold() {
    QVERIFY(barModules(Symbology::Ean13, "40063813339").empty());
    QVERIFY(barModules(Symbology::Ean13, "40063813339x").empty());
    QVERIFY(barModules(Symbology::Ean13, "4006381333932").empty());
    QVERIFY(barModules(Symbology::Code39, "a_b").empty());
    QVERIFY(barModules(Symbology::Code128, "").empty());
    QVERIFY(barModules(Symbology::Code128, "Ω").empty());
  }

  void quietZonesAreCovered() {
    const std::vector<bool> modules = barModules(Symbology::Code39, "A");
    QImage image(400, 20, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QRect covered = paintBars(painter, {3, 0}, modules, 2, 20);
    QCOMPARE(covered, QRect(3, 0, static_cast<int>(modules.size() + 20) * 2, 20));
    for (int x = 0; x < 23; ++x) QCOMPARE(image.pixelColor(x, 10), QColor(Qt::white));
    QCOMPARE(image.pixelColor(23, 10), QColor(Qt::black));
  }
};

QTEST_GUILESS_MAIN(TestBars)
#include "test_bars.moc"

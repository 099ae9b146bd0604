// Labels as they come out of a printer of 203 dots per inch: a file of pages that is looked at and scanned.
#include <QFile>
#include <QImage>
#include <QPrinter>
#include <QProcess>
#include <QTest>

#include "platform/print/printer_labels.h"
#include "platform/settings/settings.h"
#include "tests/support/error_of.h"
#include "tests/support/read_bars.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

constexpr int kDots = 203;

class FileLabels : public PrinterLabels {
 public:
  FileLabels(const CurrentPrinter& current, TestWorkplace& place) : PrinterLabels(current), place_(place) {}

  mutable int documents = 0;
  QString file(int document) const { return place_.path(QString("etikett%1.pdf").arg(document)); }

  /// The page of a document at the printer's resolution.
  QImage page(int document) const {
    const QString image = place_.path(QString("seite%1").arg(document));
    QProcess render;
    render.start("pdftoppm",
                 {"-png", "-gray", "-r", QString::number(kDots), "-singlefile", file(document), image});
    if (!render.waitForFinished() || render.exitCode() != 0) return {};
    return QImage(image + ".png").convertToFormat(QImage::Format_Grayscale8);
  }

 protected:
  std::unique_ptr<QPrinter> device() const override {
    auto printer = std::make_unique<QPrinter>();
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(file(++documents));
    printer->setResolution(kDots);
    printer->setPageSize(QPageSize(QSizeF(100, 60), QPageSize::Millimeter));
    return printer;
  }

 private:
  TestWorkplace& place_;
};

}  // namespace

class TestPrinterLabels : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place = std::make_unique<TestWorkplace>();
    labels = std::make_unique<FileLabels>(CurrentPrinter(place->settings, "Intarso", "Daten"), *place);
    labels->setFont({"Liberation Sans", 12});
  }
  void cleanup() {
    labels.reset();
    place.reset();
  }

  void barsScan();
  void positionsAreTwips();
  void linesFollowEachOther();
  void textStandsBelowTheBars();
  void orientation();
  void eachLabelIsADocument();
  void nothingPrintedIsNoDocument();
  void whatCantBeEncodedPrintsNothing();
  void anUnknownPrinterIsRefused();

 private:
  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<FileLabels> labels;
};

void TestPrinterLabels::barsScan() {
  for (Symbology symbology : {Symbology::Code128, Symbology::Code39}) {
    labels->printBarcode(symbology, "BC.107.1.23", "-");
    labels->endDocument();
    QCOMPARE(barsOn(labels->page(labels->documents)), "BC.107.1.23");
  }
  labels->printBarcode(Symbology::Ean13, "400010710023", "-");
  labels->endDocument();
  QCOMPARE(barsOn(labels->page(3)).left(12), "400010710023");
}

void TestPrinterLabels::positionsAreTwips() {
  labels->moveTo(1440, 720);
  labels->printBarcode(Symbology::Code39, "A", "-");
  labels->endDocument();
  const QRect black = inkOn(labels->page(1));
  QCOMPARE(black.left(), kDots + 10 * 2);  // an inch, and the quiet zone of ten modules
  QVERIFY2(qAbs(black.top() - kDots / 2) <= 1, qPrintable(QString::number(black.top())));
}

void TestPrinterLabels::linesFollowEachOther() {
  labels->printLine("HHH");
  labels->endDocument();
  labels->printLine("HHH");
  labels->moveToColumn(0);
  labels->printLine("HHH");
  labels->endDocument();
  const QRect one = inkOn(labels->page(1)), two = inkOn(labels->page(2));
  QCOMPARE(two.topLeft(), one.topLeft());
  QCOMPARE(two.width(), one.width());
  QVERIFY(two.height() > 2 * one.height());
}

void TestPrinterLabels::textStandsBelowTheBars() {
  labels->printBarcode(Symbology::Code39, "A", "-");
  labels->endDocument();
  labels->printBarcode(Symbology::Code39, "A", "-");
  labels->printLine("HHH");
  labels->endDocument();
  const QRect bars = inkOn(labels->page(1)), both = inkOn(labels->page(2));
  const int capital = 12 * kDots / 72 / 2;  // at least half the font's size
  QVERIFY(both.bottom() > bars.bottom() + capital);
  QCOMPARE(barsOn(labels->page(2)), "A");
}

void TestPrinterLabels::orientation() {
  labels->printLine("H");
  labels->endDocument();
  labels->setLandscape(true);
  labels->printLine("H");
  labels->endDocument();
  const QSize upright = labels->page(1).size();
  QCOMPARE(labels->page(2).size(), upright.transposed());
}

void TestPrinterLabels::eachLabelIsADocument() {
  labels->moveTo(500, 500);
  labels->printLine("HHH");
  labels->endDocument();
  labels->printLine("HHH");
  labels->endDocument();
  QCOMPARE(labels->documents, 2);
  QVERIFY(inkOn(labels->page(2)).top() < inkOn(labels->page(1)).top());  // from the corner again
}

void TestPrinterLabels::nothingPrintedIsNoDocument() {
  labels->moveTo(10, 10);
  labels->endDocument();
  QCOMPARE(labels->documents, 0);
}

void TestPrinterLabels::whatCantBeEncodedPrintsNothing() {
  labels->printBarcode(Symbology::Ean13, "12", "-");
  labels->endDocument();
  QCOMPARE(labels->documents, 0);
}

void TestPrinterLabels::anUnknownPrinterIsRefused() {
  QCOMPARE(errorOf([&] { labels->choosePrinter("Kein Drucker dieses Namens"); }), 482);
  QCOMPARE(labels->currentPrinter(), QString());
}

QTEST_MAIN(TestPrinterLabels)
#include "test_printer_labels.moc"

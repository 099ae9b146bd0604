// Lists on paper, looked at as images.
#include <QPrintDialog>
#include <QPrinter>
#include <QTest>
#include <QTimer>

#include "platform/look/look.h"
#include "platform/print/list_pages.h"
#include "tests/support/image_paper.h"
#include "tests/support/real_boxes.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

std::vector<ListRow> rows(int count, int depth = 1) {
  std::vector<ListRow> all;
  for (int i = 0; i < count; ++i) all.push_back({depth, look::Mark::Tick, "Zeile " + QString::number(i)});
  return all;
}

int pixelsOf(const QImage& image, const QColor& colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour;
  return count;
}

/// The row of pixels that holds ink last.
int lastInk(const QImage& image) {
  for (int y = image.height() - 1; y >= 0; --y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixelColor(x, y) != Qt::white) return y;
  return -1;
}

}  // namespace

class TestListPages : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Dark); }

  void anEmptyListIsOnePage() {
    ImagePaper paper;
    ListPages pages("Liste", {"Ordner: x"}, {}, qApp->font());
    QVERIFY(paper.print(pages));
    QCOMPARE(paper.sheets.size(), 1);
    QCOMPARE(paper.names, QStringList{"Liste"});
    QVERIFY(lastInk(paper.sheets[0]) > paper.sheets[0].height() * 9 / 10);  // the foot
  }

  void everyRowStandsOnOnePage() {
    ImagePaper paper;
    ListPages pages("Liste", {}, rows(200), qApp->font());
    paper.print(pages);
    QVERIFY(paper.sheets.size() > 2);
    size_t next = 0;
    for (int page = 0; page < paper.sheets.size(); ++page) {
      QCOMPARE(pages.rowsOn(page).first, next);
      QVERIFY(pages.rowsOn(page).second > next);
      next = pages.rowsOn(page).second;
    }
    QCOMPARE(next, size_t(200));
  }

  void rowsOfOneTitleStayTogether() {
    ImagePaper paper;
    for (int before = 20; before < 120; ++before) {
      std::vector<ListRow> all = rows(before);
      all.push_back({0, look::Mark::None, "Titel"});
      for (int below = 1; below <= 3; ++below)
        all.push_back({below == 1 ? 1 : 2, look::Mark::Tick, "darunter"});
      ListPages pages("Liste", {}, all, qApp->font());
      paper.sheets.clear();
      paper.print(pages);
      for (int page = 0; page < paper.sheets.size(); ++page) {
        const size_t behind = pages.rowsOn(page).second;
        QVERIFY2(behind <= size_t(before) || behind == all.size(), qPrintable(QString::number(before)));
      }
    }
  }

  void aTitleOfManyRowsTakesTheFirstAlong() {
    ImagePaper paper;
    for (int before = 20; before < 120; ++before) {
      std::vector<ListRow> all = rows(before);
      all.push_back({0, look::Mark::None, "Titel"});
      for (const ListRow& below : rows(300, 1)) all.push_back(below);
      ListPages pages("Liste", {}, all, qApp->font());
      paper.sheets.clear();
      paper.print(pages);
      QVERIFY(paper.sheets.size() > 4);
      for (int page = 0; page < paper.sheets.size(); ++page)
        QVERIFY2(pages.rowsOn(page).second != size_t(before) + 1, qPrintable(QString::number(before)));
    }
  }

  void furtherSheetsNameTheirList() {
    ImagePaper paper;
    ListPages pages("Liste", {}, rows(100), qApp->font());
    paper.print(pages);
    const auto inkOfFoot = [&](int page) {
      const QImage& sheet = paper.sheets[page];
      const int top = sheet.height() * 98 / 100;
      return pixelsOf(sheet.copy(0, top, sheet.width() / 3, sheet.height() - top), Qt::black);
    };
    QCOMPARE(inkOfFoot(0), 0);
    QVERIFY(inkOfFoot(1) > 10);
  }

  void aLongRowIsWrapped() {
    ImagePaper paper;
    ListPages brief("Liste", {}, {{2, look::Mark::Cross, "kurz", Qt::red, true}}, qApp->font());
    ListPages wide("Liste", {}, {{2, look::Mark::Cross, QString(600, 'x'), Qt::red, true}}, qApp->font());
    paper.print(brief);
    paper.print(wide);
    QVERIFY(pixelsOf(paper.sheets[1], Qt::red) > 20 * pixelsOf(paper.sheets[0], Qt::red));
    const QImage& sheet = paper.sheets[1];
    for (int y = 0; y < sheet.height() / 2; ++y)
      QVERIFY(sheet.pixelColor(sheet.width() - 1, y) == Qt::white ||
              sheet.pixelColor(sheet.width() - 2, y) == Qt::white);
  }

  void aRowTallerThanThePaperIsPrintedAllTheSame() {
    ImagePaper paper({60, 40});
    ListPages pages("Liste", {}, {{0, look::Mark::None, QString(3000, 'x')}, {0, look::Mark::None, "danach"}},
                    qApp->font());
    paper.print(pages);
    QVERIFY(paper.sheets.size() >= 2);
  }

  void coloursAndMarksArePrinted() {
    ImagePaper paper;
    ListPages pages(
        "Liste", {},
        {{1, look::Mark::Tick, "da", QColor(0, 128, 0)}, {1, look::Mark::Cross, "weg", Qt::red, true}},
        qApp->font());
    paper.print(pages);
    QVERIFY(pixelsOf(paper.sheets[0], QColor(0, 128, 0)) > 10);
    QVERIFY(pixelsOf(paper.sheets[0], Qt::red) > 10);
    // The window may be dark: paper never is.
    QVERIFY(pixelsOf(paper.sheets[0], Qt::white) >
            paper.sheets[0].width() * paper.sheets[0].height() * 9 / 10);
  }

  void theOperatorMayCancelThePrinter() {
    TestWorkplace place;
    RealBoxes boxes;
    const CurrentPrinter printer(place.settings, "Haus", "Druck");
    boxes.expectPrint();
    ListPages pages("Liste", {}, rows(3), qApp->font());
    QVERIFY(!PrinterPaper(printer).print(pages));
  }

  void aChosenPrinterGetsThePages() {
    TestWorkplace place;
    const CurrentPrinter printer(place.settings, "Haus", "Druck");
    const QString file = place.path("liste.pdf");
    QTimer::singleShot(0, this, [&] {
      auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
      QVERIFY(dialog);
      dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
      dialog->printer()->setOutputFileName(file);
      dialog->done(QDialog::Accepted);
    });
    ListPages pages("Liste", {}, rows(100), qApp->font());
    QVERIFY(PrinterPaper(printer).print(pages));
    QFile pdf(file);
    QVERIFY(pdf.open(QIODevice::ReadOnly));
    const QByteArray content = pdf.readAll();
    QVERIFY(content.startsWith("%PDF"));
    QVERIFY(content.contains("/Count 2"));
  }
};

QTEST_MAIN(TestListPages)
#include "test_list_pages.moc"

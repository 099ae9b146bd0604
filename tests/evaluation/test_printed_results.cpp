// The grids of the results editor on paper and in the report window.
#include <QHeaderView>
#include <QTest>

#include "evaluation/result_table.h"
#include "platform/look/look.h"
#include "tests/evaluation/results_desk.h"

using namespace qk;
using namespace qk::test;

class TestPrintedResults : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { desk = std::make_unique<ResultsDesk>(); }
  void cleanup() { desk.reset(); }

  void printing_data();
  void printing();
  void aPrintedGrid();
  void theSheetSaysWhoseItIs();
  void aPrinterThatFails();

 private:
  BoundGrid& grid() { return desk->grid(); }

  std::unique_ptr<ResultsDesk> desk;
};

void TestPrintedResults::printing_data() {
  QTest::addColumn<int>("tab");
  QTest::addColumn<QString>("title");
  QTest::newRow("Teiler") << 0 << "Teiler";
  QTest::newRow("Serien") << 1 << "Serien";
}

void TestPrintedResults::printing() {
  QFETCH(int, tab);
  QFETCH(QString, title);
  desk->open();
  the<QTabWidget>(desk->window(), "SSTab1").setCurrentIndex(tab);
  trigger(desk->window(), "mnuDateiPrint");
  QCOMPARE(desk->current.names, QStringList(title));
  QCOMPARE(desk->current.sheets.size(), 1);
  QCOMPARE(desk->news(), "Gedruckt.");
  const QString keys = "Tarvex-40";
  desk->bench.settings.setValue(keys, "Daten", "AnzeigeScreen", "0");
  desk->bench.settings.setValue(keys, "Anzeige", "Main_Width", "9000");
  desk->bench.settings.setValue(keys, "Anzeige", "Main_Height", "7500");
  desk->boxes.expectWindow("ReportPreview", [&](QWidget& preview) {
    QCOMPARE(preview.windowTitle(), title);
    QCOMPARE(preview.size(), QSize(9000, 7500) * preview.logicalDpiX() / 1440);
    QTRY_VERIFY(!the<QLabel>(preview, "lblSeiten").text().contains("…"));
    QCOMPARE(the<QLabel>(preview, "lblStand").text(), tab == 0 ? "5 Zeilen" : "3 Zeilen");
    press(preview, "viwSeiten", Qt::Key_Escape);
  });
  trigger(desk->window(), "mnuDateiPrintPreview");
  QVERIFY(desk->boxes.done());
  QCOMPARE(desk->current.sheets.size(), 1);
  desk->boxes.expectPrinterSetup(std::nullopt);
  trigger(desk->window(), "mnuDateiPrintEdit");
}

void TestPrintedResults::aPrintedGrid() {
  desk->open();
  const auto printed = [this] {
    desk->current.sheets.clear();
    desk->window().Print_Teiler(1);
    return desk->current.sheets.value(0);
  };
  const QImage first = printed();
  QCOMPARE(printed(), first);
  desk->clickTitle(result::Datum);
  const QImage ordered = printed();
  QVERIFY(ordered != first);
  grid().setColumnWidth(result::Waffe, 300);
  const QImage wider = printed();
  QVERIFY(wider != ordered);
  type(desk->window(), "filter_Waffe_1", "LP");
  QVERIFY(printed() != wider);
  desk->showSerien();
  desk->window().Print_Serien(1);
  QCOMPARE(desk->current.names.last(), "Serien");
}

void TestPrintedResults::theSheetSaysWhoseItIs() {
  desk->open();
  type(desk->window(), "filter_Ergebnis_1", "300");
  type(desk->window(), "filter_Waffe_1", "LP");
  desk->boxes.expectWindow("ReportPreview", [&](QWidget& preview) {
    QTRY_VERIFY(!the<QLabel>(preview, "lblSeiten").text().contains("…"));
    const auto stands = [&](const QString& text) {
      the<QLineEdit>(preview, "txtSuche").setText(text);
      return !the<QLabel>(preview, "lblStand").text().contains("nirgends");
    };
    QVERIFY(!stands("Süß Benno"));
    for (const char* text :
         {"Müller Jörg, Startnummer 107, Schützenlust Äußere Au", "Stand: 22.11.2026 10:41:07",
          "Nur: Ergebnis 300, Waffe LP", "300,1", "21.11.2026 09:00:00", "Disziplin"})
      QVERIFY2(stands(text), text);
    QVERIFY(!stands("123,4"));  // the filter hides it
    press(preview, "viwSeiten", Qt::Key_Escape);
  });
  desk->window().Print_Teiler(0);
  QVERIFY(desk->boxes.done());
}

void TestPrintedResults::aPrinterThatFails() {
  desk->open();
  desk->current.error = 482;
  desk->expectError(Error(482), "Fehler bei Print_Teiler_err!", BoxAnswer::Retry);
  desk->expectError(Error(482), "Fehler bei Print_Teiler_err!", BoxAnswer::Abort);
  trigger(desk->window(), "mnuDateiPrint");
  desk->showSerien();
  desk->expectError(Error(482), "Fehler bei Print_Serien_err!", BoxAnswer::Ignore);
  trigger(desk->window(), "mnuDateiPrint");
  QVERIFY(desk->boxes.done());
  QCOMPARE(desk->news(), "");
}

QTEST_MAIN(TestPrintedResults)
#include "test_printed_results.moc"

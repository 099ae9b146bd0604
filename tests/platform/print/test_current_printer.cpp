// The printer everything goes to: chosen in a dialog, kept in the settings, made into a device.
#include <QComboBox>
#include <QLabel>
#include <QPrinter>
#include <QRadioButton>
#include <QTest>

#include "platform/dialog/printer_setup_dialog.h"
#include "platform/print/current_printer.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

const std::vector<InstalledPrinter> kPrinters{
    {"Beleg", false, {{"A5", "A5 quer"}, {"A6", "A6"}}},
    {"Büro", true, {{"A4", "A4"}, {"A5", "A5"}}},
};

QStringList entries(const QComboBox& box) {
  QStringList all;
  for (int i = 0; i < box.count(); ++i) all += box.itemText(i);
  return all;
}

}  // namespace

class TestCurrentPrinter : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void nothingChosenIsTheSystemsPrinter() {
    TestWorkplace place;
    const CurrentPrinter printer(place.settings, "Haus", "Druck");
    QCOMPARE(printer.setup(), PrinterSetup());
    QCOMPARE(printer.make()->pageLayout().orientation(), QPageLayout::Portrait);
  }

  void aChoiceOutlivesTheProgram() {
    TestWorkplace place;
    CurrentPrinter(place.settings, "Haus", "Druck").keep({"Beleg", "A5", true});
    Settings later(place.settings.filePath());
    QCOMPARE(CurrentPrinter(later, "Haus", "Druck").setup(), (PrinterSetup{"Beleg", "A5", true}));
    QCOMPARE(CurrentPrinter(later, "Haus", "Anderes").setup(), PrinterSetup());
  }

  void theDeviceHasPaperAndOrientation() {
    TestWorkplace place;
    CurrentPrinter printer(place.settings, "Haus", "Druck");
    printer.keep({{}, "A5", true});
    const auto device = printer.make();
    QCOMPARE(device->pageLayout().pageSize().id(), QPageSize::A5);
    QCOMPARE(device->pageLayout().orientation(), QPageLayout::Landscape);
    printer.keep({{}, "gibtesnicht", false});
    QVERIFY(printer.make()->pageLayout().pageSize().isValid());
    QCOMPARE(printer.make()->pageLayout().orientation(), QPageLayout::Portrait);
  }

  void aPrinterThatIsGoneIsNamed() {
    TestWorkplace place;
    CurrentPrinter printer(place.settings, "Haus", "Druck");
    printer.keep({"Beleg im Keller", {}, false});
    try {
      printer.make();
      QFAIL("printed elsewhere");
    } catch (const Error& error) {
      QCOMPARE(error.number(), 482);
      QCOMPARE(error.description(), "Druckerfehler: Beleg im Keller");
    }
  }

  void theDialogOffersPrintersAndTheirPapers() {
    TestWorkplace place;
    PrinterSetupDialog dialog(kPrinters, {"Beleg", "A6", true});
    QCOMPARE(dialog.windowTitle(), "Druckereinrichtung");
    QCOMPARE(entries(the<QComboBox>(dialog, "cmbDrucker")),
             QStringList({"Standarddrucker des Systems (Büro)", "Beleg", "Büro"}));
    QCOMPARE(entries(the<QComboBox>(dialog, "cmbPapier")),
             QStringList({"Wie am Drucker eingestellt", "A5 quer", "A6"}));
    QCOMPARE(dialog.setup(), (PrinterSetup{"Beleg", "A6", true}));
    the<QComboBox>(dialog, "cmbDrucker").setCurrentIndex(2);
    QCOMPARE(entries(the<QComboBox>(dialog, "cmbPapier")),
             QStringList({"Wie am Drucker eingestellt", "A4", "A5"}));
    the<QRadioButton>(dialog, "optHochformat").click();
    QCOMPARE(dialog.setup(), (PrinterSetup{"Büro", "", false}));
    // The system's printer has the papers of the one it stands for, and a paper that both have stays.
    dialog.setSetup({"Büro", "A5", false});
    the<QComboBox>(dialog, "cmbDrucker").setCurrentIndex(0);
    QCOMPARE(dialog.setup(), (PrinterSetup{"", "A5", false}));
  }

  void aPrinterThatIsGoneStaysChosen() {
    TestWorkplace place;
    PrinterSetupDialog dialog(kPrinters, {"Etiketten", "A7", false});
    QCOMPARE(the<QComboBox>(dialog, "cmbDrucker").currentText(), "Etiketten (zurzeit nicht vorhanden)");
    QCOMPARE(dialog.setup(), (PrinterSetup{"Etiketten", "A7", false}));
    QVERIFY(the<QLabel>(dialog, "lblKeinDrucker").isHidden());
    PrinterSetupDialog without({}, {});
    QVERIFY(!the<QLabel>(without, "lblKeinDrucker").isHidden());
  }

  void theDialogHasManners() {
    TestWorkplace place;
    PrinterSetupDialog dialog(kPrinters, {});
    dialog.open();
    QCOMPARE(badManners(dialog).join('\n'), QString());
  }
};

QTEST_MAIN(TestCurrentPrinter)
#include "test_current_printer.moc"

// Labels on the printers of a real print server, from the desk's window to the printed page: what comes out
// is rendered at the resolutions of label printers and read by a scanner.
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <memory>

#include "app/ground/control_door.h"
#include "app/ground/printing.h"
#include "app/ground/settings_keys.h"
#include "cash/label_panel.h"
#include "platform/look/look.h"
#include "platform/print/current_printer.h"
#include "tests/cash/desk_window.h"
#include "tests/support/print_server.h"
#include "tests/support/read_bars.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kPaid = R"(
Zeilen Disziplin
  ID | Name       | CmdIndex
  1  | LG Meister | 1

Zeilen Kasse_DisziKombi
  ID | EinlageID | DisziKZ | DisziKombiID | Anzahl
  1  | 1         | 1       | 1            | 2
)";

const QString kLaserWaits =
    "Der Drucker »Laser« ist angehalten. Der Druck wartet dort, bis er weiterläuft.\r\nTrotzdem drucken?";

}  // namespace

class TestLabelPrinters : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    look::apply(*qApp, look::Scheme::Light);
    server = std::make_unique<PrintServer>();
    QVERIFY2(server->isRunning(), qPrintable(server->complaint()));
    server->addLabelPrinter("Etikett");
    server->addSheetPrinter("Laser");
  }
  void cleanupTestCase() { server.reset(); }
  void init() {
    till = std::make_unique<Till>();
    till->fill(kPaid);
    currentPrinter(till->workplace()).keep({"Laser", "A5", true});
    schreibe(till->settings, keys::BarcodePrinter, QString("Etikett"));
    schreibe(till->settings, keys::BarcodeDruck, true);
    papers = std::make_unique<ProgramPapers>(till->workplace());
    door = std::make_unique<ControlDoor>(till->workplace(),
                                         ReportControl::Papers{papers->current, papers->asking},
                                         keys::BerichtsfensterKasse.toString());
    desk = std::make_unique<DeskWindow>(*till, *door);
  }
  void cleanup() {
    desk.reset();
    door.reset();
    papers.reset();
    till.reset();
  }

  void printersAreListed();
  void labelsScan_data();
  void labelsScan();
  void positionsArePrinted();
  void theSecondLabelIsADocument();
  void theFormerPrinterComesBack();
  void otherProgramsDontFollowTheRun();
  void aReceiptSaysThatItWaits();
  void aStartCardSaysThatItWaits();
  void aPausedQueueKeepsItsJobs();
  void aPrinterThatVanishes();

 private:
  void open() {
    desk->open("107");
    desk->show(4);
  }
  void buy() {
    desk->show(0);
    desk->article("100");
  }
  /// The files of the labels printed since the last call.
  QStringList printed(int count) {
    const QStringList all = server->jobs("Etikett", seen_ + count);
    const QStringList fresh = all.mid(seen_);
    seen_ = static_cast<int>(all.size());
    return fresh;
  }

  std::unique_ptr<PrintServer> server;
  std::unique_ptr<Till> till;
  std::unique_ptr<ProgramPapers> papers;
  std::unique_ptr<ControlDoor> door;
  std::unique_ptr<DeskWindow> desk;
  int seen_ = 0;
};

void TestLabelPrinters::printersAreListed() {
  open();
  auto& choice = desk->on<QComboBox>("cmbPrinter");
  QStringList names;
  for (int i = 0; i < choice.count(); ++i) names += choice.itemText(i);
  names.sort();
  QCOMPARE(names, (QStringList{"Etikett", "Laser"}));
  QCOMPARE(choice.currentText(), "Etikett");
  QCOMPARE(desk->text("lblDrucker"), "Aktueller Drucker: Laser");
  schreibe(till->settings, keys::BarcodeX, 3000);  // off the label's own paper, and by far on the other's
  desk->on<LabelPanel>("panelEtiketten").Form_Load();
  QTRY_VERIFY(desk->text("lblBildHinweis").startsWith("Passt nicht auf das Papier (100 × 60 mm)"));
}

void TestLabelPrinters::labelsScan_data() {
  QTest::addColumn<int>("kind");
  QTest::addColumn<bool>("landscape");
  QTest::addColumn<QString>("says");
  QTest::newRow("Code 128") << 0 << true << "BC.107.1.1";
  QTest::newRow("Code 128 upright") << 0 << false << "BC.107.1.1";
  QTest::newRow("EAN 13") << 2 << true << "400000110001";
}

void TestLabelPrinters::labelsScan() {
  QFETCH(int, kind);
  QFETCH(bool, landscape);
  QFETCH(QString, says);
  schreibe(till->settings, keys::BarcodeAuswahl, kind);
  schreibe(till->settings, keys::BarcodeFormatAusrichtung, landscape);
  open();
  buy();
  trigger(desk->window(), "printbarcode");
  const QStringList files = printed(2);
  QCOMPARE(files.size(), 2);
  for (const QString& file : files)
    for (int dots : {203, 300}) QCOMPARE(barsOn(server->page(file, dots)).left(says.size()), says);
}

void TestLabelPrinters::positionsArePrinted() {
  schreibe(till->settings, keys::BarcodeFormatAusrichtung, false);
  schreibe(till->settings, keys::BarcodeX, 0);
  open();
  buy();
  trigger(desk->window(), "printbarcode");
  type(desk->window(), "cmbWechselGeld", "");
  desk->show(4);
  type(desk->window(), "txtBarcodeY", "567");  // a centimetre
  test::press(desk->window(), "txtBarcodeY", Qt::Key_Tab);
  trigger(desk->window(), "printbarcode");
  const QStringList files = printed(4);
  for (int dots : {203, 300}) {
    const QRect before = inkOn(server->page(files[0], dots)), after = inkOn(server->page(files[2], dots));
    QCOMPARE(after.left(), before.left());
    const int moved = after.top() - before.top();
    QVERIFY2(qAbs(moved - dots / 2.54) <= 1.5, qPrintable(QString::number(moved)));
  }
}

void TestLabelPrinters::theSecondLabelIsADocument() {
  schreibe(till->settings, keys::Etikett2, true);
  schreibe(till->settings, keys::PrintTextDruck, true);
  schreibe(till->settings, keys::DruckTextScheibe, QString("startnr"));
  open();
  buy();
  trigger(desk->window(), "printbarcode");
  const QStringList files = printed(4);
  QCOMPARE(barsOn(server->page(files[0], 203)), "BC.107.1.1");
  QCOMPARE(barsOn(server->page(files[1], 203)), "nothing read");
  QVERIFY(!inkOn(server->page(files[1], 203)).isEmpty());
}

void TestLabelPrinters::theFormerPrinterComesBack() {
  open();
  buy();
  trigger(desk->window(), "printbarcode");
  QCOMPARE(currentPrinter(till->workplace()).setup(), (PrinterSetup{"Laser", "A5", true}));
  printed(2);
}

/// The office program on this computer reads the same settings: its lists don't come out as labels.
void TestLabelPrinters::otherProgramsDontFollowTheRun() {
  const auto stored = [this] { return till->settings.value("Tarvex", "Häring", "Drucker"); };
  QCOMPARE(stored(), "Laser");
  schreibe(till->settings, keys::PrintTextDruck, true);
  schreibe(till->settings, keys::DruckTextScheibe, QString("anzsch"));
  till->execute("UPDATE Kasse_DisziKombi SET Anzahl = 2 WHERE ID = 1");
  till->fill(
      "Zeilen Kasse_DisziKombi\n  ID | EinlageID | DisziKZ | DisziKombiID | Anzahl\n  9 | 2 | 1 | 1 | 3\n");
  open();
  desk->show(0);
  desk->article("200");  // three labels in sets of two: a pause between them
  QString during;
  till->waits.inSleep(1, [&] {
    during = stored();
    QCOMPARE(currentPrinter(till->workplace()).setup().name, "Etikett");
  });
  trigger(desk->window(), "printbarcode");
  QCOMPARE(during, "Laser");
  printed(3);
  desk->show(4);
  desk->press("chkPrintManuellTabelle");  // the table stays as the purchase made it
  till->execute("DELETE * FROM Kasse_DisziKombi");
  till->dialogs.expect(
      "Fehler: 3021 - Keine Einlage bezahlt 'LG Meister'. Menü: Optionen - Verwaltung Einlagen - "
      "Zuordnung-Disziplinen");
  desk->press("cmdPrint");
  QVERIFY(desk->text("lblDrucker").startsWith("Aktueller Drucker: Etikett"));  // of this program
  QCOMPARE(stored(), "Laser");
  desk->close();
  currentPrinter(till->workplace()).keep({"Laser", "A5", true});  // set up anew, it holds again
  QCOMPARE(currentPrinter(till->workplace()).setup(), (PrinterSetup{"Laser", "A5", true}));
}

void TestLabelPrinters::aReceiptSaysThatItWaits() {
  till->deliver();
  till->random.give({0.1, 0.2, 0.3, 0.4, 0.5, 0.6});
  server->pause("Laser");
  desk->open("107");
  desk->article("200");
  till->dialogs.expect(kLaserWaits, BoxAnswer::No).presetting(BoxAnswer::Yes);
  trigger(desk->window(), "Drucken");
  QCOMPARE(server->waiting("Laser"), 0);
  till->dialogs.expect(kLaserWaits, BoxAnswer::Yes);
  trigger(desk->window(), "Drucken");
  QCOMPARE(server->waiting("Laser"), 1);
  desk->press("chkAutoDruck");
  till->dialogs.expect(kLaserWaits, BoxAnswer::No);
  desk->press("cmdVerbuchen");
  QCOMPARE(till->payments().size(), 1);  // without its receipt
  server->resume("Laser");
  QCOMPARE(server->jobs("Laser", 1).size(), 1);
}

void TestLabelPrinters::aStartCardSaysThatItWaits() {
  till->deliver();
  till->random.give({0.1, 0.2, 0.3, 0.4, 0.5, 0.6});
  server->pause("Laser");
  desk->open("107");
  const auto told = [this] { return the<QStatusBar>(desk->window(), "statusBar").currentMessage(); };
  till->dialogs.expect(kLaserWaits, BoxAnswer::No);
  trigger(desk->window(), "kladde");
  QCOMPARE(told(), "Die Startkarte wurde nicht gedruckt.");
  till->dialogs.expect(kLaserWaits, BoxAnswer::Yes);
  trigger(desk->window(), "kladde");
  QCOMPARE(told(), "Startkarte gedruckt.");
  QCOMPARE(server->waiting("Laser"), 1);
  server->resume("Laser");
  server->remove("Laser");
  trigger(desk->window(), "kladde");
  QCOMPARE(told(), "Die Startkarte wurde nicht gedruckt: Druckerfehler: Laser");
  server->addSheetPrinter("Laser");
}

void TestLabelPrinters::aPausedQueueKeepsItsJobs() {
  server->pause("Etikett");
  open();
  QVERIFY(desk->text("lblDrucker").contains("Der Etikettendrucker ist angehalten"));
  desk->press("chkAutoScheibenDruck");
  buy();
  till->dialogs.expect(
      "Der Drucker »Etikett« ist angehalten. Die Etiketten warten dort, bis er weiterläuft.\r\nTrotzdem "
      "drucken?",
      BoxAnswer::Yes);
  desk->press("cmdVerbuchen");
  QCOMPARE(till->payments().size(), 1);
  QCOMPARE(server->waiting("Etikett"), 2);
  server->resume("Etikett");
  for (const QString& file : printed(2)) QCOMPARE(barsOn(server->page(file, 203)), "BC.107.1.1");
}

void TestLabelPrinters::aPrinterThatVanishes() {
  open();
  desk->press("chkAutoScheibenDruck");
  buy();
  server->remove("Etikett");
  till->dialogs
      .expect("Fehler: 482 - Druckerfehler: Etikett\r\n\r\nEs wurde noch keine Zeile des Kaufs gespeichert.")
      .with(BoxButtons::Ok);
  desk->press("cmdVerbuchen");
  QCOMPARE(desk->purchase().size(), 1);
  QVERIFY(till->payments().isEmpty());
  server->addLabelPrinter("Etikett");
  desk->press("cmdVerbuchen");
  QCOMPARE(till->payments().size(), 1);  // once
  QCOMPARE(printed(2).size(), 2);
  desk->close();
  server->remove("Etikett");
  desk->open("107");
  desk->show(4);
  QCOMPARE(desk->on<QComboBox>("cmbPrinter").currentIndex(), -1);
  QVERIFY(desk->text("lblDrucker").contains("Der Etikettendrucker »Etikett« ist nicht mehr da."));
}

QTEST_MAIN(TestLabelPrinters)
#include "test_label_printers.moc"

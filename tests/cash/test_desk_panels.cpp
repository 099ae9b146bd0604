// The desk's tabs "Scheiben: Aktueller Kauf", "Scheiben Gesamt" and "Scheibendruck" on the real window.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>
#include <memory>

#include "app/ground/settings_keys.h"
#include "cash/label_panel.h"
#include "cash/target_panel.h"
#include "platform/look/look.h"
#include "platform/widgets/picture_view.h"
#include "tests/cash/desk_window.h"
#include "tests/support/manners.h"
#include "tests/support/real_boxes.h"

using namespace qk;
using namespace qk::test;

namespace {

// Startgeld pays for two targets of discipline 1, Nachkauf Serie for one of the combination.
const char* const kPaid = R"(
Zeilen Kasse_DisziKombi
  ID | EinlageID | DisziKZ | DisziKombiID | Anzahl
  1  | 1         | 1       | 1            | 2
  2  | 2         | 2       | 1            | 1

Zeilen Schuetzen_ScheibenNummern
  ID | Startnummer | Scheibennummer | Kaufdatum  | DisziKombiWahl | DisziKombiID | StapelID
  1  | 107         | 7              | 19.11.2026 | 0              | 1            | 1
  2  | 108         | 8              | 20.11.2026 | 0              | 1            | 1
)";
const QString kStopped =
    "Fehler: 18 - Die Etiketten wurden nicht alle gedruckt.\r\n\r\nEs wurde noch keine Zeile "
    "des Kaufs gespeichert.";

}  // namespace

class TestDeskPanels : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    till = std::make_unique<Till>();
    till->fillStacks();
    till->fill(kPaid);
    desk = std::make_unique<DeskWindow>(*till);
  }
  void cleanup() {
    desk.reset();
    till.reset();
  }

  void theFlagHidesTheTargets();
  void noStackHidesTheTargets();
  void aReloadWithAStackShowsThem();
  void takingFromAStack();
  void aScannedNumber();
  void whoeverMovesItByKeys();
  void theMenuOfATarget();
  void takingAllBack();
  void choicesAreKept();
  void bookingTargets();
  void whatTheShooterHolds();
  void deletingEverythingByMenu();
  void theTableFollowsThePurchase();
  void selectingByHand();
  void settingsAreStoredAtOnce();
  void positionsThatAreNoNumber();
  void theSecondLabel();
  void thePictureFollows();
  void theHelpOfTheTemplate();
  void fonts();
  void printing();
  void anUnpaidDiscipline();
  void aVanishedPrinter();
  void aPausedPrinter();
  void stoppingARun();
  void failedLabelsBookNothing();
  void manners();

 private:
  frmFinanz& window() { return desk->window(); }
  void open(const QString& number = "107", bool without = false) { desk->open(number, without); }
  RecordedLabels& openLabels() {
    open();
    return desk->recordLabels();
  }
  TextGrid& stacks() { return desk->on<TextGrid>("grdScheiben"); }
  QStringList tree(const QString& name) { return desk->tree(name); }
  void select(const QString& name, int root, int child = -1) { desk->select(name, root, child); }
  QStringList table() {
    const TextTable& rows = *desk->on<TextGrid>("flexBarcode").table();
    QStringList lines;
    for (int row = 1; row < rows.rows(); ++row) {
      QStringList cells;
      for (int column = 1; column < rows.columns(); ++column) cells += rows.text(row, column);
      lines += cells.join(' ');
    }
    return lines;
  }
  QString setting(const QString& section, const QString& key) {
    return till->settings.value("Tarvex-40", section, key);
  }
  QString hint() {
    QCoreApplication::processEvents();
    return desk->text("lblBildHinweis");
  }

  std::unique_ptr<Till> till;
  std::unique_ptr<DeskWindow> desk;
};

// --- tab "Scheiben: Aktueller Kauf"

void TestDeskPanels::theFlagHidesTheTargets() {
  open("107", true);
  QVERIFY(!desk->on<QTabWidget>("SSTab1").isTabVisible(1));
}

void TestDeskPanels::noStackHidesTheTargets() {
  till->execute("DELETE * FROM ScheibenNummern");
  open();
  auto& tabs = desk->on<QTabWidget>("SSTab1");
  QVERIFY(!tabs.isTabVisible(1) && !tabs.isTabVisible(3));
  QVERIFY(desk->on<QMenu>("mnuScheiben").menuAction()->isVisible());
}

void TestDeskPanels::aReloadWithAStackShowsThem() {
  open("107", true);
  desk->article("200");
  desk->press("cmdVerbuchen");
  auto& tabs = desk->on<QTabWidget>("SSTab1");
  QVERIFY(tabs.isTabVisible(1) && tabs.isTabVisible(3));
}

void TestDeskPanels::takingFromAStack() {
  open();
  desk->show(1);
  QVERIFY(desk->on<QLineEdit>("txtScheibenNummer").hasFocus());
  stacks().setCurrentRow(4);
  desk->press("cmdScheibeAdd");
  test::press(window(), "grdScheiben", Qt::Key_Return);
  QCOMPARE(tree("treeDiszi"), QStringList("LG Meister: 10   (Zehner), 11   (Zehner)"));
  QCOMPARE(stacks().table()->text(4, 3), "12");
  stacks().setCurrentRow(3);
  desk->press("cmdScheibeAdd");
  QCOMPARE(desk->on<QTabWidget>("SSTab2").currentIndex(), 1);  // the tree of the stack comes to the front
  QCOMPARE(tree("treeKombi"), QStringList("Pokal: 150   (Pokale)"));
  till->dialogs.expectInput("Bitte geben Sie die Anzahl der Scheibennummern ein:", "3")
      .titled("Scheibennummern");
  stacks().setCurrentRow(4);
  desk->press("cmdScheibeAddAnzahl");
  QCOMPARE(stacks().table()->text(4, 3), "15");
  stacks().setCurrentRow(1);
  desk->on<QTreeView>("treeDiszi").selectionModel()->clear();
  till->dialogs.expect("Bitte wählen Sie eine Disziplin/Kombination!").titled("Hinweis");
  desk->press("cmdScheibeAdd");
  QVERIFY(till->read("Select * from ScheibenNummern where ID = 1", {"AktuelleNummer"}) == QStringList("10"));
}

void TestDeskPanels::aScannedNumber() {
  open();
  desk->show(1);
  desk->scan("42");
  QCOMPARE(tree("treeDiszi"), QStringList("LG Meister: 42   (Zehner)"));
  QVERIFY(desk->on<QLineEdit>("txtScheibenNummer").hasFocus());
  QCOMPARE(desk->text("txtScheibenNummer"), "");
  select("treeDiszi", 0);
  desk->scan("5000");
  QCOMPARE(tree("treeDiszi").first(), "LG Glück: 5000");
  desk->press("chkScheibenStapelPruefung");
  desk->on<QLineEdit>("txtScheibenNummer").setFocus();
  desk->scan("43");
  QCOMPARE(tree("treeDiszi").first(), "LG Glück: 5000, 43");
}

void TestDeskPanels::whoeverMovesItByKeys() {
  open();
  desk->show(1);
  desk->scan("42");
  select("treeDiszi", 1, 0);
  test::press(window(), "treeDiszi", Qt::Key_X, Qt::ControlModifier);
  select("treeDiszi", 0);
  test::press(window(), "treeDiszi", Qt::Key_V, Qt::ControlModifier);
  QCOMPARE(tree("treeDiszi"), QStringList("LG Glück: 42   (Zehner)"));
}

void TestDeskPanels::theMenuOfATarget() {
  open();
  desk->show(1);
  desk->scan("42");
  select("treeDiszi", 1, 0);
  auto& view = desk->on<QTreeView>("treeDiszi");
  const auto choose = [&](const QString& entry) {
    return desk->pick(entry, [&] {
      Q_EMIT view.customContextMenuRequested(view.visualRect(view.currentIndex()).center());
    });
  };
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "77").titled("Änderung");
  QCOMPARE(choose("mnuScheibeNummer").mid(0, 2), (QStringList{"Scheibe zurücknehmen", "Nummer ändern..."}));
  QCOMPARE(tree("treeDiszi"), QStringList("LG Meister: 77   (Zehner)"));
  till->dialogs.expect(
      "Die Nummer ist nicht die letzte vergebene Nummer des Stapels!\r\n"
      "Hinweis: Nehmen Sie die Scheiben nach der ausgegebenen Reihenfolge wieder zurück.\r\n\r\n"
      "Wollen Sie die Scheibe dennoch löschen?\r\n",
      BoxAnswer::Yes);
  choose("mnuScheibeRemove");
  QVERIFY(tree("treeDiszi").isEmpty());
}

void TestDeskPanels::takingAllBack() {
  open();
  desk->show(1);
  stacks().setCurrentRow(4);
  desk->press("cmdScheibeAdd");
  desk->press("cmdScheibeAdd");
  select("treeDiszi", 1, 1);
  test::press(window(), "treeDiszi", Qt::Key_Delete);
  QCOMPARE(stacks().table()->text(4, 3), "11");
  desk->press("cmdScheibeRemoveAll");
  QVERIFY(tree("treeDiszi").isEmpty());
  QCOMPARE(stacks().table()->text(4, 3), "10");
}

void TestDeskPanels::choicesAreKept() {
  open();
  desk->show(1);
  desk->press("chkAutoZuordnungScheiben");
  desk->press("chkManuelleNummer");
  desk->on<QTabWidget>("SSTab2").setCurrentIndex(1);
  QCOMPARE(setting("Daten", "KasseAutoScheibenZuordnung"), "0");
  QCOMPARE(setting("Daten", "KasseManuelleScheibenNummer"), "1");
  trigger(window(), "mnuDateiSchliessen");
  QCOMPARE(setting("Daten", "WkKasseRegister"), "1");
  open();
  QVERIFY(!desk->on<QCheckBox>("chkAutoZuordnungScheiben").isChecked());
  QVERIFY(desk->on<QCheckBox>("chkManuelleNummer").isChecked());
  QCOMPARE(desk->on<QTabWidget>("SSTab2").currentIndex(), 1);
  desk->show(1);
  stacks().setCurrentRow(4);
  select("treeKombi", 0);
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "99");
  desk->press("cmdScheibeAdd");
  QCOMPARE(tree("treeKombi"), QStringList("Pokal: 99"));
}

void TestDeskPanels::bookingTargets() {
  open();
  desk->show(1);
  stacks().setCurrentRow(4);
  desk->press("cmdScheibeAdd");
  select("treeDiszi", 0);
  desk->on<QLineEdit>("txtScheibenNummer").setFocus();
  desk->scan("5000");
  test::press(window(), "txtScheibenNummer", Qt::Key_F9);
  QCOMPARE(till->read(
               "Select * from Schuetzen_ScheibenNummern where ID > 2 order by ID",
               {"Startnummer", "Scheibennummer", "Kaufdatum", "DisziKombiWahl", "DisziKombiID", "StapelID"}),
           (QStringList{"107|5000|20.11.2026 10:00:00|0|2|Null", "107|10|20.11.2026 10:00:00|0|1|1"}));
  QCOMPARE(till->read("Select * from ScheibenNummern where ID = 1", {"AktuelleNummer"}), QStringList("11"));
  QVERIFY(tree("treeDiszi").isEmpty());
}

// --- tab "Scheiben Gesamt"

void TestDeskPanels::whatTheShooterHolds() {
  open();
  desk->show(3);
  auto& grid = desk->on<TextGrid>("grdScheibenAlle");
  QCOMPARE(grid.table()->rows(), 2);
  QCOMPARE(grid.table()->text(1, 0), "7");
  QCOMPARE(desk->text("lblScheibenVon"), "Scheiben von Startnummer 107");
  grid.setCurrentRow(0);
  desk->press("cmdScheibenGesamtDelete");  // nothing is chosen
  grid.setCurrentRow(1);
  till->dialogs.expect("Soll die gewählte Scheibe des Schützen gelöscht werden?", BoxAnswer::No)
      .titled("Hinweis");
  desk->press("cmdScheibenGesamtDelete");
  window().UpdateStartNr("108", "", "");
  QCOMPARE(desk->text("lblScheibenVon"), "Scheiben von Startnummer 107");
  till->dialogs.expect("Sollen alle Scheiben des Schützen gelöscht werden?", BoxAnswer::Yes);
  desk->press("cmdScheibenGesamtDeleteAll");  // of the one who stands above
  QCOMPARE(till->read("Select * from Schuetzen_ScheibenNummern", {"ID"}), QStringList("1"));
}

void TestDeskPanels::deletingEverythingByMenu() {
  open();
  till->dialogs.expect("Sollen alle ausgegebenen Scheiben zu den Schützen gelöscht werden?", BoxAnswer::Yes)
      .titled("Hinweis");
  trigger(window(), "mnuScheibenLoeschen");
  QVERIFY(till->read("Select * from Schuetzen_ScheibenNummern", {"ID"}).isEmpty());
}

// --- tab "Scheibendruck"

void TestDeskPanels::theTableFollowsThePurchase() {
  openLabels();
  // All are ticked until the purchase changes.
  QCOMPARE(table(), (QStringList{"1 D LG Glück 1 keine Einlage", "1 D LG Meister 1 ", "1 K Pokal 1 "}));
  desk->show(0);
  desk->article("100");
  QCOMPARE(table(), (QStringList{" D LG Glück 0 keine Einlage", "1 D LG Meister 2 ", " K Pokal 0 "}));
}

void TestDeskPanels::selectingByHand() {
  RecordedLabels& output = openLabels();
  auto& grid = desk->on<TextGrid>("flexBarcode");
  QVERIFY(!grid.table()->isEditable(4));
  desk->press("chkPrintManuellTabelle");
  QVERIFY(grid.table()->isEditable(4) && grid.hasSuggestions());
  grid.setFocus();
  for (int row : {1, 2}) {
    grid.setCurrentRow(row);
    QTest::keyClick(&grid, Qt::Key_Space);
  }
  QCOMPARE(table(), (QStringList{"0 D LG Glück 1 keine Einlage", "0 D LG Meister 1 ", "1 K Pokal 1 "}));
  desk->press("chkBarcodeDruck");
  desk->press("cmdPrint");
  QCOMPARE(output.lines.filter("bars"), QStringList("bars 0 BC.107.2.1 " + Code128Text("BC.107.2.1")));
}

void TestDeskPanels::settingsAreStoredAtOnce() {
  openLabels();
  QCOMPARE(desk->on<QComboBox>("cmbPrinter").count(), 2);
  QCOMPARE(desk->on<QComboBox>("cmbPrinter").currentIndex(), -1);
  desk->on<QComboBox>("cmbPrinter").setCurrentIndex(1);
  Q_EMIT desk->on<QComboBox>("cmbPrinter").textActivated("Etikett");
  desk->press("optBarcodeAuswahl_2");
  desk->press("optFormatAusrichtung_0");
  desk->press("chkBarcodeDruck");
  desk->press("chkTextDruck");
  type(window(), "txtScheibenText", "startnr;nl");
  type(window(), "txtBarcodeX", "300");
  test::press(window(), "txtBarcodeX", Qt::Key_Tab);
  const std::pair<const char*, const char*> stored[] = {
      {"BarcodePrinter", "Etikett"}, {"BarcodeAuswahl", "2"}, {"BarcodeFormatAusrichtung", "0"},
      {"BarcodeDruck", "1"},         {"PrintTextDruck", "1"}, {"DruckTextScheibe", "startnr;nl"},
      {"Barcode-X", "300"}};
  for (const auto& [key, value] : stored) QCOMPARE(setting("Allgemein", key), value);
  desk->on<LabelPanel>("panelEtiketten").Form_Load();
  QCOMPARE(desk->on<QComboBox>("cmbPrinter").currentText(), "Etikett");
  QVERIFY(desk->on<QRadioButton>("optBarcodeAuswahl_2").isChecked());
  QVERIFY(desk->on<QRadioButton>("optFormatAusrichtung_0").isChecked());
}

void TestDeskPanels::positionsThatAreNoNumber() {
  openLabels();
  type(window(), "txtBarcodeY", "120");
  test::press(window(), "txtBarcodeY", Qt::Key_Tab);
  type(window(), "txtBarcodeY", "unten");
  test::press(window(), "txtBarcodeY", Qt::Key_Tab);
  QCOMPARE(desk->text("txtBarcodeY"), "120");
  QCOMPARE(setting("Allgemein", "Barcode-Y"), "120");
}

void TestDeskPanels::theSecondLabel() {
  openLabels();
  QVERIFY(!desk->on<QLineEdit>("txtBarcodeX2").isEnabled() && !desk->on<QWidget>("lblBarcodeX2").isEnabled());
  desk->on<QCheckBox>("chkEtikett2").click();
  QVERIFY(desk->on<QLineEdit>("txtBarcodeX2").isEnabled() &&
          desk->on<QWidget>("optFormatAusrichtung2_0").isEnabled());
  QCOMPARE(setting("Daten", "Etikett2"), "1");
}

void TestDeskPanels::thePictureFollows() {
  openLabels();
  auto& picture = desk->on<PictureView>("picEtikett");
  QVERIFY(hint().isEmpty());
  QVERIFY(picture.image().isNull() && picture.text().startsWith("Es ist nichts zu drucken"));
  desk->press("chkBarcodeDruck");
  QVERIFY(hint().contains("Passt nicht") && hint().contains("nicht zu lesen"));  // 40 mm across
  desk->press("optFormatAusrichtung_0");
  QCOMPARE(hint(), "");
  const QImage bars = picture.image();
  QVERIFY(!bars.isNull());
  type(window(), "txtBarcodeX", "1200");
  QVERIFY(hint().startsWith("Passt nicht auf das Papier (62 × 40 mm)"));
  QVERIFY(picture.image() != bars);
  type(window(), "txtBarcodeX", "0");
  QCOMPARE(hint(), "");
  type(window(), "txtScheibenText", "startnr");
  desk->press("chkTextDruck");
  QCOMPARE(hint(), "");
  desk->on<QCheckBox>("chkEtikett2").click();
  QCoreApplication::processEvents();
  const QImage both = picture.image();
  QCOMPARE(both.size(), QSize(bars.width() + 20 + bars.height(), bars.width()));  // the second stands
  const auto edgeAt = [&](int x) { return both.pixelColor(x, both.height() / 2) == QColor(Qt::gray); };
  QVERIFY(edgeAt(1) && edgeAt(bars.width() - 1) && edgeAt(bars.width() + 21) && edgeAt(both.width() - 1));
  QCOMPARE(both.pixelColor(bars.width() + 10, both.height() / 2).alpha(), 0);
}

void TestDeskPanels::theHelpOfTheTemplate() {
  openLabels();
  type(window(), "txtScheibenText", "startnr;");
  RealBoxes windows;
  windows.expectWindow("frmEtikettText", onceActive([](QWidget& help) {
                         QCOMPARE(the<QLineEdit>(help, "txtVorlage").text(), "startnr;");
                         the<TextGrid>(help, "grdWorte").setCurrentRow(2);
                         click(help, "cmdEinfuegen");
                         QCOMPARE(the<QLineEdit>(help, "txtVorlage").text(), "startnr;name;");
                         QCOMPARE(the<QLabel>(help, "lblBeispiel").text(), "107Müller, Jörg");
                         QCOMPARE(badManners(help).join("; "), QString());
                         click(help, "cmdOK");
                       }));
  desk->press("cmdScheibenTextHilfe");
  QCOMPARE(desk->text("txtScheibenText"), "startnr;name;");
  QCOMPARE(setting("Allgemein", "DruckTextScheibe"), "startnr;name;");
  till->clock.advance(1000);  // no scanner goes on that long
  windows.expectWindow("frmEtikettText", onceActive([](QWidget& help) {
                         type(help, "txtVorlage", "weg");
                         click(help, "cmdCancel");
                       }));
  desk->press("cmdScheibenTextHilfe");
  QCOMPARE(desk->text("txtScheibenText"), "startnr;name;");
}

void TestDeskPanels::fonts() {
  openLabels();
  QCOMPARE(desk->text("lblBarcodeFontName"), "Microsoft Sans Serif, 10");
  till->dialogs.expectFont(FontChoice{"DejaVu Sans;14;0;0;0;0", 0});
  desk->press("cmdPrintFont");
  QCOMPARE(desk->text("lblPrintFontName"), "DejaVu Sans, 14");
  till->dialogs.expectFont(std::nullopt);
  desk->press("cmdBarcodeFont");
  QCOMPARE(desk->text("lblBarcodeFontName"), "Microsoft Sans Serif, 10");
}

void TestDeskPanels::printing() {
  schreibe(till->settings, keys::BarcodePrinter, QString("Etikett"));
  RecordedLabels& output = openLabels();
  desk->press("chkBarcodeDruck");
  desk->show(0);
  desk->article("100");
  desk->article("200");
  trigger(window(), "mnuDateiPrintBarcode");
  QCOMPARE(output.lines.filter("bars").size(), 3);
  QCOMPARE(output.lines.filter("printer"),
           (QStringList{"printer Etikett", "printer Laser", "printer Etikett", "printer Laser"}));
  QVERIFY(desk->text("lblDrucker").startsWith("Aktueller Drucker: Laser"));
}

void TestDeskPanels::anUnpaidDiscipline() {
  schreibe(till->settings, keys::BarcodePrinter, QString("Etikett"));
  openLabels();
  desk->press("chkPrintManuellTabelle");
  TextTable& rows = *desk->on<TextGrid>("flexBarcode").table();
  QVERIFY(rows.setData(rows.index(0, 1), Qt::Checked, Qt::CheckStateRole));
  till->dialogs
      .expect(
          "Fehler: 3021 - Keine Einlage bezahlt 'LG Glück'. Menü: Optionen - Verwaltung Einlagen - "
          "Zuordnung-Disziplinen")
      .with(BoxButtons::Ok);
  desk->press("cmdPrint");
  QVERIFY(desk->text("lblDrucker").startsWith("Aktueller Drucker: Etikett"));
}

void TestDeskPanels::aVanishedPrinter() {
  schreibe(till->settings, keys::BarcodePrinter, QString("Weg"));
  RecordedLabels& output = openLabels();
  QVERIFY(desk->text("lblDrucker").contains("Der Etikettendrucker »Weg« ist nicht mehr da."));
  const QString gone =
      "Fehler: 482 - Der Etikettendrucker »Weg« ist nicht mehr da. Register Scheibendruck: einen anderen "
      "wählen.";
  till->dialogs.expect(gone).with(BoxButtons::Ok);
  desk->press("cmdPrint");
  desk->press("chkAutoScheibenDruck");
  desk->show(0);
  desk->article("100");
  till->dialogs.expect(gone + "\r\n\r\nEs wurde noch keine Zeile des Kaufs gespeichert.");
  desk->press("cmdVerbuchen");
  QVERIFY(output.lines.isEmpty() && till->payments().isEmpty());
  QCOMPARE(desk->purchase().size(), 1);
}

void TestDeskPanels::aPausedPrinter() {
  schreibe(till->settings, keys::BarcodePrinter, QString("Etikett"));
  RecordedLabels& output = openLabels();
  output.paused = QStringList("Etikett");
  desk->press("chkBarcodeDruck");
  desk->show(0);
  desk->article("100");
  const QString ask =
      "Der Drucker »Etikett« ist angehalten. Die Etiketten warten dort, bis er weiterläuft.\r\nTrotzdem "
      "drucken?";
  till->dialogs.expect(ask, BoxAnswer::No).presetting(BoxAnswer::No);
  trigger(window(), "printbarcode");
  QVERIFY(output.lines.isEmpty());
  QVERIFY(desk->text("lblDrucker").contains("Der Etikettendrucker ist angehalten"));
  till->dialogs.expect(ask, BoxAnswer::Yes);
  trigger(window(), "printbarcode");
  QCOMPARE(output.lines.filter("bars").size(), 2);
  desk->press("chkAutoScheibenDruck");
  till->dialogs.expect(ask, BoxAnswer::No);
  till->dialogs.expect(kStopped);
  desk->press("cmdVerbuchen");
  QVERIFY(till->payments().isEmpty());
}

void TestDeskPanels::stoppingARun() {
  schreibe(till->settings, keys::BarcodePrinter, QString("Etikett"));
  schreibe(till->settings, keys::DruckTextScheibe, QString("anzsch"));
  till->execute("UPDATE Kasse_DisziKombi SET Anzahl = 4 WHERE ID = 1");
  till->fill(
      "Zeilen Kasse_DisziKombi\n  ID | EinlageID | DisziKZ | DisziKombiID | Anzahl\n  9 | 3 | 1 | 1 | 6\n");
  RecordedLabels& output = openLabels();
  desk->press("chkTextDruck");
  desk->press("chkAutoScheibenDruck");
  desk->show(0);
  desk->article("300");  // six labels in sets of four
  till->waits.inSleep(1, [this] {
    QVERIFY(!window().isEnabled());
    auto& progress = desk->on<QProgressDialog>("dlgEtiketten");
    QCOMPARE(progress.value(), 4);
    QCOMPARE(progress.maximum(), 6);
    progress.cancel();
  });
  till->dialogs.expect(kStopped);
  desk->press("cmdVerbuchen");
  QCOMPARE(till->waits.sleeps(), QList<int>{1000});
  QCOMPARE(output.lines.filter("line"),
           (QStringList{"line 1 von 4", "line 2 von 4", "line 3 von 4", "line 4 von 4", "line 1 von 4"}));
  QCOMPARE(output.current, "Laser");
  QVERIFY(till->payments().isEmpty());
  QVERIFY(window().isEnabled());
  desk->press("cmdVerbuchen");
  QCOMPARE(till->payments().size(), 1);
}

void TestDeskPanels::failedLabelsBookNothing() {
  till->execute("DELETE * FROM Kasse_DisziKombi WHERE EinlageID = 2");
  schreibe(till->settings, keys::BarcodePrinter, QString("Etikett"));
  RecordedLabels& output = openLabels();
  desk->press("chkBarcodeDruck");
  desk->press("chkAutoScheibenDruck");
  desk->show(0);
  desk->article("100");
  output.installed = QStringList("Laser");  // pulled out
  till->dialogs.expect("Fehler: 482 - " + errorDescription(482) +
                       "\r\n\r\nEs wurde noch keine Zeile des Kaufs gespeichert.");
  desk->press("cmdVerbuchen");
  QVERIFY(till->payments().isEmpty());
  QCOMPARE(desk->purchase().size(), 1);
}

void TestDeskPanels::manners() {
  openLabels();
  auto& tabs = desk->on<QTabWidget>("SSTab1");
  for (int tab : {1, 3, 4}) {
    desk->show(tab);
    QStringList complaints = badManners(window());
    // The screen of the tests is smaller than the smallest one meant: the column beside the tab, which has a
    // test of its own, doesn't get its width with such a font.
    complaints.removeIf([&](const QString& complaint) {
      return complaint.endsWith("is cut with a larger font") &&
             !tabs.isAncestorOf(&desk->on<QWidget>(complaint.section(' ', 0, 0)));
    });
    // Here Enter belongs to the scanner.
    QCOMPARE(complaints.join("; "), QString("Enter doesn't press cmdOK"));
  }
}

QTEST_MAIN(TestDeskPanels)
#include "test_desk_panels.moc"

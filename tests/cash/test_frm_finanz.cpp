// The cash desk on its real window: opening, showing, changing the shooter, closing.
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "app/ground/settings_keys.h"
#include "platform/look/look.h"
#include "platform/runtime/error.h"
#include "tests/cash/desk_window.h"
#include "tests/support/manners.h"
#include "tests/support/real_boxes.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kDiscard = "Wollen Sie die aktuellen Beträge verwerfen?";
const QString kAskNumber = "Bitte neue Startnummer eingeben:";

}  // namespace

class TestFrmFinanz : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    till = std::make_unique<Till>();
    desk = std::make_unique<DeskWindow>(*till);
  }
  void cleanup() {
    desk.reset();
    till.reset();
  }

  void whatAnOpenDeskShows();
  void theMenusAndKeys();
  void aLoadThatFailsGoesOn();
  void aChosenPrinterThatCantBeKept();
  void targetsAreHiddenWithoutNumbers();
  void theStartCardIsHidden();
  void anUnknownShooter();
  void theClubMenu();
  void savedChoicesComeBack();
  void openItemsPreset();
  void changingTheShooter();
  void allOfTheShooter();
  void anUnreadableCellStandsInItsEditor();
  void deletingARow();
  void closingAsksAboutThePurchase();
  void closingWithoutAPurchase();
  void columnWidthsAreKept();
  void theFontOfTheStakes();
  void aDeskThatWaitsForItsFirstShooter();
  void aScanChoosesTheFirstShooter();
  void aShooterFromTheList();
  void aLargeFontFitsTheSmallestScreen();
  void manners();

 private:
  frmFinanz& window() { return desk->window(); }
  QAction& action(const QString& name) { return desk->on<QAction>(name); }

  std::unique_ptr<Till> till;
  std::unique_ptr<DeskWindow> desk;
};

void TestFrmFinanz::whatAnOpenDeskShows() {
  desk->open("107");
  QCOMPARE(window().windowTitle(), "Tarvex Kasse");
  QCOMPARE(desk->text("txtStartNr"), "107");
  QCOMPARE(desk->text("Label1"), "Müller Jörg");
  QCOMPARE(desk->text("Label5"), "14.05.1980");
  QCOMPARE(desk->text("lblSPO"), "LG - ");
  QCOMPARE(desk->text("lblKlasse"), "Herren I");
  QCOMPARE(desk->text("Label4"), "SG Grünau");
  QCOMPARE(desk->text("Label9"), "Grünau I");
  QCOMPARE(desk->text("lblAktGesamt"), "0,00 €");
  QCOMPARE(desk->text("lblGesamt"), "0,00 €");
  auto& tabs = desk->on<QTabWidget>("SSTab1");
  QStringList titles;
  for (int i = 0; i < tabs.count(); ++i) titles += tabs.tabText(i);
  QCOMPARE(titles, (QStringList{"Kasse: Aktueller Kauf", "Scheiben: Aktueller Kauf", "Kasse Gesamt",
                                "Scheiben Gesamt", "Scheibendruck"}));
  auto& stakes = desk->on<QListWidget>("lstAll");
  QCOMPARE(stakes.count(), 7);
  QCOMPARE(stakes.item(0)->text(), "Startgeld");
  auto& money = desk->on<QComboBox>("cmbWechselGeld");
  QStringList amounts;
  for (int i = 0; i < money.count(); ++i) amounts += money.itemText(i);
  QCOMPARE(amounts, (QStringList{"", "5", "10", "15", "20"}));
  QCOMPARE(money.currentText(), "");
  QVERIFY(desk->on<QLineEdit>("txtArtikelnummer").hasFocus());
  QStringList header;
  for (int column = 1; column < 5; ++column) header += desk->on<TextGrid>("flex").table()->text(0, column);
  QCOMPARE(header, (QStringList{"Bezeichnung", "Offen", "Betrag", "Datum"}));
}

void TestFrmFinanz::theMenusAndKeys() {
  desk->open();
  const std::pair<const char*, const char*> entries[] = {
      {"mnuDateiWechsel", "&Wechseln..."},
      {"mnuDateiListe", "Schützen&liste..."},
      {"mnuDateiDrucken", "Drucken..."},
      {"mnuDateiVorschau", "Seiten&vorschau..."},
      {"mnuDateiPrinterSetup", "Druckeneinrichtung..."},
      {"mnuDateiPrintStartKarte", "Startkarte drucken"},
      {"mnuDateiPrintBarcode", "Barcode drucken"},
      {"mnuDateiAuswertung", "&Kassenauswertung..."},
      {"mnuDateiSchliessen", "&Schließen"},
      {"mnuKaufEinlagen", "Einlagen anwählen"},
      {"mnuKaufAdd", "Kauf <"},
      {"mnuKaufAddAnzahl", "Kauf Anzahl <+"},
      {"mnuKaufEingaenge", "Eingänge anwählen"},
      {"mnuKaufRemove", "Entfernen >"},
      {"mnuKaufRemoveAll", "Alle Entfernen >>"},
      {"mnuOptEinlagen", "Verwaltung &Einlagen"},
      {"mnuOptKasseSetup", "Einstellungen Kasse..."},
      {"mnuOptOffenePosten", "&Offene Posten vorbelegen"},
      {"mnuOptScheiben", "&Verwaltung Scheiben"},
      {"mnuOptSchriftEinlagen", "&Schriftart Einlagen"},
      {"mnuScheibenAuswertung", "&Auswertung..."},
      {"mnuScheibenLoeschen", "Alle Scheibenausgaben &löschen"}};
  for (const auto& [name, text] : entries) QCOMPARE(action(name).text(), text);
  for (const char* key : {"wechseln", "printbarcode", "kladde", "exit", "Drucken", "vorschau"}) action(key);
  QCOMPARE(desk->text("cmdVerbuchen"), "Ver&buchen");
  QCOMPARE(desk->text("cmdOK"), "&Verbuchen und Schließen");
  QCOMPARE(desk->text("cmdSpende"), "Als S&pende berechnen");
  QCOMPARE(desk->text("cmdOPVerbuchen"), "Alle Offene Posten auf akt. Datum verbuchen");
  QCOMPARE(desk->text("cmdDelete"), "&Löschen");
  QCOMPARE(desk->text("cmdDeleteAll"), "&Alle Löschen");
  QCOMPARE(desk->text("optBetrag_1"), "&Offene Posten");
  QCOMPARE(desk->text("lblAktGesamtBez"), "Zu bezahlen:");
  QCOMPARE(desk->text("chkEtikett2"), "zweites Etikett");
  QCOMPARE(desk->text("chkScheibenStapelPruefung"), "Prüfung Stapel -> Disziplin");
  for (const SettingKey& font : {keys::BarcodeFont, keys::PrintScheibeFont, keys::ListDisziKasseFont})
    QCOMPARE(liesText(till->settings, font), "Microsoft Sans Serif;10;0;0;0;0");
}

void TestFrmFinanz::aLoadThatFailsGoesOn() {
  till->store()->dropTable("Kasse_DisziKombi");
  till->dialogs
      .expect(till->failureOf("Select * from Kasse_DisziKombi") +
                  "\nFehler beim Laden der Kassen-, Scheibeneinstellungen!",
              BoxAnswer::Ignore)
      .with(BoxButtons::AbortRetryIgnore);
  desk->open("108");
  // The steps behind it were done.
  QVERIFY(!desk->on<QTabWidget>("SSTab1").isTabVisible(1));
  QCOMPARE(desk->text("lblBarcodeFontName"), "Microsoft Sans Serif, 10");
  QCOMPARE(desk->text("Label1"), "Süß Benno");
}

void TestFrmFinanz::aChosenPrinterThatCantBeKept() {
  desk->open();
  const QString file = till->settings.filePath();
  QFile::remove(file);
  QVERIFY(QDir().mkpath(file + "/x"));  // a folder stands in its place
  till->dialogs.expectPrinterSetup(PrinterSetup{"Laser", "A5", false});
  till->dialogs
      .expect("Fehler: 75 - " + errorDescription(75) + ": " + file + "\nFehler bei der Druckerauswahl!",
              BoxAnswer::Abort)
      .with(BoxButtons::AbortRetryIgnore);
  trigger(window(), "mnuDateiPrinterSetup");
  QVERIFY(till->dialogs.done());
  QVERIFY(QDir(file).removeRecursively());
}

void TestFrmFinanz::targetsAreHiddenWithoutNumbers() {
  desk->open("108", true);
  auto& tabs = desk->on<QTabWidget>("SSTab1");
  QVERIFY(!tabs.isTabVisible(1) && !tabs.isTabVisible(3));
  QVERIFY(!desk->on<QMenu>("mnuScheiben").menuAction()->isVisible());
  QVERIFY(!action("mnuOptScheiben").isVisible() && !action("mnuOptTemp2").isVisible());
}

void TestFrmFinanz::theStartCardIsHidden() {
  desk->open();
  QVERIFY(action("mnuDateiPrintStartKarte").isVisible() && action("kladde").isVisible());
  desk->close();
  NoReports none;
  frmFinanz without(till->workplace(), till->global, none);
  without.setOhneStartkarte(true);
  without.UpdateStartNr("108", "", "");
  without.show();
  QVERIFY(!the<QAction>(without, "mnuDateiPrintStartKarte").isVisible());
  QVERIFY(!the<QAction>(without, "kladde").isVisible());
}

void TestFrmFinanz::anUnknownShooter() {
  desk->open("107");
  window().UpdateStartNr("999", "x", "y");
  QCOMPARE(desk->text("Label1"), "SCHÜTZE nicht gefunden!!!!");
  QCOMPARE(desk->text("txtStartNr"), "107");
  QCOMPARE(desk->text("Label4"), "SG Grünau");
}

void TestFrmFinanz::theClubMenu() {
  till->fill(
      "Zeilen Kasse_Eingang\n  KasseID | Offen | Betrag | VereinID | MannID\n"
      "  10 | ja | 1250,5 | 1 |\n  10 | nein | 30 | | 1\n");
  desk->open("107");
  auto& menu = desk->on<QMenu>("mnuVMEinlagenMain");
  QVERIFY(menu.menuAction()->isVisible());
  QCOMPARE(menu.title(), "VM-Einlagen");
  QCOMPARE(action("mnuVM_0").text(), "Verein: SG Grünau: -1.250,50 €");
  QCOMPARE(action("mnuVM_0").data().toString(), "1");
  QCOMPARE(action("mnuVM_1").text(), "Mannschaft: Grünau I: 30,00 €");
  window().UpdateStartNr("107", "Müller & Sohn", "Grünau I");
  QCOMPARE(action("mnuVM_0").text(), "Verein: Müller && Sohn: -1.250,50 €");
  window().UpdateStartNr("5.1", "", "");
  QVERIFY(!action("mnuVM_0").isVisible());
  QCOMPARE(menu.actions().size(), 3);
  QCOMPARE(action("mnuVM_1").text(), "SPO-Mannschaft: Grünau I: 30,00 €");
  window().UpdateStartNr("108", "", "");
  QVERIFY(!menu.menuAction()->isVisible());
  QCOMPARE(menu.actions().size(), 1);
}

void TestFrmFinanz::savedChoicesComeBack() {
  desk->open();
  QVERIFY(!desk->on<QCheckBox>("chkAutoDruck").isChecked());
  desk->press("chkAutoDruck");
  desk->press("chkAutoScheibenDruck");
  desk->close();
  desk->open();
  QVERIFY(desk->on<QCheckBox>("chkAutoDruck").isChecked());
  QVERIFY(desk->on<QCheckBox>("chkAutoScheibenDruck").isChecked());
}

void TestFrmFinanz::openItemsPreset() {
  desk->open();
  QVERIFY(desk->on<QRadioButton>("optBetrag_0").isChecked());
  trigger(window(), "mnuOptOffenePosten");
  QVERIFY(desk->on<QRadioButton>("optBetrag_0").isChecked());
  desk->close();
  desk->open();
  QVERIFY(action("mnuOptOffenePosten").isChecked());
  QVERIFY(desk->on<QRadioButton>("optBetrag_1").isChecked());
  QVERIFY(!desk->visible("cmbWechselGeld"));
  desk->article("100");
  QVERIFY(desk->purchase().first().startsWith("Startgeld|-1|15|"));
}

void TestFrmFinanz::changingTheShooter() {
  desk->open("107");
  till->dialogs.expectInput(kAskNumber, std::nullopt);
  trigger(window(), "mnuDateiWechsel");
  QCOMPARE(desk->text("txtStartNr"), "107");
  till->dialogs.expectInput(kAskNumber, "999");
  till->dialogs.expect("Startnummer nicht gefunden!").titled("Hinweis");
  trigger(window(), "wechseln");
  QCOMPARE(desk->text("Label1"), "Müller Jörg");
  till->dialogs.expectInput(kAskNumber, "BC.5.1.2.4");
  trigger(window(), "wechseln");
  QCOMPARE(desk->text("txtStartNr"), "5.1");
  till->dialogs.expectInput(kAskNumber, "BC.107.1.23");
  trigger(window(), "wechseln");
  QCOMPARE(desk->text("Label9"), "Grünau I");
}

void TestFrmFinanz::allOfTheShooter() {
  till->fill(
      "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  108 | 1 | nein | 15 | 19.11.2026\n  108 | 5 | ja | 12,5 | 19.11.2026\n");
  desk->open();
  desk->show(2);
  QCOMPARE(desk->text("lblGesamt"), "27,50 €");
  QCOMPARE(desk->text("lblOffen"), "12,50 €");
  QCOMPARE(desk->text("lblBezahlt"), "15,00 €");
  for (const char* name : {"lblop", "lblOffen", "lblbez", "lblBezahlt"}) QVERIFY(desk->visible(name));
  desk->press("cmdOPVerbuchen");
  QCOMPARE(desk->text("lblGesamt"), "27,50 €");
  for (const char* name : {"lblop", "lblOffen", "lblbez", "lblBezahlt"}) {
    QVERIFY(!desk->visible(name));
    QCOMPARE(desk->text(name), "");
  }
  QVERIFY(till->read("Select * from Kasse_Eingang where Offen = True", {"ID"}).isEmpty());
}

void TestFrmFinanz::anUnreadableCellStandsInItsEditor() {
  till->fill(
      "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  108 | 1 | nein | 15 | 19.11.2026\n");
  desk->open();
  desk->show(2);
  QLineEdit* editor = typeUnreadableAmount(desk->on<TextGrid>("flexAll"), till->dialogs);
  QVERIFY(editor);
  editor->setText("12,5");
  QTest::keyClick(editor, Qt::Key_Return);
  QTRY_COMPARE(desk->stored(), QStringList("Startgeld|0|12,5|19.11.2026"));
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Betrag"}), QStringList("12,5"));
}

void TestFrmFinanz::deletingARow() {
  till->fill(
      "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  108 | 1 | nein | 15 | 19.11.2026\n");
  desk->open();
  desk->show(2);
  desk->on<TextGrid>("flexAll").setCurrentRow(0);
  desk->press("cmdDelete");  // no row is chosen
  desk->on<TextGrid>("flexAll").setCurrentRow(1);
  till->dialogs.expect("Soll der aktuelle Eingang des Schützen unwiderruflich gelöscht werden?",
                       BoxAnswer::Yes);
  desk->press("cmdDelete");
  QCOMPARE(desk->text("lblGesamt"), "0,00 €");
  QVERIFY(till->payments().isEmpty());
}

void TestFrmFinanz::closingAsksAboutThePurchase() {
  desk->open();
  desk->article("100");
  till->dialogs.expect(kDiscard, BoxAnswer::No)
      .titled("Hinweis")
      .with(BoxButtons::YesNo)
      .presetting(BoxAnswer::No);
  desk->press("cmdCancel");
  QVERIFY(window().isVisible());
  till->dialogs.expect(kDiscard, BoxAnswer::No);
  QTest::keyClick(&window(), Qt::Key_Escape);
  QVERIFY(window().isVisible());
  till->dialogs.expect(kDiscard, BoxAnswer::No);
  window().close();
  QVERIFY(window().isVisible());
  till->dialogs.expect(kDiscard, BoxAnswer::Yes);
  trigger(window(), "mnuDateiSchliessen");
  QVERIFY(!window().isVisible());
  QVERIFY(till->payments().isEmpty());
}

void TestFrmFinanz::closingWithoutAPurchase() {
  desk->open();
  trigger(window(), "exit");
  QVERIFY(!window().isVisible());
  QVERIFY(!window().istOffen());
}

void TestFrmFinanz::columnWidthsAreKept() {
  schreibe(till->settings, {keys::kFamilie, keys::kDaten, u"KasseFlex4"}, 3000);
  desk->open();
  QCOMPARE(desk->on<TextGrid>("flex").table()->columnWidth(CashColumn::Datum), 3000);
  auto& header = *desk->on<TextGrid>("flexAll").horizontalHeader();
  desk->show(2);
  const int edge =
      header.sectionViewportPosition(CashColumn::Datum) + header.sectionSize(CashColumn::Datum) - 1;
  const QPoint from(edge, header.height() / 2);
  QTest::mouseMove(header.viewport(), from);
  QTest::mousePress(header.viewport(), Qt::LeftButton, {}, from);
  QTest::mouseMove(header.viewport(), from + QPoint(-30, 0));
  QTest::mouseRelease(header.viewport(), Qt::LeftButton, {}, from + QPoint(-30, 0));
  const int kept = till->settings.number("Tarvex-40", "Daten", "KasseFlexAll4");
  QVERIFY(kept > 0);
  QCOMPARE(desk->on<TextGrid>("flexAll").table()->columnWidth(CashColumn::Datum), kept);
}

void TestFrmFinanz::theFontOfTheStakes() {
  desk->open();
  till->dialogs.expectFont(FontChoice{"DejaVu Sans;14;-1;0;0;0", 255});
  trigger(window(), "mnuOptSchriftEinlagen");
  QCOMPARE(till->settings.value("Tarvex-40", "Allgemein", "ListDisziKasse-Font"), "DejaVu Sans;14;-1;0;0;0");
  QCOMPARE(till->settings.value("Tarvex-40", "Allgemein", "ListDisziKasse-ForeColor"), "255");
  QCOMPARE(desk->on<QListWidget>("lstAll").font().pointSize(), 14);
  QVERIFY(desk->on<QListWidget>("lstAll").font().bold());
  desk->close();
  desk->open();
  QCOMPARE(desk->on<QListWidget>("lstAll").font().pointSize(), 14);
}

void TestFrmFinanz::aDeskThatWaitsForItsFirstShooter() {
  desk->openEmpty();
  QCOMPARE(desk->text("Label1"), "Schützen wählen: F3 Startnummer, F5 Liste, oder ein Etikett scannen");
  for (const char* name : {"SSTab1", "cmdVerbuchen", "cmdOK", "cmdSpende"})
    QVERIFY2(!desk->on<QWidget>(name).isEnabled(), name);
  for (const char* name : {"mnuDateiDrucken", "mnuDateiVorschau", "Drucken", "vorschau",
                           "mnuDateiPrintStartKarte", "kladde", "mnuDateiPrintBarcode", "printbarcode"})
    QVERIFY2(!action(name).isEnabled(), name);
  QVERIFY(desk->on<QAbstractButton>("cmdSchWechsel").hasFocus());
  QTest::keyClick(&window(), Qt::Key_F9);
  QCOMPARE(till->payments(), QStringList());
  till->dialogs.expectInput(kAskNumber, "999");
  till->dialogs.expect("Startnummer nicht gefunden!");
  QTest::keyClick(&window(), Qt::Key_F3);
  QVERIFY(!desk->on<QWidget>("SSTab1").isEnabled());
  till->dialogs.expectInput(kAskNumber, "107");
  QTest::keyClick(&window(), Qt::Key_F3);
  QCOMPARE(desk->text("txtStartNr"), "107");
  QCOMPARE(desk->text("Label4"), "SG Grünau");
  for (const char* name : {"SSTab1", "cmdVerbuchen", "cmdOK"})
    QVERIFY2(desk->on<QWidget>(name).isEnabled(), name);
  QVERIFY(action("kladde").isEnabled() && action("mnuDateiDrucken").isEnabled());
  QVERIFY(desk->on<QLineEdit>("txtArtikelnummer").hasFocus());
  desk->article("200");
  desk->press("cmdVerbuchen");
  QCOMPARE(till->payments().size(), 1);
}

void TestFrmFinanz::aScanChoosesTheFirstShooter() {
  desk->openEmpty();
  till->dialogs.expect("Startnummer nicht gefunden!");
  desk->scan("BC.999.1.23");
  QVERIFY(till->dialogs.done());
  desk->scan("BC.5.1.2.4");
  QCOMPARE(desk->text("txtStartNr"), "5.1");
  QVERIFY(desk->on<QLineEdit>("txtArtikelnummer").hasFocus());
}

void TestFrmFinanz::aShooterFromTheList() {
  desk->open("107");
  desk->article("200");
  RealBoxes boxes;
  const auto choose = [&](const QString& name, Qt::Key key) {
    boxes.expectWindow("frmSchuetzenListe", [name, key](QWidget& list) {
      QVERIFY(QTest::qWaitForWindowActive(&list));
      type(list, "txtSuchname", name);
      press(list, "txtSuchname", key);
      QTRY_VERIFY(!list.isVisible());
    });
  };
  choose("Süß", Qt::Key_Escape);
  trigger(window(), "mnuDateiListe");
  QCOMPARE(desk->text("txtStartNr"), "107");
  choose("Süß", Qt::Key_Return);
  desk->press("cmdSchListe");
  QCOMPARE(desk->text("txtStartNr"), "108");
  QCOMPARE(desk->purchase().size(), 1);
  choose("Müller", Qt::Key_Return);
  window().activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&window()));
  QTest::keyClick(&window(), Qt::Key_F5);
  QCOMPARE(desk->text("txtStartNr"), "107");
  QCOMPARE(desk->text("Label9"), "Grünau I");
}

void TestFrmFinanz::aLargeFontFitsTheSmallestScreen() {
  desk->open("107", false);
  QFont large = window().font();
  large.setPointSizeF(1.5 * large.pointSizeF());
  window().setFont(large);
  QCoreApplication::processEvents();
  // The tabs out of sight don't ask for room.
  auto& tabs = desk->on<QTabWidget>("SSTab1");
  int widest = 0;
  for (int tab = 0; tab < tabs.count(); ++tab)
    widest = std::max(widest, tabs.widget(tab)->minimumSizeHint().width());
  QVERIFY(widest > tabs.currentWidget()->minimumSizeHint().width());
  QVERIFY(tabs.minimumSizeHint().width() < widest);
  const QSize least = window().minimumSizeHint();
  // Less the frame of a window manager.
  QVERIFY2(least.width() <= 1360, qPrintable(QString::number(least.width())));
  QVERIFY2(least.height() <= 735, qPrintable(QString::number(least.height())));
}

void TestFrmFinanz::manners() {
  desk->open("107");
  desk->article("100");
  type(window(), "cmbWechselGeld", "20");
  // Here Enter belongs to the scanner: no button is the window's answer to it.
  QCOMPARE(badManners(window()), QStringList("Enter doesn't press cmdOK"));
}

QTEST_MAIN(TestFrmFinanz)
#include "test_frm_finanz.moc"

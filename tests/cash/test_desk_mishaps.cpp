// What goes wrong at the desk while somebody waits for his change: the store dies, a shooter is deleted, a
// scan lands in the wrong field, a key or button is hit beside its mark.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QProgressDialog>
#include <QProxyStyle>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <memory>

#include "app/ground/settings_keys.h"
#include "cash/label_panel.h"
#include "masterdata/rows/renumber.h"
#include "platform/look/look.h"
#include "platform/widgets/picture_view.h"
#include "tests/cash/desk_window.h"
#include "tests/support/real_boxes.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kUnknown = "SCHÜTZE nicht gefunden!!!!";
const QString kAskNumber = "Bitte neue Startnummer eingeben:";

TextGrid& stacksOf(DeskWindow& desk) {
  return desk.on<TextGrid>("grdScheiben");
}

/// A desktop where a single click opens what it hits.
class SingleClicks : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_ItemView_ActivateItemOnSingleClick ? 1
                                                         : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

}  // namespace

class TestDeskMishaps : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    till = std::make_unique<Till>();
    till->fillStacks();
    till->fill(
        "Zeilen Kasse_DisziKombi\n  EinlageID | DisziKZ | DisziKombiID | Anzahl\n  1 | 1 | 1 | 4\n  2 | 2 | "
        "1 | "
        "5\n  3 | 1 | 1 | 6\n");
    windows = std::make_unique<RealBoxes>();
    desk = std::make_unique<DeskWindow>(*till);
  }
  void cleanup() {
    desk.reset();
    windows.reset();
    till.reset();
  }

  void targetsThatAreStoredAreCounted();
  void anUnreadableTableOfLabelsIsSaidOnce();
  void aShooterDeletedMeanwhile();
  void aShooterRenumberedMeanwhile();
  void openItemsGoWithTheirShooter();
  void aNumberThatIsSomebodyElsesByNow();
  void aNumberGoneBehindAnotherWindow();
  void anUnreadableShooterBooksNothing();
  void nothingIsSoldToANumberThatNobodyHas();
  void theStakesBeforeTheFirstShooter();
  void aNumberBeyondAllRange();
  void theRightButtonBesideTheNodes();
  void aSingleClickSellsNothing();
  void aHeldEnterGivesOneTarget();
  void theStopOfASecondRun();
  void aStartNumberThatCode39DoesntKnow();
  void theStakeOnItsLabels();
  void nothingInHandPrintsNoLabels();
  void enterInTheEmptyField();

 private:
  frmFinanz& window() { return desk->window(); }
  std::unique_ptr<Till> till;
  std::unique_ptr<RealBoxes> windows;
  std::unique_ptr<DeskWindow> desk;
};

void TestDeskMishaps::targetsThatAreStoredAreCounted() {
  desk->open("107", false);
  desk->article("200");
  desk->show(1);
  desk->on<TextGrid>("grdScheiben").setCurrentRow(4);
  desk->press("cmdScheibeAdd");
  desk->press("cmdScheibeAdd");
  refuseChanges(till->competition(), "ScheibenNummern", 1);
  const QString failure = till->failureOfAct("UPDATE ScheibenNummern SET AktuelleNummer = 5 WHERE ID = 1");
  till->dialogs.expect(
      failure +
      "\r\n\r\nVon 1 Zeilen des Kaufs sind 1 gespeichert; sie sind in der Liste gekennzeichnet.\r\nVor dem "
      "nächsten Verbuchen entfernen, sonst werden sie doppelt gebucht.\r\nScheiben gespeichert: 2. Sie "
      "stehen "
      "kursiv im Baum und werden nicht noch einmal gespeichert.");
  desk->press("cmdVerbuchen");
  desk->show(0);
  desk->press("cmdRemoveAll");
  till->dialogs.expect(failure + "\r\n\r\nEs wurde noch keine Zeile des Kaufs gespeichert.");
  desk->press("cmdVerbuchen");
  QCOMPARE(till->read("Select * from Schuetzen_ScheibenNummern", {"ID"}).size(), 2);
}

void TestDeskMishaps::anUnreadableTableOfLabelsIsSaidOnce() {
  desk->open("108");
  till->store()->dropTable("Kasse_DisziKombi");
  const QString failure =
      till->failureOf("Select * from Kasse_DisziKombi") + "\nFehler Aktualisieren der Barcode-Anzeige!";
  desk->on<QListWidget>("lstAll").setCurrentRow(1);
  till->dialogs.expectInput(kAskCount, "20");
  till->dialogs.expect(failure, BoxAnswer::Ignore);
  desk->press("cmdAddAnzahl");
  QCOMPARE(desk->purchase().size(), 20);
  QCOMPARE(desk->text("lblAktGesamt"), "70,00 €");
  desk->press("cmdRemoveAll");  // an empty purchase has no labels to be looked for
  QVERIFY(desk->purchase().isEmpty());
}

/// His number may be somebody else's by now: what he buys is booked on nobody.
void TestDeskMishaps::aShooterDeletedMeanwhile() {
  desk->open("108");
  desk->press("chkAutoDruck");  // no receipt is printed either: the door of this desk takes none
  desk->article("200");
  till->execute("DELETE * FROM Schützen WHERE Startnummer = '108'");
  till->execute("UPDATE Schützen SET Startnummer = '108' WHERE Startnummer = '210'");
  const QString gone =
      "Süß Benno (Startnummer 108) ist nicht mehr zu finden.\r\nEs ist noch nichts "
      "verbucht: bitte den Schützen neu wählen (F3).";
  till->dialogs.expect(gone).titled("Hinweis").showing(BoxIcon::Exclamation).during([this] {
    QCOMPARE(desk->text("Label1"), kUnknown);
  });
  desk->press("cmdOK");
  QVERIFY(window().isVisible());
  QVERIFY(till->payments().isEmpty());
  QCOMPARE(desk->purchase().size(), 1);
  QVERIFY(!desk->on<QTabWidget>("SSTab1").isEnabled());
  QVERIFY(desk->on<QAbstractButton>("cmdSchWechsel").hasFocus());
  // A window that comes and goes doesn't bring the other shooter of that number to the desk.
  windows->expectWindow("frmArtikel", onceActive([](QWidget& stakes) { click(stakes, "cmdClose"); }));
  trigger(window(), "mnuOptEinlagen");
  QCOMPARE(desk->text("Label1"), kUnknown);
  desk->on<QCheckBox>("chkAutoDruck").setChecked(false);
  till->dialogs.expectInput(kAskNumber, "107");
  desk->press("cmdSchWechsel");
  desk->press("cmdVerbuchen");
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Startnummer"}), QStringList("107"));
}

void TestDeskMishaps::aShooterRenumberedMeanwhile() {
  desk->open("108");
  desk->article("200");
  renumber(*till->store(), 2, "300");
  till->dialogs
      .expect(
          "Süß Benno hat jetzt die Startnummer 300, nicht mehr 108.\r\nEs ist noch nichts "
          "verbucht: bitte prüfen und wiederholen.")
      .titled("Hinweis")
      .showing(BoxIcon::Exclamation)
      .during([this] { QCOMPARE(desk->text("txtStartNr"), "300"); });
  desk->press("cmdVerbuchen");
  QVERIFY(till->payments().isEmpty());
  QCOMPARE(desk->purchase().size(), 1);
  desk->press("cmdVerbuchen");
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Startnummer"}), QStringList("300"));
  QVERIFY(desk->purchase().isEmpty());
}

void TestDeskMishaps::openItemsGoWithTheirShooter() {
  till->fill(
      "Zeilen Kasse_Eingang\n  ID | Startnummer | KasseID | Offen | Betrag | DatumEingang\n"
      "  1 | 108 | 5 | ja | 12,5 | 19.11.2026\n");
  desk->open("108");
  desk->show(2);
  renumber(*till->store(), 2, "300");
  till->dialogs.expect(
      "Süß Benno hat jetzt die Startnummer 300, nicht mehr 108.\r\nEs ist noch nichts "
      "verbucht: bitte prüfen und wiederholen.");
  desk->press("cmdOPVerbuchen");
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Offen"}), QStringList("-1"));
  desk->press("cmdOPVerbuchen");
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Offen"}), QStringList("0"));
}

void TestDeskMishaps::aNumberThatIsSomebodyElsesByNow() {
  desk->open("108", false);
  desk->article("200");
  desk->show(1);
  desk->on<TextGrid>("grdScheiben").setCurrentRow(4);
  desk->press("cmdScheibeAdd");
  renumber(*till->store(), 2, "300");
  renumber(*till->store(), 4, "108");
  till->dialogs.expect(
      "Süß Benno hat jetzt die Startnummer 300, nicht mehr 108.\r\nEs ist noch nichts "
      "verbucht: bitte prüfen und wiederholen.");
  desk->press("cmdOK");
  QVERIFY(window().isVisible());
  QCOMPARE(desk->text("Label1"), "Süß Benno");
  QVERIFY(till->payments().isEmpty());
  QVERIFY(till->read("Select * from Schuetzen_ScheibenNummern", {"ID"}).isEmpty());
  desk->press("cmdOK");
  QVERIFY(!window().isVisible());
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Startnummer"}), QStringList("300"));
  QCOMPARE(till->read("Select * from Schuetzen_ScheibenNummern", {"Startnummer"}), QStringList("300"));
}

void TestDeskMishaps::aNumberGoneBehindAnotherWindow() {
  desk->open("108");
  desk->article("200");
  windows->expectWindow("frmArtikel", onceActive([this](QWidget& stakes) {
                          renumber(*till->store(), 2, "300");
                          renumber(*till->store(), 4, "108");
                          click(stakes, "cmdClose");
                        }));
  till->dialogs.expect(
      "Süß Benno hat jetzt die Startnummer 300, nicht mehr 108.\r\nEs ist noch nichts "
      "verbucht: bitte prüfen und wiederholen.");
  trigger(window(), "mnuOptEinlagen");
  QCOMPARE(desk->text("Label1"), "Süß Benno");
  desk->press("cmdVerbuchen");
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Startnummer"}), QStringList("300"));
}

void TestDeskMishaps::anUnreadableShooterBooksNothing() {
  desk->open("108");
  desk->article("200");
  till->store()->dropTable("Schützen");
  till->dialogs.expect(till->failureOf("Select Startnummer from Schützen where ID = 2") +
                       "\r\n\r\nEs wurde noch keine Zeile des Kaufs gespeichert.");
  desk->press("cmdVerbuchen");
  QVERIFY(till->payments().isEmpty());
  QCOMPARE(desk->purchase().size(), 1);
}

void TestDeskMishaps::nothingIsSoldToANumberThatNobodyHas() {
  desk->open("108");
  desk->article("200");
  window().UpdateStartNr("999", "", "");
  QCOMPARE(desk->text("Label1"), kUnknown);
  QCOMPARE(window().sStartNr(), "999");
  QVERIFY(!desk->on<QTabWidget>("SSTab1").isEnabled());
  QTest::keyClick(&window(), Qt::Key_F9);
  QVERIFY(till->payments().isEmpty());
  QVERIFY(!desk->on<QAction>("mnuDateiDrucken").isEnabled());
  till->dialogs.expectInput(kAskNumber, "107");
  QTest::keyClick(&window(), Qt::Key_F3);
  QCOMPARE(desk->purchase().size(), 1);
  QTest::keyClick(&window(), Qt::Key_F9);
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"Startnummer"}), QStringList("107"));
}

void TestDeskMishaps::theStakesBeforeTheFirstShooter() {
  desk->openEmpty();
  windows->expectWindow("frmArtikel", onceActive([](QWidget& stakes) { click(stakes, "cmdClose"); }));
  trigger(window(), "mnuOptEinlagen");
  QVERIFY(windows->done());
  QCOMPARE(desk->text("Label1"), "Schützen wählen: F3 Startnummer, F5 Liste, oder ein Etikett scannen");
  QVERIFY(!desk->on<QTabWidget>("SSTab1").isEnabled());
}

void TestDeskMishaps::aNumberBeyondAllRange() {
  desk->open("107", false);
  desk->show(1);
  desk->select("treeDiszi", 0);
  desk->on<QLineEdit>("txtScheibenNummer").setFocus();
  till->dialogs.expect("»4006381333931« ist keine Scheibennummer.").showing(BoxIcon::Exclamation);
  desk->scan("4006381333931");
  QVERIFY(desk->tree("treeDiszi").isEmpty());
  QCOMPARE(desk->text("txtScheibenNummer"), "");
  QVERIFY(desk->on<QLineEdit>("txtScheibenNummer").hasFocus());
}

/// The menu speaks of what lies under the pointer, not of what was chosen before.
void TestDeskMishaps::theRightButtonBesideTheNodes() {
  desk->open("107", false);
  desk->show(1);
  for (const char* number : {"42", "43"}) desk->scan(number);
  desk->select("treeDiszi", 1, 1);
  auto& view = desk->on<QTreeView>("treeDiszi");
  bool opened = false;
  QTimer closing;
  connect(&closing, &QTimer::timeout, this, [&] {
    if (QWidget* menu = QApplication::activePopupWidget()) opened = menu->close();
  });
  closing.start(0);
  Q_EMIT view.customContextMenuRequested(view.viewport()->rect().bottomRight() - QPoint(2, 2));
  stacksOf(*desk).setCurrentRow(0);
  Q_EMIT stacksOf(*desk).contextMenuAt(QPoint(5, 5));
  QVERIFY(!opened);
  closing.stop();
  const QModelIndex first = view.model()->index(0, 0, view.model()->index(1, 0));
  till->dialogs.expectInput("Bitte Scheibennummer eingeben:", "77").titled("Änderung");
  desk->pick("mnuScheibeNummer",
             [&] { Q_EMIT view.customContextMenuRequested(view.visualRect(first).center()); });
  QCOMPARE(desk->tree("treeDiszi"), QStringList("LG Meister: 77   (Zehner), 43   (Zehner)"));
  desk->select("treeDiszi", 1, 1);
  till->dialogs.expect(
      "Die Nummer ist nicht die letzte vergebene Nummer des Stapels!\r\n"
      "Hinweis: Nehmen Sie die Scheiben nach der ausgegebenen Reihenfolge wieder zurück.\r\n\r\n"
      "Wollen Sie die Scheibe dennoch löschen?\r\n",
      BoxAnswer::Yes);
  desk->pick("mnuScheibeRemove",
             [&] { Q_EMIT view.customContextMenuRequested(view.visualRect(first).center()); });
  QCOMPARE(desk->tree("treeDiszi"), QStringList("LG Meister: 43   (Zehner)"));
}

void TestDeskMishaps::aSingleClickSellsNothing() {
  desk->open("108");
  SingleClicks style;
  auto& stakes = desk->on<QListWidget>("lstAll");
  stakes.setStyle(&style);
  const QPoint where = stakes.visualItemRect(stakes.item(1)).center();
  QTest::mouseClick(stakes.viewport(), Qt::LeftButton, {}, where);
  QVERIFY(desk->purchase().isEmpty());
  QTest::mouseDClick(stakes.viewport(), Qt::LeftButton, {}, where);
  QCOMPARE(desk->purchase().size(), 1);
  stakes.setFocus();
  QTest::keyClick(&stakes, Qt::Key_Return);
  QCOMPARE(desk->purchase().size(), 2);
  QTest::keyClick(&stakes, Qt::Key_Enter);
  QCOMPARE(desk->purchase().size(), 3);
}

void TestDeskMishaps::aHeldEnterGivesOneTarget() {
  desk->open("107", false);
  desk->show(1);
  stacksOf(*desk).setFocus();
  stacksOf(*desk).setCurrentRow(4);
  hold(Qt::Key_Return, 5);
  QCOMPARE(desk->tree("treeDiszi"), QStringList("LG Meister: 10   (Zehner)"));
  hold(Qt::Key_Enter, 5);
  QCOMPARE(desk->tree("treeDiszi"), QStringList("LG Meister: 10   (Zehner), 11   (Zehner)"));
}

/// The table shows the last stake of the run before: a measure taken from it would end the second run's
/// progress early, and the stop with it.
void TestDeskMishaps::theStopOfASecondRun() {
  schreibe(till->settings, keys::BarcodePrinter, QString("Etikett"));
  schreibe(till->settings, keys::DruckTextScheibe, QString("anzsch"));
  schreibe(till->settings, keys::PrintTextDruck, true);
  desk->open("107");
  RecordedLabels& output = desk->recordLabels();
  desk->show(0);
  desk->article("300");  // six labels in sets of four
  desk->article("200");  // five
  till->waits.inSleep(1, [this] {
    QVERIFY(!desk->on<LabelPanel>("panelEtiketten").cmdPrint());  // one run at a time
    window().reject();
    QVERIFY(window().isVisible());  // it prints from the window's own store
  });
  trigger(window(), "mnuDateiPrintBarcode");
  QCOMPARE(output.lines.filter("line").size(), 11);
  till->waits.inSleep(2, [this] {
    QCOMPARE(desk->on<QProgressDialog>("dlgEtiketten").maximum(), 11);
    desk->on<QProgressDialog>("dlgEtiketten").cancel();
  });
  trigger(window(), "mnuDateiPrintBarcode");
  QCOMPARE(output.lines.filter("line").size(), 11 + 5);
}

void TestDeskMishaps::aStartNumberThatCode39DoesntKnow() {
  till->execute("UPDATE Schützen SET Startnummer = '12ä' WHERE Startnummer = '108'");
  schreibe(till->settings, keys::BarcodeAuswahl, 1);
  schreibe(till->settings, keys::BarcodeDruck, true);
  desk->open("12ä");
  desk->recordLabels();
  QCoreApplication::processEvents();
  const QString saying = "Aus »BC.12ä.1.2« wird kein Strichcode dieser Art: es fehlt auf dem Etikett.";
  QVERIFY2(desk->text("lblBildHinweis").contains(saying), qPrintable(desk->text("lblBildHinweis")));
}

void TestDeskMishaps::theStakeOnItsLabels() {
  schreibe(till->settings, keys::PrintTextDruck, true);
  schreibe(till->settings, keys::DruckTextScheibe, QString("einlage"));
  desk->open("107");
  RecordedLabels& output = desk->recordLabels();
  auto& picture = desk->on<PictureView>("picEtikett");
  QTRY_VERIFY(picture.image().isNull() && !picture.text().isEmpty());
  desk->show(0);
  desk->article("100");
  QTRY_VERIFY(!picture.image().isNull());
  desk->article("200");
  trigger(window(), "printbarcode");
  QCOMPARE(output.lines.filter("line").mid(3, 2), (QStringList{"line Startgeld ", "line Nachkauf Serie "}));
}

void TestDeskMishaps::nothingInHandPrintsNoLabels() {
  schreibe(till->settings, keys::BarcodePrinter, QString("Etikett"));
  schreibe(till->settings, keys::BarcodeDruck, true);
  till->execute("DELETE * FROM Kasse_DisziKombi WHERE EinlageID = 2");
  desk->open("107");
  RecordedLabels& output = desk->recordLabels();
  desk->press("cmdPrint");
  QCOMPARE(output.lines, QStringList());
  desk->show(0);
  desk->article("200");  // it pays for nothing
  trigger(window(), "printbarcode");
  QCOMPARE(output.lines.filter("bars") + output.lines.filter("end"), QStringList());
  desk->article("100");
  trigger(window(), "printbarcode");
  QCOMPARE(output.lines.filter("bars").size(), 4);
}

/// A foreign file holds empty article numbers: they belong to no scan.
void TestDeskMishaps::enterInTheEmptyField() {
  till->execute("UPDATE Kasse_Verwaltung SET ArtikelNr = '' WHERE ID = 2");
  desk->open("108");
  desk->article("");
  desk->article("0000000000000");
  QVERIFY(desk->purchase().isEmpty());
  QVERIFY(desk->on<QLineEdit>("txtArtikelnummer").hasFocus());
}

QTEST_MAIN(TestDeskMishaps)
#include "test_desk_mishaps.moc"

// A sale on the cash desk's real window: buying, paying, booking.
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTest>
#include <memory>

#include "platform/look/look.h"
#include "platform/runtime/error.h"
#include "tests/cash/desk_window.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kAskNumber = "Bitte neue Startnummer eingeben:";
const QString kNow = "|20.11.2026 10:00:00";

}  // namespace

class TestDeskSale : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    till = std::make_unique<Till>();
    desk = std::make_unique<DeskWindow>(*till);
    desk->open();
  }
  void cleanup() {
    desk.reset();
    till.reset();
  }

  void buyingByList();
  void buyingSeveral();
  void buyingByArticleNumber();
  void theYellowField();
  void whatIsToBePaid();
  void theChange();
  void amountsShowAsTheyAreRead();
  void tooMuchMoney();
  void openItemsHideTheChange();
  void aDonation();
  void rowsGo();
  void aCorrectedAmount();
  void aHeldKeyBooksOnce();
  void aHeldEnterBooksNothing();
  void aHeldEnterBuysOne();
  void bookingByKeys();
  void theLastBookingStandsUntilTheNextPurchase();
  void bookingAndClosing();
  void aBrokenBooking();
  void aPurchaseMovesToTheNextShooter();
  void failuresShowOneBox();

 private:
  frmFinanz& window() { return desk->window(); }
  void received(const QString& amount) { type(window(), "cmbWechselGeld", amount); }

  std::unique_ptr<Till> till;
  std::unique_ptr<DeskWindow> desk;
};

void TestDeskSale::buyingByList() {
  desk->press("cmdAdd");  // nothing is chosen
  QCOMPARE(desk->purchase(), QStringList());
  auto& stakes = desk->on<QListWidget>("lstAll");
  stakes.setFocus();
  stakes.setCurrentRow(0);
  desk->press("cmdAdd");
  till->dialogs.expect(kLimitOne);
  trigger(window(), "mnuKaufAdd");
  stakes.setFocus();
  stakes.setCurrentRow(1);
  test::press(window(), "lstAll", Qt::Key_Return);
  QCOMPARE(desk->purchase(), (QStringList{"Startgeld|0|15" + kNow, "Nachkauf Serie|0|3,5" + kNow}));
}

void TestDeskSale::buyingSeveral() {
  desk->on<QListWidget>("lstAll").setCurrentRow(1);
  till->dialogs.expectInput(kAskCount, "3").titled("Einlagen");
  desk->press("cmdAddAnzahl");
  QCOMPARE(desk->purchase().size(), 3);
  QCOMPARE(desk->text("lblKauf"), "3 × Nachkauf Serie");
  till->dialogs.expectInput(kAskCount, "99999");
  till->dialogs.expect("Fehler: 6 - " + errorDescription(6)).with(BoxButtons::Ok);
  trigger(window(), "mnuKaufAddAnzahl");
  QCOMPARE(desk->purchase().size(), 3);
}

void TestDeskSale::buyingByArticleNumber() {
  desk->article("100");
  QCOMPARE(desk->purchase().size(), 1);
  desk->article("999");
  QCOMPARE(desk->text("txtArtikelnummer"), "");
  QVERIFY(desk->on<QLineEdit>("txtArtikelnummer").hasFocus());
  QCOMPARE(desk->purchase().size(), 1);
  till->dialogs.expect(kLimitOne);
  desk->article("100");
  QCOMPARE(desk->text("txtArtikelnummer"), "");
  QVERIFY(desk->on<QLineEdit>("txtArtikelnummer").hasFocus());
}

void TestDeskSale::theYellowField() {
  auto& field = desk->on<QLineEdit>("txtArtikelnummer");
  QCOMPARE(field.palette().color(QPalette::Base), QColor(255, 255, 0));
  desk->on<QListWidget>("lstAll").setFocus();
  QCOMPARE(field.palette().color(QPalette::Base), QColor(Qt::white));
}

void TestDeskSale::whatIsToBePaid() {
  desk->article("100");
  desk->article("200");
  QCOMPARE(desk->text("lblAktGesamt"), "18,50 €");
  QCOMPARE(desk->text("lblKauf"), "Startgeld, Nachkauf Serie");
}

void TestDeskSale::theChange() {
  desk->article("100");
  QVERIFY(!desk->visible("txtZurueck") && !desk->visible("cmdSpende") && !desk->visible("lblZurueckBez"));
  received("20");
  QCOMPARE(desk->text("txtZurueck"), "5,00 €");
  QVERIFY(desk->visible("txtZurueck") && desk->visible("cmdSpende") && desk->visible("lblZurueckBez"));
  const QColor usual = desk->on<QLineEdit>("txtZurueck").palette().color(QPalette::Text);
  received("10");
  QCOMPARE(desk->text("txtZurueck"), "-5,00 €");
  const QColor red = desk->on<QLineEdit>("txtZurueck").palette().color(QPalette::Text);
  QVERIFY(red != usual && red.red() > 200 && red.green() < 100);
  desk->article("200");
  QCOMPARE(desk->text("txtZurueck"), "-8,50 €");
  received("");
  QCOMPARE(desk->text("txtZurueck"), "");
  QVERIFY(!desk->visible("txtZurueck"));
}

void TestDeskSale::amountsShowAsTheyAreRead() {
  desk->article("100");
  received("12.50");
  QCOMPARE(desk->text("lblGelesen"), "= 1.250,00 €");
  QCOMPARE(desk->text("txtZurueck"), "1.235,00 €");
  received("1,2,3");
  QCOMPARE(desk->text("lblGelesen"), "= 1,20 €");
  received("zwanzig");
  QCOMPARE(desk->text("lblGelesen"), "= 0,00 €");
  received("20");
  QCOMPARE(desk->text("lblGelesen"), "");
}

void TestDeskSale::tooMuchMoney() {
  desk->article("100");
  received("9999999999999999");
  QCOMPARE(desk->text("lblGelesen"), "Der Betrag »9999999999999999« ist zu groß.");
  QCOMPARE(desk->text("txtZurueck"), "");
}

void TestDeskSale::openItemsHideTheChange() {
  desk->article("100");
  received("20");
  desk->press("optBetrag_1");
  for (const char* name : {"cmbWechselGeld", "txtZurueck", "cmdSpende", "lblZurueckBez"})
    QVERIFY(!desk->visible(name));
  QCOMPARE(desk->text("lblAktGesamt"), "0,00 €");
  desk->on<QRadioButton>("optBetrag_0").click();
  for (const char* name : {"cmbWechselGeld", "txtZurueck", "cmdSpende", "lblZurueckBez"})
    QVERIFY(desk->visible(name));
  QVERIFY(desk->purchase().first().startsWith("Startgeld|-1|"));
  QCOMPARE(desk->text("lblAktGesamt"), "0,00 €");
}

void TestDeskSale::aDonation() {
  desk->article("100");
  received("20");
  desk->press("cmdSpende");
  QCOMPARE(desk->text("lblAktGesamt"), "20,00 €");
  QCOMPARE(desk->text("txtZurueck"), "0,00 €");
  QVERIFY(desk->purchase().last().startsWith("Spende|0|5|"));
  desk->press("cmdSpende");  // nothing is left
  QCOMPARE(desk->purchase().size(), 2);
  received("10");
  desk->press("cmdSpende");
  QVERIFY(desk->purchase().last().startsWith("Spende|0|-10|"));
  QCOMPARE(desk->text("txtZurueck"), "0,00 €");
}

void TestDeskSale::rowsGo() {
  for (const char* number : {"100", "200", "300"}) desk->article(number);
  auto& grid = desk->on<TextGrid>("flex");
  desk->press("cmdRemove");  // no row is chosen
  QCOMPARE(desk->purchase().size(), 3);
  grid.setCurrentRow(2);
  desk->press("cmdRemove");
  QCOMPARE(desk->text("lblAktGesamt"), "20,00 €");
  grid.setFocus();
  grid.setCurrentRow(1);
  test::press(window(), "flex", Qt::Key_Delete);
  QCOMPARE(desk->text("lblAktGesamt"), "5,00 €");
  desk->article("200");
  trigger(window(), "mnuKaufRemoveAll");
  QCOMPARE(desk->purchase(), QStringList());
  QCOMPARE(desk->text("lblAktGesamt"), "0,00 €");
}

void TestDeskSale::aCorrectedAmount() {
  desk->article("100");
  TextTable& rows = *desk->on<TextGrid>("flex").table();
  QVERIFY(rows.setData(rows.index(0, CashColumn::Betrag), "12.50", Qt::EditRole));
  QCOMPARE(desk->text("lblAktGesamt"), "1.250,00 €");
  QVERIFY(rows.setData(rows.index(0, CashColumn::Offen), Qt::Checked, Qt::CheckStateRole));
  QCOMPARE(desk->text("lblAktGesamt"), "0,00 €");
}

void TestDeskSale::aHeldKeyBooksOnce() {
  int keys = 0;
  for (const QShortcut* shortcut : window().findChildren<QShortcut*>()) {
    if (shortcut->key() != QKeySequence(Qt::Key_F9)) continue;
    ++keys;
    QVERIFY(!shortcut->autoRepeat());
  }
  QCOMPARE(keys, 1);
}

/// The change is to be seen before the booking: only a second press books.
void TestDeskSale::aHeldEnterBooksNothing() {
  desk->article("100");
  received("20");
  till->clock.advance(500);
  hold(Qt::Key_Return, 5);
  QVERIFY(desk->on<QPushButton>("cmdVerbuchen").hasFocus());
  QVERIFY(till->payments().isEmpty());
  QCOMPARE(desk->text("txtZurueck"), "5,00 €");
  hold(Qt::Key_Enter, 5);
  QCOMPARE(till->payments().size(), 1);
}

void TestDeskSale::aHeldEnterBuysOne() {
  auto& stakes = desk->on<QListWidget>("lstAll");
  stakes.setFocus();
  stakes.setCurrentRow(1);
  hold(Qt::Key_Return, 5);
  QCOMPARE(desk->purchase().size(), 1);
  hold(Qt::Key_Enter, 5);
  QCOMPARE(desk->purchase().size(), 2);
}

void TestDeskSale::bookingByKeys() {
  desk->article("100");
  test::press(window(), "txtArtikelnummer", Qt::Key_F7);
  QVERIFY(desk->on<QComboBox>("cmbWechselGeld").hasFocus());
  received("20");
  desk->enter(200);
  QVERIFY(desk->on<QPushButton>("cmdVerbuchen").hasFocus());
  QVERIFY(till->payments().isEmpty());  // the change is to be seen first
  desk->enter(200);
  QCOMPARE(till->payments().size(), 1);
  QVERIFY(till->payments().first().startsWith("108|1|0|15|"));
  QVERIFY(desk->on<QLineEdit>("txtArtikelnummer").hasFocus());
  till->dialogs.expectInput(kAskNumber, "107").titled("Schütze wechseln");
  test::press(window(), "txtArtikelnummer", Qt::Key_F3);
  QCOMPARE(desk->text("Label1"), "Müller Jörg");
}

void TestDeskSale::theLastBookingStandsUntilTheNextPurchase() {
  desk->article("100");
  received("20");
  test::press(window(), "txtArtikelnummer", Qt::Key_F9);
  QCOMPARE(desk->purchase(), QStringList());
  QCOMPARE(desk->on<QComboBox>("cmbWechselGeld").currentText(), "");
  QCOMPARE(desk->text("lblAktGesamt"), "0,00 €");
  QCOMPARE(desk->text("lblZuletzt"),
           "Verbucht: 1 Einlage\nZu bezahlen 15,00 €\nErhalten 20,00 €\nZurück 5,00 €");
  QVERIFY(desk->stored().first().startsWith("Startgeld|0|15|"));
  QCOMPARE(desk->text("lblGesamt"), "15,00 €");
  desk->press("cmdVerbuchen");  // nothing in hand: what stands there stays
  QVERIFY(desk->text("lblZuletzt").startsWith("Verbucht: 1 Einlage"));
  desk->article("200");
  QCOMPARE(desk->text("lblZuletzt"), "");
}

void TestDeskSale::bookingAndClosing() {
  desk->article("200");
  desk->press("cmdOK");
  QVERIFY(!window().isVisible());
  QVERIFY(!window().istOffen());
  QCOMPARE(till->payments().size(), 1);
}

void TestDeskSale::aBrokenBooking() {
  for (const char* number : {"100", "200", "300"}) desk->article(number);
  const QString failure = till->refuse(StoreAct::Insert, "KasseID", 3);
  till->dialogs
      .expect(failure +
              "\r\n\r\nVon 3 Zeilen des Kaufs sind 2 gespeichert; sie sind in der Liste gekennzeichnet.\r\n"
              "Vor dem nächsten Verbuchen entfernen, sonst werden sie doppelt gebucht.")
      .with(BoxButtons::Ok);
  desk->press("cmdOK");
  QVERIFY(window().isVisible());
  QCOMPARE(desk->purchase().size(), 3);
  QTRY_VERIFY(!desk->on<TextGrid>("flex").isColumnHidden(CashColumn::Merkmal));
  QCOMPARE(till->payments().size(), 2);
}

void TestDeskSale::aPurchaseMovesToTheNextShooter() {
  desk->article("200");
  till->dialogs.expectInput(kAskNumber, "5.1");
  desk->press("cmdSchWechsel");
  QCOMPARE(desk->purchase().size(), 1);
  desk->press("cmdVerbuchen");
  QVERIFY(till->payments().first().startsWith("5.1|2|"));
}

void TestDeskSale::failuresShowOneBox() {
  desk->on<QListWidget>("lstAll").setCurrentRow(6);
  till->dialogs.expectInput(kAskAmount, "9999999999999999");
  till->dialogs.expect("Fehler: 6 - Der Betrag »9999999999999999« ist zu groß.")
      .titled("Fehler")
      .with(BoxButtons::Ok);
  desk->press("cmdAdd");
  QCOMPARE(desk->purchase(), QStringList());
}

QTEST_MAIN(TestDeskSale)
#include "test_desk_sale.moc"

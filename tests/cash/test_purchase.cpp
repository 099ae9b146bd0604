// Buying stakes: every check in its order, prices, limits, open marks and the donation.
#include <QTest>
#include <memory>

#include "app/ground/settings_keys.h"
#include "platform/runtime/error.h"
#include "tests/cash/till.h"

using namespace qk;
using namespace qk::test;

class TestPurchase : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    QVERIFY(desk->UpdateStartNr("108", "", ""));
  }
  void cleanup() {
    desk.reset();
    till.reset();
  }

  void aPriceIsTaken();
  void theDateIsTheBookingDate();
  void theLimitCountsWhatIsInHand();
  void theLimitCountsWhatIsStoredByName();
  void theLimitNamesTheCount();
  void withoutALimitThereIsNone();
  void anotherStakeOfTheSameNameCountsWhenStored();
  void aCountRepeatsTheMessage();
  void classesThatAreNotReleased();
  void classesThatAreReleased();
  void theClassIsCheckedBeforeTheStake();
  void aStakeThatIsGoneAddsNothing();
  void aStakeOfClubsAddsNothing();
  void anEmptyNumberIsNoStakes();
  void aStakeMadeMeanwhileIsSold();
  void theCheckReportsItsFailure();
  void aFreePriceIsAskedFor();
  void noPriceIsAskedAbout_data();
  void noPriceIsAskedAbout();
  void noPriceWithoutTheSetting();
  void tooMuchAddsNothing();
  void openStakesAreOpen();
  void openItemsMarkEverything();
  void goingBackKeepsTheMarks();
  void countsAreAskedFor_data();
  void countsAreAskedFor();
  void aCountBeyondAllBounds();
  void articleNumbersFindTheirStake();
  void anUnknownArticleSaysNothing();
  void aQuoteInAnArticleNumber();
  void articleFailuresAreReported();
  void theChangeBecomesADonation();
  void withoutADonationStake();
  void theLastDonationStakeCounts();
  void rowsGo();
  void storedRowsAreMarkedUntilTheyGo();
  void whatIsPaidBackHasItsPrice();
  void aCellBeyondWhatMoneyHolds();
  void changesAreTold();
  void manyAtOnceAreToldOnce();
  void whatIsToBePaidStandsBehindAQuestion();

 private:
  QStringList rows() { return Till::rows(desk->purchase().flex()); }
  Purchase& purchase() { return desk->purchase(); }
  QString sum() { return purchase().zuBezahlen().toText(); }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
};

void TestPurchase::aPriceIsTaken() {
  purchase().AddKauf(1);
  purchase().AddKauf(2);
  QCOMPARE(rows(),
           (QStringList{"Startgeld|0|15|20.11.2026 10:00:00", "Nachkauf Serie|0|3,5|20.11.2026 10:00:00"}));
  QCOMPARE(purchase().flex().rowData(2), "2");
  QCOMPARE(sum(), "18,5");
}

void TestPurchase::theDateIsTheBookingDate() {
  schreibe(till->settings, keys::SpeichernVortag, true);
  till->clock.set("20.11.2026 05:59:00");
  purchase().AddKauf(2);
  till->clock.set("20.11.2026 06:00:00");
  purchase().AddKauf(2);
  QCOMPARE(purchase().flex().text(1, CashColumn::Datum), "19.11.2026 05:59:00");
  QCOMPARE(purchase().flex().text(2, CashColumn::Datum), "20.11.2026 06:00:00");
}

void TestPurchase::theLimitCountsWhatIsInHand() {
  purchase().AddKauf(3);
  purchase().AddKauf(3);
  till->dialogs
      .expect("Der Schütze hat die max. Nachkaufmöglichkeit bereits erreicht!\r\nTeiler - 2 Käufe erlaubt!")
      .titled("Hinweis")
      .showing(BoxIcon::Information);
  purchase().AddKauf(3);
  QCOMPARE(rows().size(), 2);
}

void TestPurchase::theLimitCountsWhatIsStoredByName() {
  till->fill("Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag\n  108 | 1 | nein | 15\n");
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  till->dialogs.expect(kLimitOne).titled("Hinweis").showing(BoxIcon::Information);
  purchase().AddKauf(1);
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::theLimitNamesTheCount() {
  till->fill(
      "Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag\n"
      "  108 | 1 | nein | 15\n  108 | 1 | nein | 15\n  108 | 1 | nein | 15\n");
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  till->dialogs.expect(
      "Der Schütze hat die max. Nachkaufmöglichkeit bereits erreicht!\r\nStartgeld - 3 Käufe erlaubt!");
  purchase().AddKauf(1);
}

void TestPurchase::withoutALimitThereIsNone() {
  purchase().AddAnzahl(2, 30);
  QCOMPARE(rows().size(), 30);
}

void TestPurchase::anotherStakeOfTheSameNameCountsWhenStored() {
  till->execute("UPDATE Kasse_Verwaltung SET Bezeichnung = 'Startgeld' WHERE ID = 2");
  till->fill("Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag\n  108 | 2 | nein | 3,5\n");
  desk->ladeEinlagen();
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  till->dialogs.expect(kLimitOne);
  purchase().AddKauf(1);
  purchase().AddKauf(2);  // in hand it is told apart by its id
  QCOMPARE(rows().size(), 1);
}

void TestPurchase::aCountRepeatsTheMessage() {
  till->dialogs.expect(kLimitOne);
  till->dialogs.expect(kLimitOne);
  purchase().AddAnzahl(1, 3);
  QCOMPARE(rows().size(), 1);
}

void TestPurchase::classesThatAreNotReleased() {
  till->dialogs.expect(kNotReleased).titled("Hinweis").showing(BoxIcon::Exclamation);
  purchase().AddKauf(4);
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::classesThatAreReleased() {
  QVERIFY(desk->UpdateStartNr("210", "", ""));
  purchase().AddKauf(4);
  QCOMPARE(rows().size(), 1);
}

void TestPurchase::theClassIsCheckedBeforeTheStake() {
  till->execute("DELETE * FROM Kasse_Verwaltung WHERE ID = 4");
  till->dialogs.expect(kNotReleased);
  purchase().AddKauf(4);
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::aStakeThatIsGoneAddsNothing() {
  till->execute("DELETE * FROM Kasse_Verwaltung WHERE ID = 2");
  purchase().AddKauf(2);
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::aStakeOfClubsAddsNothing() {
  purchase().AddKauf(10);
  purchase().AddArtikel("900");
  QCOMPARE(rows(), QStringList());
}

/// The empty field has the focus after each booking, and Enter is soon pressed.
void TestPurchase::anEmptyNumberIsNoStakes() {
  till->execute("UPDATE Kasse_Verwaltung SET ArtikelNr = '' WHERE ID = 2");
  for (const char* text : {"", "4000000000000"}) purchase().AddArtikel(text);
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::aStakeMadeMeanwhileIsSold() {
  till->fill(
      "Zeilen Kasse_Verwaltung\n  ID | Platz | Bezeichnung | ArtikelNr | Betrag | Nachkauf | Verein\n"
      "  20 | 9 | Ehrenscheibe | 950 | 10 | 0 | 0\n");
  purchase().AddArtikel("950");
  QCOMPARE(rows(), QStringList("Ehrenscheibe|0|10|20.11.2026 10:00:00"));
}

void TestPurchase::theCheckReportsItsFailure() {
  till->store()->dropTable("Kasse_Schuetzenklassen");
  const QString failure = till->failureOf("Select * from Kasse_Schuetzenklassen where KasseEinlageID = 1") +
                          "\nFehler beim Ermitteln KassePruefung zu Klassen!";
  till->dialogs.expect(failure, BoxAnswer::Abort).titled("Fehler").with(BoxButtons::AbortRetryIgnore);
  purchase().AddKauf(1);
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::aFreePriceIsAskedFor() {
  till->dialogs.expectInput(kAskAmount, "12,50").titled("");
  till->dialogs.expectInput(kAskAmount, "12.50");
  till->dialogs.expectInput(kAskAmount, "-5");
  for (int i = 0; i < 3; ++i) purchase().AddKauf(7);
  QCOMPARE(sum(), "1257,5");
}

void TestPurchase::noPriceIsAskedAbout_data() {
  QTest::addColumn<QString>("typed");
  QTest::newRow("zero") << "0";
  QTest::newRow("text") << "fünf";
  QTest::newRow("nothing") << "";
}

void TestPurchase::noPriceIsAskedAbout() {
  QFETCH(QString, typed);
  const auto ask = [&](BoxAnswer answer) {
    till->dialogs.expectInput(kAskAmount, typed);
    till->dialogs.expect(kNoAmount, answer)
        .titled("Hinweis")
        .with(BoxButtons::YesNo)
        .showing(BoxIcon::Exclamation);
  };
  ask(BoxAnswer::No);
  purchase().AddKauf(7);
  QCOMPARE(rows(), QStringList());
  ask(BoxAnswer::Yes);
  purchase().AddKauf(7);
  QCOMPARE(rows(), QStringList("Verzehr|0|0|20.11.2026 10:00:00"));
}

void TestPurchase::noPriceWithoutTheSetting() {
  schreibe(till->settings, keys::Abfrage0Euro, 0);
  till->dialogs.expectInput(kAskAmount, "0");
  purchase().AddKauf(7);
  QCOMPARE(rows(), QStringList("Verzehr|0|0|20.11.2026 10:00:00"));
  schreibe(till->settings, keys::Abfrage0Euro, 2);  // only 1 asks
  till->dialogs.expectInput(kAskAmount, "");
  purchase().AddKauf(7);
  QCOMPARE(rows().size(), 2);
}

void TestPurchase::tooMuchAddsNothing() {
  till->dialogs.expectInput(kAskAmount, "9999999999999999");
  QVERIFY_THROWS_EXCEPTION(Error, purchase().AddKauf(7));
  QCOMPARE(rows(), QStringList());
  till->dialogs.expectInput(kAskAmount, "1000000000000");
  purchase().AddKauf(7);
  QCOMPARE(sum(), "1000000000000");
}

void TestPurchase::openStakesAreOpen() {
  purchase().AddKauf(5);
  QCOMPARE(rows(), QStringList("Festabend|-1|12,5|20.11.2026 10:00:00"));
  QCOMPARE(sum(), "0");
}

void TestPurchase::openItemsMarkEverything() {
  purchase().AddKauf(1);
  QCOMPARE(sum(), "15");
  purchase().setBetragsart(Betragsart::OffenePosten);
  purchase().AddKauf(2);
  QCOMPARE(sum(), "0");
  for (int row : {1, 2}) QCOMPARE(purchase().flex().text(row, CashColumn::Offen), "-1");
}

void TestPurchase::goingBackKeepsTheMarks() {
  purchase().AddKauf(1);
  purchase().setBetragsart(Betragsart::OffenePosten);
  purchase().setBetragsart(Betragsart::Betrag);
  purchase().AddKauf(2);
  QCOMPARE(purchase().flex().text(1, CashColumn::Offen), "-1");
  QCOMPARE(purchase().flex().text(2, CashColumn::Offen), "0");
  QCOMPARE(sum(), "3,5");
}

void TestPurchase::countsAreAskedFor_data() {
  QTest::addColumn<QString>("typed");
  QTest::addColumn<int>("added");
  QTest::newRow("three") << "3" << 3;
  QTest::newRow("none") << "0" << 0;
  QTest::newRow("negative") << "-2" << 0;
  QTest::newRow("nothing") << "" << 0;
  QTest::newRow("text") << "drei" << 0;
  QTest::newRow("half to even, down") << "2,5" << 2;
  QTest::newRow("half to even, up") << "3,5" << 4;
}

void TestPurchase::countsAreAskedFor() {
  QFETCH(QString, typed);
  QFETCH(int, added);
  till->dialogs.expectInput(kAskCount, typed).titled("Einlagen");
  purchase().AddAnzahlFragen(2);
  QCOMPARE(rows().size(), added);
}

void TestPurchase::aCountBeyondAllBounds() {
  till->dialogs.expectInput(kAskCount, "32768");
  QVERIFY_THROWS_EXCEPTION(Error, purchase().AddAnzahlFragen(2));
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::articleNumbersFindTheirStake() {
  purchase().AddArtikel("200");
  till->execute("UPDATE Kasse_Verwaltung SET ArtikelNr = '123' WHERE ID = 3");
  purchase().AddArtikel("4000000001234");
  QCOMPARE(purchase().flex().rowData(1), "2");
  QCOMPARE(purchase().flex().rowData(2), "3");
}

void TestPurchase::anUnknownArticleSaysNothing() {
  purchase().AddArtikel("999");
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::aQuoteInAnArticleNumber() {
  purchase().AddArtikel("' or '1' = '1");
  QCOMPARE(rows(), QStringList());
}

void TestPurchase::articleFailuresAreReported() {
  desk->store().close();
  till->dialogs
      .expect("Fehler: 91 - " + errorDescription(91) + "\nFehler beim Ermitteln der Artikelnummer!",
              BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  purchase().AddArtikel("100");
}

void TestPurchase::theChangeBecomesADonation() {
  purchase().AddKauf(1);
  purchase().AddSpende(Money::fromUnits(50000));
  QCOMPARE(rows().last(), "Spende|0|5|20.11.2026 10:00:00");
  QCOMPARE(purchase().flex().rowData(2), "6");
  QCOMPARE(sum(), "20");
  purchase().AddSpende(Money());
  QCOMPARE(rows().size(), 2);
  purchase().AddSpende(Money::fromUnits(-20000));
  QCOMPARE(sum(), "18");
}

void TestPurchase::withoutADonationStake() {
  till->execute("DELETE * FROM Kasse_Verwaltung WHERE ID = 6");
  desk->ladeEinlagen();
  purchase().AddSpende(Money::fromUnits(50000));
  QCOMPARE(rows(), QStringList("|0|5|20.11.2026 10:00:00"));
  QCOMPARE(purchase().flex().rowData(1), "0");
}

void TestPurchase::theLastDonationStakeCounts() {
  till->fill(
      "Zeilen Kasse_Verwaltung\n  ID | Platz | Bezeichnung | Betrag | Nachkauf | Verein\n"
      "  21 | 2 | Spende | 0 | 0 | 0\n  22 | 99 | Spende | 0 | 0 | 0\n");
  desk->ladeEinlagen();
  QCOMPARE(desk->store().spende().id, 22);
}

void TestPurchase::rowsGo() {
  purchase().AddKauf(1);
  purchase().AddKauf(2);
  purchase().entferne(0);
  purchase().entferne(3);
  QCOMPARE(rows().size(), 2);
  purchase().entferne(1);
  QCOMPARE(sum(), "3,5");
  purchase().AddKauf(1);
  purchase().entferneAlle();
  QVERIFY(purchase().isEmpty());
  QCOMPARE(sum(), "0");
}

void TestPurchase::storedRowsAreMarkedUntilTheyGo() {
  purchase().AddKauf(1);
  purchase().AddKauf(2);
  QCOMPARE(purchase().flex().columnWidth(CashColumn::Merkmal), 0);
  purchase().markiereGespeichert(1);
  QVERIFY(purchase().istGespeichert(1));
  QVERIFY(!purchase().istGespeichert(2));
  QVERIFY(purchase().flex().columnWidth(CashColumn::Merkmal) != 0);
  purchase().entferne(1);
  QVERIFY(!purchase().istGespeichert(1));
  QCOMPARE(purchase().flex().columnWidth(CashColumn::Merkmal), 0);
  purchase().AddKauf(3);
  for (int row : {1, 2}) purchase().markiereGespeichert(row);
  purchase().entferne(1);
  QVERIFY(purchase().flex().columnWidth(CashColumn::Merkmal) != 0);  // one of them is left
  purchase().entferneAlle();
  QCOMPARE(purchase().flex().columnWidth(CashColumn::Merkmal), 0);
}

void TestPurchase::whatIsPaidBackHasItsPrice() {
  till->execute("UPDATE Kasse_Verwaltung SET Betrag = -5 WHERE ID = 2");
  purchase().AddKauf(2);
  QCOMPARE(sum(), "-5");
}

void TestPurchase::aCellBeyondWhatMoneyHolds() {
  purchase().AddKauf(1);
  purchase().flex().setText(1, CashColumn::Betrag, "9999999999999999");
  till->dialogs.expect("Der Betrag »9999999999999999« ist zu groß.").titled("Hinweis");
  purchase().nachEingabe(1, CashColumn::Betrag);
  QCOMPARE(sum(), "0");
  purchase().flex().setText(1, CashColumn::Betrag, "12.50");
  purchase().nachEingabe(1, CashColumn::Betrag);
  QCOMPARE(sum(), "1250");
}

void TestPurchase::changesAreTold() {
  int told = 0;
  connect(&purchase(), &Purchase::changed, this, [&told] { ++told; });
  purchase().AddKauf(1);
  purchase().AddKauf(2);
  QCOMPARE(told, 2);
  purchase().entferneAlle();
  QCOMPARE(told, 3);
  purchase().setBetragsart(Betragsart::Betrag);
  QCOMPARE(told, 3);
  purchase().setBetragsart(Betragsart::OffenePosten);
  QCOMPARE(told, 4);
}

/// Whoever follows the purchase reckons all of it anew: a thousand times a thousand rows would hold the queue
/// up.
void TestPurchase::manyAtOnceAreToldOnce() {
  int told = 0;
  connect(&purchase(), &Purchase::changed, this, [&] { ++told; });
  purchase().AddAnzahl(2, 1000);
  QCOMPARE(rows().size(), 1000);
  QCOMPARE(told, 1);
  purchase().entferneAlle();
  QVERIFY(purchase().isEmpty());
  QCOMPARE(told, 2);
  purchase().entferneAlle();
  QCOMPARE(told, 2);
}

/// A box that comes up between shows what is to be paid until then.
void TestPurchase::whatIsToBePaidStandsBehindAQuestion() {
  QStringList sums;
  QString shown;
  connect(&purchase(), &Purchase::changed, this, [&] { shown = sum(); });
  for (const char* price : {"1", "2", "3"})
    till->dialogs.expectInput(kAskAmount, price).during([&] { sums += shown; });
  purchase().AddAnzahl(7, 3);
  QCOMPARE(sums, (QStringList{"", "1", "3"}));
  QCOMPARE(shown, "6");
  till->dialogs.expect(kLimitOne).during([&] { sums += shown; });
  purchase().AddAnzahl(1, 2);
  QCOMPARE(sums.last(), "21");
}

QTEST_MAIN(TestPurchase)
#include "test_purchase.moc"

// Opening the desk, showing shooters and changing them.
#include <QTest>
#include <memory>

#include "platform/runtime/error.h"
#include "tests/cash/till.h"

using namespace qk;
using namespace qk::test;

class TestCashDesk : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    journal.clear();
    connect(desk.get(), &CashDesk::opened, this, [this] { journal += "opened"; });
    connect(desk.get(), &CashDesk::einlagenGeladen, this, [this] { journal += "einlagen"; });
    connect(desk.get(), &CashDesk::shooterUnknown, this, [this] { journal += "unknown"; });
    connect(desk.get(), &CashDesk::shooterShown, this, [this] { journal += "shooter"; });
    connect(desk.get(), &CashDesk::vmShown, this, [this] { journal += "vm"; });
    connect(desk.get(), &CashDesk::paymentsShown, this, [this] { journal += "payments"; });
  }
  void cleanup() {
    desk.reset();
    till.reset();
  }

  void theFirstShooterOpensTheDesk();
  void stakesInTheirOrder();
  void whatIsShownOfAShooter();
  void anUnknownNumberChangesNothingElse();
  void aShooterEnteredMeanwhileIsFound();
  void aQuoteInANumber();
  void changingTheShooter();
  void changingToAnUnknownNumber();
  void aChangeKeepsThePurchase();
  void aCompetitionThatIsGone();
  void aFailureWhileShowing();
  void aShooterGivenUpLeavesNothingOfTheFormer();

 private:
  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
  QStringList journal;
};

void TestCashDesk::theFirstShooterOpensTheDesk() {
  QVERIFY(!desk->isOpen());
  QVERIFY(desk->UpdateStartNr("107", "SG Grünau", "Grünau I"));
  QCOMPARE(journal, (QStringList{"opened", "einlagen", "shooter", "vm", "payments"}));
  journal.clear();
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  QCOMPARE(journal, (QStringList{"shooter", "vm", "payments"}));
}

void TestCashDesk::stakesInTheirOrder() {
  till->execute("UPDATE Kasse_Verwaltung SET Platz = 0 WHERE ID = 5");
  till->execute("UPDATE Kasse_Verwaltung SET Verein = Null WHERE ID = 3");
  desk->OpenDB();
  QStringList names;
  for (const Stake& stake : desk->einlagen()) names += stake.Bezeichnung;
  QCOMPARE(names,
           (QStringList{"Festabend", "Startgeld", "Nachkauf Serie", "Jugendpaket", "Spende", "Verzehr"}));
  QCOMPARE(desk->store().spende().id, 6);
  QCOMPARE(desk->store().spende().Bezeichnung, "Spende");
}

void TestCashDesk::whatIsShownOfAShooter() {
  QVERIFY(desk->UpdateStartNr("5.1", "der Verein", "die Mannschaft"));
  const ShownShooter& shown = desk->shooter();
  QCOMPARE(desk->sStartNr(), "5.1");
  QCOMPARE(shown.ID, 3);
  QCOMPARE(shown.Name, "Öttl Toni");
  QCOMPARE(shown.GebDat, "01.02.1982");
  QCOMPARE(shown.Klasse, "Herren I");
  QCOMPARE(shown.SPO, "LG - Grünau I - LP - Grünau II - ");
  QCOMPARE(shown.Verein, "der Verein");
  QCOMPARE(shown.Mann, "die Mannschaft");
  QCOMPARE(shown.AusweisNr, "100109");
}

void TestCashDesk::anUnknownNumberChangesNothingElse() {
  QVERIFY(desk->UpdateStartNr("107", "SG Grünau", "Grünau I"));
  journal.clear();
  QVERIFY(!desk->UpdateStartNr("999", "", ""));
  QCOMPARE(journal, QStringList("unknown"));
  QCOMPARE(desk->shooter().Name, "Müller Jörg");
  QCOMPARE(desk->sStartNr(), "999");
}

void TestCashDesk::aShooterEnteredMeanwhileIsFound() {
  QVERIFY(desk->UpdateStartNr("107", "", ""));
  till->fill("Zeilen Schützen\n  ID | Startnummer | Name | Gebdat\n  9 | 300 | Neu Anna | 00.00.0000\n");
  QVERIFY(desk->UpdateStartNr("300", "", ""));
  QCOMPARE(desk->shooter().Name, "Neu Anna");
  QVERIFY(desk->UpdateStartNr("107", "", ""));
}

void TestCashDesk::aQuoteInANumber() {
  QVERIFY(!desk->UpdateStartNr("1' or '1'='1", "", ""));
  QCOMPARE(journal.last(), "unknown");
}

void TestCashDesk::changingTheShooter() {
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  desk->wechsleSchuetzen("107");
  QCOMPARE(desk->sStartNr(), "107");
  QCOMPARE(desk->shooter().Verein, "SG Grünau");
  QCOMPARE(desk->shooter().Mann, "Grünau I");
  desk->ladeSchuetzenNeu();
  QCOMPARE(desk->shooter().Verein, "SG Grünau");
}

void TestCashDesk::changingToAnUnknownNumber() {
  QVERIFY(desk->UpdateStartNr("210", "", ""));
  journal.clear();
  till->dialogs.expect("Startnummer nicht gefunden!").titled("Hinweis");
  desk->wechsleSchuetzen("999");
  QCOMPARE(journal, QStringList());
  QCOMPARE(desk->sStartNr(), "210");
  desk->purchase().AddKauf(4);  // the class of the shown shooter still counts
  QCOMPARE(desk->purchase().flex().rows(), 2);
}

void TestCashDesk::aChangeKeepsThePurchase() {
  QVERIFY(desk->UpdateStartNr("108", "", ""));
  desk->purchase().AddKauf(1);
  desk->wechsleSchuetzen("107");
  QCOMPARE(desk->purchase().flex().rows(), 2);
}

void TestCashDesk::aCompetitionThatIsGone() {
  till->global.sWettkampf = till->path("fort.qkk");
  till->dialogs
      .expect("Fehler: 3024 - " + errorDescription(3024) + "\nFehler beim Aktualisieren der Schützendaten!",
              BoxAnswer::Abort)
      .titled("Fehler");
  QVERIFY(!desk->UpdateStartNr("107", "", ""));
  QVERIFY(!desk->isOpen());
}

void TestCashDesk::aFailureWhileShowing() {
  till->fill("Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag\n  107 | 1 | nein | 15\n");
  QVERIFY(desk->UpdateStartNr("107", "", ""));
  QVERIFY(!desk->vm().entries.empty());
  QCOMPARE(desk->payments().flexAll().rows(), 2);
  till->store()->dropTable("Kasse_Eingang");
  journal.clear();
  const QString failure = till->failureOf("Select * from Kasse_Eingang where Startnummer = '108'") +
                          "\nFehler beim Aktualisieren der Schützendaten!";
  till->dialogs.expect(failure, BoxAnswer::Ignore).with(BoxButtons::AbortRetryIgnore);  // the balances
  till->dialogs.expect(failure, BoxAnswer::Ignore).with(BoxButtons::AbortRetryIgnore);  // the payments
  desk->UpdateStartNr("108", "", "");
  QCOMPARE(journal, (QStringList{"shooter", "vm", "payments"}));
  QCOMPARE(desk->payments().flexAll().rows(), 1);
  QVERIFY(desk->vm().entries.empty());  // not those of the shooter before
}

void TestCashDesk::aShooterGivenUpLeavesNothingOfTheFormer() {
  till->fill("Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag\n  107 | 1 | nein | 15\n");
  QVERIFY(desk->UpdateStartNr("107", "", ""));
  till->store()->dropTable("Kasse_Eingang");
  till->dialogs.expect(till->failureOf("Select * from Kasse_Eingang where Startnummer = '108'") +
                           "\nFehler beim Aktualisieren der Schützendaten!",
                       BoxAnswer::Abort);
  QVERIFY(!desk->UpdateStartNr("108", "", ""));
  QCOMPARE(desk->payments().flexAll().rows(), 1);
  QVERIFY(desk->vm().entries.empty());
}

QTEST_MAIN(TestCashDesk)
#include "test_cash_desk.moc"

// The cash of a club or a team: what is sold, counted, stored and settled.
#include <QTest>
#include <memory>

#include "cash/club_cash.h"
#include "platform/runtime/error.h"
#include "tests/cash/till.h"
#include "tests/support/error_of.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kMore = R"(
Zeilen Kasse_Verwaltung
  ID | Platz | Bezeichnung     | Betrag | Nachkauf | Verein | VorgabeOffen
  11 | 2     | Mannschaftsgeld | 20     | 2        | -1     | ja
  12 | 3     | Verzehr         | 0      | 0        | -1     | nein

Zeilen Kasse_Eingang
  ID  | Startnummer | KasseID | Offen | Betrag | DatumEingang | VereinID | MannID
  101 |             | 10      | ja    | 50     | 19.11.2026   | 1        |
  102 |             | 11      | nein  | 20     | 19.11.2026   |          | 1
  103 | 107         | 11      | nein  | 20     | 19.11.2026   |          |
)";

const QString kAgain = "\r\nIst das so gewollt?";

}  // namespace

class TestClubCash : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->fill(kMore);
  }
  void cleanup() {
    cash.reset();
    till.reset();
  }

  void aClub() {
    open(Payer::verein(1));
    QCOMPARE(cash->name(), "SG Grünau");
    QCOMPARE(cash->herkunft(), "Schützengilde Grünau");
    QCOMPARE(shown(), QStringList("Vereinsbeitrag|-1|50|19.11.2026"));
    QCOMPARE(cash->saldo().toText(), "-50");
    QStringList names;
    for (const Stake& stake : cash->einlagen()) names += stake.Bezeichnung;
    QCOMPARE(names, (QStringList{"Vereinsbeitrag", "Mannschaftsgeld", "Verzehr"}));
  }

  void aTeam() {
    open(Payer::mannschaft(1));
    QCOMPARE(cash->name(), "Grünau I");
    QCOMPARE(cash->herkunft(), "SG Grünau");
    QCOMPARE(shown(), QStringList("Mannschaftsgeld|0|20|19.11.2026"));
    QCOMPARE(cash->saldo().toText(), "20");
  }

  void aTeamOfNoClub() {
    open(Payer::mannschaft(3));
    QCOMPARE(cash->herkunft(), "");
    QVERIFY(shown().isEmpty());
  }

  void whatIsGone() {
    QCOMPARE(errorOf([&] { open(Payer::verein(77)); }), 3021);
    QCOMPARE(errorOf([&] { open(Payer::mannschaft(77)); }), 3021);
  }

  void aClubsRows() {
    open(Payer::verein(1));
    cash->purchase().AddKauf(10);
    cash->purchase().AddKauf(11);
    QCOMPARE(cash->purchase().zuBezahlen().toText(), "50");  // the other one is always open
    QVERIFY(cash->verbuche({}).ganz());
    QCOMPARE(last(2), (QStringList{"Null|10|0|50|20.11.2026 10:00:00||1|Null|Null|Null",
                                   "Null|11|-1|20|20.11.2026 10:00:00||1|Null|Null|Null"}));
    cash->lade();
    QCOMPARE(cash->saldo().toText(), "-20");
  }

  void aTeamsRows() {
    open(Payer::mannschaft(2));
    cash->purchase().setBetragsart(Betragsart::OffenePosten);
    cash->purchase().AddKauf(10);
    QVERIFY(cash->verbuche({}).ganz());
    QCOMPARE(last(1), QStringList("Null|10|-1|50|20.11.2026 10:00:00||Null|2|Null|Null"));
  }

  void theLimitCountsByIdAndPayer() {
    till->execute("UPDATE Kasse_Verwaltung SET Bezeichnung = 'Umbenannt' WHERE ID = 11");
    open(Payer::mannschaft(1));
    cash->purchase().AddKauf(11);
    till->dialogs
        .expect(
            "Die Mannschaft hat die max. Nachkaufmöglichkeit bereits erreicht!\r\nUmbenannt - 2 Käufe "
            "erlaubt!")
        .titled("Hinweis")
        .showing(BoxIcon::Information);
    cash->purchase().AddKauf(11);
    QCOMPARE(cash->purchase().flex().rows(), 2);
    // The club has bought none, whatever its team and its shooter did.
    open(Payer::verein(1));
    cash->purchase().AddKauf(11);
    cash->purchase().AddKauf(11);
    till->dialogs.expect(
        "Der Verein hat die max. Nachkaufmöglichkeit bereits erreicht!\r\nUmbenannt - 2 Käufe erlaubt!");
    cash->purchase().AddKauf(11);
    QCOMPARE(cash->purchase().flex().rows(), 3);
  }

  void noClassIsAskedFor() {
    till->fill("Zeilen Kasse_Schuetzenklassen\n  KasseEinlageID | SchuetzenklasseID\n  10 | 1\n");
    open(Payer::verein(1));
    cash->purchase().AddKauf(10);
    QCOMPARE(cash->purchase().flex().rows(), 2);
  }

  void stakesOfShootersArentSold() {
    open(Payer::verein(1));
    cash->purchase().AddKauf(1);
    QVERIFY(cash->purchase().isEmpty());
  }

  void aPriceIsAskedFor() {
    open(Payer::verein(1));
    till->dialogs.expectInput(kAskAmount, "12,5");
    cash->purchase().AddKauf(12);
    QCOMPARE(cash->purchase().zuBezahlen().toText(), "12,5");
  }

  void settling() {
    open(Payer::verein(1));
    cash->payments().cmdOPVerbuchen();
    QCOMPARE(shown(), QStringList("Vereinsbeitrag|0|50|20.11.2026 10:00:00"));
    QCOMPARE(cash->saldo().toText(), "50");
    QCOMPARE(till->read("Select * from Kasse_Eingang where ID = 101", {"Offen", "Startnummer", "VereinID"}),
             QStringList("0|Null|1"));
  }

  void whatIsntSettledIsAskedAboutOnceMore() {
    open(Payer::verein(1));
    const QString failure = till->refuse(StoreAct::Update, "ID", 101) + "\nFehler beim Verbuchen der OP!";
    till->dialogs.expect(failure, BoxAnswer::Ignore);
    till->dialogs
        .expect("Der offene Posten »Vereinsbeitrag« über 50,00 € bleibt offen." + kAgain, BoxAnswer::No)
        .with(BoxButtons::YesNo)
        .presetting(BoxAnswer::No);
    till->dialogs.expect(failure, BoxAnswer::Abort);
    till->dialogs.expect(
        "Der offene Posten »Vereinsbeitrag« über 50,00 € und alle folgenden bleiben offen." + kAgain,
        BoxAnswer::Yes);
    cash->payments().cmdOPVerbuchen();
    QCOMPARE(shown(), QStringList("Vereinsbeitrag|-1|50|19.11.2026"));
  }

  void deletingSaysWhose() {
    open(Payer::verein(1));
    till->dialogs.expect("Soll der aktuelle Eingang des Vereins unwiderruflich gelöscht werden?",
                         BoxAnswer::No);
    cash->payments().cmdDelete(1);
    open(Payer::mannschaft(1));
    till->dialogs.expect("Soll der aktuelle Eingang der Mannschaft unwiderruflich gelöscht werden?",
                         BoxAnswer::Yes);
    cash->payments().cmdDelete(1);
    QCOMPARE(till->read("Select * from Kasse_Eingang order by ID", {"ID"}), (QStringList{"101", "103"}));
  }

  void aBookingThatFailsMarksItsRows() {
    open(Payer::verein(1));
    cash->purchase().AddKauf(10);
    cash->purchase().AddKauf(11);
    till->refuse(StoreAct::Insert, "KasseID", 11);
    const BookingOutcome outcome = cash->verbuche({});
    QVERIFY(outcome.fehler);
    QCOMPARE(outcome.gespeichert, 1);
    QVERIFY(cash->purchase().istGespeichert(1));
    QVERIFY(!cash->purchase().istGespeichert(2));
  }

  void theReceipt() {
    open(Payer::verein(1));
    cash->sBez1 = "Pokal";
    cash->purchase().AddKauf(10);
    const Receipt hand = cash->beleg(true);
    QCOMPARE((QStringList{hand.Bez1, hand.Startnummer, hand.Name, hand.Verein, hand.Mannschaft}),
             (QStringList{"Pokal", "", "SG Grünau", "Schützengilde Grünau", ""}));
    QCOMPARE(hand.Kasse.size(), size_t(1));
    QCOMPARE(hand.Kasse[0].Offen, "0");
    const Receipt all = cash->beleg(false);
    QCOMPARE(all.Kasse.size(), size_t(1));
    QCOMPARE(all.Kasse[0].Offen, "-1");
  }

 private:
  void open(const Payer& payer) {
    cash = std::make_unique<ClubCash>(till->workplace(), payer);
    cash->open(till->competition());
  }
  QStringList shown() { return Till::rows(cash->payments().flexAll()); }
  QStringList last(qsizetype count) {
    const QStringList all = till->read("Select * from Kasse_Eingang where ID > 103 order by ID",
                                       {"Startnummer", "KasseID", "Offen", "Betrag", "DatumEingang", "Gruppe",
                                        "VereinID", "MannID", "VereinIDBasis", "MannIDBasis"});
    return all.mid(all.size() - count);
  }

  std::unique_ptr<Till> till;
  std::unique_ptr<ClubCash> cash;
};

QTEST_GUILESS_MAIN(TestClubCash)
#include "test_club_cash.moc"

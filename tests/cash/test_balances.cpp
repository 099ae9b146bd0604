// Balances of clubs and teams, and the owners that every payment gets.
#include <QTest>
#include <memory>

#include "cash/balances.h"
#include "cash/base_update.h"
#include "cash/diszi_kombi.h"
#include "tests/cash/till.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Three payments of team 2, two of them open; one of team 1; two of club 1.
const QString kRows =
    "Zeilen Kasse_Eingang\n"
    "  ID | KasseID | Offen | Betrag | VereinID | MannID\n"
    "  1  | 10      | nein  | 50     |          | 2\n"
    "  2  | 10      | ja    | 20     |          | 2\n"
    "  3  | 10      | nein  | 7      |          | 2\n"
    "  4  | 10      | nein  | 30     |          | 1\n"
    "  5  | 10      | ja    | 40     | 1        |\n"
    "  6  | 10      | nein  | 15     | 1        |\n";

}  // namespace

class TestBalances : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->fill(kRows);
    db = till->store();
  }
  void cleanup() {
    db.reset();
    till.reset();
  }

  void clubsAndTeams();
  void allButTheFirstTeamLoseTheirFirstRow();
  void theFirstTeamIsCountedWhole();
  void aTeamWithoutPayments();
  void noRegistration();
  void theMenuOfAShooter();
  void theMenuOfOneWithoutClubAndTeam();
  void theMenuOfOneWithTeamsByRegistrationOnly();
  void withoutAStakeForClubsThereIsNoMenu();
  void everyPaymentGetsItsOwners();
  void oldOwnersStay();
  void disciplinesInTheirOrder();

 private:
  QStringList captions(const std::vector<VmEntry>& entries) {
    QStringList all;
    for (const VmEntry& entry : entries) all += entry.caption + "|" + QString::number(entry.id);
    return all;
  }
  QStringList owners() {
    return till->read("Select * from Kasse_Eingang order by ID", {"ID", "VereinIDBasis", "MannIDBasis"});
  }

  std::unique_ptr<Till> till;
  std::unique_ptr<dao::Database> db;
};

void TestBalances::clubsAndTeams() {
  QCOMPARE(saldoVerein(*db, 1).toText(), "-25");
  QCOMPARE(saldoMannschaft(*db, 2).toText(), "37");
  QCOMPARE(saldoMannschaft(*db, 3).toText(), "0");
}

void TestBalances::allButTheFirstTeamLoseTheirFirstRow() {
  // Team 2 has 50, -20 and 7; the 50 that bring the change aren't counted.
  QCOMPARE(captions(spoMannschaften(*db, 3)),
           (QStringList{"SPO-Mannschaft: Grünau I: 30,00 €|1", "SPO-Mannschaft: Grünau II: -13,00 €|2"}));
}

void TestBalances::theFirstTeamIsCountedWhole() {
  till->execute("DELETE * FROM Schuetzen_SPO_Anmeldungen WHERE MannID = 1");
  QCOMPARE(captions(spoMannschaften(*db, 3)), QStringList("SPO-Mannschaft: Grünau II: 37,00 €|2"));
}

void TestBalances::aTeamWithoutPayments() {
  till->execute("UPDATE Schuetzen_SPO_Anmeldungen SET MannID = 3 WHERE MannID = 1");
  QCOMPARE(captions(spoMannschaften(*db, 3)),
           (QStringList{"SPO-Mannschaft: Grünau II: 37,00 €|2", "SPO-Mannschaft: Pokal: 0,00 €|3"}));
}

void TestBalances::noRegistration() {
  QVERIFY(spoMannschaften(*db, 2).empty());
  QVERIFY(spoMannschaften(*db, 1).empty());  // registered without a team
}

void TestBalances::theMenuOfAShooter() {
  const VmMenu menu = vmMenu(*db, {1, 1, 1, "SG Grünau", "Grünau I"});
  QVERIFY(menu.visible);
  QCOMPARE(captions(menu.entries),
           (QStringList{"Verein: SG Grünau: -25,00 €|1", "Mannschaft: Grünau I: 30,00 €|1"}));
  QVERIFY(menu.entries.front().visible);
}

void TestBalances::theMenuOfOneWithoutClubAndTeam() {
  const VmMenu menu = vmMenu(*db, {2, 0, 0, "", ""});
  QVERIFY(!menu.visible);
  QCOMPARE(menu.entries.size(), 1U);
  QVERIFY(!menu.entries.front().visible);
}

void TestBalances::theMenuOfOneWithTeamsByRegistrationOnly() {
  const VmMenu menu = vmMenu(*db, {3, 0, 0, "", ""});
  QVERIFY(menu.visible);
  QCOMPARE(menu.entries.size(), 3U);
  QVERIFY(!menu.entries.front().visible);
  QCOMPARE(menu.entries.back().id, 2);
}

void TestBalances::withoutAStakeForClubsThereIsNoMenu() {
  till->execute("DELETE * FROM Kasse_Verwaltung WHERE Verein = -1");
  const VmMenu menu = vmMenu(*db, {1, 1, 1, "SG Grünau", "Grünau I"});
  QVERIFY(!menu.visible);
  QVERIFY(menu.entries.empty());
}

void TestBalances::everyPaymentGetsItsOwners() {
  till->execute("UPDATE Mannschaften SET VereinID = 9 WHERE ID = 2");
  till->fill(
      "Zeilen Kasse_Eingang\n"
      "  ID | Startnummer | KasseID | Offen | Betrag | VereinID | MannID\n"
      "  7  | 107         | 1       | nein  | 15     |          |\n"
      "  8  | 107         | 1       | nein  | 15     |          | 2\n"
      "  9  | 107         | 1       | nein  | 15     | 5        | 2\n"
      "  10 | 108         | 1       | nein  | 15     |          | 3\n");
  KasseBasisAktualisieren(*db);
  QCOMPARE(owners(), (QStringList{"1|9|2", "2|9|2", "3|9|2", "4|1|1", "5|1|Null", "6|1|Null",
                                  "7|1|1",  // the shooter's
                                  "8|9|1",  // the team's club beats the shooter's; his team the direct one
                                  "9|5|1",  // a direct club beats both
                                  "10|0|3"}));  // a team without a club; a shooter without a team
}

void TestBalances::oldOwnersStay() {
  till->fill(
      "Zeilen Kasse_Eingang\n  ID | Startnummer | KasseID | Offen | Betrag | VereinIDBasis | MannIDBasis\n"
      "  7 | 999 | 1 | nein | 15 | 4 | 5\n");
  KasseBasisAktualisieren(*db);
  QCOMPARE(owners().last(), "7|4|5");
}

void TestBalances::disciplinesInTheirOrder() {
  till->fill(
      "Zeilen Disziplin\n  ID | Name | CmdIndex\n  1 | LP | 1\n  2 | LG | 2\n"
      "Zeilen Kombination_Name\n  ID | Kombinationsname | CmdIndex\n  1 | Paket | 1\n  2 | Glück | 2\n");
  const auto names = [&] {
    QStringList all;
    for (const DisziKombi& entry : ladeDisziKombi(*db)) all += entry.Art() + entry.name;
    return all.join(' ');
  };
  QCOMPARE(names(), "DLP DLG KPaket KGlück");
  till->execute("UPDATE Wettkampf SET SortedDiszi = True");
  QCOMPARE(names(), "DLG DLP KPaket KGlück");
  till->execute("UPDATE Wettkampf SET SortedKombi = True");
  QCOMPARE(names(), "DLG DLP KGlück KPaket");
}

QTEST_MAIN(TestBalances)
#include "test_balances.moc"

// What shooters hold, and its deletion.
#include <QTest>
#include <memory>

#include "cash/issued_targets.h"
#include "tests/cash/till.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kHeld = R"(
Zeilen Disziplin
  ID | Name       | CmdIndex
  1  | LG Meister | 2

Zeilen Kombination_Name
  ID | Kombinationsname | CmdIndex
  1  | Pokal            | 1

Zeilen ScheibenNummern
  ID | Bezeichnung | Scheibentyp | Startnummer | Endnummer | AktuelleNummer | VorgabeID | DisziKombi | Anzeigen | Sortierung
  1  | Zehner      | LG          | 1           | 100       | 10             | 1         | 0          | 1        | 4

Zeilen Schuetzen_ScheibenNummern
  ID | Startnummer | Scheibennummer | Kaufdatum  | Speicherdatum | DisziKombiWahl | DisziKombiID | StapelID
  1  | 107         | 12             | 20.11.2026 |               | 1              | 1            |
  2  | 107         | 9              | 20.11.2026 | 21.11.2026    | 0              | 1            | 1
  3  | 108         | 5              | 20.11.2026 |               | 0              | 99           | 1
)";

const QString kAskOne = "Soll die gewählte Scheibe des Schützen gelöscht werden?";
const QString kAskShooter = "Sollen alle Scheiben des Schützen gelöscht werden?";
const QString kAskAll = "Sollen alle ausgegebenen Scheiben zu den Schützen gelöscht werden?";

}  // namespace

class TestIssuedTargets : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->fill(kHeld);
    desk = std::make_unique<CashDesk>(till->workplace(), till->global);
    issued = std::make_unique<IssuedTargets>(*desk);
  }
  void cleanup() {
    issued.reset();
    desk.reset();
    till.reset();
  }

  void whatAShooterHolds() {
    show("107");
    QCOMPARE(rows(), (QStringList{"9|20.11.2026|21.11.2026|Zehner|LG Meister|LG", "12|20.11.2026|||Pokal|"}));
    QCOMPARE(issued->grdScheibenAlle().rowData(1), "2");
    for (int column = 0; column < IssuedColumn::Anzahl; ++column)
      QCOMPARE(issued->grdScheibenAlle().isRightAligned(column), column == IssuedColumn::Nummer);
  }

  void aDisciplineThatIsGoneHasNoName() {
    show("108");
    QCOMPARE(rows(), QStringList{"5|20.11.2026||Zehner||LG"});
  }

  void theListStaysWithTheFirstShooter() {
    show("107");
    show("108");
    QCOMPARE(issued->sStartNr(), "107");
    QCOMPARE(rows().size(), 2);
    till->dialogs.expect(kAskShooter, BoxAnswer::Yes).titled("Hinweis").with(BoxButtons::YesNo);
    issued->cmdScheibenGesamtDeleteAll();  // of the shooter that is shown
    QCOMPARE(held(), (QStringList{"1", "2"}));
    issued->close();
    show("108");
    QVERIFY(rows().isEmpty());
  }

  void nobodysListIsNotTheFirst() {
    desk->OpenDB();
    till->dialogs.expect(kAskAll, BoxAnswer::Yes).titled("Hinweis");
    issued->loescheAlleAusgaben();  // at a desk where no shooter was chosen yet
    till->fill("Zeilen Schuetzen_ScheibenNummern\n  ID | Startnummer | Scheibennummer\n  4 | 107 | 12\n");
    show("107");
    QCOMPARE(rows().size(), 1);
    QCOMPARE(issued->sStartNr(), "107");
  }

  void deletingOne() {
    show("107");
    till->dialogs.expect(kAskOne, BoxAnswer::No).titled("Hinweis").with(BoxButtons::YesNo);
    issued->cmdScheibenGesamtDelete(1);
    QCOMPARE(held().size(), 3);
    till->dialogs.expect(kAskOne, BoxAnswer::Yes);
    issued->cmdScheibenGesamtDelete(1);
    QCOMPARE(held(), (QStringList{"1", "3"}));
    QCOMPARE(rows().size(), 1);
    QCOMPARE(till->read("Select * from ScheibenNummern", {"AktuelleNummer"}), QStringList{"10"});
    issued->cmdScheibenGesamtDelete(0);  // nothing is selected
  }

  void deletingAllOfNobody() {
    show("210");
    issued->cmdScheibenGesamtDeleteAll();  // an empty list asks nothing
    QCOMPARE(held().size(), 3);
  }

  void deletingEverything() {
    show("107");
    till->dialogs.expect(kAskAll, BoxAnswer::No).titled("Hinweis");
    issued->loescheAlleAusgaben();
    QCOMPARE(held().size(), 3);
    till->dialogs.expect(kAskAll, BoxAnswer::Yes);
    issued->loescheAlleAusgaben();
    QVERIFY(held().isEmpty());
    QVERIFY(rows().isEmpty());
  }

  void onTheReceipt() {
    show("107");
    const std::vector<ReceiptTarget> all = issued->belegScheiben();
    QCOMPARE(all.size(), size_t(2));
    QCOMPARE(
        (QStringList{all[0].Scheibennr, all[0].Ausgabe, all[0].Bezeichnung, all[0].Zuordnung, all[0].Typ}),
        (QStringList{"9", "20.11.2026", "Zehner", "LG Meister", "LG"}));
  }

 private:
  void show(const QString& number) {
    desk->UpdateStartNr(number, "", "");
    issued->LoadScheibenGesamt();
  }
  QStringList rows() const {
    QStringList lines;
    const TextTable& table = issued->grdScheibenAlle();
    for (int row = 1; row < table.rows(); ++row) {
      QStringList cells;
      for (int column = 0; column < table.columns(); ++column) cells += table.text(row, column);
      lines += cells.join('|');
    }
    return lines;
  }
  QStringList held() const {
    return till->read("Select * from Schuetzen_ScheibenNummern order by ID", {"ID"});
  }

  std::unique_ptr<Till> till;
  std::unique_ptr<CashDesk> desk;
  std::unique_ptr<IssuedTargets> issued;
};

QTEST_GUILESS_MAIN(TestIssuedTargets)
#include "test_issued_targets.moc"

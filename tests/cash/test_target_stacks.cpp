// Stacks as they are stored, edited, ordered and deleted; and what was handed out of them.
#include <QTest>
#include <memory>

#include "app/ground/settings_keys.h"
#include "cash/target_evaluation.h"
#include "cash/target_stacks.h"
#include "platform/runtime/error.h"
#include "tests/cash/till.h"
#include "tests/support/error_of.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kHeld = R"(
Zeilen Schuetzen_ScheibenNummern
  ID | Startnummer | Scheibennummer | Kaufdatum  | Speicherdatum | DisziKombiWahl | DisziKombiID | StapelID
  1  | 107         | 7              | 19.11.2026 | 19.11.2026    | 0              | 1            | 1
  2  | 107         | 8              | 20.11.2026 |               | 0              | 1            | 1
  3  | 5.1         | 149            | 20.11.2026 |               | 1              | 1            | 2
  4  | 999         | 77             | 20.11.2026 |               | 0              | 2            |
  5  | 108         | 5              | 20.11.2026 | 20.11.2026    | 0              | 99           | 42
)";

}  // namespace

class TestTargetStacks : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    till = std::make_unique<Till>();
    till->fillStacks();
    database = till->store();
  }
  void cleanup() {
    database.reset();
    till.reset();
  }

  void aNewStackStandsBehindAllOthers() {
    TargetStack fresh = *ladeStapel(*database, 0);
    QCOMPARE(fresh.Sortierung, 6);
    StackInput input = eingabeAus(fresh);
    QCOMPARE(input.Startnummer, "");
    input.Bezeichnung = "  Neu ";
    input.Startnummer = "501";
    input.Endnummer = "600";
    const TargetStack stack = stapelAus(input, fresh);
    const qint32 id = speichereStapel(*database, stack, fresh);
    QCOMPARE(stored(id), "Neu||501|600|501|0|0|1||6");
  }

  void onlyWhatWasChangedIsWritten() {
    const TargetStack before = *ladeStapel(*database, 1);
    till->execute("UPDATE ScheibenNummern SET AktuelleNummer = 44 WHERE ID = 1");  // another desk
    StackInput input = eingabeAus(before);
    input.Bezeichnung = "Zehner neu";
    input.DisziKombi = 1;
    QCOMPARE(speichereStapel(*database, stapelAus(input, before), before), 1);
    QCOMPARE(stored(1), "Zehner neu|LG|1|100|44|1|1|1||4");
    input.AktuelleNummer = "50";
    speichereStapel(*database, stapelAus(input, before), before);
    QVERIFY(stored(1).contains("|50|"));
  }

  void nullBecomesEmpty() {
    till->execute("UPDATE ScheibenNummern SET PCAnzeige = Null WHERE ID = 4");
    const TargetStack before = *ladeStapel(*database, 4);
    QVERIFY(!before.PCAnzeige);
    speichereStapel(*database, stapelAus(eingabeAus(before), before), before);
    QVERIFY(stored(4).contains("|1||1"));
  }

  void aStackThatIsGone() {
    const TargetStack before = *ladeStapel(*database, 1);
    till->execute("DELETE * FROM ScheibenNummern WHERE ID = 1");
    QVERIFY(!ladeStapel(*database, 1));
    QCOMPARE(errorOf([&] { speichereStapel(*database, before, before); }), 3167);
  }

  void whatCantBeTaken_data() {
    QTest::addColumn<QString>("Bezeichnung");
    QTest::addColumn<QString>("von");
    QTest::addColumn<QString>("bis");
    QTest::addColumn<QString>("naechste");
    QTest::addColumn<QString>("said");
    QTest::newRow("no name") << " "
                             << "1"
                             << "2"
                             << ""
                             << "Bitte geben Sie eine Bezeichnung ein.";
    QTest::newRow("no first") << "X"
                              << ""
                              << "2"
                              << ""
                              << "Erste Nummer: »« ist keine Nummer.";
    QTest::newRow("a letter") << "X"
                              << "1"
                              << "2a"
                              << ""
                              << "Letzte Nummer: »2a« ist keine Nummer.";
    QTest::newRow("a point") << "X"
                             << "1"
                             << "1.000"
                             << ""
                             << "Letzte Nummer: »1.000« ist keine Nummer.";
    QTest::newRow("negative") << "X"
                              << "-1"
                              << "2"
                              << ""
                              << "Erste Nummer: »-1« ist keine Nummer.";
    QTest::newRow("too large") << "X"
                               << "1"
                               << "2"
                               << "9999999999"
                               << "Nächste Nummer: »9999999999« ist keine Nummer.";
    QTest::newRow("turned round") << "X"
                                  << "9"
                                  << "2"
                                  << ""
                                  << "Die letzte Nummer liegt vor der ersten.";
  }
  void whatCantBeTaken() {
    QFETCH(QString, Bezeichnung);
    QFETCH(QString, von);
    QFETCH(QString, bis);
    QFETCH(QString, naechste);
    QFETCH(QString, said);
    const TargetStack fresh = *ladeStapel(*database, 0);
    StackInput input = eingabeAus(fresh);
    input.Bezeichnung = Bezeichnung;
    input.Startnummer = von;
    input.Endnummer = bis;
    input.AktuelleNummer = naechste;
    QString heard;
    try {
      stapelAus(input, fresh);
    } catch (const Error& error) {
      QCOMPARE(error.number(), 13);
      heard = error.description();
    }
    QCOMPARE(heard, said);
  }

  void doubts() {
    TargetStack stack = *ladeStapel(*database, 1);
    const std::vector<TargetStack> all = ladeAlleStapel(*database);
    QCOMPARE(bedenken(stack, all), QStringList("Die Nummern 1 bis 100 gehören auch zum Stapel »Weg«."));
    stack = *ladeStapel(*database, 4);
    stack.Startnummer = 901;
    stack.Endnummer = 950;
    stack.AktuelleNummer = 951;  // used up
    QCOMPARE(bedenken(stack, all), QStringList());
    stack.AktuelleNummer = 952;
    QCOMPARE(bedenken(stack, all), QStringList("Die nächste Nummer 952 liegt nicht zwischen 901 und 950."));
    stack.AktuelleNummer = 900;
    QCOMPARE(bedenken(stack, all).size(), 1);
  }

  void aStackOfOneNumber() {
    StackInput input = eingabeAus(*ladeStapel(*database, 4));
    input.Endnummer = input.Startnummer;
    QCOMPARE(stapelAus(input, *ladeStapel(*database, 4)).Endnummer, 301);
  }

  void stacksThatShareOneNumber() {
    const std::vector<TargetStack> all = ladeAlleStapel(*database);
    TargetStack stack = *ladeStapel(*database, 5);
    stack.Startnummer = stack.AktuelleNummer = 400;  // the last one of "Frei"
    stack.Endnummer = 500;
    QCOMPARE(bedenken(stack, all), QStringList("Die Nummern 400 bis 400 gehören auch zum Stapel »Frei«."));
    stack.Startnummer = stack.AktuelleNummer = 0;
    stack.Endnummer = 1;  // the first one of "Zehner"
    QCOMPARE(bedenken(stack, all), QStringList("Die Nummern 1 bis 1 gehören auch zum Stapel »Zehner«."));
  }

  void theListShowsWhatTheDeskHides() {
    till->execute("UPDATE ScheibenNummern SET PCAnzeige = Null WHERE ID = 4");
    till->fill(kHeld);
    schreibe(till->settings, keys::LokalePCKennung, QString("C"));
    StackList list(till->workplace(), *database);
    list.lade();
    QCOMPARE(rows(list),
             (QStringList{"Frei|LP|301|400|310||nein, nie gespeichert||0",
                          "Nur B|LP|201|300|220||nein, anderer Arbeitsplatz|AB|0",
                          "Pokale|LG|101|200|150|Pokal|ja|alle|1", "Zehner|LG|1|100|10|LG Meister|ja|alle|2",
                          "Weg|LP|1|900|1||nein, ausgeschaltet|alle|0"}));
    QCOMPARE(list.idOf(1), 4);
    QCOMPARE(list.idOf(0), 0);
    QCOMPARE(list.idOf(6), 0);
    QCOMPARE(list.rowOf(2), 3);
  }

  void movingUpAndDown() {
    StackList list(till->workplace(), *database);
    list.lade();
    QVERIFY(list.verschiebe(4, -1));
    QCOMPARE(order(), (QStringList{"4", "3", "1", "2", "5"}));
    QVERIFY(list.verschiebe(1, 1));
    QCOMPARE(order(), (QStringList{"3", "4", "1", "2", "5"}));
    QVERIFY(!list.verschiebe(1, -1));
    QVERIFY(!list.verschiebe(5, 1));
    QVERIFY(!list.verschiebe(0, 1));
    till->execute("UPDATE ScheibenNummern SET Sortierung = 0");  // as others leave them
    list.lade();
    QVERIFY(list.verschiebe(1, 1));
    QCOMPARE(order(), (QStringList{"2", "1", "3", "4", "5"}));
  }

  void deletingAStack() {
    till->fill(kHeld);
    StackList list(till->workplace(), *database);
    list.lade();
    QVERIFY(!list.loesche(0));
    const QString frei = "Soll der Stapel: Frei wirklich gelöscht werden?";
    till->dialogs.expect(frei, BoxAnswer::No).with(BoxButtons::YesNo).presetting(BoxAnswer::No);
    QVERIFY(!list.loesche(1));
    till->dialogs.expect(frei, BoxAnswer::Yes);
    QVERIFY(list.loesche(1));
    till->dialogs.expect(
        "Soll der Stapel: Zehner wirklich gelöscht werden?\r\nAusgegebene Scheiben des Stapels: "
        "2. Sie bleiben bei den Schützen, ohne Stapel und Typ.",
        BoxAnswer::Yes);
    QVERIFY(list.loesche(list.rowOf(1)));
    QCOMPARE(order(), (QStringList{"3", "2", "5"}));
    QCOMPARE(till->read("Select * from Schuetzen_ScheibenNummern", {"ID"}).size(), 5);
  }

  void countedByStack() {
    QCOMPARE(counted(Gruppierung::Stapel),
             (QStringList{"Pokale 1 0 1 149-149", "Zehner 2 1 1 7-8", "(gelöschter Stapel) 1 1 0 5-5",
                          "(von Hand eingegeben) 1 0 1 77-77"}));
  }
  void countedByDiscipline() {
    QCOMPARE(counted(Gruppierung::Disziplin),
             (QStringList{"LG Glück 1 0 1 77-77", "LG Meister 2 1 1 7-8", "Pokal (Kombination) 1 0 1 149-149",
                          "(gelöscht) 1 1 0 5-5"}));
  }
  void countedByShooter() {
    QCOMPARE(counted(Gruppierung::Schuetze),
             (QStringList{"5.1  Öttl Toni 1 0 1 149-149", "107  Müller Jörg 2 1 1 7-8",
                          "108  Süß Benno 1 1 0 5-5", "999   1 0 1 77-77"}));
  }
  void countedByDay() {
    QCOMPARE(counted(Gruppierung::Tag), (QStringList{"19.11.2026 1 1 0 7-7", "20.11.2026 4 1 3 5-149"}));
    QCOMPARE(counted(Gruppierung::Stapel, QDate(2026, 11, 19)), QStringList{"Zehner 1 1 0 7-7"});
    QCOMPARE(ausgabeTage(ladeAusgaben(*database)), (QList<QDate>{QDate(2026, 11, 20), QDate(2026, 11, 19)}));
  }
  void stacksOfOneNameAreTwo() {
    till->execute("UPDATE ScheibenNummern SET Bezeichnung = 'Zehner' WHERE ID = 2");
    QCOMPARE(counted(Gruppierung::Stapel).filter("Zehner").size(), 2);
  }
  void theSum() {
    till->fill(kHeld);
    TextTable table(1);
    fuelle(table, Gruppierung::Stapel, {});
    QStringList titles;
    for (int column = 0; column < table.columns(); ++column) titles += table.text(0, column);
    QCOMPARE(titles.join('|'), "Stapel|Ausgegeben|Abgegeben|Noch draußen|Erste Nummer|Letzte Nummer");
    const IssuedSum total = summe(gruppiere(ladeAusgaben(*database), Gruppierung::Stapel, QDate()));
    QCOMPARE(total.ausgegeben, 5);
    QCOMPARE(total.abgegeben, 2);
    QCOMPARE(total.draussen(), 3);
  }
  void aNumberOfTwoShootersCountsOnce() {
    till->fill("Zeilen Schützen\n  ID | Startnummer | Name\n  9 | 107 | Zweiter Mann\n");
    QCOMPARE(counted(Gruppierung::Schuetze).filter("107"), QStringList{"107  Müller Jörg 2 1 1 7-8"});
  }
  void nothingHandedOut() { QVERIFY(gruppiere(ladeAusgaben(*database), Gruppierung::Tag, QDate()).empty()); }

 private:
  QString stored(qint32 id) {
    return till
        ->read(QString("Select * from ScheibenNummern where ID = %1").arg(id),
               {"Bezeichnung", "Scheibentyp", "Startnummer", "Endnummer", "AktuelleNummer", "VorgabeID",
                "DisziKombi", "Anzeigen", "PCAnzeige", "Sortierung"})
        .value(0);
  }
  QStringList order() { return till->read("Select * from ScheibenNummern order by Sortierung", {"ID"}); }
  static QStringList rows(StackList& list) {
    QStringList lines;
    for (int row = 1; row < list.table().rows(); ++row) {
      QStringList cells;
      for (int column = 0; column < list.table().columns(); ++column) cells += list.table().text(row, column);
      lines += cells.join('|');
    }
    return lines;
  }
  QStringList counted(Gruppierung by, const QDate& day = {}) {
    if (till->read("Select * from Schuetzen_ScheibenNummern", {"ID"}).isEmpty()) till->fill(kHeld);
    QStringList lines;
    for (const IssuedSum& sum : gruppiere(ladeAusgaben(*database), by, day))
      lines += QString("%1 %2 %3 %4 %5-%6")
                   .arg(sum.Bezeichnung)
                   .arg(sum.ausgegeben)
                   .arg(sum.abgegeben)
                   .arg(sum.draussen())
                   .arg(sum.von)
                   .arg(sum.bis);
    return lines;
  }

  std::unique_ptr<Till> till;
  std::unique_ptr<dao::Database> database;
};

QTEST_GUILESS_MAIN(TestTargetStacks)
#include "test_target_stacks.moc"

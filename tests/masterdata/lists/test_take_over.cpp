// A judged list on its way into the competition, and back.
#include <QtTest>

#include "masterdata/lists/import_table.h"
#include "masterdata/lists/store_state.h"
#include "masterdata/lists/take_over.h"
#include "masterdata/rows/erase_person.h"
#include "platform/dao/changes.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/masterdata/lists/list_place.h"
#include "tests/support/error_of.h"
#include "tests/support/test_store.h"

using namespace qk::lists;
using qk::dao::Database;
using qk::test::ListPlace;

namespace {

const QDateTime Now(QDate(2026, 7, 1), QTime(9, 30));

const QString Shooters =
    "SELECT Startnummer, Name, Gebdat, VereinsID, KlassenID, Telefon FROM Schützen WHERE ID > 4 ORDER BY ID";
const QString Everything =
    "Startnummer;Nachname;Vorname;geb.;m/w;Verein;Mannschaft;Telefon;Schützengruppen;Anmeldungen\n"
    "200;Öttl;Ägid;01.02.1990;m;SV Neu;Neu I;;\"Helfer\nNeue\";Luftgewehr\n"
    "201;Groß;Eva;01.02.1980;w;sv neu;neu i;;;\n"
    "104;;;;;SV Neu;;0911/5;;\n";

/// Every table that a list can touch, by keys and all.
QString allRows(ListPlace& place) {
  QStringList all;
  for (const char* table : {"Schützen", "Verein", "Mannschaften", "MannschaftsGruppen", "SchuetzenGruppen",
                            "SchuetzenGruppenZuordnung", "Schuetzen_SPO_Anmeldungen"})
    all << place.rows(QString("SELECT * FROM %1").arg(table));
  return all.join('\n');
}

int nextClubId(ListPlace& place) {
  return place.rows("SELECT Max(ID) AS n FROM Verein").toInt();
}

}  // namespace

class TestTakeOver : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void writesAll() {
    ListPlace place;
    place.take(Everything);
    const int club = nextClubId(place);
    QCOMPARE(place.rows(Shooters), QString("104|Weiß Toni|01.02.1990|%1|1|0911/5/"
                                           "200|Öttl Ägid|01.02.1990|%1|1|~/201|Groß Eva|01.02.1980|%1|4|~")
                                       .arg(club));
    QCOMPARE(place.rows("SELECT Name, Kurzname FROM Verein WHERE ID > 3"), QString("SV Neu|~"));
    QCOMPARE(place.rows("SELECT MannName, VereinID FROM Mannschaften WHERE ID > 3"),
             QString("Neu I|%1").arg(club));
    QCOMPARE(place.rows("SELECT s.Startnummer, m.MannName FROM Schützen AS s INNER JOIN Mannschaften AS m ON "
                        "s.lMannID = m.ID WHERE s.ID > 5 ORDER BY s.ID"),
             QString("200|Neu I/201|Neu I"));
    QCOMPARE(
        place.rows("SELECT s.Startnummer, g.Bezeichnung FROM (SchuetzenGruppenZuordnung AS z INNER JOIN "
                   "Schützen AS s ON z.SchuetzeID = s.ID) INNER JOIN SchuetzenGruppen AS g ON z.GruppenID "
                   "= g.SchGrpID ORDER BY g.SchGrpID"),
        QString("200|Helfer/200|Neue"));
    QCOMPARE(
        place.rows("SELECT s.Startnummer, a.SPOID, a.SPOKey, a.MannID FROM Schuetzen_SPO_Anmeldungen AS a "
                   "INNER JOIN Schützen AS s ON a.SchuetzeID = s.ID"),
        QString("200|1|1.10|0"));
  }

  void saysWhatItWrote() {
    ListPlace place;
    QVERIFY(!lastImport(place.store()));
    const TakenOver taken = takeOver(place.store(), place.judged(Everything), "Mitglieder.csv", Now);
    QVERIFY(taken.written && !taken.fresh);
    QCOMPARE(taken.added, 2);
    QCOMPARE(taken.changed, 1);
    const auto last = lastImport(place.store());
    QVERIFY(last);
    QCOMPARE(last->name, QString("Mitglieder.csv"));
    QCOMPARE(last->when, Now);
    QCOMPARE(last->added, 2);
    QCOMPARE(last->changed, 1);
  }

  void twiceChangesNothing() {
    ListPlace place;
    place.take(Everything);
    const QString once = allRows(place);
    const Judgement again = place.judged(Everything);
    QCOMPARE(again.count(Verdict::Known), 3);
    QVERIFY(again.plan.empty());
    place.take(Everything);
    QCOMPARE(allRows(place), once);
    QCOMPARE(lastImport(place.store())->added, 2);  // and the first one can still be taken back
  }

  void withoutNumbersTwiceChangesNothingEither() {
    ListPlace place;
    const QString list = "Name;geb.\nNeu, Anna;1.1.90\nNeu, Bert;\n";
    place.take(list);
    QCOMPARE(place.judged(list).count(Verdict::Known), 2);
    QCOMPARE(place.rows("SELECT Startnummer, Name FROM Schützen WHERE ID > 5 ORDER BY ID"),
             QString("105|Neu Anna/106|Neu Bert"));
  }

  void columnsThatNobodyNamedStay() {
    ListPlace place;
    place.store().execute("UPDATE Schützen SET MeldeDisziID = 7, Bank = 'Sparkasse' WHERE ID = 1");
    place.take("Startnummer;Ort\n101;Öd\n");
    QCOMPARE(place.rows("SELECT Ort, MeldeDisziID, Bank, Name FROM Schützen WHERE ID = 1"),
             QString("Öd|7|Sparkasse|Müller Jörg"));
  }

  /// As another program leaves columns that it never set.
  void emptyReferencesTakeAClub() {
    ListPlace place;
    place.store().execute(
        "UPDATE Schützen SET VereinsID = NULL, lMannID = NULL, KlassenID = NULL, bGebKlasseManuell = NULL, "
        "Gebdat = NULL, Geschlecht = NULL WHERE ID = 5");
    const QString before = allRows(place);
    place.take("Startnummer;Verein;Mannschaft;geb.;m/w;Klasse\n104;SG Grünau;Grünau I;1.2.90;m;H2\n");
    QCOMPARE(place.rows(
                 "SELECT VereinsID, lMannID, KlassenID, bGebKlasseManuell, Gebdat, Geschlecht FROM Schützen "
                 "WHERE ID = 5"),
             QString("1|1|3|-1|01.02.1990|M"));
    QVERIFY(undoLastImport(place.store()).done);
    QCOMPARE(allRows(place), before);
  }

  void aFailureInTheMiddleWritesNothing() {
    ListPlace place;
    const QString before = allRows(place);
    const Judgement judgement = place.judged(Everything);
    qk::test::refuse(place.path(), qk::test::StoreAct::Insert, "SchuetzenGruppenZuordnung", "GruppenID", 1);
    QVERIFY(qk::test::errorOf([&] { takeOver(place.store(), judgement, "L", Now); }) != 0);
    QCOMPARE(allRows(place), before);
    QVERIFY(!lastImport(place.store()));
  }

  void whoChangedARowMeanwhileIsHeard() {
    ListPlace place;
    const Judgement judgement = place.judged("Startnummer;Telefon\n104;0911/5\n200;1\n201;2\n");
    Database::open(place.path())->execute("UPDATE Schützen SET Telefon = '0911/6' WHERE ID = 5");
    const QString before = allRows(place);
    const TakenOver taken = takeOver(place.store(), judgement, "L", Now);
    QVERIFY(!taken.written);
    QVERIFY(taken.fresh);
    QCOMPARE(qk::test::shown(taken.fresh->rows.front()), QString("geändert Telefon: 0911/6>0911/5"));
    QCOMPARE(allRows(place), before);
  }

  void whoTookTheNumberMeanwhileIsHeard() {
    ListPlace place;
    const Judgement judgement = place.judged("Name;geb.\nNeu, Anna;1.1.90\n");
    Database::open(place.path())->execute("INSERT INTO Schützen (Startnummer, Name) VALUES ('105', 'Flink')");
    const TakenOver taken = takeOver(place.store(), judgement, "L", Now);
    QVERIFY(!taken.written);
    QCOMPARE(taken.fresh->rows.front().who, QString("106 Neu Anna"));
    QVERIFY(takeOver(place.store(), *taken.fresh, "L", Now).written);
  }

  /// Between the last look at the competition and the writing.
  void nothingIsWrittenWhereSomebodyAddedARow() {
    ListPlace place;
    const auto marks = marksOf(place.store(), {"Verein", "Schützen", "GibtEsNicht"});
    QCOMPARE(marks.size(), size_t{2});
    Database::open(place.path())->execute("INSERT INTO Verein (Name) VALUES ('Flink')");
    qk::dao::Changes changes(place.store());
    requireMarks(changes, place.store(), marks, {"Verein"});
    changes.insert("Verein", {{"Name", "Langsam"}});
    int failure = 0;
    try {
      changes.write();
    } catch (const qk::Error& error) {
      QVERIFY(isStale(error));
      failure = error.number();
    }
    QCOMPARE(failure, 3197);
    QCOMPARE(place.rows("SELECT Name FROM Verein WHERE ID > 3"), QString("Flink"));
  }

  void changesThatDontMatterDontStop() {
    ListPlace place;
    const Judgement judgement = place.judged("Startnummer;Telefon\n104;0911/5\n");
    Database::open(place.path())->execute("UPDATE Schützen SET Ort = 'Öd' WHERE ID = 1");
    QVERIFY(takeOver(place.store(), judgement, "L", Now).written);
  }

  void aDigestKnowsTheColumn() {
    qk::dao::TableDef table{"T", {{"a"}, {"b"}, {"c"}}, {}};
    QVERIFY(digestOf({"x", "", ""}, table) != digestOf({"", "x", ""}, table));
    QVERIFY(digestOf({"x", "y", ""}, table) != digestOf({"xy", "", ""}, table));
    QCOMPARE(digestOf({"x", "", ""}, table), digestOf({"x", QVariant(), ""}, table));
  }

  void canBeTakenBack() {
    ListPlace place;
    const QString before = allRows(place);
    place.take(Everything);
    QVERIFY(allRows(place) != before);
    const auto later = Database::open(place.path());  // as after a restart
    const Undone undone = undoLastImport(*later);
    QCOMPARE(undone.refusals, QStringList());
    QVERIFY(undone.done);
    QCOMPARE(allRows(place), before);
    QVERIFY(!lastImport(*later));
    QCOMPARE(undoLastImport(*later).refusals,
             QStringList("Es gibt keine Übernahme, die sich zurücknehmen ließe."));
  }

  void onlyTheLastCanBeTakenBack() {
    ListPlace place;
    place.take("Startnummer;Name\n200;A\n");
    const QString first = allRows(place);
    place.take("Startnummer;Name\n201;B\n");
    QVERIFY(undoLastImport(place.store()).done);
    QCOMPARE(allRows(place), first);
    QVERIFY(!undoLastImport(place.store()).done);
  }

  void whatWasChangedSinceStandsAgainstIt_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("a new shooter") << "UPDATE Schützen SET Telefon = '1' WHERE Startnummer = '201'"
                                   << "Der Schütze »201 Groß Eva« wurde seither geändert.";
    QTest::newRow("a changed one") << "UPDATE Schützen SET Telefon = '1' WHERE ID = 5"
                                   << "Der Schütze »104 Weiß Toni« wurde seither geändert.";
    QTest::newRow("the club") << "UPDATE Verein SET Kurzname = 'N' WHERE Name = 'SV Neu'"
                              << "Der Verein »SV Neu« wurde seither geändert.";
    QTest::newRow("a shooter is gone")
        << "DELETE * FROM Schützen WHERE Startnummer = '201'"
        << "Eine Zeile der Tabelle »Schützen« (Nummer %1) ist inzwischen gelöscht.";
    QTest::newRow("a result") << "INSERT INTO SchussSerien (Startnummer, Ergebnis) VALUES ('201', 95)"
                              << "Der Schütze »201 Groß Eva« hat inzwischen: Ergebnisse.";
    QTest::newRow("a payment") << "INSERT INTO Kasse_Eingang (Startnummer, KasseID) VALUES ('200', 1)"
                               << "Der Schütze »200 Öttl Ägid« hat inzwischen: Zahlungen.";
    QTest::newRow("another member") << "UPDATE Schützen SET VereinsID = %2 WHERE ID = 1"
                                    << "Der Verein »SV Neu« hat inzwischen: Schützen.";
  }
  void whatWasChangedSinceStandsAgainstIt() {
    QFETCH(QString, action);
    QFETCH(QString, refusal);
    ListPlace place;
    place.take(Everything);
    const QString shooter = place.rows("SELECT ID FROM Schützen WHERE Startnummer = '201'");
    if (action.contains("%2")) action = action.replace("%2", QString::number(nextClubId(place)));
    place.store().execute(action);
    const QString before = allRows(place);
    const Undone undone = undoLastImport(place.store());
    QVERIFY(!undone.done);
    QCOMPARE(undone.refusals, QStringList(refusal.replace("%1", shooter)));
    QCOMPARE(allRows(place), before);
    QVERIFY(lastImport(place.store()));
  }

  void whatElseWasChangedSinceDoesNot() {
    ListPlace place;
    place.take(Everything);
    place.store().execute("UPDATE Schützen SET Ort = 'Öd' WHERE ID = 5");  // another column of a changed row
    place.store().execute("INSERT INTO SchussSerien (Startnummer, Ergebnis) VALUES ('104', 95)");
    QVERIFY(undoLastImport(place.store()).done);
    QCOMPARE(place.rows("SELECT Ort, Telefon FROM Schützen WHERE ID = 5"), QString("Öd|~"));
  }

  void anErasedPersonIsNotInIt() {
    ListPlace place;
    qk::erasePerson(place.store(), 1);  // no import yet
    place.take("Startnummer;Telefon\n104;0911/5\n");
    qk::erasePerson(place.store(), 5);
    QVERIFY(!lastImport(place.store()));
    QVERIFY(!undoLastImport(place.store()).done);
  }

  /// A counter that has looked at the new club and is about to store a shooter of it.
  void nobodyIsLeftWithWhatIsTakenBack() {
    ListPlace place;
    place.take("Verein\nNeu\n", ListKind::Clubs);
    const int club = place.rows("SELECT ID FROM Verein WHERE Name = 'Neu'").toInt();
    qk::dao::OpenOptions impatient;
    impatient.patience = 1;
    const auto other = Database::open(place.path(), impatient);
    qk::dao::Changes changes(place.store());
    changes.insert("Schützen", {{"Startnummer", "901"}, {"VereinsID", club}});
    changes.hold("Schützen");
    bool undone = false;
    changes.require([&] { qk::test::errorOf([&] { undone = undoLastImport(*other).done; }); });
    changes.write();
    QVERIFY(!undone);
    QCOMPARE(place.rows("SELECT Name FROM Verein WHERE Name = 'Neu'"), QString("Neu"));
  }

  void clubsAndTeams() {
    ListPlace place;
    const QString before = allRows(place);
    place.take("Verein;Kurzname\nSchützengilde Grünau;SGG\nNeu;N\n", ListKind::Clubs);
    QCOMPARE(place.rows("SELECT Name, Kurzname FROM Verein WHERE ID = 1 OR ID > 3 ORDER BY ID"),
             QString("Schützengilde Grünau|SGG/Neu|N"));
    QVERIFY(undoLastImport(place.store()).done);
    QCOMPARE(allRows(place), before);
    place.take("Mannschaft;Verein;Gruppe\nNeu I;Neu;Pistole\nNeu I;Neu;Luftgewehr\n", ListKind::Teams);
    QCOMPARE(
        place.rows("SELECT m.MannName, v.Name, g.Bezeichnung FROM (Mannschaften AS m INNER JOIN Verein AS v "
                   "ON m.VereinID = v.ID) INNER JOIN MannschaftsGruppen AS g ON m.GruppenID = g.MannGrpID "
                   "WHERE m.ID > 3 ORDER BY m.ID"),
        QString("Neu I|Neu|Pistole/Neu I|Neu|Luftgewehr"));
  }
};

QTEST_GUILESS_MAIN(TestTakeOver)
#include "test_take_over.moc"

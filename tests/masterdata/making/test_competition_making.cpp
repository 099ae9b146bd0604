// Competitions that don't begin empty: starter sets, and those like an earlier one.
#include <QProcess>
#include <QtTest>

#include "app/ground/unfinished_move.h"
#include "masterdata/making/competition.h"
#include "masterdata/making/earlier_competition.h"
#include "masterdata/making/starter_set.h"
#include "masterdata/making/weapons.h"
#include "masterdata/rows/double_numbers.h"
#include "masterdata/rows/references.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/files.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/error_of.h"
#include "tests/support/test_store.h"

using namespace qk;
using dao::Database;
using qk::test::DemoStore;
using qk::test::errorOf;

namespace {

const QString kFolder = QK_STARTER;

QString failureOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    return QString("%1 %2").arg(error.number()).arg(error.description());
  }
  return {};
}

qint64 count(Database& database, const QString& table, const QString& condition = {}) {
  const QString where = condition.isEmpty() ? QString() : " where " + condition;
  const QString source = table.contains(' ') ? table : "[" + table + "]";
  return database.openRecordset("Select Count(*) as Anzahl from " + source + where)
      ->value("Anzahl")
      .toLongLong();
}

/// All rows of a table as text, by key.
QStringList rowsOf(Database& database, const QString& table) {
  QStringList all;
  const auto rows = database.openRecordset("Select * from [" + table + "]", dao::RecordsetType::Snapshot);
  for (; !rows->eof(); rows->moveNext()) {
    QStringList cells;
    for (int i = 0; i < rows->fieldCount(); ++i)
      cells.append(rows->fieldDef(i).name + "=" + rows->value(i).toString());
    all.append(cells.join("|"));
  }
  return all;
}

}  // namespace

class TestCompetitionMaking : public QObject {
  Q_OBJECT

  std::unique_ptr<QTemporaryDir> folder_;

  QString path(const QString& name) const { return folder_->filePath(name); }
  /// Where a competition is to be made.
  QString place(const QString& name) const {
    qk::test::prepareStore(path(name));
    return path(name);
  }
  QString written(const QString& text) const {
    const QString file = path("probe.txt");
    Files().write(file, text.toUtf8());
    return file;
  }
  std::unique_ptr<Database> madeFrom(const QString& starter) const {
    CompetitionRequest request{place("neu.qkk")};
    request.starter = starter;
    makeCompetition(request);
    return Database::open(path("neu.qkk"));
  }

 private Q_SLOTS:
  void init() { folder_ = std::make_unique<QTemporaryDir>(); }
  void cleanup() { folder_.reset(); }

  void setsHaveTitles() {
    Files files;
    const auto sets = starterSets(files, kFolder);
    QCOMPARE(sets.size(), size_t{2});
    QCOMPARE(sets[0].name, QString("preisschiessen"));
    QCOMPARE(sets[0].title, QString("Preisschießen"));
    QVERIFY(sets[0].about.startsWith("Meister, Glück, Punkt"));
    QVERIFY(sets[0].about.endsWith("für jeden Preis."));
    QCOMPARE(sets[1].title, QString("Verein (Luftgewehr und Luftpistole)"));
    QVERIFY(starterSets(files, path("fehlt")).empty());
  }

  void setsMakeCompetitions_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("club") << "verein";
    QTest::newRow("prize shoot") << "preisschiessen";
  }
  void setsMakeCompetitions() {
    QFETCH(QString, name);
    const auto made = madeFrom(kFolder + "/" + name + ".txt");
    QCOMPARE(count(*made, "Wettkampf"), 1);
    QCOMPARE(count(*made, "Klassenwechsel"), 1);
    QCOMPARE(count(*made, "MeldeDisziplin", "TeilerfaktorESA > 0"), count(*made, "MeldeDisziplin"));
    QVERIFY(count(*made, "MeldeDisziplin") > 20);
    for (const char* table : {"Schützenklassen", "Disziplin", "DisziplinKlasse", "DisziplinWaffen", "Waffen",
                              "Kombination_Name", "Kombination_Diszi", "AuswertProfil", "AwProfilDiszi"})
      QVERIFY2(count(*made, table) > 0, table);
    for (const char* table :
         {"Schützen", "Verein", "Mannschaften", "Schuss", "SchussSerien", "Kasse_Eingang"})
      QCOMPARE(count(*made, table), 0);
    // Disciplines of every kind, with whom and what they take.
    QVERIFY(count(*made, "Disziplin", "Ringe <> 0 and Teiler = 0 and RingZentel = 0") > 0);
    QVERIFY(count(*made, "Disziplin", "Ringe <> 0 and Teiler = 0 and RingZentel <> 0") > 0);
    QVERIFY(count(*made, "Disziplin", "Ringe = 0 and Teiler <> 0") > 0);
    QVERIFY(count(*made, "Disziplin", "Ringe <> 0 and Teiler <> 0 and dblMaxSerieDSB > 0") > 0);
    QVERIFY(count(*made, "Disziplin", "ZusatzTeiler <> 0") > 0);
    QVERIFY(count(*made, "AuswertProfil", "nShowKurzAuswertung <> 0") > 0);
    QCOMPARE(count(*made, "Disziplin", "ID not in (Select DisziID from DisziplinKlasse)"), 0);
    QCOMPARE(count(*made, "Disziplin", "ID not in (Select DisziID from DisziplinWaffen)"), 0);
    QCOMPARE(count(*made, "AuswertProfil", "ID not in (Select AwProfilID from AwProfilDiszi)"), 0);
    QCOMPARE(count(*made, "DisziplinWaffen inner join Waffen on DisziplinWaffen.WaffenID = Waffen.ID",
                   "DisziplinWaffen.KZ <> Waffen.KZ"),
             0);
    for (const char* column : {"Klasse", "KZ"}) QVERIFY(doublesOf(*made, "Schützenklassen", column).empty());
    QVERIFY(doublesOf(*made, "Disziplin", "Name").empty());
    QVERIFY(!made->hasTable("Haering_Daten"));
  }

  /// From 0 to 100 years, either sex, somebody is asked to shoot.
  void everybodyHasAClass_data() { setsMakeCompetitions_data(); }
  void everybodyHasAClass() {
    QFETCH(QString, name);
    const auto made = madeFrom(kFolder + "/" + name + ".txt");
    dao::Changes changes(*made);
    for (int age = 0; age <= 100; ++age)
      for (const char* sex : {"M", "W"})
        changes.insert(
            "Schützen",
            {{"Startnummer", age}, {"Geschlecht", sex}, {"Gebdat", QString("02.02.%1").arg(2026 - age)}});
    changes.write();
    const MakingResult result = classifyShooters(*made);
    QCOMPARE(result.shooters, 202);
    QCOMPARE(result.withoutClass, 0);
    QCOMPARE(count(*made, "Schützen", "KlassenID = 0"), 0);
    // Those that are shot with a rest are chosen by hand.
    QCOMPARE(count(*made, "Schützen inner join Schützenklassen on Schützen.KlassenID = Schützenklassen.ID",
                   "Schützenklassen.Auflage <> 0"),
             0);
  }

  void cellsMayNameSeveralRows() {
    const auto made = madeFrom(
        written("Zeilen Schützenklassen\n  ID | Klasse\n  1 | A\n  2 | B\n  3 | C\n"
                "Zeilen Disziplin\n  ID | Name | RingSerie\n  7 | D | 40\n  8 | E | 20\n"
                "Zeilen DisziplinKlasse\n  DisziID | KlasseID\n  7-8 | 1, 3\n  7 | 2\n"
                "Zeilen MeldeDisziplin\n  ID | MeldeDisziplin | TeilerfaktorESA\n  1 | Eigene | 2,5\n"));
    QStringList links;
    const auto rows = made->openRecordset("Select * from DisziplinKlasse order by DisziID, KlasseID");
    for (; !rows->eof(); rows->moveNext())
      links.append(rows->value("DisziID").toString() + "-" + rows->value("KlasseID").toString());
    QCOMPARE(links, QStringList({"7-1", "7-2", "7-3", "8-1", "8-3"}));
    QCOMPARE(count(*made, "MeldeDisziplin"), 1);
    QCOMPARE(made->openRecordset("MeldeDisziplin")->value("TeilerfaktorESA").toDouble(), 2.5);
  }

  void brokenSetsAreToldWithTheirLine_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("what");
    const QString classes = "Zeilen Schützenklassen\n  ID | Klasse | Alter von\n  1 | A | 0\n";
    QTest::newRow("type") << classes + "  2 | B | jung\n"
                          << "probe.txt:4: Spalte »Alter von«, Wert »jung«: ";
    QTest::newRow("cells") << classes + "  2 | B\n"
                           << "probe.txt:4: 2 Werte für 3 Spalten";
    QTest::newRow("twice") << classes + "  1 | B | 4\n"
                           << "probe.txt:4: die Nummer 1 steht schon da";
    QTest::newRow("column") << classes + "Zeilen Waffen\n  ID | Farbe\n  1 | rot\n"
                            << "probe.txt:4: Zeilen Waffen: keine Spalte »Farbe«";
    QTest::newRow("table") << classes + "Zeilen Schuss\n  ID | Ring\n  1 | 9\n"
                           << "probe.txt:4: »Schuss« gehört nicht in eine Vorlage";
    QTest::newRow("no table") << classes + "Zeilen Zwerge\n  ID | Ring\n  1 | 9\n"
                              << "probe.txt:4: »Zwerge« gehört nicht in eine Vorlage";
    QTest::newRow("table again") << classes + classes
                                 << "probe.txt:4: Zeilen Schützenklassen stehen schon da";
    QTest::newRow("definition")
        << "Tabelle X\n  A Long\n"
        << "probe.txt:1: eine Vorlage hat nur »Zeilen«, keine »Tabelle« und keine »Abfrage«";
    QTest::newRow("names nothing")
        << classes +
               "Zeilen Disziplin\n  ID | Name\n  1 | D\nZeilen DisziplinKlasse\n  DisziID | "
               "KlasseID\n  1 | 1\n  1 | 4\n"
        << "probe.txt:10: KlasseID 4 gibt es nicht unter »Zeilen Schützenklassen«";
    QTest::newRow("names no table") << "Zeilen DisziplinKlasse\n  DisziID | KlasseID\n  1 | 0\n"
                                    << "probe.txt:3: DisziID 1 gibt es nicht unter »Zeilen Disziplin«";
    QTest::newRow("names by kind")
        << "Zeilen Disziplin\n  ID | Name\n  1 | D\nZeilen Kasse_Verwaltung\n  ID | Platz\n  "
           "1 | 1\nZeilen Kasse_DisziKombi\n  EinlageID | DisziKZ | DisziKombiID\n  1 | 1 | "
           "1\n  1 | 2 | 1\n"
        << "probe.txt:10: DisziKombiID 1 gibt es nicht unter »Zeilen Kombination_Name«";
    QTest::newRow("range") << classes + "Zeilen DisziplinKlasse\n  DisziID | KlasseID\n  0 | 3-1\n"
                           << "probe.txt:6: »3-1« ist kein Bereich";
    QTest::newRow("binary") << QString(QChar(0)) + "x"
                            << "probe.txt:1: ";
  }
  void brokenSetsAreToldWithTheirLine() {
    QFETCH(QString, text);
    QFETCH(QString, what);
    CompetitionRequest request{place("neu.qkk")};
    request.starter = written(text);
    const QString failure = failureOf([&] { makeCompetition(request); });
    QVERIFY2(failure.startsWith("5 " + what), qPrintable(failure));
    QCOMPARE(QDir(folder_->path()).entryList({"*entwurf*"}, QDir::Files), QStringList());
    if (!qk::test::storesOnServer()) QVERIFY(!QFile::exists(path("neu.qkk")));
  }

  void anEarlierOneGivesWhatItIsRunBy() {
    const DemoStore earlier;
    earlier.add("Schuss", {{"Startnummer", "107"}, {"DisziID", 6}});
    earlier.add("SchussSerien", {{"Startnummer", "107"}, {"DisziID", 1}});
    earlier.addShot("107", 1, 1);
    const qint64 group = earlier.add("Haering_Gruppen", {{"GruppenName", "Abend"}});
    earlier.add("Haering_Gruppen_Disziplinen", {{"GruppenID", group}, {"DisziplinName", "LG Meister"}});
    dao::Database& old = earlier.database();
    old.appendField("Disziplin", {"Fremdes", dao::FieldType::Text});
    old.execute("Update Disziplin set Fremdes = 'bleibt' where ID = 3");
    old.appendField("Wettkampf", {"Kennung", dao::FieldType::Text});
    old.execute("Update Wettkampf set Kennung = 'K7'");
    old.createTable({"Gebühren", {{"Art", dao::FieldType::Text}}, {}});
    old.execute("Insert into [Gebühren] (Art) values ('Startgeld')");
    old.execute("Update Klassenwechsel set wechseldatumneu = '01.07.'");

    CompetitionRequest request{place("neu.qkk"), {"Pokal 2027", "Öd", QDate(2027, 7, 1), "Zweite Zeile"}};
    request.earlier = earlier.path();
    QCOMPARE(makeCompetition(request).shooters, 0);
    const auto made = Database::open(path("neu.qkk"));
    for (const char* table : {"Schützenklassen",
                              "Disziplin",
                              "DisziplinKlasse",
                              "DisziplinWaffen",
                              "Waffen",
                              "Kombination_Name",
                              "Kombination_Diszi",
                              "Kasse_Verwaltung",
                              "Kasse_DisziKombi",
                              "Kasse_Schuetzenklassen",
                              "AuswertProfil",
                              "AwProfilDiszi",
                              "Auswert_Klassen",
                              "Auswert_Waffen",
                              "MeldeDisziplin",
                              "Haering_Gruppen",
                              "Haering_Gruppen_Disziplinen",
                              "MannschaftsGruppen",
                              "SchuetzenGruppen",
                              "Klassenwechsel"}) {
      QVERIFY2(count(*made, table) > 0, table);
      QCOMPARE(rowsOf(*made, table), rowsOf(old, table));
    }
    for (const char* table : {"Schützen", "Verein", "Mannschaften", "Schuetzen_SPO_Anmeldungen",
                              "SchuetzenGruppenZuordnung", "Schuss", "SchussSerien", "Haering_Daten",
                              "Kasse_Eingang", "Schuetzen_ScheibenNummern", "Auswert_Tage", "Gebühren"}) {
      QVERIFY2(made->hasTable(table), table);
      QCOMPARE(count(*made, table), 0);
    }
    QCOMPARE(count(*made, "ScheibenNummern"), count(old, "ScheibenNummern"));
    QCOMPARE(count(*made, "ScheibenNummern", "AktuelleNummer <> Startnummer"), 0);
    const auto head = made->openRecordset("Wettkampf");
    QCOMPARE(head->value("Bezeichnung").toString(), QString("Pokal 2027"));
    QCOMPARE(head->value("Bezeichnung2").toString(), QString("Zweite Zeile"));
    QCOMPARE(head->value("Ort").toString(), QString("Öd"));
    QCOMPARE(head->value("RefDatum").toDate(), QDate(2027, 7, 1));
    QCOMPARE(head->value("Kennung").toString(), QString("K7"));
    QCOMPARE(count(*made, "Wettkampf"), 1);
    QVERIFY(made->queryNames().contains("Schützenliste"));
    QCOMPARE(count(old, "Schuss"), 1);
  }

  void peopleComeAlongWhenWanted() {
    const DemoStore earlier;
    CompetitionRequest request{place("neu.qkk"), {"Neu", "", QDate(2026, 7, 1)}};
    request.earlier = earlier.path();
    request.withShooters = request.withClubs = request.withTeams = true;
    request.yearBegin = "01.01.";
    const MakingResult result = makeCompetition(request);
    QCOMPARE(result.shooters, 60);
    const auto made = Database::open(path("neu.qkk"));
    for (const char* table :
         {"Verein", "Mannschaften", "Schuetzen_SPO_Anmeldungen", "SchuetzenGruppenZuordnung"})
      QCOMPARE(rowsOf(*made, table), rowsOf(earlier.database(), table));
    QCOMPARE(count(*made, "Schützen"), 60);
    QCOMPARE(count(*made, "Kasse_Eingang"), 0);
  }

  void whoeverStaysBehindIsNamedByNobody() {
    const DemoStore earlier;
    CompetitionRequest request{place("neu.qkk")};
    request.earlier = earlier.path();
    request.withShooters = true;
    makeCompetition(request);
    const auto made = Database::open(path("neu.qkk"));
    QCOMPARE(count(*made, "Schützen"), 60);
    QCOMPARE(count(*made, "Schützen", "VereinsID <> 0 or lMannID <> 0"), 0);
    QCOMPARE(count(*made, "Schuetzen_SPO_Anmeldungen", "MannID <> 0"), 0);
    QVERIFY(count(*made, "Schuetzen_SPO_Anmeldungen") > 0);
  }

  /// A year later people are a year older; what was set by hand stays.
  void classesFollowTheReferenceDate() {
    const DemoStore earlier;
    earlier.database().execute(
        "Update Schützen set bGebKlasseManuell = True, KlassenID = 3 where Startnummer = '106'");
    CompetitionRequest request{place("neu.qkk"), {"Neu", "", QDate(2027, 7, 1)}};
    request.earlier = earlier.path();
    request.withShooters = true;
    const MakingResult result = makeCompetition(request);
    QVERIFY(result.newClasses > 0);
    const auto made = Database::open(path("neu.qkk"));
    const auto classOf = [&](const char* number) {
      return made->openRecordset(QString("Select * from Schützen where Startnummer = '%1'").arg(number))
          ->value("KlassenID")
          .toInt();
    };
    QCOMPARE(classOf("101"), 14);  // by hand, birth date unknown
    QCOMPARE(classOf("106"), 3);   // by hand
    QCOMPARE(classOf("105"), 7);   // born 2006: a junior last year
    QCOMPARE(classOf("111"), 0);   // 102 years
  }

  /// Last year's file becomes this year's server, and back.
  void engineToEngine() {
    makeDemoCompetition(path("datei.qkk"));
    CompetitionRequest request{place("hier.qkk")};
    request.earlier = path("datei.qkk");
    request.withShooters = request.withClubs = request.withTeams = true;
    QCOMPARE(makeCompetition(request).shooters, 60);
    request.earlier = request.path;
    request.path = path("zurück.qkk");
    QCOMPARE(makeCompetition(request).newClasses, 0);
    const auto there = Database::open(path("hier.qkk")), back = Database::open(path("zurück.qkk"));
    QCOMPARE(there->tableNames().size(), back->tableNames().size());
    for (const QString& table : there->tableNames()) QCOMPARE(rowsOf(*back, table), rowsOf(*there, table));
  }

  void whatIsNoCompetitionIsRefused() {
    CompetitionRequest request{place("neu.qkk")};
    request.earlier = place("leer.qkk");
    qk::createDatabase(path("quelle.qkk"), [](Database&) {});
    request.earlier = path("quelle.qkk");
    QVERIFY(failureOf([&] { makeCompetition(request); }).startsWith("5 Das ist kein Wettkampf, die Tabelle"));
    request.earlier = path("fehlt.qkk");
    QCOMPARE(errorOf([&] { makeCompetition(request); }), 3024);
    request.starter = kFolder + "/verein.txt";
    QCOMPARE(errorOf([&] { makeCompetition(request); }), 5);
    request.earlier.clear();
    makeCompetition(request);
    QCOMPARE(errorOf([&] { makeCompetition(request); }), 3204);
  }

  void stoppingLeavesNothing() {
    const DemoStore earlier;
    int all = 0;
    CompetitionRequest request{place("ganz.qkk")};
    request.earlier = earlier.path();
    makeCompetition(request, [&](const MakingStep& step) {
      ++all;
      return !step.text.isEmpty() && step.number <= step.steps;
    });
    QVERIFY(all > 40);
    for (const int last : {1, all / 3, all / 2, all - 1}) {
      request.path = place(QString("halb%1.qkk").arg(last));
      int seen = 0;
      QCOMPARE(errorOf([&] { makeCompetition(request, [&](const MakingStep&) { return ++seen < last; }); }),
               3059);
      QCOMPARE(QDir(folder_->path()).entryList({"*entwurf*"}, QDir::Files), QStringList());
      if (!qk::test::storesOnServer()) QVERIFY(!QFile::exists(request.path));
      makeCompetition(request);  // nothing is in its way
      QVERIFY(!isUnfinishedMove(*Database::open(request.path)));
    }
  }

  /// A making that was killed has left this.
  void aDraftOfBeforeIsReplaced() {
    if (qk::test::storesOnServer()) return;
    Files().write(path("neu.qkk.entwurf"), "halb");
    Files().write(path("neu.qkk.entwurf-wal"), "halb");
    makeCompetition(path("neu.qkk"), {});
    QCOMPARE(QDir(folder_->path()).entryList(QDir::Files), QStringList{"neu.qkk"});
  }

  void weaponsGetATable() {
    const DemoStore store;
    dao::Database& database = store.database();
    ensureWeapons(database);
    QCOMPARE(count(database, "Waffen"), 4);
    database.dropTable("Waffen");
    database.execute("Insert into DisziplinWaffen (DisziID, WaffenID, KZ) values (30, 1, 'XX')");
    database.execute("Insert into Auswert_Waffen (AuswertID, WaffenID) values (1, 9)");
    database.execute("Insert into Auswert_Waffen (AuswertID, WaffenID) values (1, 0)");
    ensureWeapons(database);
    QCOMPARE(
        rowsOf(database, "Waffen"),
        QStringList({"ID=1|Bezeichnung=LG|KZ=LG", "ID=2|Bezeichnung=LP|KZ=LP", "ID=3|Bezeichnung=KK|KZ=KK",
                     "ID=4|Bezeichnung=ZS|KZ=ZS", "ID=9|Bezeichnung=Waffe 9|KZ="}));
    database.execute("Update Waffen set Bezeichnung = 'Luftgewehr' where ID = 1");
    database.execute("Delete * from Waffen where ID = 3");
    const qint64 commits = database.commitCount();
    ensureWeapons(database);
    QVERIFY(database.commitCount() > commits);
    QCOMPARE(count(database, "Waffen", "Bezeichnung = 'Luftgewehr'"), 1);
    QCOMPARE(count(database, "Waffen"), 5);
    const qint64 done = database.commitCount();
    ensureWeapons(database);
    QCOMPARE(database.commitCount(), done);
    QVERIFY(store.add("Waffen", {{"Bezeichnung", "Armbrust"}}) > 9);
  }
};

QTEST_GUILESS_MAIN(TestCompetitionMaking)
#include "test_competition_making.moc"

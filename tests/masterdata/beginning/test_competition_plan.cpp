// A new competition as an operator describes it.
#include <QTest>

#include "masterdata/beginning/competition_plan.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/support/error_of.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestCompetitionPlan : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place = std::make_unique<TestWorkplace>();
    plan = {};
    plan.name = " Pokal  2026 ";
    plan.secondLine = "Vorrunde";
    plan.place = "Grünau";
    plan.refDatum = "1.7.26";
    plan.source = CompetitionPlan::Source::Empty;
    plan.path = place->path("Pokal.qkk");
  }
  void cleanup() { place.reset(); }

  void daysOfTheYear_data();
  void daysOfTheYear();
  void whatIsMissing_data();
  void whatIsMissing();
  void itIsMade();
  void likeAnEarlierOne();
  void aServerFileThatIsThereStays();
  void aServerFileOfAFailureGoes();
  void stoppedThereIsNothing();

 private:
  QString head() {
    const auto database = dao::Database::open(plan.path);
    const auto row = database->openRecordset("Select * from Wettkampf");
    const auto year = database->openRecordset("Klassenwechsel");
    return QStringList{row->value("Bezeichnung").toString(), row->value("Bezeichnung2").toString(),
                       row->value("Ort").toString(), row->value("RefDatum").toDate().toString("dd.MM.yyyy"),
                       year->value("wechseldatumneu").toString()}
        .join('|');
  }

  std::unique_ptr<TestWorkplace> place;
  CompetitionPlan plan;
};

void TestCompetitionPlan::daysOfTheYear_data() {
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("day");
  const auto row = [](const char* typed, const char* day) { QTest::addRow("%s", typed) << typed << day; };
  row("01.07.", "01.07.");
  row("1.7", "01.07.");
  row(" 1. 7. ", "01.07.");
  row("29.2.", "29.02.");
  row("31.02.", "");
  row("01.13.", "");
  row("01.07.2026", "");
  row("Juli", "");
}

void TestCompetitionPlan::daysOfTheYear() {
  QFETCH(QString, typed);
  QTEST(yearBeginOf(typed), "day");
}

void TestCompetitionPlan::whatIsMissing_data() {
  QTest::addColumn<QString>("field");
  QTest::addColumn<QString>("value");
  QTest::addColumn<QString>("text");
  QTest::newRow("all is well") << ""
                               << ""
                               << "";
  QTest::newRow("no name") << "name"
                           << " "
                           << "Es fehlt die Bezeichnung des Wettkampfs.";
  QTest::newRow("long name") << "name" << QString(256, 'x')
                             << "Dieser Text ist zu lang: höchstens 255 Zeichen.";
  QTest::newRow("no date") << "refDatum"
                           << "31.02.2026"
                           << "»31.02.2026« ist kein Stichtag (TT.MM.JJJJ).";
  QTest::newRow("empty date") << "refDatum"
                              << ""
                              << "»« ist kein Stichtag (TT.MM.JJJJ).";
  QTest::newRow("no day") << "yearBegin"
                          << "morgen"
                          << "»morgen« ist kein Tag des Jahres (TT.MM.).";
  QTest::newRow("no path") << "path"
                           << " "
                           << "Es fehlt der Name der Datei.";
  QTest::newRow("other ending") << "path"
                                << "/tmp/pokal.txt"
                                << "Der Name der Datei muss auf .qkk enden.";
  QTest::newRow("dot") << "path"
                       << "/tmp/po.kal.qkk"
                       << "Im Pfad darf außer vor qkk kein Punkt stehen:\n/tmp/po.kal.qkk";
  QTest::newRow("no folder") << "path"
                             << "/gibt/es/nicht/pokal.qkk"
                             << "Den Ordner gibt es nicht:\n/gibt/es/nicht";
}

void TestCompetitionPlan::whatIsMissing() {
  QFETCH(QString, field);
  QFETCH(QString, value);
  if (field == "name") plan.name = value;
  if (field == "refDatum") plan.refDatum = value;
  if (field == "yearBegin") plan.yearBegin = value;
  if (field == "path") plan.path = value;
  const PlanTrouble trouble = troubleWith(plan, place->files);
  QTEST(trouble.text, "text");
  QCOMPARE(trouble.field, field);
}

void TestCompetitionPlan::itIsMade() {
  prepareStore(plan.path);
  plan.onServer = storesOnServer();
  plan.yearBegin = "1.7.";
  makePlanned(plan, place->files, {});
  QCOMPARE(head(), "Pokal 2026|Vorrunde|Grünau|01.07.2026|01.07.");
  if (storesOnServer()) return;
  QVERIFY(troubleWith(plan, place->files).text.startsWith("Diese Datei gibt es schon"));
}

void TestCompetitionPlan::likeAnEarlierOne() {
  plan.earlier = place->path("Frueher.qkk");
  plan.source = CompetitionPlan::Source::Earlier;
  QCOMPARE(troubleWith(plan, place->files).text, "Diesen Wettkampf gibt es nicht:\n" + plan.earlier);
  prepareStore(plan.earlier);
  makeDemoCompetition(plan.earlier);
  prepareStore(plan.path);
  plan.onServer = storesOnServer();
  plan.withClubs = plan.withShooters = true;
  makePlanned(plan, place->files, {});
  const auto database = dao::Database::open(plan.path);
  QVERIFY(database->openRecordset("SELECT Count(*) AS N FROM Schützen")->value(0).toInt() > 12);
  QCOMPARE(database->openRecordset("SELECT Count(*) AS N FROM Schuss")->value(0).toInt(), 0);
  QCOMPARE(head(), "Pokal 2026|Vorrunde|Grünau|01.07.2026|01.01.");
}

void TestCompetitionPlan::aServerFileThatIsThereStays() {
  plan.onServer = true;
  QCOMPARE(troubleWith(plan, place->files).text, "Es fehlt der Name des Servers.");
  plan.hosts = "erster, zweiter:viele";
  plan.user = "buero";
  QCOMPARE(troubleWith(plan, place->files).field, "host");
  QCOMPARE(troubleWith(plan, place->files).text, "'viele' ist keine Portnummer.");
  plan.hosts = "erster, zweiter:5433";
  QCOMPARE(troubleWith(plan, place->files).field, "database");
  plan.database = "pokal";
  QCOMPARE(troubleWith(plan, place->files).text, "");
  place->files.write(plan.path, "host=anders\ndatenbank=d\nbenutzer=b\n");
  QCOMPARE(troubleWith(plan, place->files).text, "");
  place->files.write(plan.path, "irgendein Text");
  QCOMPARE(troubleWith(plan, place->files).field, "path");
}

void TestCompetitionPlan::aServerFileOfAFailureGoes() {
  plan.onServer = true;
  plan.hosts = "/gibt/es/nicht";
  plan.database = "pokal";
  plan.user = "buero";
  QVERIFY(errorOf([&] { makePlanned(plan, place->files, {}); }) != 0);
  QVERIFY(!place->files.exists(plan.path));
}

void TestCompetitionPlan::stoppedThereIsNothing() {
  if (storesOnServer()) return;  // on a server the store itself stays, and bears a mark
  plan.earlier = place->path("Frueher.qkk");
  prepareStore(plan.earlier);
  makeDemoCompetition(plan.earlier);
  plan.source = CompetitionPlan::Source::Earlier;
  QCOMPARE(errorOf([&] { makePlanned(plan, place->files, [](const MakingStep&) { return false; }); }), 3059);
  QVERIFY(!place->files.exists(plan.path));
}

QTEST_GUILESS_MAIN(TestCompetitionPlan)
#include "test_competition_plan.moc"

// The classes of a competition as values: they say what the class determination of the desk says.
#include <QTest>
#include <memory>

#include "masterdata/people/shooter_class.h"
#include "platform/dao/database.h"
#include "shooters/class_determination.h"
#include "tests/shooters/competition.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestShooterClass : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    place = std::make_unique<TestWorkplace>();
    global.sWettkampf = place->path("Wettkampf.qkk");
    global.RefDatum = QDate(2026, 7, 1);
    database = newCompetition(global.sWettkampf);
    addClass(1, "Schüler", "S", 0, 14, 0);
    addClass(2, "Herren", "H", 21, 60, 1);
    addClass(3, "Damen", "D", 21, 60, 2);
    addClass(4, "Jugend", "J", 13, 20, 0);
    addClass(5, "Herren", "H2", 61, 99, 1);
    addRow(*database, "Klassenwechsel", {{"ID", 1}, {"wechseldatumneu", "01.04."}});
    database->appendField("Schützenklassen", {.name = "Auflage", .type = dao::FieldType::Boolean});
    database->createTable(
        {.name = "Wettkampf",
         .fields = {{.name = "ID", .type = dao::FieldType::Long},
                    {.name = "RefDatum", .type = dao::FieldType::Date}},
         .indexes = {{.name = "PrimaryKey", .fields = {"ID"}, .primary = true, .unique = true}}});
    addRow(*database, "Wettkampf", {{"ID", 1}, {"RefDatum", QDateTime(global.RefDatum, QTime(0, 0))}});
    classes = readShooterClasses(*database);
  }
  void cleanupTestCase() {
    database.reset();
    place.reset();
  }

  void readAsTheyStand();
  void theDeskSaysTheSame();
  void whyThereIsNone();
  void byKeyOrName();

 private:
  void addClass(int id, const QString& name, const QString& key, int from, int to, int sex) {
    addRow(*database, "Schützenklassen",
           {{"ID", id},
            {"Klasse", name},
            {"KZ", key},
            {"Alter von", from},
            {"Alter bis", to},
            {"Geschlecht", sex}});
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> database;
  GlobalVariablen global;
  ShooterClasses classes;
};

void TestShooterClass::readAsTheyStand() {
  QCOMPARE(classes.refDatum(), global.RefDatum);
  QList<int> order;
  for (const auto& entry : classes.all()) order << entry.limits.id;
  QCOMPARE(order, (QList<int>{1, 4, 2, 3, 5}));
  QCOMPARE(classes.nameOf(4), "Jugend");
  QCOMPARE(classes.keyOf(4), "J");
  QCOMPARE(classes.nameOf(9), "");
}

void TestShooterClass::theDeskSaysTheSame() {
  int found = 0;
  for (QDate day(1925, 3, 30); day < QDate(2026, 12, 31); day = day.addDays(397)) {
    const QString born = day.toString("dd.MM.yyyy");
    for (const char* sex : {"M", "w", ""}) {
      const DeterminedClass here = classes.determine(born, sex);
      if (here.id == 0)
        place->dialogs.expect(
            "Fehler: 3021 - " + errorDescription(3021) + "\nFehler beim Ermitteln de Klassen-ID!",
            BoxAnswer::Abort);
      QCOMPARE(here.id, ErmittleKlassenID(global, place->dialogs, born, sex, false, 0));
      QVERIFY(place->dialogs.done());
      found += here.id > 0 ? 1 : 0;
    }
  }
  QVERIFY(found > 60);
}

void TestShooterClass::whyThereIsNone() {
  QCOMPARE(classes.determine("01.05.1990", "W").why, "");
  QCOMPARE(classes.determine("00.00.0000", "W").why, "Ohne Geburtsdatum keine Klasse.");
  QCOMPARE(classes.determine("31.02.1990", "W").why, "Ohne Geburtsdatum keine Klasse.");
  QCOMPARE(classes.determine("01.05.1950", "w").why, "Keine Klasse nimmt Jahrgang 1950, weiblich.");
  QCOMPARE(classes.determine("01.05.1990", "").why, "Keine Klasse nimmt Jahrgang 1990, ohne Geschlecht.");
  QCOMPARE(ShooterClasses().determine("01.05.1990", "W").why, "Der Wettkampf hat noch keine Klassen.");
  const ShooterClasses noYear(classes.all(), "", global.RefDatum);
  QCOMPARE(noYear.determine("01.05.1990", "W").why,
           "Der Tag des Klassenwechsels, »«, ist kein Tag (TT.MM.).");
}

void TestShooterClass::byKeyOrName() {
  QCOMPARE(classes.idOf("h"), 2);
  QCOMPARE(classes.idOf(" H2 "), 5);
  QCOMPARE(classes.idOf("Jugend"), 4);
  QVERIFY(!classes.idOf("Herren"));  // two are called so
  QVERIFY(!classes.idOf(""));
  QVERIFY(!classes.idOf("Senioren"));
}

QTEST_GUILESS_MAIN(TestShooterClass)
#include "test_shooter_class.moc"

// The class of a shooter from birth date and sex.
#include <QTest>
#include <memory>

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "shooters/class_determination.h"
#include "tests/shooters/competition.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestClassDetermination : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place = std::make_unique<TestWorkplace>();
    global.sWettkampf = place->path("Wettkampf.qkk");
    global.RefDatum = QDate(2026, 11, 20);
    database = newCompetition(global.sWettkampf);
  }
  void cleanup() {
    database.reset();
    place.reset();
  }

  void limitsBelongToTheClass_data();
  void limitsBelongToTheClass();
  void beyondItsLimitsAClassTakesNobody();
  void sexDecides_data();
  void sexDecides();
  void whatWasSetByHandStays();
  void unknownBirthDatesGiveNothing_data();
  void unknownBirthDatesGiveNothing();
  void withoutClassesThereIsNone();
  void aTwoDigitYearInTheWrongCentury();
  void theYoungestOfOverlappingClasses();
  void equalAgesTakeTheLowerId();
  void thisYearsBabiesAreCovered();
  void aReferenceDateOnTheLeapDay();
  void aClassYearThatBeginsOnTheLeapDay();
  void nobodysShooterIsReportedOnce();
  void anEmptyClassYearIsReported();
  void aMissingFileIsReported();
  void names();
  void namesOfNobody();
  void aNameThatFailsIsReported();

 private:
  void addClass(int id, int from, int to, int sex = 0) {
    addRow(*database, "Schützenklassen",
           {{"ID", id},
            {"Klasse", QString("Klasse %1").arg(id)},
            {"KZ", QString("K%1").arg(id)},
            {"Alter von", from},
            {"Alter bis", to},
            {"Geschlecht", sex}});
  }
  void setClassYear(const QString& begin) {
    addRow(*database, "Klassenwechsel", {{"ID", 1}, {"wechseldatumneu", begin}});
  }
  qint32 classOf(const QString& gebDat, const QString& geschlecht = "M", bool manuell = false,
                 qint32 id = 0) {
    return ErmittleKlassenID(global, place->dialogs, gebDat, geschlecht, manuell, id);
  }
  void expectReport(int number, const QString& text) {
    place->dialogs
        .expect(QString("Fehler: %1 - %2\n").arg(number).arg(errorDescription(number)) + text,
                BoxAnswer::Abort)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .showing(BoxIcon::Exclamation);
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> database;
  GlobalVariablen global;
};

void TestClassDetermination::limitsBelongToTheClass_data() {
  QTest::addColumn<QString>("begin");
  QTest::addColumn<QString>("born");
  QTest::addColumn<int>("expected");
  const auto row = [](const char* begin, const char* born, int expected) {
    QTest::addRow("%s %s", begin, born) << begin << born << expected;
  };
  row("01.01.", "31.12.2005", 2);
  row("01.01.", "01.01.2006", 1);
  row("01.01.", "31.12.2013", 1);
  row("01.01.", "01.01.2014", 3);
  row("01.07.", "30.06.2006", 2);
  row("01.07.", "01.07.2006", 1);
  row("01.07.", "30.06.2014", 1);
  row("01.07.", "01.07.2014", 3);
}

void TestClassDetermination::limitsBelongToTheClass() {
  QFETCH(QString, begin);
  setClassYear(begin);
  addClass(3, 0, 12);
  addClass(1, 13, 20);
  addClass(2, 21, 120);
  QFETCH(QString, born);
  QTEST(classOf(born), "expected");
}

void TestClassDetermination::beyondItsLimitsAClassTakesNobody() {
  setClassYear("01.01.");
  addClass(1, 13, 20);
  for (const char* born : {"31.12.2005", "01.01.2014"}) {
    expectReport(3021, "Fehler beim Ermitteln de Klassen-ID!");
    QCOMPARE(classOf(born), 0);
  }
  QCOMPARE(classOf("01.01.2006"), 1);
  QCOMPARE(classOf("31.12.2013"), 1);
}

void TestClassDetermination::sexDecides_data() {
  QTest::addColumn<QString>("sex");
  QTest::addColumn<int>("expected");
  QTest::newRow("man") << "M" << 1;
  QTest::newRow("small letter") << "m" << 1;
  QTest::newRow("woman") << "w" << 2;
  QTest::newRow("not known") << "" << 3;
  QTest::newRow("anything else") << "D" << 3;
}

void TestClassDetermination::sexDecides() {
  setClassYear("01.01.");
  addClass(4, 18, 98, 7);  // a sex that nobody has
  addClass(1, 19, 99, 1);
  addClass(2, 20, 99, 2);
  addClass(3, 21, 99, 0);
  QFETCH(QString, sex);
  QTEST(classOf("05.05.1990", sex), "expected");
}

void TestClassDetermination::whatWasSetByHandStays() {
  QCOMPARE(classOf("05.05.1990", "M", true, 42), 42);
  QCOMPARE(classOf("", "", true, 43), 43);
  QCOMPARE(classOf("00.00.0000", "", true, 44), 44);
}

void TestClassDetermination::unknownBirthDatesGiveNothing_data() {
  QTest::addColumn<QString>("born");
  for (const char* born : {"00.00.0000", "", "gestern", "31.02.1990", "0"}) QTest::newRow(born) << born;
}

void TestClassDetermination::unknownBirthDatesGiveNothing() {
  setClassYear("01.01.");
  addClass(1, 0, 120);
  QFETCH(QString, born);
  QCOMPARE(classOf(born), 0);
}

void TestClassDetermination::withoutClassesThereIsNone() {
  QCOMPARE(classOf("05.05.1990"), 0);
}

void TestClassDetermination::aTwoDigitYearInTheWrongCentury() {
  setClassYear("01.01.");
  addClass(1, 0, 50);
  addClass(2, 51, 120);
  QCOMPARE(classOf("05.05.28"), 2);  // read as 2028, meant 1928
  QCOMPARE(classOf("05.05.2028"), 2);
  QCOMPARE(classOf("05.05.26"), 1);
}

void TestClassDetermination::theYoungestOfOverlappingClasses() {
  setClassYear("01.01.");
  addClass(1, 21, 99);
  addClass(2, 18, 60);
  QCOMPARE(classOf("05.05.1990"), 2);
}

void TestClassDetermination::equalAgesTakeTheLowerId() {
  setClassYear("01.01.");
  addClass(9, 21, 99);
  addClass(4, 21, 60);
  QCOMPARE(classOf("05.05.1990"), 4);
}

void TestClassDetermination::thisYearsBabiesAreCovered() {
  setClassYear("01.07.");
  addClass(1, 0, 5);
  QCOMPARE(classOf("15.11.2026"), 1);  // the class year that began in July ends next June
}

void TestClassDetermination::aReferenceDateOnTheLeapDay() {
  global.RefDatum = QDate(2028, 2, 29);
  setClassYear("01.01.");
  addClass(1, 13, 20);
  addClass(2, 21, 99);
  QCOMPARE(classOf("01.01.2008"), 1);
  QCOMPARE(classOf("31.12.2007"), 2);
}

void TestClassDetermination::aClassYearThatBeginsOnTheLeapDay() {
  setClassYear("29.02.");
  addClass(1, 13, 21);  // from 28.02.2005; 2014 lacks the day too: to 27.02.2014
  addClass(2, 0, 12);
  addClass(3, 22, 99);
  QCOMPARE(classOf("28.02.2005"), 1);
  QCOMPARE(classOf("27.02.2005"), 3);
  QCOMPARE(classOf("27.02.2014"), 1);
  QCOMPARE(classOf("28.02.2014"), 2);
}

void TestClassDetermination::nobodysShooterIsReportedOnce() {
  setClassYear("01.01.");
  addClass(1, 13, 20);
  expectReport(3021, "Fehler beim Ermitteln de Klassen-ID!");
  QCOMPARE(classOf("05.05.1950"), 0);
  QVERIFY(place->dialogs.done());
}

void TestClassDetermination::anEmptyClassYearIsReported() {
  addClass(1, 13, 20);
  expectReport(3021, "Fehler beim Ermitteln de Klassen-ID!");
  QCOMPARE(classOf("05.05.2010"), 0);
  QVERIFY(place->dialogs.done());
}

void TestClassDetermination::aMissingFileIsReported() {
  global.sWettkampf = place->path("fehlt.qkk");
  expectReport(3024, "Fehler beim Ermitteln der ID der Klasse!");
  QCOMPARE(classOf("05.05.2010"), 0);
  QVERIFY(place->dialogs.done());
}

void TestClassDetermination::names() {
  setClassYear("01.01.");
  addClass(1, 21, 99);
  addClass(2, 13, 20);
  addShooter(*database,
             {.id = 1, .startnummer = "107", .name = "A", .gebDat = "05.05.1990", .geschlecht = "M"});
  addShooter(*database,
             {.id = 2, .startnummer = "O'8", .name = "B", .gebDat = "", .manuell = true, .klassenID = 2});
  QCOMPARE(ErmittleKlassenName(global, place->dialogs, global.sWettkampf, "107"), "Klasse 1");
  QCOMPARE(ErmittleKlassenName(global, place->dialogs, global.sWettkampf, "107", true), "K1");
  QCOMPARE(ErmittleKlassenName(global, place->dialogs, global.sWettkampf, "O'8"), "Klasse 2");
}

void TestClassDetermination::namesOfNobody() {
  setClassYear("01.01.");
  addClass(1, 21, 99);
  addShooter(*database,
             {.id = 1, .startnummer = "107", .name = "A", .gebDat = "00.00.0000", .geschlecht = "M"});
  QCOMPARE(ErmittleKlassenName(global, place->dialogs, global.sWettkampf, "107"), "");
  QCOMPARE(ErmittleKlassenName(global, place->dialogs, global.sWettkampf, "108"), "");
}

void TestClassDetermination::aNameThatFailsIsReported() {
  expectReport(3024, "Fehler beim Ermitteln des Klassennamens!");
  QCOMPARE(ErmittleKlassenName(global, place->dialogs, place->path("fehlt.qkk"), "107"), "");
  QVERIFY(place->dialogs.done());
}

QTEST_GUILESS_MAIN(TestClassDetermination)
#include "test_class_determination.moc"

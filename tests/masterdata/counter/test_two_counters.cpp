// Two counters on one competition: what the other one stores while a shooter is typed here.
#include <QTest>

#include "masterdata/rows/references.h"
#include "masterdata/rows/renumber.h"
#include "tests/masterdata/counter/counter_bench.h"

using namespace qk;
using namespace qk::test;

using Outcome = StoringResult::Outcome;

namespace {

QString changedThere(const QString& lines) {
  return "Diesen Schützen hat inzwischen jemand anderes geändert.\n\n" + lines +
         "\n\nSoll gelten, was hier steht?";
}

QString unknownClub(const QString& name) {
  return "Den Verein »" + name + "« gibt es noch nicht.\nSoll er angelegt werden?";
}

QString unknownTeam(const QString& name) {
  return "Die Mannschaft »" + name + "« gibt es noch nicht.\nSoll sie angelegt werden?";
}

}  // namespace

class TestTwoCounters : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    bench = std::make_unique<CounterBench>();
    other = dao::Database::open(bench->path());
  }
  void cleanup() {
    other.reset();
    bench.reset();
  }

  void whatOnlyTheOtherChangedStays();
  void aNumberGivenThereStays();
  void aThirdChangeIsAskedAbout();
  void noMeansThatNothingIsWritten();
  void aNameIsOneThing();
  void aQuestionNamesWhatIsNewThere();
  void aClubOfBothIsMadeOnce();
  void aClubMadeDuringTheQuestionIsTaken();
  void aTeamMadeDuringTheQuestionIsTaken();
  void anotherClubsTeamOfThatNameIsNot();
  void aTeamOfAClubThatIsGoneHasNone();
  void theClassFollowsBoth();
  void twoClubsOfTheNameAreNobodysGuess();
  void aClubNamedOtherwiseStaysTheShooters();
  void theClassFollowsTheCorrectedLimits();
  void aClassThatDoesNotFollowStays();
  void whatWasChosenIsGone_data();
  void whatWasChosenIsGone();
  void goneDuringAQuestion();
  void aNewTeamNeedsItsClub();

 private:
  qint64 added(const QString& table, const QString& column, const QString& name) const {
    dao::Changes changes(*other);
    const qint64 key = changes.insert(table, {{column, name}});
    changes.write();
    return key;
  }
  void remove(const QString& table, qint64 key) const {
    dao::Changes changes(*other);
    removeRow(*other, changes, table, key);
    changes.write();
  }

  std::unique_ptr<CounterBench> bench;
  std::unique_ptr<dao::Database> other;
};

void TestTwoCounters::whatOnlyTheOtherChangedStays() {
  ShooterEntry mine = bench->known(7);
  other->execute("UPDATE Schützen SET Ort = 'Höfen', IBAN = 'DE77', Telefon = '0815' WHERE ID = 7");
  mine.data.further["Ort"] = "Grünau";
  bench->place.dialogs.expect(changedThere("Ort: dort jetzt »Höfen«, hier »Grünau«"), BoxAnswer::Yes);
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->shooter(7, "Ort, IBAN, Telefon"), "Grünau|DE77|0815");
}

void TestTwoCounters::aNumberGivenThereStays() {
  ShooterEntry mine = bench->known(7);
  const QString number = mine.data.startnummer;
  other->execute("INSERT INTO SchussSerien (Startnummer, Ergebnis, DisziID) VALUES ('" + number +
                 "', 99, 1)");
  const int results = bench->count("SchussSerien", "Startnummer = '" + number + "'");
  renumber(*other, 7, "777", Renumbering::WithResults);
  other->execute("UPDATE Schützen SET Ort = 'Höfen' WHERE ID = 7");
  mine.data.further["Ort"] = "Grünau";
  bench->place.dialogs.expect(changedThere("Ort: dort jetzt »Höfen«, hier »Grünau«"), BoxAnswer::Yes);
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->shooter(7, "Startnummer, Ort"), "777|Grünau");
  QCOMPARE(bench->count("SchussSerien", "Startnummer = '777'"), results);
}

void TestTwoCounters::aThirdChangeIsAskedAbout() {
  ShooterEntry mine = bench->known(7);
  other->execute("UPDATE Schützen SET Ort = 'Höfen' WHERE ID = 7");
  mine.data.further["Ort"] = "Grünau";
  mine.data.ausweisNr = "1";
  const auto third = [this] {
    other->execute("UPDATE Schützen SET Ort = 'Öd', Telefon = '0815' WHERE ID = 7");
  };
  bench->place.dialogs.expect(changedThere("Ort: dort jetzt »Höfen«, hier »Grünau«"), BoxAnswer::Yes)
      .during(third);
  bench->place.dialogs.expect(changedThere("Ort: dort jetzt »Öd«, hier »Grünau«"), BoxAnswer::No);
  QVERIFY(bench->store(mine).outcome == Outcome::Reload);
  QCOMPARE(bench->shooter(7, "Ort, Telefon, AusweisNr"), "Öd|0815|100107");
  bench->place.dialogs.expect(changedThere("Ort: dort jetzt »Öd«, hier »Grünau«"), BoxAnswer::Yes)
      .during([this] { other->execute("UPDATE Schützen SET AusweisNr = '2' WHERE ID = 7"); });
  // Ort is settled; the other one's new column isn't.
  bench->place.dialogs.expect(changedThere("Ausweis-Nr.: dort jetzt »2«, hier »1«"), BoxAnswer::Yes);
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->shooter(7, "Ort, Telefon, AusweisNr"), "Grünau|0815|1");
}

void TestTwoCounters::noMeansThatNothingIsWritten() {
  ShooterEntry mine = bench->known(7);
  other->execute("UPDATE Schützen SET VereinsID = 3, Ort = 'Höfen' WHERE ID = 7");
  mine.club = "SV Neuland";
  mine.data.further["Telefon"] = "0815";
  const int clubs = bench->count("Verein");
  bench->place.dialogs.expect(unknownClub("SV Neuland"), BoxAnswer::Yes);
  bench->place.dialogs.expect(
      changedThere("Verein: dort jetzt »Edelweiß Höfen (Edelweiß)«, hier »SV Neuland«"), BoxAnswer::No);
  QVERIFY(bench->store(mine).outcome == Outcome::Reload);
  QCOMPARE(bench->shooter(7, "VereinsID, Ort, Telefon"), "3|Höfen|");
  QCOMPARE(bench->count("Verein"), clubs);
}

/// Else a row would hold the name of one and the first name of another.
void TestTwoCounters::aNameIsOneThing() {
  ShooterEntry mine = bench->known(7);
  other->execute("UPDATE Schützen SET Name = 'Müller Georg', Vorname = 'Georg' WHERE ID = 7");
  mine.data.person.last = "Maier";
  bench->place.dialogs.expect(changedThere("Name: dort jetzt »Müller Georg«, hier »Maier Jörg«\n"
                                           "Vorname: dort jetzt »Georg«, hier »Jörg«"),
                              BoxAnswer::Yes);
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->shooter(7, "Name, Vorname"), "Maier Jörg|Jörg");
}

void TestTwoCounters::aQuestionNamesWhatIsNewThere() {
  ShooterEntry mine = bench->known(7);
  const qint64 club = added("Verein", "Name", "SV Neudorf");
  other->execute("UPDATE Schützen SET VereinsID = " + QString::number(club) + " WHERE ID = 7");
  mine.club = "SG Grünau";
  bench->place.dialogs.expect(
      changedThere("Verein: dort jetzt »SV Neudorf«, hier »Schützengilde Grünau 1876 (SG Grünau)«"),
      BoxAnswer::Yes);
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->shooter(7, "VereinsID"), "1");
}

void TestTwoCounters::aClubOfBothIsMadeOnce() {
  Counter second(*other);  // open since the morning
  ShooterEntry one = bench->next("Huber", "Anna");
  one.club = "SV Neudorf";
  one.team = "Neudorf I";
  bench->place.dialogs.expect(unknownClub("SV Neudorf"), BoxAnswer::Yes);
  bench->place.dialogs.expect(unknownTeam("Neudorf I"), BoxAnswer::Yes);
  const qint64 first = bench->store(one).id;
  ShooterEntry two = CounterBench::next(second, "Maier", "Hans");
  two.club = "sv  neudorf";
  two.team = "NEUDORF I";
  const StoringResult result = ShooterStoring(second, bench->place.dialogs).store(two);
  QVERIFY(result.outcome == Outcome::Stored);
  QCOMPARE(bench->count("Verein", "Name = 'SV Neudorf'"), 1);
  QCOMPARE(bench->count("Mannschaften", "MannName = 'Neudorf I'"), 1);
  QCOMPARE(bench->shooter(result.id, "VereinsID, lMannID"), bench->shooter(first, "VereinsID, lMannID"));
}

void TestTwoCounters::aClubMadeDuringTheQuestionIsTaken() {
  const int clubs = bench->count("Verein");
  qint64 there = 0;
  ShooterEntry mine = bench->next("Huber", "Anna");
  mine.club = "SV Neudorf";
  bench->place.dialogs.expect(unknownClub("SV Neudorf"), BoxAnswer::Yes).during([&] {
    there = added("Verein", "Name", "SV  NEUDORF ");
  });
  const StoringResult result = bench->store(mine);
  QVERIFY(result.outcome == Outcome::Stored);
  QCOMPARE(bench->count("Verein"), clubs + 1);
  QCOMPARE(bench->shooter(result.id, "VereinsID, Name"), QString("%1|Huber Anna").arg(there));
}

void TestTwoCounters::aTeamMadeDuringTheQuestionIsTaken() {
  const int teams = bench->count("Mannschaften");
  qint64 there = 0;
  ShooterEntry mine = bench->known(7);
  mine.team = "Neudorf I";
  bench->place.dialogs.expect(unknownTeam("Neudorf I"), BoxAnswer::Yes).during([&] {
    there = added("Mannschaften", "MannName", "neudorf i");
    other->execute(
        QString("UPDATE Mannschaften SET VereinID = %1 WHERE ID = %2").arg(mine.data.vereinsID).arg(there));
  });
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->count("Mannschaften"), teams + 1);
  QCOMPARE(bench->shooter(7, "lMannID"), QString::number(there));
}

void TestTwoCounters::anotherClubsTeamOfThatNameIsNot() {
  const int teams = bench->count("Mannschaften");
  ShooterEntry mine = bench->known(7);
  QVERIFY(mine.data.vereinsID > 0);
  mine.team = "Neudorf I";
  bench->place.dialogs.expect(unknownTeam("Neudorf I"), BoxAnswer::Yes).during([&] {
    added("Mannschaften", "MannName", "Neudorf I");
  });
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->count("Mannschaften"), teams + 2);
  QCOMPARE(bench->row("SELECT VereinID FROM Mannschaften WHERE ID = " + bench->shooter(7, "lMannID")),
           QString::number(mine.data.vereinsID));
}

void TestTwoCounters::aTeamOfAClubThatIsGoneHasNone() {
  bench->database->execute("UPDATE Schützen SET VereinsID = 4711 WHERE ID = 7");
  ShooterEntry mine = bench->known(7);
  QCOMPARE(mine.club, QString());
  mine.team = "Neudorf I";
  bench->place.dialogs.expect(unknownTeam("Neudorf I"), BoxAnswer::Yes);
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->row("SELECT VereinID FROM Mannschaften WHERE MannName = 'Neudorf I'"), QString("0"));
}

/// One desk corrects the date, the other the sex: neither's class is the one of the shooter that comes of it.
void TestTwoCounters::theClassFollowsBoth() {
  const ShooterClasses& classes = bench->counter->classes();
  bench->database->execute(
      "UPDATE Schützen SET Gebdat = '01.02.1980', Geschlecht = 'M', bGebKlasseManuell = 0, "
      "KlassenID = " +
      QString::number(classes.determine("01.02.1980", "M").id) + " WHERE ID = 7");
  ShooterEntry mine = bench->known(7);
  mine.data.geschlecht = "W";
  mine.data.klassenID = classes.determine("01.02.1980", "W").id;
  const qint32 wanted = classes.determine("01.02.1950", "W").id;
  QVERIFY(wanted != mine.data.klassenID);
  other->execute("UPDATE Schützen SET Gebdat = '01.02.1950' WHERE ID = 7");
  bench->place.dialogs.expect(changedThere("Geburtsdatum: dort jetzt »01.02.1950«, das bleibt"),
                              BoxAnswer::Yes);
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->shooter(7, "Gebdat, Geschlecht, KlassenID"), QString("01.02.1950|W|%1").arg(wanted));
}

void TestTwoCounters::twoClubsOfTheNameAreNobodysGuess() {
  const int shooters = bench->count("Schützen");
  ShooterEntry mine = bench->next("Huber", "Anna");
  mine.club = "SV Neudorf";
  bench->place.dialogs.expect(unknownClub("SV Neudorf"), BoxAnswer::Yes).during([this] {
    other->execute("INSERT INTO Verein (Name, Kurzname) VALUES ('SV Neudorf', 'alt')");
    other->execute("INSERT INTO Verein (Name, Kurzname) VALUES ('SV Neudorf', 'neu')");
  });
  bench->place.dialogs.expect("»SV Neudorf« gibt es mehrmals. Bitte den Verein aus der Liste wählen.");
  const StoringResult result = bench->store(mine);
  QVERIFY(result.outcome == Outcome::Refused);
  QCOMPARE(result.column, "VereinsID");
  QCOMPARE(bench->count("Verein", "Name = 'SV Neudorf'"), 2);
  QCOMPARE(bench->count("Schützen"), shooters);
}

void TestTwoCounters::aClubNamedOtherwiseStaysTheShooters() {
  ShooterEntry mine = bench->known(7);
  const QString club = bench->shooter(7, "VereinsID");
  other->execute("UPDATE Verein SET Name = 'Anders', Kurzname = 'And' WHERE ID = " + club);
  bench->counter->refresh();
  mine.data.ausweisNr = "1";
  QVERIFY(bench->store(mine).outcome == Outcome::Stored);
  QCOMPARE(bench->shooter(7, "VereinsID, AusweisNr"), club + "|1");
}

void TestTwoCounters::theClassFollowsTheCorrectedLimits() {
  ShooterEntry mine = bench->next("Huber", "Anna");
  mine.data.geschlecht = "W";
  mine.data.klassenID = bench->counter->classes().determine("01.02.1980", "W").id;
  QCOMPARE(mine.data.klassenID, 10);
  other->execute("UPDATE Schützenklassen SET [Alter von] = 98, [Alter bis] = 99 WHERE ID = 10");
  other->execute("UPDATE Schützenklassen SET [Alter von] = 21 WHERE ID = 14");
  QCOMPARE(Counter(*other).classes().determine("01.02.1980", "W").id, 14);
  const qint64 id = bench->store(mine).id;
  QCOMPARE(bench->shooter(id, "KlassenID, bGebKlasseManuell"), "14|0");
}

void TestTwoCounters::aClassThatDoesNotFollowStays() {
  ShooterEntry byHand = bench->next("Huber", "Anna");
  byHand.data.geschlecht = "W";
  byHand.data.klasseManuell = true;
  byHand.data.klassenID = 7;
  QCOMPARE(bench->shooter(bench->store(byHand).id, "KlassenID"), "7");
  // One that was stored stays until date or sex change.
  bench->database->execute("UPDATE Schützen SET KlassenID = 3 WHERE ID = 7");
  ShooterEntry known = bench->known(7);
  known.data.ausweisNr = "1";
  QVERIFY(bench->store(known).outcome == Outcome::Stored);
  QCOMPARE(bench->shooter(7, "KlassenID, AusweisNr"), "3|1");
}

void TestTwoCounters::whatWasChosenIsGone_data() {
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("nameColumn");
  QTest::addColumn<QString>("column");
  QTest::addColumn<QString>("title");
  QTest::newRow("club") << "Verein"
                        << "Name"
                        << "VereinsID"
                        << "Verein";
  QTest::newRow("team") << "Mannschaften"
                        << "MannName"
                        << "lMannID"
                        << "Mannschaft";
  QTest::newRow("class") << "Schützenklassen"
                         << "Klasse"
                         << "KlassenID"
                         << "Klasse";
}

void TestTwoCounters::whatWasChosenIsGone() {
  QFETCH(QString, table);
  QFETCH(QString, nameColumn);
  QFETCH(QString, column);
  QFETCH(QString, title);
  const qint64 key = added(table, nameColumn, "Kurzlebig");
  bench->counter->refresh();
  remove(table, key);
  const auto chosen = [&](ShooterEntry entry) {
    if (column == "VereinsID") entry.club = "Kurzlebig";
    if (column == "lMannID") entry.team = "Kurzlebig";
    if (column == "KlassenID") entry.data.klassenID = static_cast<qint32>(key);
    entry.data.klasseManuell = column == "KlassenID";
    return entry;
  };
  const QString told = title + ": »Kurzlebig« hat inzwischen jemand gelöscht.";
  const int shooters = bench->count("Schützen");
  bench->place.dialogs.expect(told).titled("Schützen").showing(BoxIcon::Exclamation);
  StoringResult result = bench->store(chosen(bench->next("Huber", "Anna")));
  QVERIFY(result.outcome == Outcome::Refused);
  QCOMPARE(result.column, column);
  QCOMPARE(bench->count("Schützen"), shooters);
  // The lists are read anew: the name is as unknown as any other.
  QVERIFY(!bench->counter->clubs().idOf("Kurzlebig") && !bench->counter->teams().idOf("Kurzlebig"));
  if (table == "Schützenklassen") QCOMPARE(bench->counter->classes().nameOf(static_cast<qint32>(key)), "");
}

void TestTwoCounters::goneDuringAQuestion() {
  const qint64 key = added("Verein", "Name", "Kurzlebig");
  bench->counter->refresh();
  ShooterEntry mine = bench->known(7);
  mine.club = "Kurzlebig";
  mine.data.further["Ort"] = "Grünau";
  other->execute("UPDATE Schützen SET Ort = 'Höfen' WHERE ID = 7");
  const QString before = bench->shooter(7, "VereinsID");
  bench->place.dialogs.expect(changedThere("Ort: dort jetzt »Höfen«, hier »Grünau«"), BoxAnswer::Yes)
      .during([&] { remove("Verein", key); });
  bench->place.dialogs.expect("Verein: »Kurzlebig« hat inzwischen jemand gelöscht.");
  QVERIFY(bench->store(mine).outcome == Outcome::Refused);
  QCOMPARE(bench->shooter(7, "VereinsID, Ort"), before + "|Höfen");
}

void TestTwoCounters::aNewTeamNeedsItsClub() {
  const qint64 key = added("Verein", "Name", "Kurzlebig");
  bench->database->execute("UPDATE Schützen SET VereinsID = " + QString::number(key) + " WHERE ID = 7");
  bench->counter->refresh();
  ShooterEntry mine = bench->known(7);
  mine.team = "Kurzlebig I";
  other->execute("DELETE FROM Verein WHERE ID = " + QString::number(key));
  const int teams = bench->count("Mannschaften");
  bench->place.dialogs.expect(unknownTeam("Kurzlebig I"), BoxAnswer::Yes);
  bench->place.dialogs.expect("Verein: »Kurzlebig« hat inzwischen jemand gelöscht.");
  const StoringResult result = bench->store(mine);
  QVERIFY(result.outcome == Outcome::Refused);
  QCOMPARE(result.column, "VereinsID");
  QCOMPARE(bench->count("Mannschaften"), teams);
}

QTEST_GUILESS_MAIN(TestTwoCounters)
#include "test_two_counters.moc"

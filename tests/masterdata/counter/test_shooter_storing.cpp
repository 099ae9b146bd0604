// Storing a shooter from the counter: what is asked, what is refused, what is written.
#include <QTest>

#include "tests/masterdata/counter/counter_bench.h"

using namespace qk;
using namespace qk::test;

using Outcome = StoringResult::Outcome;

class TestShooterStoring : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { bench = std::make_unique<CounterBench>(); }
  void cleanup() { bench.reset(); }

  void aNewShooterStandsInTheTable();
  void anUnknownClubIsMadeAfterOneQuestion();
  void anUnknownClubThatNobodyWants();
  void aClubAndATeamAtOnce();
  void whatIsMissingIsSaid_data();
  void whatIsMissingIsSaid();
  void aNumberThatSomebodyHas();
  void anOfferedNumberThatWasTakenMeanwhile();
  void aNamesakeIsShownBeside();
  void onlyWhatWasChangedIsWritten();
  void nothingChangedIsNothingWritten();
  void aClubThatIsGoneStaysUntouched();
  void twoPeopleOnOneShooter();
  void twoPeopleOnDifferentColumns();
  void aShooterThatIsGone();
  void theNextNumber();

 private:
  ShooterEntry next(const QString& last, const QString& first, const QString& born = "01.02.1980") const {
    return bench->next(last, first, born);
  }
  ShooterEntry known(qint64 id) const { return bench->known(id); }
  StoringResult store(const ShooterEntry& entry) { return bench->store(entry); }
  QString shooter(qint64 id, const QString& columns) const { return bench->shooter(id, columns); }

  std::unique_ptr<CounterBench> bench;
};

void TestShooterStoring::aNewShooterStandsInTheTable() {
  ShooterEntry entry = next("Huber", "Anna");
  entry.data.geschlecht = "W";
  entry.data.klassenID = 10;
  entry.data.ausweisNr = "4711";
  entry.data.further["Strasse"] = "Am Bach 3";
  entry.club = "sg grünau";
  const StoringResult result = store(entry);
  QVERIFY(result.outcome == Outcome::Stored);
  QCOMPARE(shooter(result.id,
                   "Startnummer, Name, Vorname, Gebdat, Geschlecht, VereinsID, lMannID, KlassenID, "
                   "bGebKlasseManuell, AusweisNr, Strasse"),
           entry.data.startnummer + "|Huber Anna|Anna|01.02.1980|W|1|0|10|0|4711|Am Bach 3");
}

void TestShooterStoring::anUnknownClubIsMadeAfterOneQuestion() {
  ShooterEntry entry = next("Huber", "Anna");
  entry.club = " SV  Neuland ";
  bench->place.dialogs
      .expect("Den Verein »SV Neuland« gibt es noch nicht.\nSoll er angelegt werden?", BoxAnswer::Yes)
      .with(BoxButtons::YesNo);
  const StoringResult result = store(entry);
  QVERIFY(result.outcome == Outcome::Stored);
  const QString club = bench->row("SELECT ID FROM Verein WHERE Name = 'SV Neuland'");
  QCOMPARE(shooter(result.id, "VereinsID"), club);
}

void TestShooterStoring::anUnknownClubThatNobodyWants() {
  ShooterEntry entry = next("Huber", "Anna");
  entry.club = "SV Neuland";
  const int clubs = bench->count("Verein"), shooters = bench->count("Schützen");
  bench->place.dialogs.expect("Den Verein »SV Neuland« gibt es noch nicht.\nSoll er angelegt werden?",
                              BoxAnswer::No);
  const StoringResult result = store(entry);
  QVERIFY(result.outcome == Outcome::Refused);
  QCOMPARE(result.column, "VereinsID");
  QCOMPARE(bench->count("Verein"), clubs);
  QCOMPARE(bench->count("Schützen"), shooters);
}

void TestShooterStoring::aClubAndATeamAtOnce() {
  ShooterEntry entry = next("Huber", "Anna");
  entry.club = "SV Neuland";
  entry.team = "Neuland I";
  bench->place.dialogs.expect("Den Verein »SV Neuland« gibt es noch nicht.\nSoll er angelegt werden?",
                              BoxAnswer::Yes);
  bench->place.dialogs.expect("Die Mannschaft »Neuland I« gibt es noch nicht.\nSoll sie angelegt werden?",
                              BoxAnswer::Yes);
  const StoringResult result = store(entry);
  QCOMPARE(
      bench->row("SELECT Verein.Name AS V, Mannschaften.MannName AS M FROM (Schützen INNER JOIN Verein ON "
                 "Schützen.VereinsID = Verein.ID) INNER JOIN Mannschaften ON Schützen.lMannID = "
                 "Mannschaften.ID WHERE Mannschaften.VereinID = Verein.ID AND Schützen.ID = " +
                 QString::number(result.id)),
      "SV Neuland|Neuland I");
}

void TestShooterStoring::whatIsMissingIsSaid_data() {
  QTest::addColumn<QString>("last");
  QTest::addColumn<QString>("born");
  QTest::addColumn<QString>("number");
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("column");
  QTest::newRow("no number") << "Huber"
                             << "01.02.1980"
                             << " "
                             << "Es fehlt die Startnummer."
                             << "Startnummer";
  QTest::newRow("no name") << " "
                           << "01.02.1980"
                           << "900"
                           << "Es fehlt der Name."
                           << "Name";
  QTest::newRow("no date")
      << "Huber"
      << "31.02.1980"
      << "900"
      << "Das Geburtsdatum stimmt nicht.\n»31.02.1980« ist kein Geburtsdatum (TT.MM.JJJJ)."
      << "Gebdat";
  QTest::newRow("too long") << QString(256, 'x') << "01.02.1980"
                            << "900"
                            << "Der Text in »Name« ist zu lang: höchstens 255 Zeichen."
                            << "Name";
}

void TestShooterStoring::whatIsMissingIsSaid() {
  QFETCH(QString, last);
  QFETCH(QString, born);
  QFETCH(QString, number);
  QFETCH(QString, text);
  ShooterEntry entry = next(last, "", born);
  entry.data.startnummer = number;
  const int shooters = bench->count("Schützen");
  bench->place.dialogs.expect(text).titled("Schützen").showing(BoxIcon::Exclamation);
  const StoringResult result = store(entry);
  QVERIFY(result.outcome == Outcome::Refused);
  QTEST(result.column, "column");
  QCOMPARE(bench->count("Schützen"), shooters);
}

void TestShooterStoring::aNumberThatSomebodyHas() {
  ShooterEntry entry = next("Huber", "Anna");
  entry.data.startnummer = "107";
  entry.proposed = false;
  bench->place.dialogs.expect(
      "Die Startnummer 107 ist vergeben:\n107  Müller Jörg, 14.05.28, Schützenlust Äußere Au");
  const StoringResult result = store(entry);
  QVERIFY(result.outcome == Outcome::Refused);
  QCOMPARE(result.column, "Startnummer");
}

void TestShooterStoring::anOfferedNumberThatWasTakenMeanwhile() {
  const ShooterEntry mine = next("Huber", "Anna");
  QVERIFY(store(next("Maier", "Eva")).outcome == Outcome::Stored);
  const StoringResult result = store(mine);
  QVERIFY(result.outcome == Outcome::Stored);
  QCOMPARE(shooter(result.id, "Startnummer"), QString::number(mine.data.startnummer.toInt() + 1));
}

void TestShooterStoring::aNamesakeIsShownBeside() {
  const ShooterEntry entry = next("Müller", "Jörg", "14.05.28");
  const QString question =
      "Diesen Namen mit diesem Geburtsdatum gibt es schon.\n\nneu: " + entry.data.startnummer +
      "  Müller Jörg, 14.05.1928\nvorhanden: 107  Müller Jörg, 14.05.28, Schützenlust Äußere Au\n\n"
      "Trotzdem speichern?";
  bench->place.dialogs.expect(question, BoxAnswer::No).presetting(BoxAnswer::No);
  QVERIFY(store(entry).outcome == Outcome::Refused);
  bench->place.dialogs.expect(question, BoxAnswer::Yes);
  const qint64 id = store(entry).id;
  // Whoever becomes one by a change is asked, too.
  ShooterEntry changed = known(id);
  changed.data.person.last = "Maier";
  QVERIFY(store(changed).outcome == Outcome::Stored);
  changed = known(id);
  changed.data.person.last = "Müller";
  bench->place.dialogs.expect(QString(question).replace("neu: ", "geändert: "), BoxAnswer::No);
  QVERIFY(store(changed).outcome == Outcome::Refused);
}

void TestShooterStoring::onlyWhatWasChangedIsWritten() {
  // As another program writes it: first name first.
  bench->database->execute("UPDATE Schützen SET Name = 'Jörg Müller' WHERE ID = 7");
  ShooterEntry entry = known(7);
  entry.data.further["Ort"] = "Öd";
  QVERIFY(changedValues(entry.data, entry.before) == (dao::RowValues{{"Ort", "Öd"}}));
  QVERIFY(store(entry).outcome == Outcome::Stored);
  QCOMPARE(shooter(7, "Name, Vorname, Gebdat, Ort"), "Jörg Müller|Jörg|14.05.28|Öd");
  entry = known(7);
  entry.data.person.last = "Maier";
  QVERIFY(store(entry).outcome == Outcome::Stored);
  QCOMPARE(shooter(7, "Name, Vorname"), "Maier Jörg|Jörg");
}

void TestShooterStoring::nothingChangedIsNothingWritten() {
  for (qint64 id = 1; id <= 13; ++id) {
    const auto before = bench->database->commitCount();
    QVERIFY(store(known(id)).outcome == Outcome::Unchanged);
    QCOMPARE(bench->database->commitCount(), before);
  }
}

void TestShooterStoring::aClubThatIsGoneStaysUntouched() {
  bench->database->execute("UPDATE Schützen SET VereinsID = 99 WHERE ID = 7");
  ShooterEntry entry = known(7);
  QCOMPARE(entry.club, "");
  entry.data.ausweisNr = "1";
  QVERIFY(store(entry).outcome == Outcome::Stored);
  QCOMPARE(shooter(7, "VereinsID, AusweisNr"), "99|1");
}

void TestShooterStoring::twoPeopleOnOneShooter() {
  ShooterEntry mine = known(7);
  const auto other = dao::Database::open(bench->path());
  other->execute("UPDATE Schützen SET VereinsID = 3, Ort = 'Höfen' WHERE ID = 7");
  mine.club = "SG Grünau";
  mine.data.further["Ort"] = "Grünau";
  const QString question =
      "Diesen Schützen hat inzwischen jemand anderes geändert.\n\nOrt: dort jetzt »Höfen«, hier »Grünau«\n"
      "Verein: dort jetzt »Edelweiß Höfen (Edelweiß)«, hier »Schützengilde Grünau 1876 (SG Grünau)«\n\n"
      "Soll gelten, was hier steht?";
  bench->place.dialogs.expect(question, BoxAnswer::No).presetting(BoxAnswer::No);
  QVERIFY(store(mine).outcome == Outcome::Reload);
  QCOMPARE(shooter(7, "VereinsID, Ort"), "3|Höfen");
  bench->place.dialogs.expect(question, BoxAnswer::Yes);
  QVERIFY(store(mine).outcome == Outcome::Stored);
  QCOMPARE(shooter(7, "VereinsID, Ort"), "1|Grünau");
}

void TestShooterStoring::twoPeopleOnDifferentColumns() {
  ShooterEntry mine = known(7);
  const auto other = dao::Database::open(bench->path());
  other->execute("UPDATE Schützen SET Ort = 'Höfen' WHERE ID = 7");
  mine.data.ausweisNr = "1";
  QVERIFY(store(mine).outcome == Outcome::Stored);
  QCOMPARE(shooter(7, "AusweisNr, Ort"), "1|Höfen");
}

void TestShooterStoring::aShooterThatIsGone() {
  ShooterEntry mine = known(13);
  bench->database->execute("DELETE FROM Schützen WHERE ID = 13");
  mine.data.ausweisNr = "1";
  bench->place.dialogs.expect("Diesen Schützen hat inzwischen jemand anderes gelöscht.");
  const StoringResult result = store(mine);
  QVERIFY(result.outcome == Outcome::Reload);
  QCOMPARE(result.id, 0);
}

void TestShooterStoring::theNextNumber() {
  const int highest = bench->row("SELECT Max(val(Startnummer)) AS N FROM Schützen").toInt();
  QCOMPARE(bench->counter->nextStartNumber(), QString::number(highest + 1));
  bench->database->execute("UPDATE Schützen SET Startnummer = '99999999999' WHERE ID = 13");
  QCOMPARE(bench->counter->nextStartNumber(), QString::number(highest + 1));
  bench->database->execute("DELETE FROM Schützen");
  QCOMPARE(bench->counter->nextStartNumber(), "1");
}

QTEST_GUILESS_MAIN(TestShooterStoring)
#include "test_shooter_storing.moc"

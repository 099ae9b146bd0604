// What is done with a shooter who is there.
#include <QTest>

#include "masterdata/counter/shooter_acts.h"
#include "masterdata/rows/references.h"
#include "tests/masterdata/counter/counter_bench.h"

using namespace qk;
using namespace qk::test;

class TestShooterActs : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    bench = std::make_unique<CounterBench>();
    acts = std::make_unique<ShooterActs>(*bench->database, bench->place.dialogs);
  }
  void cleanup() {
    acts.reset();
    bench.reset();
  }

  void anotherNumberTakesTheResultsAlong();
  void aNumberThatIsTakenIsRefused();
  void oneOfTwoWithTheSameNumber();
  void whoHasResultsIsNotDeleted();
  void whoHasNothingIsDeletedAfterAQuestion();
  void aPersonIsMadeUnknown();
  void resultsFollowTheShooter();
  void resultsThatAreRightAskNothing();
  void doubleNumbersAreListed();

 private:
  void addResult(const QString& number, int club, int shooterClass) {
    bench->database->execute(
        QString("INSERT INTO SchussSerien (Startnummer, MannID, KlassenID, VorMannID, DisziID, Ergebnis) "
                "VALUES ('%1', %2, %3, 5, 1, 98)")
            .arg(number)
            .arg(club)
            .arg(shooterClass));
  }

  std::unique_ptr<CounterBench> bench;
  std::unique_ptr<ShooterActs> acts;
};

void TestShooterActs::anotherNumberTakesTheResultsAlong() {
  addResult("107", 4, 14);
  bench->place.dialogs.expectInput("Neue Startnummer für 107  Müller Jörg:", " 900 ").titled("Nummer ändern");
  QCOMPARE(acts->renumber(7), "Neue Startnummer: 900  Müller Jörg");
  QCOMPARE(bench->count("SchussSerien", "Startnummer = '900'"), 1);
  QCOMPARE(bench->row("SELECT Startnummer FROM Schützen WHERE ID = 7"), "900");
  bench->place.dialogs.expectInput("Neue Startnummer für 900  Müller Jörg:", std::nullopt);
  QCOMPARE(acts->renumber(7), "");
}

void TestShooterActs::aNumberThatIsTakenIsRefused() {
  bench->place.dialogs.expectInput("Neue Startnummer für 107  Müller Jörg:", "108");
  bench->place.dialogs.expect("Die Startnummer 108 hat schon Süß Benno.");
  QCOMPARE(acts->renumber(7), "");
  QCOMPARE(bench->row("SELECT Startnummer FROM Schützen WHERE ID = 7"), "107");
}

void TestShooterActs::oneOfTwoWithTheSameNumber() {
  bench->database->execute("UPDATE Schützen SET Startnummer = '107' WHERE ID = 12");
  addResult("107", 4, 14);
  bench->place.dialogs.expectInput("Neue Startnummer für 107  O'Connor Séan:", "900");
  bench->place.dialogs
      .expect(
          "Die Startnummer 107 hat auch Müller Jörg.\nErgebnisse und Zahlungen der 107 bleiben bei ihm. Soll "
          "nur O'Connor Séan die 900 bekommen?",
          BoxAnswer::Yes)
      .presetting(BoxAnswer::No);
  QCOMPARE(acts->renumber(12), "Neue Startnummer: 900  O'Connor Séan");
  QCOMPARE(bench->count("SchussSerien", "Startnummer = '107'"), 1);
}

void TestShooterActs::whoHasResultsIsNotDeleted() {
  addResult("113", 0, 0);
  bench->database->execute("UPDATE Schützen SET Startnummer = '113x' WHERE ID = 13");
  bench->database->execute("UPDATE SchussSerien SET Startnummer = '113x'");
  bench->place.dialogs.expect(refusalOf(*bench->database, "Schützen", 13)).showing(BoxIcon::Exclamation);
  QVERIFY(bench->place.dialogs.nextText().contains("1 Ergebnis"));
  QCOMPARE(acts->remove(13), "");
  QCOMPARE(bench->count("Schützen", "ID = 13"), 1);
}

void TestShooterActs::whoHasNothingIsDeletedAfterAQuestion() {
  bench->database->execute(
      "INSERT INTO Schützen (ID, Startnummer, Name) VALUES (5000, '5000', 'Huber Anna')");
  const QString question = "Soll der Schütze 5000  Huber Anna gelöscht werden?";
  bench->place.dialogs.expect(question, BoxAnswer::No).presetting(BoxAnswer::No);
  QCOMPARE(acts->remove(5000), "");
  bench->place.dialogs.expect(question, BoxAnswer::Yes);
  QCOMPARE(acts->remove(5000), "Gelöscht: 5000  Huber Anna");
  QCOMPARE(bench->count("Schützen", "ID = 5000"), 0);
}

void TestShooterActs::aPersonIsMadeUnknown() {
  addResult("107", 4, 14);
  bench->place.dialogs
      .expect(
          "Sollen alle persönlichen Angaben von 107  Müller Jörg gelöscht werden?\n\nName, Geburtsdatum, "
          "Anschrift, Bank und Ausweis gehen endgültig verloren, auch auf Scheibenbildern und in den "
          "Schussdaten. Startnummer, Klasse, Verein, Ergebnisse und Zahlungen bleiben. Der letzte "
          "Import lässt sich danach nicht mehr zurücknehmen.",
          BoxAnswer::Yes)
      .presetting(BoxAnswer::No);
  QVERIFY(acts->erase(7).startsWith("Unkenntlich gemacht: 107  "));
  QVERIFY(!bench->row("SELECT Name, Vorname, Gebdat, Ort FROM Schützen WHERE ID = 7").contains("Müller"));
  QCOMPARE(bench->count("SchussSerien", "Startnummer = '107'"), 1);
}

void TestShooterActs::resultsFollowTheShooter() {
  addResult("107", 4, 14);
  addResult("107", 4, 14);
  const dao::RowValues before = bench->counter->row(7);
  bench->database->execute("UPDATE Schützen SET VereinsID = 3, KlassenID = 11 WHERE ID = 7");
  const QString question =
      "2 Ergebnisse von 107  Müller Jörg tragen noch, was vorher galt (Klasse, Verein).\n"
      "Soll das angeglichen werden?\n\nZahlungen bleiben, wie sie sind.";
  bench->place.dialogs.expect(question, BoxAnswer::No);
  QCOMPARE(acts->bringInLine(7, before), "");
  QCOMPARE(bench->count("SchussSerien", "MannID = 4 AND KlassenID = 14"), 2);
  bench->place.dialogs.expect(question, BoxAnswer::Yes);
  QCOMPARE(acts->bringInLine(7, before), "2 Ergebnisse angeglichen.");
  QCOMPARE(bench->count("SchussSerien", "MannID = 3 AND KlassenID = 11"), 2);
}

void TestShooterActs::resultsThatAreRightAskNothing() {
  addResult("107", 4, 14);
  const dao::RowValues before = bench->counter->row(7);
  QCOMPARE(acts->bringInLine(7, before), "");
  bench->database->execute("UPDATE Schützen SET VereinsID = 3 WHERE ID = 7");
  bench->database->execute("UPDATE SchussSerien SET MannID = 3");
  QCOMPARE(acts->bringInLine(7, before), "");
}

void TestShooterActs::doubleNumbersAreListed() {
  bench->place.dialogs.expect("Jede Startnummer ist nur einmal vergeben.").showing(BoxIcon::Information);
  acts->showDoubles();
  bench->database->execute("UPDATE Schützen SET Startnummer = '107' WHERE ID = 12");
  addResult("4711", 0, 0);
  bench->place.dialogs
      .expect(
          "Mehrfach vergebene Startnummern:\n107: Müller Jörg, O'Connor Séan\n\n"
          "Ergebnisse und Zahlungen ohne Schützen:\n112: 2 Zahlungen\n4711: 1 Ergebnis")
      .showing(BoxIcon::Exclamation);
  acts->showDoubles();
}

QTEST_GUILESS_MAIN(TestShooterActs)
#include "test_shooter_acts.moc"

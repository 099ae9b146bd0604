// The profile evaluation from values alone: each row is a case that can be reckoned with a pencil.
#include <QTest>

#include "evaluation/profile_evaluation.h"
#include "tests/evaluation/written_case.h"

using namespace qk;
using namespace qk::test;

namespace {

std::vector<ErgebnisZeile> rowsOf(const QString& profile, const QString& results) {
  return werteProfileAus(profileAus(profile), ergebnisseAus(results), zulassungAus(profile), {}).ergebnisse;
}

void columns() {
  QTest::addColumn<QString>("profile");
  QTest::addColumn<QString>("results");
  QTest::addColumn<QString>("rows");
}

void compare() {
  QFETCH(QString, profile);
  QFETCH(QString, results);
  QFETCH(QString, rows);
  QCOMPARE(profilZeilen(rowsOf(profile, results)), zeilenVon(rows));
}

}  // namespace

class TestProfileEvaluation : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void sums_data();
  void sums() { compare(); }
  void order_data();
  void order() { compare(); }
  void minima_data();
  void minima() { compare(); }
  void targetValues_data();
  void targetValues() { compare(); }
  void theHundredthIsTheLast();
  void aRowNamesTheShooter();
};

void TestProfileEvaluation::sums_data() {
  columns();
  QTest::newRow("teilers: the smallest are added") << "Pokal | LG Teiler | Anzahl=2"
                                                   << "LG Teiler: 20; 12,3; 8,1"
                                                   << "Pokal | LG Teiler | 20,4 | 8,1 12,3 20";
  QTest::newRow("rings: the largest are added") << "Pokal | LG Serie | Anzahl=2"
                                                << "LG Serie: 90; 95; 98"
                                                << "Pokal | LG Serie | 193 | 98 95 90";
  QTest::newRow("rings and teilers: the smallest are added") << "Pokal | LG Ringteiler | Anzahl=2"
                                                             << "LG Ringteiler: 20; 12; 8"
                                                             << "Pokal | LG Ringteiler | 20 | 8 12 20";
  QTest::newRow("fewer than are added") << "Pokal | LG Serie | Anzahl=5"
                                        << "LG Serie: 90; 95"
                                        << "Pokal | LG Serie | 185 | 95 90";
  QTest::newRow("a count of 0: no sum") << "Pokal | LG Serie | Anzahl=0"
                                        << "LG Serie: 90; 95"
                                        << "Pokal | LG Serie | 0 | 95 90";
  QTest::newRow("other types: no sum") << "Pokal | LG Serie | Typ=1 Anzahl=2"
                                       << "LG Serie: 90; 95"
                                       << "Pokal | LG Serie | 0 | 95 90";
  QTest::newRow("no results: no row") << "Pokal | LG Serie | Anzahl=2"
                                      << "LP Serie: 90"
                                      << "";
  QTest::newRow("two disciplines: the sum crosses them, the single results don't")
      << "Pokal | LG Serie | Anzahl=3\nPokal | LP Serie | Anzahl=3"
      << "LG Serie: 95; 90\nLP Serie: 97; 80"
      << "Pokal | LG Serie | 282 | 95 90\nPokal | LP Serie | 282 | 97 80";
  QTest::newRow("two disciplines, one without results: one row")
      << "Pokal | LG Serie | Anzahl=3\nPokal | LP Serie | Anzahl=3"
      << "LP Serie: 97; 80"
      << "Pokal | LP Serie | 177 | 97 80";
  QTest::newRow("teilers and rings in one profile: each row adds in its own direction")
      << "Pokal | LG Teiler | Anzahl=2\nPokal | LG Serie | Anzahl=2"
      << "LG Teiler: 10; 20\nLG Serie: 95; 90"
      << "Pokal | LG Teiler | 30 | 10 20\nPokal | LG Serie | 185 | 95 90";
  QTest::newRow("profiles don't add each other's results")
      << "Pokal | LG Serie | Anzahl=2\nKönig | LP Serie | Anzahl=2"
      << "LG Serie: 95\nLP Serie: 80"
      << "König | LP Serie | 80 | 80\nPokal | LG Serie | 95 | 95";
  QTest::newRow("a discipline named twice counts twice and stands twice")
      << "Pokal | LG Serie | Anzahl=2\nPokal | LG Serie | Anzahl=2"
      << "LG Serie: 95"
      << "Pokal | LG Serie | 190 | 95 95\nPokal | LG Serie | 190 | 95 95";
  QTest::newRow("what the filters took is neither added nor shown")
      << "Pokal | LG Serie | Anzahl=2 OptKlassen=1 Klassen=1"
      << "LG Serie: 99 K2; 95; 90; 80"
      << "Pokal | LG Serie | 185 | 95 90 80";
  QTest::newRow("what the filters emptied has no row") << "Pokal | LG Serie | Anzahl=2 OptKlassen=1 Klassen=7"
                                                       << "LG Serie: 99; 95"
                                                       << "";
}

void TestProfileEvaluation::order_data() {
  columns();
  QTest::newRow("the types in their fixed order, those of 3, 4, 5 not at all")
      << "A6 | LG Serie | Typ=6\nA5 | LG Serie | Typ=5\nA4 | LG Serie | Typ=4\nA3 | LG Serie | Typ=3\n"
         "A2 | LG Serie | Typ=2\nA1 | LG Serie | Typ=1\nA0 | LG Serie | Typ=0\nA8 | LG Serie | Typ=8\n"
         "A7 | LG Serie | Typ=7\nA9 | LG Serie | Typ=9"
      << "LG Serie: 95"
      << "A7 | LG Serie | 0 | 95\nA8 | LG Serie | 0 | 95\nA0 | LG Serie | 0 | 95\nA1 | LG Serie | 0 | 95\n"
         "A2 | LG Serie | 0 | 95\nA6 | LG Serie | 0 | 95";
  QTest::newRow("within a type by name, as German sorts")
      << "Zorn | LG Serie |\nÄhre | LG Serie |\napfel | LG Serie |\nAas | LG Serie |"
      << "LG Serie: 95"
      << "Aas | LG Serie | 0 | 95\nÄhre | LG Serie | 0 | 95\napfel | LG Serie | 0 | 95\n"
         "Zorn | LG Serie | 0 | 95";
  QTest::newRow("the type before the name") << "A | LG Serie | Typ=0\nB | LG Serie | Typ=7"
                                            << "LG Serie: 95"
                                            << "B | LG Serie | 0 | 95\nA | LG Serie | 0 | 95";
}

void TestProfileEvaluation::minima_data() {
  columns();
  QTest::newRow("reached") << "A | LG Serie | Anzahl=3 nMinAnzahlErgAktiv=1 nMinAnzahlErg=2"
                           << "LG Serie: 95; 90"
                           << "A | LG Serie | 185 | 95 90";
  QTest::newRow("missed by one") << "A | LG Serie | Anzahl=3 nMinAnzahlErgAktiv=1 nMinAnzahlErg=3"
                                 << "LG Serie: 95; 90"
                                 << "";
  QTest::newRow("switched off") << "A | LG Serie | Anzahl=3 nMinAnzahlErgAktiv=0 nMinAnzahlErg=3"
                                << "LG Serie: 95; 90"
                                << "A | LG Serie | 185 | 95 90";
  QTest::newRow("any number but 0 switches it on")
      << "A | LG Serie | Anzahl=3 nMinAnzahlErgAktiv=-1 nMinAnzahlErg=3"
      << "LG Serie: 95; 90"
      << "";
  QTest::newRow("only those that are added are counted")
      << "A | LG Serie | Anzahl=1 nMinAnzahlErgAktiv=1 nMinAnzahlErg=2"
      << "LG Serie: 95; 90; 85"
      << "";
  QTest::newRow("the results of all its disciplines are counted")
      << "A | LG Serie | Anzahl=3 nMinAnzahlErgAktiv=1 nMinAnzahlErg=2\n"
         "A | LP Serie | Anzahl=3 nMinAnzahlErgAktiv=1 nMinAnzahlErg=2"
      << "LG Serie: 95\nLP Serie: 80"
      << "A | LG Serie | 175 | 95\nA | LP Serie | 175 | 80";
  QTest::newRow("before the first sum even a minimum of 0 is missed")
      << "A | LG Serie | Typ=7 nMinAnzahlErgAktiv=1 nMinAnzahlErg=0\nB | LG Serie | Typ=0 Anzahl=1"
      << "LG Serie: 95"
      << "B | LG Serie | 95 | 95";
  QTest::newRow("a first sum of a count of 0 is none")
      << "A | LG Serie | Typ=0 Anzahl=0 nMinAnzahlErgAktiv=1 nMinAnzahlErg=0"
      << "LG Serie: 95"
      << "";
  QTest::newRow("another type goes by the sum before it: reached")
      << "A | LG Serie | Typ=0 Anzahl=3\nB | LP Serie | Typ=1 nMinAnzahlErgAktiv=1 nMinAnzahlErg=3"
      << "LG Serie: 95; 90; 85\nLP Serie: 70"
      << "A | LG Serie | 270 | 95 90 85\nB | LP Serie | 0 | 70";
  QTest::newRow("another type goes by the sum before it: missed")
      << "A | LG Serie | Typ=0 Anzahl=2\nB | LP Serie | Typ=1 nMinAnzahlErgAktiv=1 nMinAnzahlErg=3"
      << "LG Serie: 95; 90; 85\nLP Serie: 70; 60; 50; 40"
      << "A | LG Serie | 185 | 95 90 85";
  QTest::newRow("a sum of a count of 0 goes by the sum before it: reached")
      << "A | LG Serie | Anzahl=2\nB | LP Serie | Anzahl=0 nMinAnzahlErgAktiv=1 nMinAnzahlErg=2"
      << "LG Serie: 95; 90\nLP Serie: 70"
      << "A | LG Serie | 185 | 95 90\nB | LP Serie | 0 | 70";
  QTest::newRow("a sum of a count of 0 goes by the sum before it: missed")
      << "A | LG Serie | Anzahl=2\nB | LP Serie | Anzahl=0 nMinAnzahlErgAktiv=1 nMinAnzahlErg=3"
      << "LG Serie: 95; 90\nLP Serie: 70; 60; 50"
      << "A | LG Serie | 185 | 95 90";
  QTest::newRow("the next sum counts anew") << "A | LG Serie | Anzahl=3\n"
                                               "B | LP Serie | Anzahl=3 nMinAnzahlErgAktiv=1 nMinAnzahlErg=2"
                                            << "LG Serie: 95; 90; 85\nLP Serie: 70"
                                            << "A | LG Serie | 270 | 95 90 85";
  QTest::newRow("a sum without results leaves the number")
      << "A | LG Serie | Anzahl=3\nB | LG Teiler | Anzahl=3\n"
         "C | LP Serie | Typ=1 nMinAnzahlErgAktiv=1 nMinAnzahlErg=3"
      << "LG Serie: 95; 90; 85\nLP Serie: 70"
      << "A | LG Serie | 270 | 95 90 85\nC | LP Serie | 0 | 70";
  QTest::newRow("a sum that isn't printed leaves its number")
      << "A | LG Serie | Anzahl=3 nMinAnzahlErgAktiv=1 nMinAnzahlErg=3\n"
         "B | LP Serie | Typ=1 nMinAnzahlErgAktiv=1 nMinAnzahlErg=2"
      << "LG Serie: 95; 90\nLP Serie: 70"
      << "B | LP Serie | 0 | 70";
}

void TestProfileEvaluation::targetValues_data() {
  columns();
  QTest::newRow("the nearest first, from both sides") << "A | LG Serie | Typ=2 Vorgabe=95"
                                                      << "LG Serie: 99; 94; 90; 97"
                                                      << "A | LG Serie | 0 | 94 97 99 90";
  QTest::newRow("teilers go the same way") << "A | LG Teiler | Typ=2 Vorgabe=15"
                                           << "LG Teiler: 8; 20; 14"
                                           << "A | LG Teiler | 0 | 14 20 8";
  QTest::newRow("a decimal comma") << "A | LG Serie | Typ=2 Vorgabe=9,5"
                                   << "LG Serie: 8; 95; 9,4; 11"
                                   << "A | LG Serie | 0 | 9,4 8 11 95";
  QTest::newRow("a dot is lost: 9.5 is ninety-five") << "A | LG Serie | Typ=2 Vorgabe=9.5"
                                                     << "LG Serie: 8; 95; 9,4; 11"
                                                     << "A | LG Serie | 0 | 95 11 9,4 8";
  QTest::newRow("no number is 0") << "A | LG Serie | Typ=2 Vorgabe=viel"
                                  << "LG Serie: 95; 8"
                                  << "A | LG Serie | 0 | 8 95";
  QTest::newRow("nothing is 0") << "A | LG Serie | Typ=2"
                                << "LG Serie: 95; 8"
                                << "A | LG Serie | 0 | 8 95";
  QTest::newRow("equally far: the lower key, below") << "A | LG Serie | Typ=2 Vorgabe=10,3"
                                                     << "LG Serie: 10,2 #1; 10,4 #2"
                                                     << "A | LG Serie | 0 | 10,2 10,4";
  QTest::newRow("equally far: the lower key, above") << "A | LG Serie | Typ=2 Vorgabe=10,3"
                                                     << "LG Serie: 10,2 #2; 10,4 #1"
                                                     << "A | LG Serie | 0 | 10,4 10,2";
  QTest::newRow("a count makes no sum of it") << "A | LG Serie | Typ=2 Vorgabe=95 Anzahl=2"
                                              << "LG Serie: 95; 90"
                                              << "A | LG Serie | 0 | 95 90";
}

void TestProfileEvaluation::theHundredthIsTheLast() {
  QStringList results;
  for (int i = 1; i <= 103; ++i) results << QString::number(i);
  const auto rows = rowsOf("Pokal | LG Teiler | Anzahl=102", "LG Teiler: " + results.join(';'));
  QCOMPARE(rows.size(), 1U);
  QCOMPARE(rows[0].E.size(), 100U);
  QCOMPARE(rows[0].E.front(), 1.0);
  QCOMPARE(rows[0].E.back(), 100.0);
  QCOMPARE(rows[0].DisziErgebnis.value(), 102.0 * 103.0 / 2.0);  // the sum doesn't end there
}

void TestProfileEvaluation::aRowNamesTheShooter() {
  const auto rows = rowsOf("Pokal | LG Serie |", "LG Serie: 95");
  QCOMPARE(rows.size(), 1U);
  QCOMPARE(rows[0].Startnummer, "107");
  QCOMPARE(rows[0].Gruppe, QString());
  QCOMPARE(rows[0].WTyp, QString());
}

QTEST_APPLESS_MAIN(TestProfileEvaluation)
#include "test_profile_evaluation.moc"

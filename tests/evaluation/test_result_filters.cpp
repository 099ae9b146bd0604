// Which of a shooter's results count for a profile: each row is a case that can be followed with a pencil.
#include <QTest>

#include "evaluation/profile_evaluation.h"
#include "evaluation/result_order.h"
#include "tests/evaluation/written_case.h"

using namespace qk;
using namespace qk::test;

namespace {

void columns() {
  QTest::addColumn<QString>("profile");
  QTest::addColumn<QString>("results");
  QTest::addColumn<QString>("left");
}

std::vector<EinzelErgebnis> leftOf(const QString& profile, const QString& results, const QString& days = {}) {
  return werteProfileAus(profileAus(profile), ergebnisseAus(results), zulassungAus(profile), tageAus(days))
      .einzelErgebnisse;
}

QString keysOf(const std::vector<EinzelErgebnis>& results) {
  QStringList keys;
  for (const EinzelErgebnis& result : results) keys << QString::number(result.ErgID);
  return keys.join(' ');
}

}  // namespace

class TestResultFilters : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void whatIsCopied_data();
  void whatIsCopied();
  void aCopySaysWhatForAndWhereFrom();
  void theHighestNumber_data();
  void theHighestNumber();
  void weapons_data();
  void weapons();
  void theFirstSignOfAWeaponCounts();
  void classes_data();
  void classes();
  void days_data();
  void days();
  void dayAndMonth_data();
  void dayAndMonth();
  void equalOnesGoByTheirKey();
};

void TestResultFilters::whatIsCopied_data() {
  columns();
  QTest::newRow("the results of the discipline") << "Pokal | LG Teiler |"
                                                 << "LG Teiler: 12,3; 8,1\nLP Teiler: 7"
                                                 << "12,3 8,1";
  QTest::newRow("teilers aren't taken from the series") << "Pokal | LG Teiler |"
                                                        << "LG Teiler: 12,3; 95 @SchussSerien"
                                                        << "12,3";
  QTest::newRow("series aren't taken from the teilers") << "Pokal | LG Serie |"
                                                        << "LG Serie: 95; 12,3 @Schuss"
                                                        << "95";
  QTest::newRow("rings and teilers: from the teilers") << "Pokal | LG Ringteiler |"
                                                       << "LG Ringteiler: 12,3; 95 @SchussSerien"
                                                       << "12,3";
  QTest::newRow("each profile has its own copy") << "Pokal | LG Teiler |\nKönig | LG Teiler |"
                                                 << "LG Teiler: 12,3"
                                                 << "12,3 12,3";
  QTest::newRow("a discipline named twice counts twice") << "Pokal | LG Teiler |\nPokal | LG Teiler |"
                                                         << "LG Teiler: 12,3"
                                                         << "12,3 12,3";
  QTest::newRow("no profile") << ""
                              << "LG Teiler: 12,3"
                              << "";
  QTest::newRow("no result") << "Pokal | LG Teiler |"
                             << ""
                             << "";
}

void TestResultFilters::whatIsCopied() {
  QFETCH(QString, profile);
  QFETCH(QString, results);
  QFETCH(QString, left);
  QCOMPARE(werte(leftOf(profile, results)), left);
}

void TestResultFilters::aCopySaysWhatForAndWhereFrom() {
  const auto left = leftOf("Pokal | LG Serie |\nKönig | LG Teiler |", "LG Teiler: 12,3 LP K2 21.11.2026 #7");
  QCOMPARE(left.size(), 1U);
  QCOMPARE(left[0].WkID, 2);
  QCOMPARE(left[0].ErgID, 7);
  QVERIFY(left[0].Tabelle == Quelle::Schuss);
  QCOMPARE(left[0].DisziId, 1);
  QCOMPARE(left[0].Startnummer, "107");
  QCOMPARE(left[0].WTyp, "LP");
  QCOMPARE(left[0].KlassenID, 2);
  QCOMPARE(left[0].Datum, "21.11.2026");
}

void TestResultFilters::theHighestNumber_data() {
  columns();
  QTest::newRow("teilers: the smallest stay") << "Pokal | LG Teiler | bGewErg=ja nGewErg=2"
                                              << "LG Teiler: 12,3; 20; 8,1"
                                              << "12,3 8,1";
  QTest::newRow("rings: the largest stay") << "Pokal | LG Serie | bGewErg=ja nGewErg=2"
                                           << "LG Serie: 95; 90; 98"
                                           << "95 98";
  QTest::newRow("rings and teilers: judged as teilers") << "Pokal | LG Ringteiler | bGewErg=ja nGewErg=2"
                                                        << "LG Ringteiler: 12; 20; 8"
                                                        << "12 8";
  QTest::newRow("not more than there are") << "Pokal | LG Serie | bGewErg=ja nGewErg=5"
                                           << "LG Serie: 95; 90"
                                           << "95 90";
  QTest::newRow("switched off") << "Pokal | LG Serie | bGewErg=nein nGewErg=1"
                                << "LG Serie: 95; 90"
                                << "95 90";
  QTest::newRow("a number of 0 is none") << "Pokal | LG Serie | bGewErg=ja nGewErg=0"
                                         << "LG Serie: 95; 90"
                                         << "95 90";
  QTest::newRow("a number below 0 is none") << "Pokal | LG Serie | bGewErg=ja nGewErg=-1"
                                            << "LG Serie: 95; 90"
                                            << "95 90";
  QTest::newRow("each discipline by itself")
      << "Pokal | LG Serie | bGewErg=ja nGewErg=1\nPokal | LP Serie | bGewErg=nein"
      << "LG Serie: 95; 90\nLP Serie: 80; 70"
      << "95 80 70";
  QTest::newRow("before the classes: the best one is of another class")
      << "Pokal | LG Serie | bGewErg=ja nGewErg=1 OptKlassen=1 Klassen=1"
      << "LG Serie: 95 K2; 90 K1"
      << "";
  QTest::newRow("before the weapons: the best one is of another weapon")
      << "Pokal | LG Serie | bGewErg=ja nGewErg=1 OptWaffen=1 Waffen=LG"
      << "LG Serie: 95 LGA; 90 LG"
      << "";
  QTest::newRow("equal ones: the lower key stays")
      << "Pokal | LG Serie | bGewErg=ja nGewErg=1 OptKlassen=1 Klassen=1"
      << "LG Serie: 95 K2 #9; 95 K1 #4"
      << "95";
  QTest::newRow("equal teilers: the lower key stays")
      << "Pokal | LG Teiler | bGewErg=ja nGewErg=1 OptKlassen=1 Klassen=1"
      << "LG Teiler: 8 K2 #9; 8 K1 #4"
      << "8";
}

void TestResultFilters::theHighestNumber() {
  whatIsCopied();
}

void TestResultFilters::weapons_data() {
  columns();
  QTest::newRow("only the profile's weapon stays") << "Pokal | LG Serie | OptWaffen=1 Waffen=LG"
                                                   << "LG Serie: 95; 90 LGA; 88"
                                                   << "95 88";
  QTest::newRow("any of its weapons") << "Pokal | LG Serie | OptWaffen=1 Waffen=LGA,LG"
                                      << "LG Serie: 95; 90 LGA; 88 LP"
                                      << "95 90";
  QTest::newRow("any number but 0 switches it on") << "Pokal | LG Serie | OptWaffen=-1 Waffen=LG"
                                                   << "LG Serie: 95; 90 LGA"
                                                   << "95";
  QTest::newRow("switched off") << "Pokal | LG Serie | OptWaffen=0 Waffen=LG"
                                << "LG Serie: 95; 90 LGA"
                                << "95 90";
  QTest::newRow("a profile without weapons takes all") << "Pokal | LG Serie | OptWaffen=1"
                                                       << "LG Serie: 95; 90 LGA"
                                                       << "95 90";
  QTest::newRow("another profile's weapons are no list of this one")
      << "Pokal | LG Serie | OptWaffen=1\nKönig | LP Serie | Waffen=LG"
      << "LG Serie: 95; 90 LGA"
      << "95 90";
  QTest::newRow("a discipline without weapons takes all") << "Pokal | Auflage | OptWaffen=1 Waffen=LG"
                                                          << "Auflage: 95; 90 LP"
                                                          << "95 90";
  QTest::newRow("a weapon that doesn't shoot the discipline: none stays")
      << "Pokal | LG Serie | OptWaffen=1 Waffen=KK"
      << "LG Serie: 95; 90 LGA"
      << "";
  QTest::newRow("a sign counts in its own disciplines only") << "Pokal | LP Serie | OptWaffen=1 Waffen=LG"
                                                             << "LP Serie: 95 LG; 90 LP"
                                                             << "";
  QTest::newRow("signs in small letters are the same") << "Pokal | LG Serie | OptWaffen=1 Waffen=LG"
                                                       << "LG Serie: 95 lg; 90 lga"
                                                       << "95";
}

void TestResultFilters::weapons() {
  whatIsCopied();
}

void TestResultFilters::theFirstSignOfAWeaponCounts() {
  const QString profile = "Pokal | LG Serie | OptWaffen=1 Waffen=LG";
  Zulassung zulassung = zulassungAus(profile);
  zulassung.disziplinWaffen.push_back({2, 1, "LP"});
  const auto ausgewertet =
      werteProfileAus(profileAus(profile), ergebnisseAus("LG Serie: 95 LP; 90 LG"), zulassung, {});
  QCOMPARE(werte(ausgewertet.einzelErgebnisse), "90");
}

void TestResultFilters::classes_data() {
  columns();
  QTest::newRow("only the profile's class stays") << "Pokal | LG Serie | OptKlassen=1 Klassen=1"
                                                  << "LG Serie: 95 K1; 90 K2; 88 K1"
                                                  << "95 88";
  QTest::newRow("any of its classes") << "Pokal | LG Serie | OptKlassen=1 Klassen=3,1"
                                      << "LG Serie: 95 K1; 90 K2; 88 K3"
                                      << "95 88";
  QTest::newRow("switched off") << "Pokal | LG Serie | OptKlassen=0 Klassen=1"
                                << "LG Serie: 95 K1; 90 K2"
                                << "95 90";
  QTest::newRow("a profile without classes takes all") << "Pokal | LG Serie | OptKlassen=1"
                                                       << "LG Serie: 95 K1; 90 K2"
                                                       << "95 90";
  QTest::newRow("another profile's classes are no list of this one")
      << "Pokal | LG Serie | OptKlassen=1\nKönig | LP Serie | Klassen=1"
      << "LG Serie: 95 K1; 90 K2"
      << "95 90";
  QTest::newRow("none of the class: none stays") << "Pokal | LG Serie | OptKlassen=1 Klassen=7"
                                                 << "LG Serie: 95 K1; 90 K2"
                                                 << "";
}

void TestResultFilters::classes() {
  whatIsCopied();
}

void TestResultFilters::days_data() {
  columns();
  QTest::addColumn<QString>("lastDays");
  QTest::newRow("only the last shooting day stays") << "Pokal | LG Serie | OptTage=1"
                                                    << "LG Serie: 95 20.11.2026; 90 21.11.2026; 99 19.11.2026"
                                                    << "90"
                                                    << "LG Serie: 21.11.2026";
  QTest::newRow("the day of all shooters, on which this one wasn't there")
      << "Pokal | LG Serie | OptTage=1"
      << "LG Serie: 95 20.11.2026; 90 21.11.2026"
      << ""
      << "LG Serie: 22.11.2026";
  QTest::newRow("the time of the day doesn't matter")
      << "Pokal | LG Serie | OptTage=1"
      << "LG Serie: 95 am=2026-11-21T00:00:01; 90 am=2026-11-21T23:59:59; 80 am=2026-11-20T23:59:59"
      << "95 90"
      << "LG Serie: 21.11.2026";
  QTest::newRow("a choice of days is the last day too") << "Pokal | LG Serie | OptTage=2"
                                                        << "LG Serie: 95 20.11.2026; 90 21.11.2026"
                                                        << "90"
                                                        << "LG Serie: 21.11.2026";
  QTest::newRow("switched off") << "Pokal | LG Serie | OptTage=0"
                                << "LG Serie: 95 20.11.2026; 90 21.11.2026"
                                << "95 90"
                                << "LG Serie: 21.11.2026";
  QTest::newRow("each discipline has its own last day")
      << "Pokal | LG Serie | OptTage=1\nPokal | LP Serie | OptTage=1"
      << "LG Serie: 95 20.11.2026; 90 21.11.2026\nLP Serie: 80 19.11.2026; 70 20.11.2026"
      << "90 70"
      << "LG Serie: 21.11.2026\nLP Serie: 20.11.2026";
  QTest::newRow("what has no readable day isn't of the last one")
      << "Pokal | LG Serie | OptTage=1"
      << "LG Serie: 95 am=gestern; 90 21.11.2026; 85 am="
      << "90"
      << "LG Serie: 21.11.2026";
}

void TestResultFilters::days() {
  QFETCH(QString, profile);
  QFETCH(QString, results);
  QFETCH(QString, left);
  QFETCH(QString, lastDays);
  QCOMPARE(werte(leftOf(profile, results, lastDays)), left);
}

void TestResultFilters::dayAndMonth_data() {
  columns();
  QTest::newRow("rings: the largest of each day") << "Pokal | LG Serie | Tageswertung=ja nBestTageswertung=1"
                                                  << "LG Serie: 95; 98; 80 21.11.2026; 85 21.11.2026"
                                                  << "98 85";
  QTest::newRow("teilers: the smallest of each day")
      << "Pokal | LG Teiler | Tageswertung=ja nBestTageswertung=1"
      << "LG Teiler: 12; 8; 30 21.11.2026; 20 21.11.2026"
      << "8 20";
  QTest::newRow("rings and teilers: judged as rings")
      << "Pokal | LG Ringteiler | Tageswertung=ja nBestTageswertung=1"
      << "LG Ringteiler: 12; 20; 8"
      << "20";
  QTest::newRow("the best two of each day") << "Pokal | LG Serie | Tageswertung=ja nBestTageswertung=2"
                                            << "LG Serie: 95; 98; 97; 80 21.11.2026"
                                            << "98 97 80";
  QTest::newRow("a number of 0 keeps one of each day")
      << "Pokal | LG Serie | Tageswertung=ja nBestTageswertung=0"
      << "LG Serie: 95; 98; 80 21.11.2026; 85 21.11.2026"
      << "98 85";
  QTest::newRow("the time of the day doesn't matter")
      << "Pokal | LG Serie | Tageswertung=ja nBestTageswertung=1"
      << "LG Serie: 95 am=2026-11-21T00:00:01; 98 am=2026-11-21T23:59:59"
      << "98";
  QTest::newRow("days of different years are different")
      << "Pokal | LG Serie | Tageswertung=ja nBestTageswertung=1"
      << "LG Serie: 95 20.11.2025; 98 20.11.2026"
      << "95 98";
  QTest::newRow("the best of each month") << "Pokal | LG Serie | Monatswertung=ja nBestTageswertung=1"
                                          << "LG Serie: 95 01.10.2026; 98 31.10.2026; 80 01.11.2026"
                                          << "98 80";
  QTest::newRow("both set: the month")
      << "Pokal | LG Serie | Tageswertung=ja Monatswertung=ja nBestTageswertung=1"
      << "LG Serie: 95 01.10.2026; 98 31.10.2026"
      << "98";
  QTest::newRow("one month of two years, the results apart")
      << "Pokal | LG Teiler | Monatswertung=ja nBestTageswertung=1"
      << "LG Teiler: 1 20.11.2025; 2 21.11.2025; 3 20.11.2026; 4 21.11.2026"
      << "1 3";
  QTest::newRow("one month of two years, the results mingled: each begins a new group")
      << "Pokal | LG Teiler | Monatswertung=ja nBestTageswertung=1"
      << "LG Teiler: 1 20.11.2025; 2 20.11.2026; 3 21.11.2025; 4 21.11.2026"
      << "1 2 3 4";
  QTest::newRow("what has no readable day stands for itself")
      << "Pokal | LG Serie | Tageswertung=ja nBestTageswertung=1"
      << "LG Serie: 95 am=gestern; 90 am=gestern; 98; 97"
      << "95 90 98";
  QTest::newRow("neither set") << "Pokal | LG Serie | nBestTageswertung=1"
                               << "LG Serie: 95; 98"
                               << "95 98";
  QTest::newRow("after the classes: the best one of the class stays")
      << "Pokal | LG Serie | Tageswertung=ja nBestTageswertung=1 OptKlassen=1 Klassen=1"
      << "LG Serie: 98 K2; 95 K1; 90 K1"
      << "95";
}

void TestResultFilters::dayAndMonth() {
  whatIsCopied();
}

void TestResultFilters::equalOnesGoByTheirKey() {
  auto results = ergebnisseAus("LG Teiler: 8 #9; 12 #1; 8 #4; 12 #2");
  sortiereNachErgebnis(results, Richtung::Aufsteigend);
  QCOMPARE(keysOf(results), "4 9 1 2");
  sortiereNachErgebnis(results, Richtung::Absteigend);
  QCOMPARE(keysOf(results), "1 2 4 9");
  sortiereNachAbstand(results, 10);
  QCOMPARE(keysOf(results), "1 2 4 9");
  QCOMPARE(keysOf(leftOf("Pokal | LG Serie | Tageswertung=ja nBestTageswertung=1", "LG Serie: 95 #9; 95 #4")),
           "4");
}

QTEST_APPLESS_MAIN(TestResultFilters)
#include "test_result_filters.moc"

// The plain list from values alone: best results of each discipline and weapon, and the bonus lines.
#include <QTest>

#include "evaluation/plain_list.h"
#include "tests/evaluation/written_case.h"

using namespace qk;
using namespace qk::test;

namespace {

/// "1;2;3": so many results, the best of a teiler discipline first.
QString counted(int count) {
  QStringList results;
  for (int i = 1; i <= count; ++i) results << QString::number(i);
  return results.join(';');
}

}  // namespace

class TestPlainList : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void groups_data();
  void groups();
  void twentyAreShown();
  void aHundredAtMost();
  void disciplinesOfOneName();
  void aDisciplineThatIsGone();
  void bonusLines_data();
  void bonusLines();
  void theFirstWeaponOfASignDecides();
  void theWholeList();
};

void TestPlainList::groups_data() {
  QTest::addColumn<QString>("disciplines");
  QTest::addColumn<QString>("results");
  QTest::addColumn<QString>("rows");
  QTest::newRow("teilers: the smallest first") << ""
                                               << "LG Teiler: 20; 8,1; 12,3"
                                               << "Teiler | LG Teiler | LG | 8,1 12,3 20";
  QTest::newRow("series: the largest first") << ""
                                             << "LG Serie: 90; 98; 95"
                                             << "Serien | LG Serie | LG | 98 95 90";
  QTest::newRow("rings and teilers: what is kept as teiler is one") << ""
                                                                    << "LG Ringteiler: 20; 8"
                                                                    << "Teiler | LG Ringteiler | LG | 8 20";
  QTest::newRow("where a result is kept decides, not what its discipline is")
      << ""
      << "LG Teiler: 20; 8; 95 @SchussSerien; 98 @SchussSerien"
      << "Teiler | LG Teiler | LG | 8 20\nSerien | LG Teiler | LG | 98 95";
  QTest::newRow("teilers before series, disciplines by name, weapons by name")
      << ""
      << "LP Serie: 70 LP; 75 LGA\nLG Serie: 90 LGA; 95; 91 LGA\nLP Teiler: 30 LP\nLG Teiler: 12"
      << "Teiler | LG Teiler | LG | 12\nTeiler | LP Teiler | LP | 30\n"
         "Serien | LG Serie | LG | 95\nSerien | LG Serie | LGA | 91 90\n"
         "Serien | LP Serie | LGA | 75\nSerien | LP Serie | LP | 70";
  QTest::newRow("the discipline's own number") << "LG Serie: 2"
                                               << "LG Serie: 90; 98; 95; 80 LGA\nLP Serie: 70; 71; 72"
                                               << "Serien | LG Serie | LG | 98 95\n"
                                                  "Serien | LG Serie | LGA | 80\n"
                                                  "Serien | LP Serie | LG | 72 71 70";
  QTest::newRow("a number of 0: a row without results") << "LG Serie: 0"
                                                        << "LG Serie: 90; 98"
                                                        << "Serien | LG Serie | LG |";
  QTest::newRow("a number below 0 is like 0") << "LG Serie: -1"
                                              << "LG Serie: 90; 98"
                                              << "Serien | LG Serie | LG |";
  QTest::newRow("signs in small letters are the same weapon") << ""
                                                              << "LG Serie: 98 lg; 90 LG; 95 lg"
                                                              << "Serien | LG Serie | lg | 98 95 90";
  QTest::newRow("no result") << ""
                             << ""
                             << "";
}

void TestPlainList::groups() {
  QFETCH(QString, disciplines);
  QFETCH(QString, results);
  QFETCH(QString, rows);
  QCOMPARE(listenZeilenText(listenZeilen(regelnAus({}, disciplines), ergebnisseAus(results))),
           zeilenVon(rows));
}

void TestPlainList::twentyAreShown() {
  const auto rows = listenZeilen(regelnAus({}), ergebnisseAus("LG Teiler: " + counted(25)));
  QCOMPARE(rows.size(), 1U);
  QCOMPARE(rows[0].E.size(), 20U);
  QCOMPARE(rows[0].E.back(), 20.0);
}

void TestPlainList::aHundredAtMost() {
  const auto rows =
      listenZeilen(regelnAus({}, "LG Teiler: 150"), ergebnisseAus("LG Teiler: " + counted(130)));
  QCOMPARE(rows.size(), 1U);
  QCOMPARE(rows[0].E.size(), 100U);
  QCOMPARE(rows[0].E.back(), 100.0);
}

void TestPlainList::disciplinesOfOneName() {
  Listenregeln regeln = regelnAus({}, "LG Serie: 3\nLP Serie: 1");
  for (ListenDisziplin& disziplin : regeln.disziplinen)
    if (disziplin.Name == "LP Serie") disziplin.Name = "LG Serie";
  const auto rows = listenZeilen(regeln, ergebnisseAus("LG Serie: 90; 95\nLP Serie: 92; 99"));
  QCOMPARE(listenZeilenText(rows), "Serien | LG Serie | LG | 99 95 92");
}

void TestPlainList::aDisciplineThatIsGone() {
  auto results = ergebnisseAus("LG Serie: 90; 95");
  results[0].DisziId = 99;
  QCOMPARE(listenZeilenText(listenZeilen(regelnAus({}), results)), "Serien | LG Serie | LG | 95");
}

void TestPlainList::bonusLines_data() {
  QTest::addColumn<QString>("profile");
  QTest::addColumn<QString>("results");
  QTest::addColumn<QString>("rows");
  QTest::newRow("series: the largest are added") << "Pokal | LG Serie | Anzahl=2 Waffen=LG"
                                                 << "LG Serie: 90; 98; 95"
                                                 << "Prämie | Pokal |  | 193";
  QTest::newRow("teilers: the smallest are added") << "Pokal | LG Teiler | Teiler=ja Anzahl=2 Waffen=LG"
                                                   << "LG Teiler: 20; 8,1; 12,3"
                                                   << "Prämie | Pokal |  | 20,4";
  QTest::newRow("the results of all its disciplines") << "Pokal | LG Serie, LP Serie | Anzahl=3 Waffen=LG,LP"
                                                      << "LG Serie: 90; 98\nLP Serie: 95 LP; 70 LP"
                                                      << "Prämie | Pokal |  | 283";
  QTest::newRow("the profile says where from, not its disciplines")
      << "Pokal | LG Teiler | Teiler=nein Anzahl=2 Waffen=LG"
      << "LG Teiler: 8; 95 @SchussSerien"
      << "Prämie | Pokal |  | 95";
  QTest::newRow("profiles in the order of their keys, not of their names")
      << "Pokal | LG Serie | Anzahl=1 Waffen=LG\nAlt | LG Serie | Anzahl=2 Waffen=LG"
      << "LG Serie: 90; 98"
      << "Prämie | Pokal |  | 98\nPrämie | Alt |  | 188";
  QTest::newRow("a profile without weapons gives no line") << "Pokal | LG Serie | Anzahl=2"
                                                           << "LG Serie: 90; 98"
                                                           << "";
  QTest::newRow("a weapon that isn't the profile's takes a place, but doesn't count")
      << "Pokal | LG Serie | Anzahl=2 Waffen=LG"
      << "LG Serie: 98 LGA; 95; 90"
      << "Prämie | Pokal |  | 95";
  QTest::newRow("a sign that is no weapon's takes a place, but doesn't count")
      << "Pokal | LG Serie | Anzahl=2 Waffen=LG,KK"
      << "LG Serie: 98 KK; 95; 90"
      << "Prämie | Pokal |  | 95";
  QTest::newRow("signs in small letters are the same") << "Pokal | LG Serie | Anzahl=1 Waffen=LG"
                                                       << "LG Serie: 98 lg"
                                                       << "Prämie | Pokal |  | 98";
  QTest::newRow("a weapon of other disciplines counts here too") << "Pokal | LP Serie | Anzahl=1 Waffen=LG"
                                                                 << "LP Serie: 98 LG"
                                                                 << "Prämie | Pokal |  | 98";
  QTest::newRow("a class that isn't the profile's takes a place, but doesn't count")
      << "Pokal | LG Serie | Anzahl=2 Waffen=LG Klassen=1"
      << "LG Serie: 98 K2; 95; 90"
      << "Prämie | Pokal |  | 95";
  QTest::newRow("any of its classes") << "Pokal | LG Serie | Anzahl=2 Waffen=LG Klassen=1,2"
                                      << "LG Serie: 98 K2; 95; 90"
                                      << "Prämie | Pokal |  | 193";
  QTest::newRow("nothing counts: no line") << "Pokal | LG Serie | Anzahl=2 Waffen=LG Klassen=7"
                                           << "LG Serie: 98; 95"
                                           << "";
  QTest::newRow("no results: no line") << "Pokal | LG Serie | Anzahl=2 Waffen=LG"
                                       << "LP Serie: 98"
                                       << "";
  QTest::newRow("a count of 0: no line") << "Pokal | LG Serie | Anzahl=0 Waffen=LG"
                                         << "LG Serie: 98; 95"
                                         << "";
  QTest::newRow("a sum of 0 is a line") << "Pokal | LG Serie | Anzahl=1 Waffen=LG"
                                        << "LG Serie: 0"
                                        << "Prämie | Pokal |  | 0";
  QTest::newRow("a discipline named twice counts twice") << "Pokal | LG Serie, LG Serie | Anzahl=3 Waffen=LG"
                                                         << "LG Serie: 98; 90"
                                                         << "Prämie | Pokal |  | 286";
  QTest::newRow("series: short of the minimum")
      << "Pokal | LG Serie | Anzahl=5 nMinAnzahlErgAktiv=1 nMinAnzahlErg=3 Waffen=LG"
      << "LG Serie: 98; 95"
      << "Prämie | Pokal -ohne Wertung (2/3) |  | 193";
  QTest::newRow("series: the minimum reached")
      << "Pokal | LG Serie | Anzahl=5 nMinAnzahlErgAktiv=1 nMinAnzahlErg=2 Waffen=LG"
      << "LG Serie: 98; 95"
      << "Prämie | Pokal |  | 193";
  QTest::newRow("series: the minimum switched off")
      << "Pokal | LG Serie | Anzahl=5 nMinAnzahlErgAktiv=0 nMinAnzahlErg=3 Waffen=LG"
      << "LG Serie: 98; 95"
      << "Prämie | Pokal |  | 193";
  QTest::newRow("series: what doesn't count is missing from the minimum")
      << "Pokal | LG Serie | Anzahl=3 nMinAnzahlErgAktiv=-1 nMinAnzahlErg=3 Waffen=LG"
      << "LG Serie: 98; 95 LGA; 90"
      << "Prämie | Pokal -ohne Wertung (2/3) |  | 188";
  QTest::newRow("teilers: short of the count, whatever the minimum")
      << "Pokal | LG Teiler | Teiler=ja Anzahl=3 nMinAnzahlErgAktiv=1 nMinAnzahlErg=1 Waffen=LG"
      << "LG Teiler: 8; 12"
      << "Prämie | Pokal -ohne Wertung (2/3) |  | 20";
  QTest::newRow("teilers: short of the count, the minimum switched off")
      << "Pokal | LG Teiler | Teiler=ja Anzahl=3 nMinAnzahlErgAktiv=0 Waffen=LG"
      << "LG Teiler: 8; 12"
      << "Prämie | Pokal -ohne Wertung (2/3) |  | 20";
  QTest::newRow("teilers: the count reached, whatever the minimum")
      << "Pokal | LG Teiler | Teiler=ja Anzahl=2 nMinAnzahlErgAktiv=1 nMinAnzahlErg=9 Waffen=LG"
      << "LG Teiler: 8; 12"
      << "Prämie | Pokal |  | 20";
}

void TestPlainList::bonusLines() {
  QFETCH(QString, profile);
  QFETCH(QString, results);
  QFETCH(QString, rows);
  QCOMPARE(listenZeilenText(praemienZeilen(regelnAus(profile), ergebnisseAus(results))), zeilenVon(rows));
}

void TestPlainList::theFirstWeaponOfASignDecides() {
  Listenregeln regeln = regelnAus("Pokal | LG Serie | Anzahl=1 Waffen=LG");
  const auto results = ergebnisseAus("LG Serie: 98 LG");
  regeln.zulassung.disziplinWaffen.push_back({5, 4, "LG"});
  QCOMPARE(listenZeilenText(praemienZeilen(regeln, results)), "Prämie | Pokal |  | 98");
  regeln.zulassung.disziplinWaffen.insert(regeln.zulassung.disziplinWaffen.begin(), {5, 4, "LG"});
  QCOMPARE(listenZeilenText(praemienZeilen(regeln, results)), QString());
}

void TestPlainList::theWholeList() {
  const auto rows = schnellliste(regelnAus("Pokal | LG Serie | Anzahl=2 Waffen=LG"), "107",
                                 ergebnisseAus("LG Serie: 98; 95\nLG Teiler: 8"));
  QCOMPARE(listenZeilenText(rows),
           "Teiler | LG Teiler | LG | 8\nSerien | LG Serie | LG | 98 95\nPrämie | Pokal |  | 193");
  for (const ErgebnisZeile& row : rows) {
    QCOMPARE(row.Startnummer, "107");
    QCOMPARE(row.Wettkampf, QString());
    QVERIFY(!row.DisziErgebnis);
  }
}

QTEST_APPLESS_MAIN(TestPlainList)
#include "test_plain_list.moc"

// From the competition's tables to the values of an evaluation, and from its rows to the print database.
#include <QTest>
#include <memory>

#include "app/ground/settings_keys.h"
#include "evaluation/evaluation_tables.h"
#include "evaluation/print_rows.h"
#include "evaluation/profile_evaluation.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"
#include "tests/evaluation/shooting_day.h"
#include "tests/evaluation/written_case.h"

using namespace qk;
using namespace qk::test;

namespace {

QStringList described(const std::vector<EinzelErgebnis>& results) {
  QStringList lines;
  for (const EinzelErgebnis& r : results)
    lines << QStringList{tabellenName(r.Tabelle),
                         QString::number(r.ErgID),
                         r.Art,
                         numberText(r.Ergebnis),
                         QString::number(r.DisziId),
                         r.WTyp,
                         QString::number(r.KlassenID),
                         r.Datum}
                 .join('|');
  return lines;
}

}  // namespace

class TestEvaluationTables : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    day = std::make_unique<ShootingDay>();
    place = &day->place;
    wettkampf = day->wettkampf.get();
  }
  void cleanup() {
    druck.reset();
    day.reset();
  }

  void resultsFollowTheirShooters();
  void profilesThatAreShown();
  void profilesAreMadeOnce();
  void everyColumnOfAProfile();
  void resultsOfTheShooter();
  void aNumberWithAQuote();
  void lastDaysOfAllShooters();
  void lastDaysWithoutResults();
  void rulesOfTheList();
  void theShooter();
  void aShooterWithoutClub();
  void noSuchShooter();
  void theHead();
  void theHeadWithoutClosingWords();
  void theHeadWithoutARow();
  void rowsWithTheShooter();
  void rowsWithoutHim();
  void singleResults();

 private:
  QString druckdatei() const { return day->printTemplate(); }
  dao::Database& print() {
    if (!druck) druck = dao::Database::open(druckdatei());
    return *druck;
  }
  std::vector<ProfilDisziplin> profiles() {
    wettkampf->execute(profileAnweisung(druckdatei()));
    return leseProfile(print());
  }

  QDate letzterTag(Quelle quelle, qint32 lDisziID) { return leseLetztenTag(*wettkampf, quelle, lDisziID); }

  std::unique_ptr<ShootingDay> day;
  TestWorkplace* place = nullptr;
  dao::Database* wettkampf = nullptr;
  std::unique_ptr<dao::Database> druck;
};

void TestEvaluationTables::resultsFollowTheirShooters() {
  for (const QString& statement : abgleichAnweisungen()) wettkampf->execute(statement);
  const QStringList columns{"ID", "KlassenID", "MannID", "VorMannID"};
  QCOMPARE(read(*wettkampf, "Select * from Schuss order by ID", columns),
           (QStringList{"11|7|3|5", "12|7|3|5", "13|0|0|0", "14|4|4|4"}));
  QCOMPARE(read(*wettkampf, "Select * from SchussSerien order by ID", columns), QStringList{"11|7|3|5"});
}

void TestEvaluationTables::profilesThatAreShown() {
  QStringList rows;
  for (const ProfilDisziplin& p : profiles())
    rows << QStringList{QString::number(p.AwProfilID),
                        p.AuswertProfil_Name,
                        QString::number(p.DisziID),
                        p.Disziplin_Name,
                        p.Disziplin_Teiler ? "Teiler" : "Serien",
                        p.Ringe ? "Ringe" : "keine",
                        p.bGewErg ? "max" : "alle",
                        QString::number(p.nGewErg)}
                .join('|');
  rows.sort();
  QCOMPARE(rows,
           (QStringList{"1|Pokal|1|LG Teiler|Teiler|keine|max|2", "3|König|1|LG Teiler|Teiler|keine|max|2",
                        "3|König|2|LG Serie|Serien|Ringe|alle|0"}));
}

void TestEvaluationTables::profilesAreMadeOnce() {
  profiles();
  try {
    wettkampf->execute(profileAnweisung(druckdatei()));
    QFAIL("made twice");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 3010);
  }
}

void TestEvaluationTables::everyColumnOfAProfile() {
  const auto all = profiles();
  const auto pokal = std::find_if(all.begin(), all.end(), [](const auto& p) { return p.AwProfilID == 1; });
  QVERIFY(pokal != all.end());
  QCOMPARE(pokal->Typ, 0);
  QCOMPARE(pokal->Anzahl, 3);
  QCOMPARE(pokal->Vorgabe, "9,5");
  QCOMPARE(pokal->OptTage, 1);
  QCOMPARE(pokal->OptWaffen, 2);
  QCOMPARE(pokal->OptKlassen, 3);
  QVERIFY(pokal->Tageswertung);
  QVERIFY(pokal->Monatswertung);
  QCOMPARE(pokal->nBestTageswertung, 4);
  QCOMPARE(pokal->nMinAnzahlErgAktiv, 5);
  QCOMPARE(pokal->nMinAnzahlErg, 6);
  // What both tables have is told apart: the profile's flag and the discipline's differ.
  QCOMPARE(read(print(), "Select * from Profile where AwProfilID = 1",
                {"AuswertProfil_Teiler", "Disziplin_Teiler", "AuswertProfil_bVerein", "Disziplin_bVerein",
                 "AuswertProfil_lMaxVerein", "Disziplin_LMaxVerein", "nShowAuswert", "DisziSPO_ID"}),
           QStringList{"-1|-1|0|-1|0|0|0|0"});
}

void TestEvaluationTables::resultsOfTheShooter() {
  QCOMPARE(described(leseErgebnisse(*wettkampf, Quelle::Schuss, "107")),
           (QStringList{"Schuss|11|T|12,3|1|LG|1|30.11.2026 10:00:00",
                        "Schuss|12|T|8,1|1|LG|1|29.11.2026 10:00:00"}));
  QCOMPARE(described(leseErgebnisse(*wettkampf, Quelle::SchussSerien, "107")),
           QStringList{"SchussSerien|11|R|95|2|LG|1|28.11.2026 10:00:00"});
  wettkampf->execute(
      "UPDATE Schuss SET WTyp = Null, KlassenID = Null, Datum = Null, Art = Null WHERE ID = 13");
  QCOMPARE(described(leseErgebnisse(*wettkampf, Quelle::Schuss, "108")), QStringList{"Schuss|13||4|1||0|"});
}

void TestEvaluationTables::aNumberWithAQuote() {
  wettkampf->execute("UPDATE Schuss SET Startnummer = '1''07' WHERE ID = 13");
  QCOMPARE(described(leseErgebnisse(*wettkampf, Quelle::Schuss, "1'07")).size(), 1);
}

void TestEvaluationTables::lastDaysOfAllShooters() {
  QCOMPARE(letzterTag(Quelle::Schuss, 1), QDate(2026, 12, 1));
  QCOMPARE(letzterTag(Quelle::SchussSerien, 2), QDate(2026, 11, 28));
}

void TestEvaluationTables::lastDaysWithoutResults() {
  QVERIFY(!letzterTag(Quelle::Schuss, 2).isValid());
  wettkampf->execute("UPDATE SchussSerien SET Datum = Null");
  QVERIFY(!letzterTag(Quelle::SchussSerien, 2).isValid());
}

void TestEvaluationTables::rulesOfTheList() {
  Listenregeln rules;
  rules.disziplinen = leseDisziplinen(*wettkampf);
  rules.profile = leseListenprofile(*wettkampf);
  rules.profilDisziplinen = leseZuordnungen(*wettkampf);
  rules.zulassung = {leseDisziplinWaffen(*wettkampf), leseAuswertWaffen(*wettkampf),
                     leseAuswertKlassen(*wettkampf)};
  QCOMPARE(rules.disziplinen.size(), 2U);
  QCOMPARE(rules.disziplinen[0].Name, "LG Teiler");
  QVERIFY(rules.disziplinen[0].bGewErg);
  QCOMPARE(rules.disziplinen[0].nGewErg, 2);
  QCOMPARE(rules.profile.size(), 3U);  // whether shown or not
  QCOMPARE(rules.profile[1].Name, "Geheim");
  QVERIFY(rules.profile[0].Teiler);
  QVERIFY(!rules.profile[1].Teiler);
  QCOMPARE(rules.profile[0].Anzahl, 3);
  QCOMPARE(rules.profile[0].nMinAnzahlErgAktiv, 5);
  QCOMPARE(rules.profile[0].nMinAnzahlErg, 6);
  QCOMPARE(rules.profilDisziplinen.size(), 4U);
  QCOMPARE(rules.profilDisziplinen[2].AwProfilID, 3);
  QCOMPARE(rules.profilDisziplinen[2].DisziID, 1);
  QCOMPARE(rules.zulassung.disziplinWaffen.size(), 2U);
  QCOMPARE(rules.zulassung.disziplinWaffen[0].DisziID, 2);  // in the order of the keys: 8 before 9
  QCOMPARE(rules.zulassung.disziplinWaffen[0].KZ, "LG");
  QCOMPARE(rules.zulassung.auswertWaffen.size(), 1U);
  QCOMPARE(rules.zulassung.auswertWaffen[0].WaffenID, 1);
  QCOMPARE(rules.zulassung.auswertKlassen.size(), 1U);
  QCOMPARE(rules.zulassung.auswertKlassen[0].KlassenID, 7);
}

void TestEvaluationTables::theShooter() {
  fuelleSchuetze(place->workplace(), *wettkampf, print(), "107");
  QCOMPARE(
      read(print(), "Schütze",
           {"Startnummer", "Name", "Straße", "Verein", "VID", "Klasse", "Mannschaft", "disziplin"}),
      QStringList{"107|Müller Jörg|Am Wall 3|Schützengilde Grünau|3|Herren I|Grünau I|LG - Grünau I\r\n"});
}

void TestEvaluationTables::aShooterWithoutClub() {
  fuelleSchuetze(place->workplace(), *wettkampf, print(), "108");
  QCOMPARE(
      read(print(), "Schütze", {"Startnummer", "Name", "Verein", "VID", "Klasse", "Mannschaft", "disziplin"}),
      QStringList{"108|Süß Benno|Null|0|Null|Null|Null"});
}

void TestEvaluationTables::noSuchShooter() {
  QVERIFY(fuelleSchuetze(place->workplace(), *wettkampf, print(), "4711").empty());
  QCOMPARE(read(print(), "Schütze", {"ID"}), QStringList());
}

void TestEvaluationTables::theHead() {
  wettkampf->execute("UPDATE Wettkampf SET Bezeichnung = 'Pokal', Bezeichnung2 = '2026', Ort = 'Grünau'");
  fuelleWettkampf(place->workplace(), *wettkampf, print());
  QCOMPARE(read(print(), "Wettkampf", {"Bez1", "Bez2", "Ort", "EndText"}),
           QStringList{"Pokal|2026|Grünau|Wir danken für die Teilnahme und wünschen allzeit Gut Schuss."});
}

void TestEvaluationTables::theHeadWithoutClosingWords() {
  schreibe(place->settings, keys::Schnelldruckzusatz, 0);
  fuelleWettkampf(place->workplace(), *wettkampf, print());
  QCOMPARE(read(print(), "Wettkampf", {"EndText"}), QStringList{""});
}

void TestEvaluationTables::theHeadWithoutARow() {
  print().execute("Delete * from Wettkampf");
  wettkampf->execute("UPDATE Wettkampf SET Ort = 'Grünau'");
  fuelleWettkampf(place->workplace(), *wettkampf, print());
  QCOMPARE(read(print(), "Wettkampf", {"Ort"}), QStringList{"Grünau"});
}

void TestEvaluationTables::rowsWithTheShooter() {
  const auto shooter = fuelleSchuetze(place->workplace(), *wettkampf, print(), "107");
  const auto table = print().openRecordset("Ergebnisse");
  for (const ErgebnisZeile& row : schnellliste(regelnAus("Pokal | LG Serie | Anzahl=1 Waffen=LG"), "107",
                                               ergebnisseAus("LG Serie: 95; 98")))
    schreibeErgebnis(*table, row, shooter);
  QCOMPARE(read(print(), "Select * from Ergebnisse order by ID",
                {"ID", "Gruppe", "Disziplin", "WTyp", "Startnummer", "Name", "Straße", "Verein", "Mannschaft",
                 "E1", "E2", "E3", "DisziErgebnis", "Wettkampf"}),
           (QStringList{"1|Serien|LG Serie|LG|107|Müller Jörg|Am Wall 3|Schützengilde Grünau|Grünau I|98|95|"
                        "Null|Null|Null",
                        "2|Prämie|Pokal|Null|107|Müller Jörg|Am Wall 3|Schützengilde Grünau|Grünau I|98|Null|"
                        "Null|Null|Null"}));
}

void TestEvaluationTables::rowsWithoutHim() {
  ErgebnisZeile row{
      .Wettkampf = "Pokal", .Disziplin = "LG Serie", .Gruppe = {}, .WTyp = {}, .Startnummer = "107"};
  row.DisziErgebnis = 193.5;
  for (int i = 1; i <= kEinzelspalten; ++i) row.E.push_back(i);
  schreibeErgebnis(*print().openRecordset("Ergebnisse"), row);
  QCOMPARE(read(print(), "Ergebnisse",
                {"Wettkampf", "Disziplin", "Gruppe", "Startnummer", "Name", "DisziErgebnis", "E1", "E100"}),
           QStringList{"Pokal|LG Serie|Null|107|Null|193,5|1|100"});
}

void TestEvaluationTables::singleResults() {
  auto results = leseErgebnisse(*wettkampf, Quelle::SchussSerien, "107");
  results[0].WkID = 3;
  const auto table = print().openRecordset("EinzelErgebnisse");
  schreibeEinzelErgebnis(*table, results[0]);
  QCOMPARE(results[0].ID, 1);
  schreibeEinzelErgebnis(*table, results[0]);
  QCOMPARE(results[0].ID, 2);
  print().execute("Delete * from EinzelErgebnisse where ID = 2");
  QCOMPARE(read(print(), "EinzelErgebnisse",
                {"Startnummer", "DisziId", "WTyp", "Art", "Ergebnis", "KlassenID", "ErgID", "Tabelle", "WkID",
                 "Datum"}),
           QStringList{"107|2|LG|R|95|1|11|SchussSerien|3|28.11.2026 10:00:00"});
}

QTEST_MAIN(TestEvaluationTables)
#include "test_evaluation_tables.moc"

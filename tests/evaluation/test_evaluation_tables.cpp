// From the competition's tables to the values of an evaluation, and from its rows to the print database.
#include <QFile>
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
#include "tests/evaluation/written_case.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"
#include "tools/schema/schema_build.h"
#include "tools/wettkampf/competition.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kRows = R"(
Zeilen Schützenklassen
  ID | Klasse
  7  | Herren I

Zeilen Verein
  ID | Name
  3  | Schützengilde Grünau

Zeilen Mannschaften
  ID | MannName
  5  | Grünau I

Zeilen MeldeDisziplin
  ID | MeldeDisziplin
  1  | LG

Zeilen Schützen
  ID | Startnummer | Name        | Strasse  | VereinsID | lMannID | KlassenID
  1  | 107         | Müller Jörg | Am Wall 3 | 3         | 5       | 7
  2  | 108         | Süß Benno   | Markt 1  | 0         | 0       | 0

Zeilen Schuetzen_SPO_Anmeldungen
  SchuetzeID | SPOID | MannID
  1          | 1     | 5

Zeilen Disziplin
  ID | Name      | Teiler | Ringe | bGewErg | nGewErg | bVerein
  1  | LG Teiler | ja     | nein  | ja      | 2       | ja
  2  | LG Serie  | nein   | ja    | nein    | 0       | nein

Zeilen DisziplinWaffen
  ID | DisziID | WaffenID | KZ
  9  | 1       | 1        | LG
  8  | 2       | 1        | LG

Zeilen AuswertProfil
  ID | Name  | Typ | Anzahl | Teiler | Vorgabe | OptTage | OptWaffen | OptKlassen | Tageswertung | nBestTageswertung | Monatswertung | nMinAnzahlErgAktiv | nMinAnzahlErg | nShowKurzAuswertung | bVerein
  1  | Pokal | 0   | 3      | ja     | 9,5     | 1       | 2         | 3          | ja           | 4                 | ja            | 5                  | 6             | -1                  | nein
  2  | Geheim | 0  | 3      | nein   |         | 0       | 0         | 0          | nein         | 0                 | nein          | 0                  | 0             | 0                   | nein
  3  | König | 2   | 0      | nein   |         | 1       | 0         | 0          | nein         | 0                 | nein          | 0                  | 0             | 1                   | nein

Zeilen AwProfilDiszi
  AwProfilID | DisziID
  1          | 1
  2          | 2
  3          | 1
  3          | 2

Zeilen Auswert_Waffen
  AuswertID | WaffenID
  1         | 1

Zeilen Auswert_Klassen
  AuswertID | KlassenID
  1         | 7

Zeilen Schuss
  ID | Startnummer | DisziID | Ergebnis | WTyp | Art | KlassenID | MannID | VorMannID | Datum
  11 | 107         | 1       | 12,3     | LG   | T   | 1          | 0      | 0         | 30.11.2026 10:00:00
  12 | 107         | 1       | 8,1      | LG   | T   | 1          | 0      | 0         | 29.11.2026 10:00:00
  13 | 108         | 1       | 4        | LG   | T   | 1          | 9      | 9         | 01.12.2026 09:00:00
  14 | 999         | 1       | 5        | LG   | T   | 4          | 4      | 4         | 01.11.2026 09:00:00

Zeilen SchussSerien
  ID | Startnummer | DisziID | Ergebnis | WTyp | KlassenID | MannID | VorMannID | Datum
  11 | 107         | 2       | 95       | LG   | 1         | 0      | 0         | 28.11.2026 10:00:00
)";

const StoreOriginal& original() {
  static const StoreOriginal made([](const QString& file) {
    makeCompetition(file, {});
    buildSchema(*dao::Database::open(file), parseSchema(kRows, "test"));
  });
  return made;
}

/// The print database as the build makes it: a file, whatever engine the competition is on.
void makePrintTemplate(const QString& path) {
  QFile text(QK_SOURCE_DIR "/data/schema/ergschdruck.txt");
  if (!text.open(QIODevice::ReadOnly)) failTest("no text of the template");
  const Schema schema = parseSchema(QString::fromUtf8(text.readAll()), "ergschdruck.txt");
  createDatabase(path, [&](dao::Database& db) { buildSchema(db, schema); });
}

QString cell(const QVariant& value) {
  if (value.isNull()) return "Null";
  return value.typeId() == QMetaType::Double ? numberText(value.toDouble()) : value.toString();
}

/// A line per row, its columns divided by "|".
QStringList read(dao::Database& db, const QString& query, const QStringList& columns) {
  QStringList lines;
  for (const auto rs = db.openRecordset(query); !rs->eof(); rs->moveNext()) {
    QStringList cells;
    for (const QString& column : columns) cells << cell(rs->value(column));
    lines << cells.join('|');
  }
  return lines;
}

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
    place = std::make_unique<TestWorkplace>();
    original().copyTo(place->path("Pokal.qkk"));
    wettkampf = dao::Database::open(place->path("Pokal.qkk"));
    makePrintTemplate(druckdatei());
  }
  void cleanup() {
    druck.reset();
    wettkampf.reset();
    place.reset();
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
  void fromStoreToStore();

 private:
  QString druckdatei() const { return place->path("ZVA1.tmp"); }
  dao::Database& print() {
    if (!druck) druck = dao::Database::open(druckdatei());
    return *druck;
  }
  std::vector<ProfilDisziplin> profiles() {
    wettkampf->execute(profileAnweisung(druckdatei()));
    return leseProfile(print());
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> wettkampf, druck;
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
  QCOMPARE(described(leseErgebnisse(*wettkampf, "107")),
           (QStringList{"Schuss|11|T|12,3|1|LG|1|30.11.2026 10:00:00",
                        "Schuss|12|T|8,1|1|LG|1|29.11.2026 10:00:00",
                        "SchussSerien|11|R|95|2|LG|1|28.11.2026 10:00:00"}));
  wettkampf->execute(
      "UPDATE Schuss SET WTyp = Null, KlassenID = Null, Datum = Null, Art = Null WHERE ID = 13");
  QCOMPARE(described(leseErgebnisse(*wettkampf, "108")), QStringList{"Schuss|13||4|1||0|"});
}

void TestEvaluationTables::aNumberWithAQuote() {
  wettkampf->execute("UPDATE Schuss SET Startnummer = '1''07' WHERE ID = 13");
  QCOMPARE(described(leseErgebnisse(*wettkampf, "1'07")).size(), 1);
}

void TestEvaluationTables::lastDaysOfAllShooters() {
  const auto days = leseLetzteTage(*wettkampf, profiles(), leseErgebnisse(*wettkampf, "107"));
  QCOMPARE(days.size(), 2U);
  QCOMPARE(days.at({Quelle::Schuss, 1}), QDate(2026, 12, 1));
  QCOMPARE(days.at({Quelle::SchussSerien, 2}), QDate(2026, 11, 28));
}

void TestEvaluationTables::lastDaysWithoutResults() {
  const auto profile = profiles();
  QCOMPARE(leseLetzteTage(*wettkampf, profile, leseErgebnisse(*wettkampf, "108")).size(), 1U);
  QCOMPARE(leseLetzteTage(*wettkampf, profile, {}).size(), 0U);
}

void TestEvaluationTables::rulesOfTheList() {
  const Listenregeln rules = leseListenregeln(*wettkampf);
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
  schreibeErgebnisse(print(),
                     schnellliste(regelnAus("Pokal | LG Serie | Anzahl=1 Waffen=LG"), "107",
                                  ergebnisseAus("LG Serie: 95; 98")),
                     shooter);
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
  schreibeErgebnisse(print(), {row});
  QCOMPARE(read(print(), "Ergebnisse",
                {"Wettkampf", "Disziplin", "Gruppe", "Startnummer", "Name", "DisziErgebnis", "E1", "E100"}),
           QStringList{"Pokal|LG Serie|Null|107|Null|193,5|1|100"});
}

void TestEvaluationTables::singleResults() {
  auto results = leseErgebnisse(*wettkampf, "107");
  results[2].WkID = 3;
  schreibeEinzelErgebnisse(print(), {results[2]});
  QCOMPARE(read(print(), "EinzelErgebnisse",
                {"Startnummer", "DisziId", "WTyp", "Art", "Ergebnis", "KlassenID", "ErgID", "Tabelle", "WkID",
                 "Datum"}),
           QStringList{"107|2|LG|R|95|1|11|SchussSerien|3|28.11.2026 10:00:00"});
}

void TestEvaluationTables::fromStoreToStore() {
  for (const QString& statement : abgleichAnweisungen()) wettkampf->execute(statement);
  wettkampf->execute("UPDATE AuswertProfil SET OptTage = 0, nMinAnzahlErgAktiv = 0, Monatswertung = False");
  const auto profile = profiles();
  const auto results = leseErgebnisse(*wettkampf, "107");
  const Profilauswertung evaluated = werteProfileAus(profile, results, leseZulassung(*wettkampf),
                                                     leseLetzteTage(*wettkampf, profile, results));
  schreibeEinzelErgebnisse(print(), evaluated.einzelErgebnisse);
  schreibeErgebnisse(print(), evaluated.ergebnisse);
  QCOMPARE(read(print(), "Select * from Ergebnisse order by ID",
                {"Wettkampf", "Disziplin", "DisziErgebnis", "E1", "E2", "E3"}),
           (QStringList{"Pokal|LG Teiler|20,4|8,1|12,3|Null", "König|LG Teiler|0|8,1|12,3|Null",
                        "König|LG Serie|0|95|Null|Null"}));
  QCOMPARE(read(print(), "Select * from EinzelErgebnisse", {"ID"}).size(), 5);
}

QTEST_MAIN(TestEvaluationTables)
#include "test_evaluation_tables.moc"

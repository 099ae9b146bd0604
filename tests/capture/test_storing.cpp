// Pending results as rows of Schuss and SchussSerien, the ticked shots as a picture.

#include <QTest>

#include "capture/storing.h"
#include "tests/capture/workbench.h"

using namespace qk;
using namespace qk::test;

namespace {

const QStringList SchussColumns{
    "Art",         "Ergebnis", "Ring",      "x",        "y",         "ScheibenNr",
    "Startnummer", "MannID",   "KlassenID", "DisziID",  "VorMannID", "SchussXY",
    "SerieXY",     "Datum",    "DSBTeiler", "DSBRinge", "SPO_ID",    "ScheibenNummern",
    "bManuell",    "WTyp",     "Betrag"};
const QStringList SerienColumns{"Ergebnis",
                                "Startnummer",
                                "MannID",
                                "KlassenID",
                                "DisziID",
                                "Anz",
                                "Folge",
                                "Einzelfolge",
                                "Einzelfolge2",
                                "VorMannID",
                                "EinzelFolgeTeiler",
                                "SerieXY",
                                "Datum",
                                "SPO_ID",
                                "ScheibenNummern",
                                "bManuell",
                                "WTyp",
                                "Betrag"};

PendingResults transferred(const Shots& shots, const QString& disciplineText) {
  static CountingRandom random;
  const Schuetze who = shooter();
  PendingResults pending;
  transferShots(shots, disciplines(disciplineText), &who,
                {noon(), random, [](const Error&, const QString&) { return ErrorAnswer::Abort; }}, pending);
  return pending;
}

ShotCollection open(const Shots& shots) {
  ShotCollection all;
  for (const auto& s : shots) all.add(s, s->Key);
  return all;
}

}  // namespace

class TestStoring : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void teilers();
  void ringTeilers();
  void series();
  void incompleteRingTeiler();
  void longSeries();
  void nothingToStore();
  void onlySeriesDontOpenTheTeilers();
  void storingTwiceGivesTwoRows();
  void failureHalfwayLeavesTheRowsSoFar();
  void ignoringAsksWhatGetsLost();
  void ignoringOnceMoreAsksNothing();
  void messages();
  void picture();
  void pictureOfNothing();
};

void TestStoring::teilers() {
  Workbench bench;
  QVERIFY(SpeichereErgebnisse(bench.workplace(), &bench.store(),
                              transferred(shots("9,7/72,4 10/12,3"), "Teiler")));
  QCOMPARE(bench.read("Select * from Schuss order by ID", SchussColumns),
           (QStringList{"T|72,4|0|10|-1|1|107|12|30|1|5|||20.11.2026 12:00:00|0|0|0||0|LG|0",
                        "T|12,3|0|20|-2|2|107|12|30|1|5|||20.11.2026 12:00:00|0|0|0||0|LG|0"}));
  QCOMPARE(bench.read("Select * from SchussSerien", {"ID"}), QStringList());
}

void TestStoring::ringTeilers() {
  Workbench bench;
  const auto stored = SpeichereErgebnisse(bench.workplace(), &bench.store(),
                                          transferred(shots("9,7/72,4 10/12,3"), "RT 2 Max=20"));
  QVERIFY(stored);
  QCOMPARE(stored->ringTeiler, 1);
  QCOMPARE(stored->teiler, 0);
  QCOMPARE(
      bench.read("Select * from Schuss", SchussColumns),
      (QStringList{
          "RT|13,3|0|0|0|0|107|12|30|1|5||R:9;T:72,4;R:10;T:12,3;|20.11.2026 12:00:00|12,3|19|0||0|LG|0"}));
}

void TestStoring::series() {
  Workbench bench;
  QVERIFY(SpeichereErgebnisse(bench.workplace(), &bench.store(),
                              transferred(shots("8x9,8/30 10,3/12,3 9,7/50"), "Ring 10 Zehntel")));
  QCOMPARE(bench.read("Select * from SchussSerien", SerienColumns),
           (QStringList{"98,4|107|12|30|1|10er|000098,4|9,8|9,8|9,8|9,8|9,8|9,8|9,8|9,8|10,3|9,7|-||5|"
                        "30|30|30|30|30|30|30|30|12,3|50|||20.11.2026 12:00:00|0||0|LG|0"}));
  QCOMPARE(bench.read("Select * from Schuss", {"ID"}), QStringList());
}

void TestStoring::incompleteRingTeiler() {
  Workbench bench;
  QVERIFY(
      SpeichereErgebnisse(bench.workplace(), &bench.store(), transferred(shots("10/5"), "RT 10 Max=100")));
  QCOMPARE(bench.read("Select * from Schuss", {"Ergebnis"}), QStringList{"95"});
}

void TestStoring::longSeries() {
  Workbench bench;
  const PendingResults pending = transferred(shots("60x10,9/123,4"), "Ring 60 Zehntel");
  QVERIFY(SpeichereErgebnisse(bench.workplace(), &bench.store(), pending));
  const auto record = pending.m_colRingErg.at(0);
  QCOMPARE(bench.read("Select * from SchussSerien", {"Einzelfolge", "Einzelfolge2", "EinzelFolgeTeiler"}),
           QStringList{record->Einzelfolge + "|" + record->Einzelfolge2 + "|" + record->EinzelfolgeTeiler});
}

void TestStoring::nothingToStore() {
  Workbench bench;
  bench.dialogs.expect("Bitte wählen Sie eine Disziplin").titled("Hinweis").with(BoxButtons::Ok);
  QVERIFY(!SpeichereErgebnisse(bench.workplace(), &bench.store(), {}));
}

void TestStoring::onlySeriesDontOpenTheTeilers() {
  Workbench bench;
  bench.store().dropTable("Schuss");
  QVERIFY(SpeichereErgebnisse(bench.workplace(), &bench.store(), transferred(shots("2x9"), "Ring 2")));
  QCOMPARE(bench.read("Select * from SchussSerien", {"Ergebnis"}), QStringList{"18"});
}

void TestStoring::storingTwiceGivesTwoRows() {
  Workbench bench;
  const PendingResults pending = transferred(shots("2x9"), "Ring 2");
  QVERIFY(SpeichereErgebnisse(bench.workplace(), &bench.store(), pending));
  QVERIFY(SpeichereErgebnisse(bench.workplace(), &bench.store(), pending));
  QCOMPARE(bench.read("Select * from SchussSerien", {"Ergebnis"}), (QStringList{"18", "18"}));
}

void TestStoring::failureHalfwayLeavesTheRowsSoFar() {
  Workbench bench;
  bench.store().dropTable("SchussSerien");
  bench.expectError(bench.failureOf([&] { bench.store().openRecordset("Select * from SchussSerien"); }),
                    "Fehler beim Speichern der Ergebnisse in die Datenbank!", BoxAnswer::Abort);
  QVERIFY(
      !SpeichereErgebnisse(bench.workplace(), &bench.store(), transferred(shots("2x9"), "Ring 2 + Teiler")));
  QCOMPARE(bench.read("Select * from Schuss", {"Art"}), (QStringList{"T", "T"}));
}

/// What is ignored here is booked a moment later: nobody would miss it before the prize-giving.
void TestStoring::ignoringAsksWhatGetsLost() {
  const QString operation = "Fehler beim Speichern der Ergebnisse in die Datenbank!";
  Workbench bench;
  const PendingResults pending = transferred(shots("9,7/72,4 10/12,3"), "Teiler");
  bench.store().appendIndex("Schuss", {.name = "einmal", .fields = {"DisziID"}, .unique = true});
  const Error refused = bench.failureOf([&] {
    for (int row = 0; row < 2; ++row) {
      const auto rs = bench.store().openRecordset("Select * from Schuss");
      rs->addNew();
      rs->setValue("DisziID", 7);
      rs->update();
    }
  });
  bench.store().execute("Delete * from Schuss");

  bench.expectError(refused, operation, BoxAnswer::Ignore);
  bench.expectLostResult("12,3 in Teiler, Startnummer 107", BoxAnswer::No);
  bench.expectError(refused, operation, BoxAnswer::Abort);
  QVERIFY(!SpeichereErgebnisse(bench.workplace(), &bench.store(), pending));
  QCOMPARE(bench.read("Select * from Schuss", {"Ergebnis"}), QStringList{"72,4"});

  bench.store().execute("Delete * from Schuss");
  bench.expectError(refused, operation, BoxAnswer::Ignore);
  bench.expectLostResult("12,3 in Teiler, Startnummer 107", BoxAnswer::Yes);
  const auto stored = SpeichereErgebnisse(bench.workplace(), &bench.store(), pending);
  QVERIFY(stored);
  QCOMPARE(stored->teiler, 1);
  QCOMPARE(bench.read("Select * from Schuss", {"Ergebnis"}), QStringList{"72,4"});
}

void TestStoring::ignoringOnceMoreAsksNothing() {
  const QString operation = "Fehler beim Speichern der Ergebnisse in die Datenbank!";
  Workbench bench;
  bench.store().dropTable("SchussSerien");
  bench.expectError(bench.failureOf([&] { bench.store().openRecordset("Select * from SchussSerien"); }),
                    operation, BoxAnswer::Ignore);
  bench.expectLostResult("18 in Ring 2, Startnummer 107", BoxAnswer::Yes);
  bench.expectError(91, operation, BoxAnswer::Ignore);
  bench.expectError(91, operation, BoxAnswer::Abort);
  QVERIFY(!SpeichereErgebnisse(bench.workplace(), &bench.store(), transferred(shots("2x9"), "Ring 2")));
}

void TestStoring::messages() {
  Workbench bench;
  bench.expectError(91, "Fehler beim Speichern der Ergebnisse in die Datenbank!", BoxAnswer::Abort);
  QVERIFY(!SpeichereErgebnisse(bench.workplace(), nullptr, transferred(shots("9"), "Teiler")));
  bench.expectError(91, "Fehler bei SpeichernInGrafikDatenbank_err!", BoxAnswer::Abort, "Fehler: ");
  QVERIFY(!SpeichernInGrafikDatenbank(bench.workplace(), nullptr, {}, {}));
}

void TestStoring::picture() {
  Workbench bench;
  bench.clock.set("21.11.2026 17:30:05");
  const Shots all = shots("9,7/72,4 10/12,3 8,5/20 10,9/3");
  all[0]->bAngewaehlt = false;
  all[1]->sWaffe = "";
  all[1]->WettbewerbBezeichnung = "";
  all[1]->dblTeilerFaktor = 0;
  all[2]->sWaffe = "LP";
  all[2]->dblTeilerFaktor = 2.5;
  all[2]->WettbewerbBezeichnung = "20 Luftpistole";
  all[3]->WettbewerbBezeichnung = "20 Luftgewehr";
  QVERIFY(SpeichernInGrafikDatenbank(bench.workplace(), &bench.store(), {"107", "Müller, Änne", "SV Grünau"},
                                     open(all)));
  QCOMPARE(bench.read("Select * from Grafik_Scheibe",
                      {"StartNr", "Name", "Verein", "Wettkampf", "ScheibenTyp", "AnzScheiben", "Teilerfaktor",
                       "AnzEinschuesse", "Datum", "ringeo", "ringem"}),
           QStringList{"107|Müller, Änne|SV Grünau|20 Luftpistole|LP|1|2,5|3|21.11.2026 17:30:05|28|29,4"});
  const QString id = bench.read("Select * from Grafik_Scheibe", {"ID"}).at(0);
  QCOMPARE(bench.read("Select * from Grafik_Schuss order by ID",
                      {"SchussNr", "Ringwert", "Teiler", "x", "Y", "ScheibenID"}),
           (QStringList{"1|10|12,3|20|-2|" + id, "2|8,5|20|30|-3|" + id, "3|10,9|3|40|-4|" + id}));
}

void TestStoring::pictureOfNothing() {
  Workbench bench;
  QVERIFY(SpeichernInGrafikDatenbank(bench.workplace(), &bench.store(), {}, {}));
  QCOMPARE(bench.read("Select * from Grafik_Scheibe", {"AnzEinschuesse", "Teilerfaktor", "ringem"}),
           QStringList{"0|0|0"});
  QCOMPARE(bench.read("Select * from Grafik_Schuss", {"ID"}), QStringList());
}

QTEST_MAIN(TestStoring)
#include "test_storing.moc"

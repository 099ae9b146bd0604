// Both quick evaluations from the competition to the report: what the report finds in its file, and what is
// left behind.
#include <QDir>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>

#include "platform/dao/recordset.h"
#include "tests/evaluation/evaluation_bench.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kKeine =
    "Es wurden noch keine Wettkämpfe/Setups im aktuellen Wettkampf gespeichert oder konfiguriert.\r\n"
    "Bitte prüfen Sie Ihre Einstellungen.";

}  // namespace

class TestQuickEvaluation : public QObject, private EvaluationBench {
  Q_OBJECT

 private Q_SLOTS:
  void init() { begin(); }
  void cleanup() { end(); }

  void nobodyIsChosen();
  void theProfileEvaluation();
  void thePlainList();
  void whatTheReportGets_data();
  void whatTheReportGets();
  void resultsFollowTheShooterTable();
  void aFileTurnsThatOff();
  void noProfiles();
  void nothingShot();
  void anUnknownShooter();
  void theCutComesBeforeTheWeapons();
  void weaponsClassesAndDays();
  void yieldsAfterDeletions();
  void aTargetValue();
  void moreThanAHundred();
  void nothingButNulls();
  void aResultWithoutValueIsNone();
  void aProfileWithoutType();
  void noSignIsNoWeapon();
  void theTemporaryFolderHoldsADot();
  void aSecondCopyBesideIt();
};

void TestQuickEvaluation::nobodyIsChosen() {
  for (int i = 0; i < 2; ++i) day->place.dialogs.expect("Kein Schütze gewählt!").titled("Fehler");
  QVERIFY(!profiles(""));
  QVERIFY(!list(""));
  QCOMPARE(reports->orders.size(), 0U);
  QCOMPARE(read(*day->wettkampf, "Select * from Schuss where ID = 11", {"KlassenID"}), QStringList{"1"});
}

void TestQuickEvaluation::theProfileEvaluation() {
  takeAll();
  QVERIFY(profiles());
  QCOMPARE(rows, (QStringList{"Pokal|Null|LG Teiler|Null|20,4|8,1|12,3|Null",
                              "König|Null|LG Teiler|Null|0|8,1|12,3|Null",
                              "König|Null|LG Serie|Null|0|95|Null|Null"}));
  QCOMPARE(single, (QStringList{"1|Schuss|12|T|8,1", "1|Schuss|11|T|12,3", "3|Schuss|12|T|8,1",
                                "3|Schuss|11|T|12,3", "3|SchussSerien|11|R|95"}));
  QCOMPARE(shooter, QStringList{"107|Müller Jörg|Schützengilde Grünau|Herren I|Grünau I"});
  QCOMPARE(names, (QStringList{"107|Null", "107|Null", "107|Null"}));
}

void TestQuickEvaluation::thePlainList() {
  takeAll();
  run("UPDATE AuswertProfil SET Anzahl = 3, nMinAnzahlErgAktiv = 1, nMinAnzahlErg = 2 WHERE ID = 3");
  run("INSERT INTO Auswert_Waffen (AuswertID, WaffenID) VALUES (3, 1)");
  QVERIFY(list());
  QCOMPARE(rows, (QStringList{"Null|Teiler|LG Teiler|LG|Null|8,1|12,3|Null",
                              "Null|Serien|LG Serie|LG|Null|95|Null|Null",
                              "Null|Prämie|Pokal -ohne Wertung (2/3)|Null|Null|20,4|Null|Null",
                              "Null|Prämie|König -ohne Wertung (1/2)|Null|Null|95|Null|Null"}));
  QCOMPARE(single, QStringList());
  QCOMPARE(shooter, QStringList{"107|Müller Jörg|Schützengilde Grünau|Herren I|Grünau I"});
  QCOMPARE(names.count("107|Müller Jörg"), 4);
}

void TestQuickEvaluation::whatTheReportGets_data() {
  QTest::addColumn<bool>("plain");
  QTest::addColumn<bool>("printed");
  QTest::addColumn<QString>("report");
  QTest::newRow("profiles, shown") << false << false << "kurzauswertung.rpt";
  QTest::newRow("profiles, printed") << false << true << "kurzauswertung.rpt";
  QTest::newRow("list, shown") << true << false << "schnell.rpt";
  QTest::newRow("list, printed") << true << true << "schnell.rpt";
}

void TestQuickEvaluation::whatTheReportGets() {
  QFETCH(const bool, plain);
  QFETCH(const bool, printed);
  QFETCH(const QString, report);
  takeAll();
  const Ziel ziel = printed ? Ziel::Drucker : Ziel::Fenster;
  const int loops = day->place.waits.messageLoops();
  QVERIFY(plain ? list("107", ziel) : profiles("107", ziel));
  QCOMPARE(reports->orders.size(), 1U);
  const ReportOrder& order = reports->orders[0];
  QCOMPARE(order.reportFile, day->system() + report);
  QCOMPARE(order.titel, "Kurzauswertung");
  QCOMPARE(order.ziel, ziel);
  QCOMPARE(order.parameter, "");
  QVERIFY(order.dataFile.startsWith(day->place.path("temp") + "/ZVA"));
  QCOMPARE(day->place.waits.messageLoops(), loops + 1);
}

void TestQuickEvaluation::resultsFollowTheShooterTable() {
  takeAll();
  const QStringList columns{"ID", "KlassenID", "MannID", "VorMannID"};
  for (const bool plain : {false, true}) {
    run("UPDATE Schuss SET KlassenID = 1, MannID = 9, VorMannID = 9");
    run("UPDATE SchussSerien SET KlassenID = 1");
    QVERIFY(plain ? list() : profiles());
    QCOMPARE(read(*day->wettkampf, "Select * from Schuss order by ID", columns),
             (QStringList{"11|7|3|5", "12|7|3|5", "13|0|0|0", "14|1|9|9"}));
    QCOMPARE(read(*day->wettkampf, "SchussSerien", columns), QStringList{"11|7|3|5"});
  }
}

void TestQuickEvaluation::aFileTurnsThatOff() {
  takeAll();
  day->place.files.write(day->place.path("programm/NoUpdate.txt"), {});
  QVERIFY(profiles());
  QVERIFY(list());
  QCOMPARE(read(*day->wettkampf, "Select * from Schuss where ID = 11", {"KlassenID"}), QStringList{"1"});
}

void TestQuickEvaluation::noProfiles() {
  run("UPDATE AuswertProfil SET nShowKurzAuswertung = 0");
  day->place.dialogs.expect(kKeine).titled("Hinweis").with(BoxButtons::Ok);
  QVERIFY(!profiles());
  QCOMPARE(reports->orders.size(), 0U);
  QVERIFY(list());  // a bonus line doesn't ask
}

void TestQuickEvaluation::nothingShot() {
  takeAll();
  run("Delete * from Schuss where Startnummer = '108'");
  QVERIFY(profiles("108"));
  QCOMPARE(rows, QStringList());
  QCOMPARE(shooter, QStringList{"108|Süß Benno|Null|Null|Null"});
  QVERIFY(list("108"));
  QCOMPARE(rows, QStringList());
}

void TestQuickEvaluation::anUnknownShooter() {
  takeAll();
  QVERIFY(profiles("999"));
  QCOMPARE(rows.size(), 2);  // results without a shooter
  QCOMPARE(shooter, QStringList());
  QVERIFY(list("4711"));
  QCOMPARE(rows, QStringList());
}

void TestQuickEvaluation::theCutComesBeforeTheWeapons() {
  takeAll();
  run("UPDATE Disziplin SET bGewErg = True, nGewErg = 1 WHERE ID = 1");
  run("UPDATE Schuss SET WTyp = 'LP' WHERE ID = 12");  // the best, with a weapon that doesn't count
  run("UPDATE AuswertProfil SET OptWaffen = 1 WHERE ID = 1");
  QVERIFY(profiles());
  QCOMPARE(single, (QStringList{"3|Schuss|12|T|8,1", "3|SchussSerien|11|R|95"}));
}

void TestQuickEvaluation::weaponsClassesAndDays() {
  takeAll();
  run("UPDATE AuswertProfil SET OptKlassen = 1 WHERE ID = 1");
  run("UPDATE Auswert_Klassen SET KlassenID = 8");
  QVERIFY(profiles());
  QVERIFY(single.filter("1|Schuss").isEmpty());
  run("UPDATE AuswertProfil SET OptKlassen = 0, OptTage = 1 WHERE ID = 1");
  QVERIFY(profiles());
  QVERIFY(single.filter("1|Schuss").isEmpty());  // another shooter shot a day later
  run("Delete * from Schuss where ID = 13");
  QVERIFY(profiles());
  QCOMPARE(single.filter("1|Schuss"), QStringList{"1|Schuss|11|T|12,3"});
  // The best of the month was shot on another day than the last.
  run("UPDATE AuswertProfil SET Monatswertung = True, nBestTageswertung = 1 WHERE ID = 1");
  QVERIFY(profiles());
  QCOMPARE(single.filter("1|Schuss"), QStringList{"1|Schuss|11|T|12,3"});
  run("UPDATE AuswertProfil SET OptTage = 0 WHERE ID = 1");
  QVERIFY(profiles());
  QCOMPARE(single.filter("1|Schuss"), QStringList{"1|Schuss|12|T|8,1"});
}

void TestQuickEvaluation::yieldsAfterDeletions() {
  takeAll();
  const auto loopsWith = [&](const QString& setting) {
    run("UPDATE AuswertProfil SET OptWaffen = 0, OptKlassen = 0, OptTage = 0, Tageswertung = False");
    run("UPDATE AuswertProfil SET " + setting + " WHERE ID = 1");
    const int before = day->place.waits.messageLoops();
    profiles();
    return day->place.waits.messageLoops() - before - 1;  // the last one comes before the report
  };
  run("UPDATE Schuss SET WTyp = 'KK'");
  run("UPDATE Auswert_Klassen SET KlassenID = 8");
  QCOMPARE(loopsWith("OptWaffen = 1"), 2);
  QCOMPARE(loopsWith("OptKlassen = 1"), 2);
  QCOMPARE(loopsWith("OptTage = 1"), 2);
  QCOMPARE(loopsWith("Tageswertung = True, nBestTageswertung = 0"), 0);
  run("UPDATE Schuss SET Datum = '30.11.2026 10:00:00'");
  QCOMPARE(loopsWith("Tageswertung = True, nBestTageswertung = 0"), 0);
  QCOMPARE(single.filter("1|Schuss").size(), 1);
}

void TestQuickEvaluation::aTargetValue() {
  takeAll();
  run("UPDATE AuswertProfil SET Vorgabe = '12,0' WHERE ID = 3");
  QVERIFY(profiles());
  QCOMPARE(rows[1], "König|Null|LG Teiler|Null|0|12,3|8,1|Null");
  run("UPDATE AuswertProfil SET Vorgabe = '1.0' WHERE ID = 3");  // ten
  QVERIFY(profiles());
  QCOMPARE(rows[1], "König|Null|LG Teiler|Null|0|8,1|12,3|Null");
}

void TestQuickEvaluation::moreThanAHundred() {
  takeAll();
  const auto table = day->wettkampf->openRecordset("Schuss");
  for (int i = 1; i <= 110; ++i) {
    table->addNew();
    table->setValue("Startnummer", "107");
    table->setValue("DisziID", 1);
    table->setValue("Ergebnis", 100 + i);
    table->update();
  }
  QStringList last;
  reports->meanwhile = [&](const ReportOrder& order) {
    last = read(*dao::Database::open(order.dataFile, true), "Select * from Ergebnisse order by ID",
                {"DisziErgebnis", "E99", "E100"});
  };
  run("UPDATE AuswertProfil SET Anzahl = 112 WHERE ID = 1");
  QVERIFY(profiles());
  QCOMPARE(last.value(0), QString("%1|197|198").arg(QString::number(8.1 + 12.3 + 17105.0).replace('.', ',')));
}

void TestQuickEvaluation::nothingButNulls() {
  run("UPDATE AuswertProfil SET Name = Null, Typ = Null, Vorgabe = Null, Anzahl = Null, OptTage = Null, "
      "OptWaffen = "
      "Null, "
      "OptKlassen = Null, nBestTageswertung = Null, nMinAnzahlErgAktiv = Null, nMinAnzahlErg = Null, "
      "Monatswertung = Null");
  run("UPDATE Disziplin SET Name = Null, nGewErg = Null");
  run("UPDATE DisziplinWaffen SET KZ = Null, WaffenID = Null");
  run("UPDATE Auswert_Waffen SET WaffenID = Null");
  run("UPDATE Auswert_Klassen SET KlassenID = Null");
  run("UPDATE Schuss SET Ergebnis = Null, WTyp = Null, Art = Null, KlassenID = Null, MannID = Null, "
      "VorMannID = Null, Datum = Null");
  run("UPDATE SchussSerien SET Ergebnis = Null, WTyp = Null, Datum = Null");
  run("UPDATE Schützen SET Name = Null, Strasse = Null, VereinsID = Null, lMannID = Null, KlassenID = Null");
  run("UPDATE Wettkampf SET Bezeichnung = Null, Bezeichnung2 = Null, Ort = Null");
  QVERIFY(profiles());
  QVERIFY(rows.isEmpty());
  QCOMPARE(shooter, QStringList{"107|Null|Null|Null|Null"});
  run("UPDATE AuswertProfil SET OptTage = 1, OptWaffen = 1, OptKlassen = 1, Monatswertung = True");
  QVERIFY(profiles());
  QVERIFY(list());
}

void TestQuickEvaluation::aResultWithoutValueIsNone() {
  takeAll();
  QVERIFY(profiles());
  const QStringList before = rows;
  run("INSERT INTO Schuss (Startnummer, DisziID, WTyp) VALUES ('107', 1, 'LG')");
  run("INSERT INTO SchussSerien (Startnummer, DisziID, WTyp) VALUES ('107', 2, 'LG')");
  QVERIFY(profiles());
  QCOMPARE(rows, before);
}

void TestQuickEvaluation::aProfileWithoutType() {
  takeAll();
  run("UPDATE AuswertProfil SET Typ = Null");
  QVERIFY(profiles());
  QVERIFY(rows.isEmpty());
}

void TestQuickEvaluation::noSignIsNoWeapon() {
  takeAll();
  run("UPDATE AuswertProfil SET OptWaffen = 1");
  run("UPDATE Schuss SET WTyp = Null");
  run("UPDATE SchussSerien SET WTyp = Null");
  run("UPDATE DisziplinWaffen SET KZ = 'KK'");
  QVERIFY(profiles());
  const QStringList ofOtherWeapons = rows;
  run("UPDATE DisziplinWaffen SET KZ = Null");
  QVERIFY(profiles());
  QCOMPARE(rows, ofOtherWeapons);
}

void TestQuickEvaluation::theTemporaryFolderHoldsADot() {
  const QString folder = day->place.path("max.muster/temp");
  QVERIFY(QDir().mkpath(folder));
  const QByteArray before = qgetenv("temp");
  qputenv("temp", folder.toUtf8());
  const auto back = qScopeGuard([&] { qputenv("temp", before); });
  takeAll();
  QVERIFY(profiles());
  QCOMPARE(rows.size(), 3);
}

/// Two desks with one folder for temporary files.
void TestQuickEvaluation::aSecondCopyBesideIt() {
  takeAll();
  const auto inner = reports->meanwhile;
  bool first = true;
  reports->meanwhile = [&](const ReportOrder& order) {
    if (std::exchange(first, false)) QVERIFY(list("108"));
    inner(order);
  };
  QVERIFY(profiles());
  QCOMPARE(reports->orders.size(), 2U);
  QVERIFY(reports->orders[0].dataFile != reports->orders[1].dataFile);
  QCOMPARE(rows.size(), 3);
}

QTEST_MAIN(TestQuickEvaluation)
#include "test_quick_evaluation.moc"

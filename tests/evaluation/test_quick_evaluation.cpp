// Both quick evaluations from the competition to the report: what the report finds in its file, what is left
// behind, and what the operator hears when something fails.
#include <sqlite3.h>

#include <QDir>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>

#include "evaluation/quick_evaluation.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/evaluation/shooting_day.h"
#include "tests/support/postgres_server.h"
#include "tests/support/report_doors.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

namespace {

using Ziel = ReportOrder::Ziel;

const char* const kProfileText = "Fehler beim Drucken der Kurzauswertung!";
const char* const kListText = "Es ist ein Fehler beim Drucken aufgetreten!";
const char* const kKeine =
    "Es wurden noch keine Wettkämpfe/Setups im aktuellen Wettkampf gespeichert oder konfiguriert.\r\n"
    "Bitte prüfen Sie Ihre Einstellungen.";

void native(const QString& file, const char* statement) {
  sqlite3* store = nullptr;
  const bool done = sqlite3_open(file.toUtf8().constData(), &store) == SQLITE_OK &&
                    sqlite3_exec(store, statement, nullptr, nullptr, nullptr) == SQLITE_OK;
  sqlite3_close(store);
  if (!done) failTest(QString("not done in the file: ") + statement);
}

}  // namespace

class TestQuickEvaluation : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    day = std::make_unique<ShootingDay>();
    reports = std::make_unique<NotedReports>();
    day->place.random.give({0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7});
    reports->meanwhile = [this](const ReportOrder& order) {
      const auto druck = dao::Database::open(order.dataFile, true);
      QVERIFY(!druck->isOpenElsewhere());  // what was written is in the file
      rows = read(*druck, "Select * from Ergebnisse order by ID",
                  {"Wettkampf", "Gruppe", "Disziplin", "WTyp", "DisziErgebnis", "E1", "E2", "E3"});
      shooter = read(*druck, "Schütze", {"Startnummer", "Name", "Verein", "Klasse", "Mannschaft"});
      single = read(*druck, "Select * from EinzelErgebnisse order by WkID, Ergebnis",
                    {"WkID", "Tabelle", "ErgID", "Art", "Ergebnis"});
      names = read(*druck, "Select * from Ergebnisse order by ID", {"Startnummer", "Name"});
    };
    rows = shooter = single = names = {};
  }
  void cleanup() {
    const QStringList left = files();
    day.reset();
    reports.reset();
    QCOMPARE(left, QStringList());  // whatever happened
  }

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
  void anIgnoredProfileTable();
  void aSecondCopyBesideIt();

  void failures_data();
  void failures();
  void aFailedFilter_data();
  void aFailedFilter();
  void theDayCannotBeRead();
  void whatNoProfileAsksIsNotRead();
  void anUndeletableResult_data();
  void anUndeletableResult();
  void theReportFails_data();
  void theReportFails();
  void thePrintingIsGivenUp();
  void theTemplateIsMissing();
  void theServerDropsTheConnection();

 private:
  QStringList files() const { return QDir(day->place.path("temp")).entryList(QDir::Files); }
  Auswertungsplatz platz() { return {day->place.workplace(), *day->wettkampf, *reports, day->system()}; }
  bool profiles(const QString& number = "107", Ziel ziel = Ziel::Fenster) {
    return druckeProfilauswertung(platz(), number, ziel);
  }
  bool list(const QString& number = "107", Ziel ziel = Ziel::Fenster) {
    return druckeSchnellliste(platz(), number, ziel);
  }
  void run(const QString& statement) { day->wettkampf->execute(statement); }
  /// Profiles that leave out nothing.
  void takeAll() {
    run("UPDATE AuswertProfil SET OptTage = 0, OptWaffen = 0, OptKlassen = 0, Tageswertung = False, "
        "Monatswertung = False, nMinAnzahlErgAktiv = 0");
    run("UPDATE Disziplin SET bGewErg = False");
  }
  Expectation& expectFailure(const QString& failure, const QString& text, BoxAnswer answer) {
    return day->place.dialogs.expect("Fehler: " + failure + "\n" + text, answer)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore)
        .showing(BoxIcon::Exclamation);
  }
  Expectation& expectFailure(int number, const QString& text, BoxAnswer answer) {
    return expectFailure(QString("%1 - %2").arg(number).arg(errorDescription(number)), text, answer);
  }
  /// What fails says the same however often.
  QString failureOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const Error& error) {
      return QString("%1 - %2").arg(error.number()).arg(error.description());
    }
    failTest("nothing failed");
    return {};
  }
  /// What is said of a template that can't be copied or opened.
  QString ofTemplate(const QString& failure) {
    return failure + "\nVorlage: " + day->printTemplate() + "\nTemporärer Ordner: " + day->place.path("temp");
  }
  QString ofTemplate(int number) {
    return ofTemplate(QString("%1 - %2").arg(number).arg(errorDescription(number)));
  }
  QString missing(const QString& table) {
    return failureOf([&] { day->wettkampf->openRecordset("Select * from " + table); });
  }

  std::unique_ptr<ShootingDay> day;
  std::unique_ptr<NotedReports> reports;
  QStringList rows, shooter, single, names;
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

/// Nothing is known of the profiles then: it isn't said that there are none.
void TestQuickEvaluation::anIgnoredProfileTable() {
  day->wettkampf->dropTable("AwProfilDiszi");
  const QString failure = missing("AwProfilDiszi");
  expectFailure(failure, kProfileText, BoxAnswer::Ignore);  // the profiles can't be copied
  expectFailure(QString(failure).replace("AwProfilDiszi", "Profile"), kProfileText,
                BoxAnswer::Ignore);  // nor read
  QVERIFY(!profiles());
  QVERIFY(reports->orders.empty());
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

void TestQuickEvaluation::failures_data() {
  QTest::addColumn<bool>("plain");
  QTest::addColumn<QString>("table");
  QTest::addColumn<int>("boxes");
  QTest::newRow("profiles, results") << false << "SchussSerien" << 2;  // the update and the reading
  QTest::newRow("profiles, clubs") << false << "Verein" << 1;
  QTest::newRow("list, results") << true << "SchussSerien" << 2;
  QTest::newRow("list, weapons") << true << "DisziplinWaffen" << 1;
  QTest::newRow("list, weapons of profiles") << true << "Auswert_Waffen" << 1;
  QTest::newRow("list, classes of profiles") << true << "Auswert_Klassen" << 1;
  QTest::newRow("list, disciplines of profiles") << true << "AwProfilDiszi" << 1;
  QTest::newRow("list, profiles") << true << "Auswertprofil" << 1;
}

void TestQuickEvaluation::failures() {
  QFETCH(const bool, plain);
  QFETCH(const QString, table);
  QFETCH(const int, boxes);
  takeAll();
  const dao::TableDef definition = day->wettkampf->tableDef(table);
  day->wettkampf->dropTable(table);
  const QString failure = missing(table);
  const QString text = plain ? kListText : kProfileText;

  expectFailure(failure, text, BoxAnswer::Abort);
  QVERIFY(!(plain ? list() : profiles()));
  QCOMPARE(reports->orders.size(), 0U);
  QCOMPARE(files(), QStringList());

  for (int i = 0; i < boxes; ++i) expectFailure(failure, text, BoxAnswer::Ignore);
  QVERIFY(plain ? list() : profiles());
  QCOMPARE(reports->orders.size(), 1U);

  expectFailure(failure, text, BoxAnswer::Retry).during([&] { day->wettkampf->createTable(definition); });
  QVERIFY(plain ? list() : profiles());
  QCOMPARE(reports->orders.size(), 2U);
}

void TestQuickEvaluation::aFailedFilter_data() {
  QTest::addColumn<QString>("setting");
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("text");
  QTest::newRow("weapons") << "OptWaffen = 1"
                           << "Auswert_Waffen"
                           << "Fehler beim Prüfen der Wettkampfwaffen - Kurzauswertung!";
  QTest::newRow("weapons of disciplines") << "OptWaffen = 1"
                                          << "DisziplinWaffen"
                                          << "Fehler beim Prüfen der Wettkampfwaffen - Kurzauswertung!";
  QTest::newRow("classes") << "OptKlassen = 1"
                           << "Auswert_Klassen"
                           << "Fehler beim Prüfen der Wettkampfklassen - Kurzauswertung!";
  QTest::newRow("days") << "OptWaffen = 1, OptTage = 1"
                        << "Schuss"
                        << "Fehler beim Prüfen der Wettkampftage - Kurzauswertung!";
}

void TestQuickEvaluation::aFailedFilter() {
  QFETCH(const QString, setting);
  QFETCH(const QString, table);
  QFETCH(const QString, text);
  takeAll();
  run("UPDATE AuswertProfil SET " + setting + " WHERE ID = 1");
  run("UPDATE Schuss SET WTyp = 'KK' WHERE ID = 11");
  const dao::TableDef definition = day->wettkampf->tableDef(table);
  const bool read = table != "Schuss";  // that one goes while the weapons' filter lets events run
  const auto drop = [&] { day->wettkampf->dropTable(table); };
  if (read) drop();
  const auto evaluate = [&] {
    if (!read) QTimer::singleShot(0, this, drop);
    return profiles();
  };
  const auto back = [&] { day->wettkampf->createTable(definition); };
  const QString failure =
      failureOf([&] { day->wettkampf->openRecordset("Select * from Fehlt"); }).replace("Fehlt", table);
  const QString known = read ? missing(table) : failure;

  expectFailure(known, text, BoxAnswer::Abort);
  QVERIFY(!evaluate());
  QCOMPARE(reports->orders.size(), 0U);
  QCOMPARE(files(), QStringList());
  if (!read) return;

  expectFailure(known, text, BoxAnswer::Ignore);
  QVERIFY(evaluate());
  QCOMPARE(reports->orders.size(), 1U);

  expectFailure(known, text, BoxAnswer::Retry).during(back);
  QVERIFY(evaluate());
  QCOMPARE(reports->orders.size(), 2U);
}

/// Its results all count then.
void TestQuickEvaluation::theDayCannotBeRead() {
  takeAll();
  run("UPDATE AuswertProfil SET OptWaffen = 1, OptTage = 1 WHERE ID = 1");
  run("UPDATE Schuss SET WTyp = 'KK' WHERE ID = 11");
  const QString failure = missing("Fehlt").replace("Fehlt", "Schuss");
  QTimer::singleShot(0, this, [this] { day->wettkampf->dropTable("Schuss"); });
  expectFailure(failure, "Fehler beim Prüfen der Wettkampftage - Kurzauswertung!", BoxAnswer::Ignore);
  QVERIFY(profiles());
  QCOMPARE(single.filter("1|Schuss"), QStringList{"1|Schuss|12|T|8,1"});
}

void TestQuickEvaluation::whatNoProfileAsksIsNotRead() {
  takeAll();
  for (const char* table : {"Auswert_Waffen", "DisziplinWaffen", "Auswert_Klassen"})
    day->wettkampf->dropTable(table);
  QVERIFY(profiles());
}

void TestQuickEvaluation::anUndeletableResult_data() {
  QTest::addColumn<QString>("setting");
  QTest::addColumn<QString>("text");
  QTest::newRow("highest number") << ""
                                  << "Fehler beim Prüfen der Max.Ergebnisse - Kurzauswertung!";
  QTest::newRow("days and months") << "Tageswertung = True, nBestTageswertung = 1"
                                   << "Fehler beim Ermitteln der Tages-/MonatsAuswertung!";
}

void TestQuickEvaluation::anUndeletableResult() {
  QFETCH(const QString, setting);
  QFETCH(const QString, text);
  takeAll();
  run("UPDATE AuswertProfil SET nShowKurzAuswertung = 0 WHERE ID = 3");
  if (setting.isEmpty())
    run("UPDATE Disziplin SET bGewErg = True, nGewErg = 1 WHERE ID = 1");
  else
    run("UPDATE AuswertProfil SET " + setting + " WHERE ID = 1");
  run("UPDATE Schuss SET Datum = '30.11.2026 10:00:00'");
  native(day->printTemplate(),
         "CREATE TRIGGER nie BEFORE DELETE ON EinzelErgebnisse BEGIN SELECT RAISE(ABORT, 'gesperrt'); END");
  const QString failure = failureOf([&] {
    const QString copy = day->place.path("probe");
    QFile::copy(day->printTemplate(), copy);
    const auto druck = dao::Database::open(copy);
    druck->execute("INSERT INTO EinzelErgebnisse (WkID) VALUES (1)");
    druck->execute("Delete * from EinzelErgebnisse where ID = 1");
  });

  expectFailure(failure, text, BoxAnswer::Abort);
  QVERIFY(!profiles());
  QCOMPARE(files(), QStringList());

  expectFailure(failure, text, BoxAnswer::Ignore);
  QVERIFY(profiles());
  QCOMPARE(single.size(), 2);  // it stays there, and doesn't count all the same
  QCOMPARE(rows, QStringList{"Pokal|Null|LG Teiler|Null|8,1|8,1|Null|Null"});

  expectFailure(failure, text, BoxAnswer::Retry).during([&] {
    native(day->place.path("temp/") + files().filter(QRegularExpression("^ZVA.*tmp$")).value(0),
           "DROP TRIGGER nie");
  });
  QVERIFY(profiles());
  QCOMPARE(single.size(), 1);
}

void TestQuickEvaluation::theReportFails_data() {
  QTest::addColumn<bool>("plain");
  QTest::newRow("profiles") << false;
  QTest::newRow("list") << true;
}

void TestQuickEvaluation::theReportFails() {
  QFETCH(const bool, plain);
  takeAll();
  reports->error = 482;
  const QString text = plain ? kListText : kProfileText;
  expectFailure(482, text, BoxAnswer::Abort);
  QVERIFY(!(plain ? list() : profiles()));
  QCOMPARE(files(), QStringList());
  expectFailure(482, text, BoxAnswer::Ignore);
  QVERIFY(!(plain ? list() : profiles()));
  QCOMPARE(files(), QStringList());
  expectFailure(482, text, BoxAnswer::Retry).during([&] { reports->error = 0; });
  QVERIFY(plain ? list() : profiles());
  QCOMPARE(reports->orders.size(), 4U);
}

void TestQuickEvaluation::thePrintingIsGivenUp() {
  takeAll();
  reports->goesOn = false;
  QVERIFY(!profiles("107", Ziel::Drucker));
  QVERIFY(!list("107", Ziel::Drucker));
  QCOMPARE(reports->orders.size(), 2U);
}

void TestQuickEvaluation::theTemplateIsMissing() {
  QFile::rename(day->printTemplate(), day->place.path("weg"));
  expectFailure(ofTemplate(53), kProfileText, BoxAnswer::Abort);
  QVERIFY(!profiles());
  expectFailure(ofTemplate(53), kListText, BoxAnswer::Abort);
  QVERIFY(!list());
  expectFailure(ofTemplate(53), kListText, BoxAnswer::Retry).during([&] {
    QFile::rename(day->place.path("weg"), day->printTemplate());
  });
  QVERIFY(list());
}

/// In the midst of it, as after a restart of the server: whatever is said, the sheet is whole or isn't
/// printed.
void TestQuickEvaluation::theServerDropsTheConnection() {
  if (!storesOnServer()) return;
  takeAll();
  run("UPDATE AuswertProfil SET OptWaffen = 1, OptKlassen = 1 WHERE ID = 1");
  run("UPDATE Schuss SET WTyp = 'KK' WHERE ID = 11");
  bool dropped = false;
  QTimer::singleShot(0, this, [&] {
    serverDatabase(day->path())
        .native(
            "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE datname = "
            "current_database() AND pid <> pg_backend_pid()");
    dropped = true;
  });
  QVERIFY(profiles());
  QVERIFY(dropped);
  QCOMPARE(rows[0], "Pokal|Null|LG Teiler|Null|8,1|8,1|Null|Null");
}

QTEST_MAIN(TestQuickEvaluation)
#include "test_quick_evaluation.moc"

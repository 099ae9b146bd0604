// What the operator hears when a quick evaluation fails, and where each answer leads.
#include <sqlite3.h>

#include <QDir>
#include <QTest>
#include <QTimer>

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/evaluation/evaluation_bench.h"
#include "tests/support/postgres_server.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

namespace {

void native(const QString& file, const char* statement) {
  sqlite3* store = nullptr;
  const bool done = sqlite3_open(file.toUtf8().constData(), &store) == SQLITE_OK &&
                    sqlite3_exec(store, statement, nullptr, nullptr, nullptr) == SQLITE_OK;
  sqlite3_close(store);
  if (!done) failTest(QString("not done in the file: ") + statement);
}

}  // namespace

class TestEvaluationFailures : public QObject, private EvaluationBench {
  Q_OBJECT

 private Q_SLOTS:
  void init() { begin(); }
  void cleanup() { end(); }

  void anIgnoredProfileTable();
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
};

/// Nothing is known of the profiles then: it isn't said that there are none.
void TestEvaluationFailures::anIgnoredProfileTable() {
  day->wettkampf->dropTable("AwProfilDiszi");
  const QString failure = missing("AwProfilDiszi");
  expectFailure(failure, kProfileText, BoxAnswer::Ignore);  // the profiles can't be copied
  expectFailure(QString(failure).replace("AwProfilDiszi", "Profile"), kProfileText,
                BoxAnswer::Ignore);  // nor read
  QVERIFY(!profiles());
  QVERIFY(reports->orders.empty());
}

void TestEvaluationFailures::failures_data() {
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

void TestEvaluationFailures::failures() {
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

void TestEvaluationFailures::aFailedFilter_data() {
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

void TestEvaluationFailures::aFailedFilter() {
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
void TestEvaluationFailures::theDayCannotBeRead() {
  takeAll();
  run("UPDATE AuswertProfil SET OptWaffen = 1, OptTage = 1 WHERE ID = 1");
  run("UPDATE Schuss SET WTyp = 'KK' WHERE ID = 11");
  const QString failure = missing("Fehlt").replace("Fehlt", "Schuss");
  QTimer::singleShot(0, this, [this] { day->wettkampf->dropTable("Schuss"); });
  expectFailure(failure, "Fehler beim Prüfen der Wettkampftage - Kurzauswertung!", BoxAnswer::Ignore);
  QVERIFY(profiles());
  QCOMPARE(single.filter("1|Schuss"), QStringList{"1|Schuss|12|T|8,1"});
}

void TestEvaluationFailures::whatNoProfileAsksIsNotRead() {
  takeAll();
  for (const char* table : {"Auswert_Waffen", "DisziplinWaffen", "Auswert_Klassen"})
    day->wettkampf->dropTable(table);
  QVERIFY(profiles());
}

void TestEvaluationFailures::anUndeletableResult_data() {
  QTest::addColumn<QString>("setting");
  QTest::addColumn<QString>("text");
  QTest::newRow("highest number") << ""
                                  << "Fehler beim Prüfen der Max.Ergebnisse - Kurzauswertung!";
  QTest::newRow("days and months") << "Tageswertung = True, nBestTageswertung = 1"
                                   << "Fehler beim Ermitteln der Tages-/MonatsAuswertung!";
}

void TestEvaluationFailures::anUndeletableResult() {
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

void TestEvaluationFailures::theReportFails_data() {
  QTest::addColumn<bool>("plain");
  QTest::newRow("profiles") << false;
  QTest::newRow("list") << true;
}

void TestEvaluationFailures::theReportFails() {
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

void TestEvaluationFailures::thePrintingIsGivenUp() {
  takeAll();
  reports->goesOn = false;
  QVERIFY(!profiles("107", Ziel::Drucker));
  QVERIFY(!list("107", Ziel::Drucker));
  QCOMPARE(reports->orders.size(), 2U);
}

void TestEvaluationFailures::theTemplateIsMissing() {
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
void TestEvaluationFailures::theServerDropsTheConnection() {
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

QTEST_MAIN(TestEvaluationFailures)
#include "test_evaluation_failures.moc"

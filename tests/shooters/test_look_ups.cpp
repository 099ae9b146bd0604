// What ids of a competition are called.
#include <QTest>
#include <memory>

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "shooters/look_ups.h"
#include "tests/shooters/competition.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestLookUps : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place = std::make_unique<TestWorkplace>();
    database = newCompetition(place->path("Wettkampf.qkk"));
  }
  void cleanup() {
    database.reset();
    place.reset();
  }

  void registrationsWithAndWithoutATeam();
  void noRegistrationsGiveNothing();
  void clubsByShortNameElseName();
  void teams();
  void groupsOfTeams();
  void failuresAreReported_data();
  void failuresAreReported();
  void retryReadsAgain();

 private:
  /// What the report of a failed look-up in that table says before the look-up's own text.
  QString failureOf(const QString& table) {
    try {
      database->openRecordset("Select * from " + table + " where ID = 1");
    } catch (const Error& error) {
      return QString("Fehler: %1 - %2\n").arg(error.number()).arg(error.description());
    }
    return "kein Fehler";
  }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<dao::Database> database;
};

void TestLookUps::registrationsWithAndWithoutATeam() {
  addRow(*database, "MeldeDisziplin", {{"ID", 1}, {"MeldeDisziplin", "Luftgewehr"}});
  addRow(*database, "MeldeDisziplin", {{"ID", 2}, {"MeldeDisziplin", "Luftpistole"}});
  addRow(*database, "Mannschaften", {{"ID", 7}, {"MannName", "Ährenfeld I"}});
  const QString table = "Schuetzen_SPO_Anmeldungen";
  addRow(*database, table, {{"ID", 1}, {"SchuetzeID", 5}, {"SPOID", 1}, {"MannID", 7}});
  addRow(*database, table, {{"ID", 2}, {"SchuetzeID", 5}, {"SPOID", 2}, {"MannID", 0}});
  addRow(*database, table, {{"ID", 3}, {"SchuetzeID", 6}, {"SPOID", 2}, {"MannID", 7}});
  QCOMPARE(ErmittleSPOText(*database, place->dialogs, 5), "Luftgewehr - Ährenfeld I\r\nLuftpistole\r\n");
}

void TestLookUps::noRegistrationsGiveNothing() {
  QCOMPARE(ErmittleSPOText(*database, place->dialogs, 5), "");
}

void TestLookUps::clubsByShortNameElseName() {
  addRow(*database, "Verein", {{"ID", 1}, {"Name", "Schützenverein Ährenfeld"}, {"Kurzname", "Ährenfeld"}});
  addRow(*database, "Verein", {{"ID", 2}, {"Name", "Schützengilde"}, {"Kurzname", ""}});
  addRow(*database, "Verein", {{"ID", 3}, {"Name", "Ohne Kürzel"}});
  QCOMPARE(ErmittleVereinsKurzname(*database, place->dialogs, 1), "Ährenfeld");
  QCOMPARE(ErmittleVereinsKurzname(*database, place->dialogs, 2), "Schützengilde");
  QCOMPARE(ErmittleVereinsKurzname(*database, place->dialogs, 3), "Ohne Kürzel");
  QCOMPARE(ErmittleVereinsKurzname(*database, place->dialogs, 4), "");
}

void TestLookUps::teams() {
  addRow(*database, "Mannschaften", {{"ID", 7}, {"MannName", "Ährenfeld I"}});
  QCOMPARE(ErmittleMannschaftsName(*database, place->dialogs, 7), "Ährenfeld I");
  QCOMPARE(ErmittleMannschaftsName(*database, place->dialogs, 8), "");
}

void TestLookUps::groupsOfTeams() {
  addRow(*database, "MannschaftsGruppen", {{"MannGrpID", 3}, {"Bezeichnung", "Kreisliga"}});
  addRow(*database, "Mannschaften", {{"ID", 7}, {"MannName", "Ährenfeld I"}, {"GruppenID", 3}});
  addRow(*database, "Mannschaften", {{"ID", 8}, {"MannName", "Ährenfeld II"}});
  QCOMPARE(ErmittleMannschaftsGruppe(*database, place->dialogs, 7, true), "Kreisliga");
  QCOMPARE(ErmittleMannschaftsGruppe(*database, place->dialogs, 8, true), "");
  QCOMPARE(ErmittleMannschaftsGruppe(*database, place->dialogs, 9, true), "");
  // A group's own id finds nothing either: the group stays 0.
  QCOMPARE(ErmittleMannschaftsGruppe(*database, place->dialogs, 3, false), "");
}

void TestLookUps::failuresAreReported_data() {
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("text");
  QTest::newRow("club") << "Verein"
                        << "Fehler beim Ermitteln des VereinsKurznamen!";
  QTest::newRow("team") << "Mannschaften"
                        << "Fehler bei ErmittleMannschaftsName_err!";
}

void TestLookUps::failuresAreReported() {
  QFETCH(QString, table);
  QFETCH(QString, text);
  database->dropTable(table);
  place->dialogs.expect(failureOf(table) + text, BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  const auto lookUp = table == "Verein" ? ErmittleVereinsKurzname : ErmittleMannschaftsName;
  QCOMPARE(lookUp(*database, place->dialogs, 1), "");
}

void TestLookUps::retryReadsAgain() {
  addRow(*database, "Verein", {{"ID", 1}, {"Kurzname", "SV Neu"}});
  const dao::TableDef clubs = database->tableDef("Verein");
  database->dropTable("Verein");
  place->dialogs.expect(failureOf("Verein") + "Fehler beim Ermitteln des VereinsKurznamen!", BoxAnswer::Retry)
      .during([&] {
        database->createTable(clubs);
        addRow(*database, "Verein", {{"ID", 1}, {"Kurzname", "SV Neu"}});
      });
  QCOMPARE(ErmittleVereinsKurzname(*database, place->dialogs, 1), "SV Neu");
}

QTEST_MAIN(TestLookUps)
#include "test_look_ups.moc"

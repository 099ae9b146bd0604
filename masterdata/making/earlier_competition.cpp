#include "masterdata/making/earlier_competition.h"

#include "app/ground/unfinished_move.h"
#include "masterdata/people/shooter_class.h"
#include "platform/dao/changes.h"
#include "platform/dao/moving/store_copy.h"
#include "platform/dao/recordset.h"
#include "platform/schema/schema_build.h"

namespace qk {

namespace {

constexpr int kNoCompetition = errors::kInvalidCall;

const QStringList kAlways = {"Wettkampf",
                             "Klassenwechsel",
                             "Schützenklassen",
                             "Disziplin",
                             "DisziplinKlasse",
                             "DisziplinWaffen",
                             "Waffen",
                             "Kombination_Name",
                             "Kombination_Diszi",
                             "Kasse_Verwaltung",
                             "Kasse_DisziKombi",
                             "Kasse_Schuetzenklassen",
                             "AuswertProfil",
                             "AwProfilDiszi",
                             "Auswert_Klassen",
                             "Auswert_Waffen",
                             "MeldeDisziplin",
                             "Haering_Gruppen",
                             "Haering_Gruppen_Disziplinen",
                             "ScheibenNummern",
                             "MannschaftsGruppen",
                             "SchuetzenGruppen"};
const QStringList kOfShooters = {"Schützen", "Schuetzen_SPO_Anmeldungen", "SchuetzenGruppenZuordnung"};
const QStringList kOfClubs = {"Verein"};
const QStringList kOfTeams = {"Mannschaften"};

bool isAmong(const QStringList& names, const QString& name) {
  return std::any_of(names.begin(), names.end(),
                     [&name](const QString& known) { return dao::sameName(known, name); });
}

void refuseOtherStores(dao::Database& source) {
  refuseUnfinishedMove(source);
  for (const char* table : {"Wettkampf", "Disziplin", "Schützenklassen"})
    if (!source.hasTable(table))
      throw Error(kNoCompetition,
                  "Das ist kein Wettkampf, die Tabelle " + QString(table) + " fehlt: " + source.path());
}

bool areWanted(const CompetitionRequest& request, const QString& table) {
  return isAmong(kAlways, table) || (request.withShooters && isAmong(kOfShooters, table)) ||
         (request.withClubs && isAmong(kOfClubs, table)) || (request.withTeams && isAmong(kOfTeams, table));
}

void setWhere(dao::Database& database, const QString& table, const QString& column, const QString& value) {
  if (database.hasTable(table) && database.tableDef(table).field(column))
    database.execute(QString("Update [%1] set [%2] = %3").arg(table, column, value));
}

/// Tables and queries that an older competition lacks.
void addMissing(dao::Database& target) {
  const Schema own = embeddedSchema("Wettkampf.txt");
  Schema missing{own.source, {}, {}, {}};
  for (const dao::TableDef& table : own.tables)
    if (!target.hasTable(table.name)) missing.tables.push_back(table);
  for (const StoredQuery& query : own.queries)
    if (!isAmong(target.queryNames(), query.name)) missing.queries.push_back(query);
  buildSchema(target, missing);
}

}  // namespace

void copyEarlier(dao::Database& source, dao::Database& target, const CompetitionRequest& request,
                 const std::function<void(const MakingStep&)>& watch) {
  refuseOtherStores(source);
  const QStringList tables = source.tableNames();
  MakingStep step;
  step.steps = static_cast<int>(tables.size());
  for (const QString& table : tables) {
    step.text = QString("Kopieren: %1").arg(table);
    ++step.number;
    step.rows = 0;
    watch(step);
    if (!areWanted(request, table)) {
      target.createTable(source.tableDef(table));
      continue;
    }
    dao::copyTable(source, target, table, [&](qint64 rows) {
      step.rows = rows;
      watch(step);
    });
  }
  dao::copyQueries(source, target);
  addMissing(target);
  setWhere(target, "ScheibenNummern", "AktuelleNummer", "[Startnummer]");
  if (!request.withClubs) {
    setWhere(target, "Schützen", "VereinsID", "0");
    setWhere(target, "Mannschaften", "VereinID", "0");
  }
  if (!request.withTeams) {
    setWhere(target, "Schützen", "lMannID", "0");
    setWhere(target, "Schuetzen_SPO_Anmeldungen", "MannID", "0");
  }
}

MakingResult classifyShooters(dao::Database& competition) {
  MakingResult result;
  const ShooterClasses classes = readShooterClasses(competition);
  dao::Changes changes(competition);
  const auto shooters = competition.openRecordset("Select * from Schützen", dao::RecordsetType::Snapshot);
  for (; !shooters->eof(); shooters->moveNext()) {
    ++result.shooters;
    const QString birthDate = shooters->value("Gebdat").toString();
    if (shooters->value("bGebKlasseManuell").toInt() != 0 || !isKnownBirthDate(birthDate)) continue;
    const qint32 found = classes.determine(birthDate, shooters->value("Geschlecht").toString()).id;
    if (found == 0) ++result.withoutClass;
    if (found == shooters->value("KlassenID").toInt()) continue;
    if (found != 0) ++result.newClasses;
    changes.update("Schützen", shooters->value("ID").toLongLong(), {{"KlassenID", found}});
  }
  changes.write();
  return result;
}

}  // namespace qk

#include "masterdata/making/competition.h"

#include <QDateTime>
#include <QFileInfo>
#include <QResource>

#include "masterdata/making/demo_rows.h"
#include "masterdata/making/draft.h"
#include "masterdata/making/earlier_competition.h"
#include "masterdata/making/starter_set.h"
#include "platform/dao/changes.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/schema/schema_build.h"

// Outside of the namespace: a static library's resources are named here or left out by the linker.
static void registerSchemas() {
  Q_INIT_RESOURCE(schemas);
}

namespace qk {

namespace {

const QString kYearBegin = "01.01.";
const QString kKeys = "MeldeDisziplin";

const RowSection& section(const Schema& schema, const QString& table) {
  for (const RowSection& rows : schema.rows)
    if (rows.table == table) return rows;
  throw Error(errors::kUnknownTable, QString("%1: keine Zeilen für »%2«").arg(schema.source, table));
}

/// The standard discipline keys.
TableData standardKeys() {
  const Schema keys = embeddedSchema("LeerSA.txt");
  return typedRows(section(keys, kKeys), *keys.table(kKeys), keys.source);
}

/// The tables of a competition with the column of the keys' factors, which they need before the program's own
/// opening adds it; that opening finds it there.
Schema tablesWithFactors() {
  Schema tables = embeddedSchema("Wettkampf.txt");
  const dao::FieldDef factor = *embeddedSchema("LeerSA.txt").table(kKeys)->field("TeilerfaktorESA");
  for (dao::TableDef& table : tables.tables)
    if (dao::sameName(table.name, kKeys)) table.fields.push_back(factor);
  return tables;
}

void insertHead(dao::Database& database, const CompetitionRequest& request) {
  const CompetitionTitle& title = request.title;
  insertRows(database,
             {"Wettkampf",
              {"RefDatum", "Bezeichnung", "Bezeichnung2", "Ort"},
              {{QDateTime(title.referenceDate, QTime(0, 0)), title.name, title.secondLine, title.place}}});
  insertRows(database, {"Klassenwechsel",
                        {"wechseldatumneu"},
                        {{request.yearBegin.isEmpty() ? kYearBegin : request.yearBegin}}});
}

/// What the earlier competition says of itself is replaced; its other columns stay.
void changeHead(dao::Database& database, const CompetitionRequest& request) {
  const CompetitionTitle& title = request.title;
  dao::Changes changes(database);
  const auto set = [&](const QString& table, const dao::RowValues& values) {
    const auto row = database.openRecordset(table, dao::RecordsetType::Snapshot);
    if (row->eof())
      changes.insert(table, values);
    else
      changes.update(table, row->value("ID").toLongLong(), values);
  };
  set("Wettkampf", {{"RefDatum", QDateTime(title.referenceDate, QTime(0, 0))},
                    {"Bezeichnung", title.name},
                    {"Bezeichnung2", title.secondLine},
                    {"Ort", title.place}});
  if (!request.yearBegin.isEmpty() || database.openRecordset("Klassenwechsel")->eof())
    set("Klassenwechsel",
        {{"wechseldatumneu", request.yearBegin.isEmpty() ? kYearBegin : request.yearBegin}});
  changes.write();
}

void fillFromStarter(dao::Database& database, const CompetitionRequest& request) {
  const Schema tables = tablesWithFactors();
  const std::vector<TableData> rows = starterRows(QString::fromUtf8(Files().read(request.starter)),
                                                  QFileInfo(request.starter).fileName(), tables);
  buildSchema(database, tables);
  insertHead(database, request);
  bool ownKeys = false;
  for (const TableData& table : rows) {
    insertRows(database, table);
    ownKeys |= dao::sameName(table.table, kKeys);
  }
  if (!ownKeys) insertRows(database, standardKeys());
}

MakingResult fillLikeEarlier(dao::Database& database, const CompetitionRequest& request,
                             const std::function<void(const MakingStep&)>& watch) {
  const auto earlier = dao::Database::open(request.earlier, true);
  copyEarlier(*earlier, database, request, watch);
  changeHead(database, request);
  return request.withShooters ? classifyShooters(database) : MakingResult();
}

MakingStep stepOf(const MoveStep& move) {
  const bool copying = move.kind == MoveStep::Kind::Copying;
  return {(copying ? QString("Übertragen: %1") : QString("Vergleichen: %1")).arg(move.table), move.number,
          move.tables, move.rows};
}

}  // namespace

Schema embeddedSchema(const QString& name) {
  registerSchemas();
  const QResource text(":/schema/" + name);
  if (!text.isValid()) throw Error(errors::kFileNotFound, name);
  return parseSchema(QString::fromUtf8(text.uncompressedData()), name);
}

MakingResult makeCompetition(const CompetitionRequest& request, const MakingWatch& watch) {
  if (!request.starter.isEmpty() && !request.earlier.isEmpty())
    throw Error(errors::kInvalidCall, "Eine Vorlage und ein früherer Wettkampf gehen nicht zusammen.");
  const auto stoppable = [&watch](const MakingStep& step) {
    if (watch && !watch(step)) throw Error(errors::kCancelled);
  };
  MakingResult result;
  const auto fill = [&](dao::Database& database) {
    if (!request.earlier.isEmpty()) {
      result = fillLikeEarlier(database, request, stoppable);
    } else if (!request.starter.isEmpty()) {
      fillFromStarter(database, request);
    } else {
      buildSchema(database, embeddedSchema("Wettkampf.txt"));
      insertHead(database, request);
    }
  };
  makeWhole({request.path, request.again}, fill, [&](const MoveStep& step) { stoppable(stepOf(step)); });
  return result;
}

void makeCompetition(const QString& path, const CompetitionTitle& title) {
  makeCompetition(CompetitionRequest{path, title});
}

void makeDemoCompetition(const QString& path) {
  const Schema tables = tablesWithFactors();
  const auto fill = [&tables](dao::Database& database) {
    buildSchema(database, tables);
    insertRows(database, standardKeys());
    for (const TableData& data : demoRows(tables, embeddedSchema("Demo.txt"))) insertRows(database, data);
  };
  makeWhole({path}, fill, [](const MoveStep&) {});
}

}  // namespace qk

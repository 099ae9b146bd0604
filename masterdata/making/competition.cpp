#include "masterdata/making/competition.h"

#include <QDateTime>
#include <QFile>
#include <QResource>
#include <QTemporaryDir>

#include "masterdata/making/demo_rows.h"
#include "masterdata/making/move.h"
#include "platform/runtime/error.h"
#include "platform/schema/schema_build.h"

// Outside of the namespace: a static library's resources are named here or left out by the linker.
static void registerSchemas() {
  Q_INIT_RESOURCE(schemas);
}

namespace qk {

namespace {

const RowSection& section(const Schema& schema, const QString& table) {
  for (const RowSection& rows : schema.rows)
    if (rows.table == table) return rows;
  throw Error(3078, QString("%1: keine Zeilen für »%2«").arg(schema.source, table));
}

/// The factors need their column before the program's own opening adds it; that opening finds it there.
void insertDisciplineKeys(dao::Database& database) {
  const Schema keys = embeddedSchema("LeerSA.txt");
  const dao::TableDef& table = *keys.table("MeldeDisziplin");
  database.appendField(table.name, *table.field("TeilerfaktorESA"));
  insertRows(database, typedRows(section(keys, table.name), table, keys.source));
}

void fillDemo(dao::Database& database, const Schema& tables) {
  buildSchema(database, tables);
  insertDisciplineKeys(database);
  for (const TableData& data : demoRows(tables, embeddedSchema("Demo.txt"))) insertRows(database, data);
}

/// Into a file that doesn't exist yet; into a store that does by a move, for nobody else may see it half
/// done.
void makeAt(const QString& path, const std::function<void(dao::Database&)>& fill) {
  if (!QFile::exists(path)) return createDatabase(path, fill);
  const QTemporaryDir folder;
  const QString draft = folder.filePath("entwurf.qkk");
  createDatabase(draft, fill);
  moveCompetition({draft, path, false, "qk-wettkampf neu"}, [](const MoveStep&) {});
}

}  // namespace

Schema embeddedSchema(const QString& name) {
  registerSchemas();
  const QResource text(":/schema/" + name);
  if (!text.isValid()) throw Error(53, name);
  return parseSchema(QString::fromUtf8(text.uncompressedData()), name);
}

void makeCompetition(const QString& path, const CompetitionTitle& title) {
  const Schema tables = embeddedSchema("Wettkampf.txt");
  makeAt(path, [&](dao::Database& database) {
    buildSchema(database, tables);
    insertRows(database, {"Wettkampf",
                          {"RefDatum", "Bezeichnung", "Bezeichnung2", "Ort"},
                          {{QDateTime(title.referenceDate, QTime(0, 0)), title.name, "", title.place}}});
    insertRows(database, {"Klassenwechsel", {"wechseldatumneu"}, {{"01.01."}}});
  });
}

void makeDemoCompetition(const QString& path) {
  const Schema tables = embeddedSchema("Wettkampf.txt");
  makeAt(path, [&](dao::Database& database) { fillDemo(database, tables); });
}

}  // namespace qk

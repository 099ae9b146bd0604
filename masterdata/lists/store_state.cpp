#include "masterdata/lists/store_state.h"

#include "platform/dao/database.h"
#include "platform/dao/row_pages.h"
#include "platform/runtime/error.h"

namespace qk::lists {

namespace {

TableRows readTable(dao::Database& database, const QString& table) {
  dao::RowPages pages(database, table);
  TableRows result{pages.def(), {}};
  std::vector<QVariantList> page;
  while (pages.next(page))
    result.rows.insert(result.rows.end(), std::make_move_iterator(page.begin()),
                       std::make_move_iterator(page.end()));
  return result;
}

/// What the classes are determined by, also where it isn't a table of its own.
std::vector<TableRows> readRules(dao::Database& database) {
  std::vector<TableRows> rules;
  for (const char* table : {"Schützenklassen", "Klassenwechsel", "Wettkampf"})
    rules.push_back(readTable(database, table));
  return rules;
}

bool sameTable(const TableRows& a, const TableRows& b) {
  return a.rows == b.rows;
}

}  // namespace

int TableRows::position(const QString& column) const {
  for (size_t i = 0; i < def.fields.size(); ++i)
    if (dao::sameName(def.fields[i].name, column)) return static_cast<int>(i);
  throw Error(errors::kNoSuchElement,
              QString("Der Tabelle »%1« fehlt die Spalte »%2«.").arg(def.name, column));
}

qint64 TableRows::key(const QVariantList& row) const {
  const dao::IndexDef* primary = def.primary();
  return primary ? row[position(primary->fields.value(0))].toLongLong() : 0;
}

std::shared_ptr<const StoreState> readStoreState(dao::Database& database) {
  auto state = std::make_shared<StoreState>();
  const auto read = [&database](const QString& table) { return readTable(database, table); };
  state->shooters = read("Schützen");
  state->clubs = read("Verein");
  state->teams = read("Mannschaften");
  state->teamGroups = read("MannschaftsGruppen");
  state->shooterGroups = read("SchuetzenGruppen");
  state->groupMembers = read("SchuetzenGruppenZuordnung");
  state->registrations = read("Schuetzen_SPO_Anmeldungen");
  state->reportedDisciplines = read("MeldeDisziplin");
  state->rules = readRules(database);
  state->classes = readShooterClasses(database);
  return state;
}

bool sameRows(const StoreState& a, const StoreState& b) {
  return sameTable(a.shooters, b.shooters) && sameTable(a.clubs, b.clubs) && sameTable(a.teams, b.teams) &&
         sameTable(a.teamGroups, b.teamGroups) && sameTable(a.shooterGroups, b.shooterGroups) &&
         sameTable(a.groupMembers, b.groupMembers) && sameTable(a.registrations, b.registrations) &&
         sameTable(a.reportedDisciplines, b.reportedDisciplines) &&
         std::equal(a.rules.begin(), a.rules.end(), b.rules.begin(), b.rules.end(), sameTable);
}

}  // namespace qk::lists

#include "masterdata/lists/take_over.h"

#include "masterdata/lists/import_table.h"
#include "masterdata/lists/store_state.h"
#include "platform/dao/database.h"
#include "platform/dao/values/convert.h"

namespace qk::lists {

namespace {

/// Where nobody else may add rows between the judgement and the writing: what is new here would be double.
const QStringList JudgedTables = {"Schützen", "Verein", "Mannschaften", "MannschaftsGruppen",
                                  "SchuetzenGruppen"};

bool sameValues(const PlannedValue& a, const PlannedValue& b) {
  return a.column == b.column && a.before == b.before && a.after == b.after && a.made == b.made;
}

bool sameRow(const PlannedRow& a, const PlannedRow& b) {
  return a.table == b.table && a.key == b.key &&
         std::equal(a.values.begin(), a.values.end(), b.values.begin(), b.values.end(), sameValues);
}

bool samePlan(const Plan& a, const Plan& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameRow);
}

/// Hands a plan to the changes, row after row, and notes what takes it back.
class Writing {
 public:
  Writing(dao::Database& database, dao::Changes& changes) : database_(database), changes_(changes) {}

  void add(const PlannedRow& row) {
    dao::RowValues values, before;
    for (const PlannedValue& value : row.values) {
      values.insert(value.column, after(value));
      before.insert(value.column, value.before);
    }
    if (row.key == 0) {
      keys_.push_back(changes_.insert(row.table, values));
      written_.push_back({row.table, keys_.back(), true, digestOf(wholeRow(row), def(row.table)), {}});
      return;
    }
    changes_.expect(row.table, row.key, before);
    changes_.update(row.table, row.key, values);
    keys_.push_back(row.key);
    written_.push_back({row.table, row.key, false, 0, {}});
    for (const PlannedValue& value : row.values)
      written_.back().values.push_back({value.column, value.before, after(value)});
  }

  const std::vector<WrittenRow>& written() const { return written_; }

 private:
  QVariant after(const PlannedValue& value) const {
    if (value.made == kNoRow) return value.after;
    return static_cast<int>(keys_[static_cast<size_t>(value.made)]);
  }

  struct KnownTable {
    dao::TableDef def;
    QVariantList presets;
    QHash<QString, int> positions;
  };

  const KnownTable& known(const QString& table) {
    const auto found = tables_.constFind(table);
    if (found != tables_.constEnd()) return *found;
    KnownTable known{database_.tableDef(table), {}, {}};
    for (const dao::FieldDef& field : known.def.fields) {
      known.positions.insert(field.name, static_cast<int>(known.presets.size()));
      known.presets << dao::presetValue(field);
    }
    return *tables_.insert(table, known);
  }

  const dao::TableDef& def(const QString& table) { return known(table).def; }

  QVariantList wholeRow(const PlannedRow& row) {
    const KnownTable& table = known(row.table);
    QVariantList values = table.presets;
    for (const PlannedValue& value : row.values) values[table.positions.value(value.column)] = after(value);
    return values;
  }

  dao::Database& database_;
  dao::Changes& changes_;
  std::vector<qint64> keys_;  ///< by row of the plan
  std::vector<WrittenRow> written_;
  QHash<QString, KnownTable> tables_;
};

Judgement again(const Judgement& judgement, std::shared_ptr<const StoreState> state) {
  return judge(judgement.kind, judgement.table, judgement.assignment, std::move(state));
}

}  // namespace

TakenOver takeOver(dao::Database& database, const Judgement& judgement, const QString& name,
                   const QDateTime& now) {
  TakenOver result;
  const std::vector<TableMark> marks = marksOf(database, JudgedTables);
  const auto state = readStoreState(database);
  if (!sameRows(*state, *judgement.state)) {
    Judgement fresh = again(judgement, state);
    if (!samePlan(fresh.plan, judgement.plan)) {
      result.fresh = std::move(fresh);
      return result;
    }
  }
  result.added = judgement.count(Verdict::New);
  result.changed = judgement.count(Verdict::Changed);
  result.written = true;
  if (judgement.plan.empty()) return result;
  ensureImportTable(database);
  dao::Changes changes(database);
  requireMarks(changes, database, marks, JudgedTables);
  Writing writing(database, changes);
  for (const PlannedRow& row : judgement.plan) writing.add(row);
  recordImport(changes, {name, now, result.added, result.changed}, writing.written());
  try {
    changes.write();
  } catch (const Error& error) {
    if (!isStale(error)) throw;
    return {false, 0, 0, again(judgement, readStoreState(database))};
  }
  return result;
}

std::optional<LastImport> lastImport(dao::Database& database) {
  const auto stored = storedImport(database);
  return stored ? std::optional(stored->about) : std::nullopt;
}

}  // namespace qk::lists

// Taking the last import back; take_over.h tells of it.
#include <QHash>
#include <QSet>

#include "masterdata/lists/import_table.h"
#include "masterdata/rows/references.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/row_pages.h"

namespace qk::lists {

namespace {

constexpr int MostRefusals = 100;

/// Where counters and pages name what an import may have brought: whoever is about to has looked whether it
/// is there. In the order in which lists are taken over.
const QStringList NamedByHand = {"Schützen", "Mannschaften", "SchuetzenGruppenZuordnung",
                                 "Schuetzen_SPO_Anmeldungen"};

/// The rows of an import as they stand now, by table.
class WrittenRows {
 public:
  WrittenRows(dao::Database& database, const std::vector<WrittenRow>& written) {
    for (const WrittenRow& row : written) keys_[row.table].insert(row.key);
    for (auto table = keys_.begin(); table != keys_.end(); ++table)
      if (database.hasTable(table.key())) read(database, table.key(), table.value());
  }

  QStringList tables() const { return keys_.keys(); }
  const dao::TableDef& def(const QString& table) { return defs_[table]; }
  /// nullptr for one that is gone.
  const QVariantList* find(const QString& table, qint64 key) const {
    const auto rows = rows_.constFind(table);
    if (rows == rows_.constEnd()) return nullptr;
    const auto row = rows->constFind(key);
    return row == rows->constEnd() ? nullptr : &*row;
  }
  QVariant value(const QString& table, qint64 key, const QString& column) {
    const QVariantList* row = find(table, key);
    const int position = row ? positionOf(defs_[table], column) : -1;
    return position < 0 ? QVariant() : (*row)[position];
  }

  static int positionOf(const dao::TableDef& def, const QString& column) {
    for (size_t i = 0; i < def.fields.size(); ++i)
      if (dao::sameName(def.fields[i].name, column)) return static_cast<int>(i);
    return -1;
  }

 private:
  void read(dao::Database& database, const QString& table, const QSet<qint64>& wanted) {
    dao::RowPages pages(database, table);
    defs_[table] = pages.def();
    const dao::IndexDef* primary = pages.def().primary();
    const int key = primary ? positionOf(pages.def(), primary->fields.value(0)) : 0;
    std::vector<QVariantList> page;
    while (pages.next(page))
      for (QVariantList& row : page)
        if (const qint64 found = row[key].toLongLong(); wanted.contains(found))
          rows_[table].insert(found, std::move(row));
  }

  QHash<QString, QSet<qint64>> keys_;
  QHash<QString, dao::TableDef> defs_;
  QHash<QString, QHash<qint64, QVariantList>> rows_;
};

/// What stands against taking an import back.
class Refusals {
 public:
  Refusals(dao::Database& database, const std::vector<WrittenRow>& written)
      : database_(database), written_(written), rows_(database, written) {
    for (const WrittenRow& row : written) {
      if (row.isNew) removed_[row.table].insert(row.key);
      for (const WrittenValue& value : row.values) restored_[{row.table, value.column}].insert(row.key);
    }
    findChanged();
    findReferences();
  }

  QStringList all() const { return all_; }

 private:
  void refuse(const QString& text) {
    if (all_.size() < MostRefusals) all_ << text;
    if (all_.size() == MostRefusals) all_ << "Und weitere.";
  }

  QString nameOf(const WrittenRow& row) {
    static const QHash<QString, std::pair<QString, QStringList>> names = {
        {"Schützen", {"Der Schütze »%1«", {"Startnummer", "Name"}}},
        {"Verein", {"Der Verein »%1«", {"Name"}}},
        {"Mannschaften", {"Die Mannschaft »%1«", {"MannName"}}},
        {"MannschaftsGruppen", {"Die Mannschaftsgruppe »%1«", {"Bezeichnung"}}},
        {"SchuetzenGruppen", {"Die Schützengruppe »%1«", {"Bezeichnung"}}}};
    const auto [text, columns] = names.value(row.table, {"Eine Zeile der Tabelle »%1«", {}});
    QStringList values;
    for (const QString& column : columns) values << rows_.value(row.table, row.key, column).toString();
    return text.arg(columns.isEmpty() ? row.table : values.join(' '));
  }

  void findChanged() {
    for (const WrittenRow& row : written_) {
      const QVariantList* found = rows_.find(row.table, row.key);
      if (!found) {
        refuse(QString("Eine Zeile der Tabelle »%1« (Nummer %2) ist inzwischen gelöscht.")
                   .arg(row.table)
                   .arg(row.key));
        continue;
      }
      bool changed = row.isNew && digestOf(*found, rows_.def(row.table)) != row.digest;
      for (const WrittenValue& value : row.values)
        changed =
            changed || rows_.value(row.table, row.key, value.column).toString() != value.after.toString();
      if (changed) refuse(nameOf(row) + " wurde seither geändert.");
    }
  }

  void findReferences() {
    for (const Reference& reference : references()) {
      if (removed_.value(reference.target).isEmpty() || !stands(reference)) continue;
      const QSet<QString> named = namedBy(reference);
      for (const WrittenRow& row : written_) {
        if (!row.isNew || row.table != reference.target) continue;
        const QString value = rows_.value(row.table, row.key, reference.by).toString();
        if (!value.isEmpty() && named.contains(value.toCaseFolded()))
          refuse(QString("%1 hat inzwischen: %2.").arg(nameOf(row), reference.many));
      }
    }
  }

  bool stands(const Reference& reference) {
    return database_.hasTable(reference.table) && database_.tableDef(reference.table).field(reference.column);
  }

  /// All that the table's rows name there, but for rows that go with the import or get back what they named
  /// before it.
  QSet<QString> namedBy(const Reference& reference) {
    const QSet<qint64> gone =
        removed_.value(reference.table) + restored_.value({reference.table, reference.column});
    const dao::TableDef def = database_.tableDef(reference.table);
    const dao::IndexDef* primary = def.primary();
    QStringList conditions;
    for (const auto& [column, number] : reference.onlyWhere)
      conditions << QString("[%1] = %2").arg(column).arg(number);
    const QString where = conditions.isEmpty() ? QString() : " WHERE " + conditions.join(" AND ");
    const bool withKey = !gone.isEmpty() && primary;
    const QString key = withKey ? ", [" + primary->fields.value(0) + "] AS Nummer" : QString();
    const auto found = database_.openRecordset(QString("SELECT DISTINCT [%1] AS Genannt%2 FROM [%3]%4")
                                                   .arg(reference.column, key, reference.table, where),
                                               dao::RecordsetType::Snapshot);
    QSet<QString> named;
    for (; !found->eof(); found->moveNext())
      if (!withKey || !gone.contains(found->value("Nummer").toLongLong()))
        named.insert(found->value("Genannt").toString().toCaseFolded());
    return named;
  }

  dao::Database& database_;
  const std::vector<WrittenRow>& written_;
  WrittenRows rows_;
  QHash<QString, QSet<qint64>> removed_;
  QHash<std::pair<QString, QString>, QSet<qint64>> restored_;  ///< by table and column
  QStringList all_;
};

/// Tables in which a new row could name what goes, and those that it goes from.
QStringList watchedTables(const std::vector<WrittenRow>& written) {
  QSet<QString> tables;
  for (const WrittenRow& row : written)
    if (row.isNew) tables.insert(row.table);
  QSet<QString> watched = tables;
  for (const Reference& reference : references())
    if (tables.contains(reference.target)) watched.insert(reference.table);
  return watched.values();
}

void reverse(dao::Changes& changes, const std::vector<WrittenRow>& written) {
  for (auto row = written.rbegin(); row != written.rend(); ++row) {
    if (row->isNew) {
      changes.remove(row->table, row->key);
      continue;
    }
    dao::RowValues after, before;
    for (const WrittenValue& value : row->values) {
      after.insert(value.column, value.after);
      before.insert(value.column, value.before);
    }
    changes.expect(row->table, row->key, after);
    changes.update(row->table, row->key, before);
  }
}

}  // namespace

Undone undoLastImport(dao::Database& database) {
  const auto stored = storedImport(database);
  if (!stored) return {false, {"Es gibt keine Übernahme, die sich zurücknehmen ließe."}};
  const auto written = unpacked(stored->rows);
  if (!written) return {false, {"Die Aufzeichnung der letzten Übernahme ist unlesbar."}};
  const QStringList watched = watchedTables(*written);
  const std::vector<TableMark> marks = marksOf(database, watched);
  Undone result{false, Refusals(database, *written).all()};
  if (!result.refusals.isEmpty()) return result;
  dao::Changes changes(database);
  QStringList held;
  for (const QString& table : NamedByHand)
    if (watched.contains(table)) held << table;
  requireMarks(changes, database, marks, held);
  reverse(changes, *written);
  dropImport(changes);
  try {
    changes.write();
  } catch (const Error& error) {
    if (!isStale(error)) throw;
    return {false, {"Eben hat jemand anders im Wettkampf geschrieben. Bitte noch einmal versuchen."}};
  }
  result.done = true;
  return result;
}

}  // namespace qk::lists

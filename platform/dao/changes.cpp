#include "platform/dao/changes.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

#include "platform/dao/engine/engine.h"
#include "platform/dao/engine/right_to_write.h"
#include "platform/dao/sql/parser.h"
#include "platform/dao/values/convert.h"

namespace qk::dao {
namespace {

/// Numbers are taken from the store in growing blocks: each costs a commit.
constexpr int kMostNumbersAtOnce = 1024;
/// From so many new rows on the store learns what the table looks like now.
constexpr int kMany = 1000;

using Positions = QList<int>;

bool isBlank(const QVariant& value) {
  return !value.isValid() || (value.typeId() == QMetaType::QString && value.toString().isEmpty());
}

bool isSame(const QVariant& one, const QVariant& other) {
  return (isBlank(one) && isBlank(other)) || one == other;
}

}  // namespace

RowChanged::RowChanged(QString table, qint64 key, RowValues found)
    : Error(errors::kChangedMeanwhile), table_(std::move(table)), key_(key), found_(std::move(found)) {}

/// A table with what was worked out of it once. A statement depends on nothing but the columns that it names.
struct Changes::Table {
  Table(Engine& engine, std::shared_ptr<const Catalogue> all, const TableInfo& found)
      : catalogue(std::move(all)), info(found), writer(engine.writer()) {
    for (size_t i = 0; i < info.def.fields.size(); ++i) {
      const FieldDef& field = info.def.fields[i];
      positions.insert(field.name, static_cast<int>(i));
      if (info.key.integer && sameName(field.name, info.key.names.front())) keyField = static_cast<int>(i);
      const QVariant preset = presetValue(field);
      presets.append(preset.isValid() ? writer.toNative(preset, field.type) : QVariant());
    }
  }

  const FieldDef& field(int position) const { return info.def.fields[static_cast<size_t>(position)]; }

  int position(const QString& name) {
    if (const auto known = positions.constFind(name); known != positions.cend()) return *known;
    const FieldDef* found = info.def.field(name);
    if (!found)
      throw Error(errors::kNoSuchElement,
                  QString("%1 (Tabelle »%2«, Spalte »%3«)")
                      .arg(errorDescription(errors::kNoSuchElement), info.def.name, name));
    const int position = static_cast<int>(found - info.def.fields.data());
    positions.insert(name, position);
    return position;
  }

  QVariant converted(int position, const QVariant& value) const {
    try {
      QVariant result = convertedValue(value, field(position));
      requireAllowed(result, field(position));
      return result;
    } catch (const Error& error) {
      throw Error(error.number(), QString("%1 (Tabelle »%2«, Spalte »%3«)")
                                      .arg(error.description(), info.def.name, field(position).name));
    }
  }

  QStringList names(const Positions& columns) const {
    QStringList all;
    for (int column : columns) all.append(field(column).name);
    return all;
  }

  const NewRow& insertion(const Positions& columns) {
    NewRow& row = insertions[columns];
    if (row.text.isEmpty()) row = {writer.insertRow(info, names(columns)), names(columns)};
    return row;
  }
  const QString& updating(const Positions& columns) {
    QString& text = updates[columns];
    if (text.isEmpty()) text = writer.updateRow(info, names(columns));
    return text;
  }
  const QString& holding(const Positions& columns) {
    QString& text = looks[columns];
    if (text.isEmpty()) text = writer.holdRow(info, names(columns));
    return text;
  }

  std::shared_ptr<const Catalogue> catalogue;
  const TableInfo& info;
  const sql::Writer& writer;
  QHash<QString, int> positions;
  QVariantList presets;
  int keyField = -1;
  int taken = 0;
  std::map<Positions, NewRow> insertions;
  std::map<Positions, QString> updates, looks;
};

struct Changes::Change {
  enum class Kind { Insert, Update, Remove, Action } kind;
  Table* table = nullptr;
  qint64 key = 0;
  bool numbered = false;  ///< its key was taken for it: nobody else's row bears it
  Positions columns = {};
  QVariantList values = {};  ///< native
  QString action = {};
};

struct Changes::Work {
  struct Expectation {
    Table* table;
    qint64 key;
    Positions columns;
    QVariantList values;  ///< of the columns' types
  };

  Table& table(const QString& name);
  Table& keyedTable(const QString& name);
  Positions sorted(Table& table, const RowValues& values) const;
  void run(const Change& change);
  void require(const Expectation& expectation);
  bool wasStored();
  void learnFigures();
  void giveBackNumbers();

  Database& database;
  Engine& engine;
  std::map<QString, Table> tables = {};
  std::vector<Expectation> expectations = {};
  std::vector<std::function<void()>> conditions = {};
  std::vector<Table*> held = {};
  std::vector<Change> changes = {};
  bool repeated = false;
  QString doubt = {};
};

Changes::Table& Changes::Work::table(const QString& name) {
  const QString folded = foldedName(name);
  if (const auto known = tables.find(folded); known != tables.end()) return known->second;
  auto catalogue = engine.catalogue();
  const TableInfo* info = catalogue->info(name);
  if (!info || info->query)
    throw Error(errors::kUnknownTable,
                QString("%1 (»%2«)").arg(errorDescription(errors::kUnknownTable), name));
  return tables.try_emplace(folded, engine, std::move(catalogue), *info).first->second;
}

Changes::Table& Changes::Work::keyedTable(const QString& name) {
  Table& found = table(name);
  if (!found.info.key.integer) throw Error(errors::kNotSupported);
  return found;
}

/// The columns in the table's order, so that rows with the same ones share their statement.
Positions Changes::Work::sorted(Table& table, const RowValues& values) const {
  Positions columns;
  for (auto value = values.cbegin(); value != values.cend(); ++value)
    columns.append(table.position(value.key()));
  std::sort(columns.begin(), columns.end());
  return columns;
}

Changes::Changes(Database& database) : work_(new Work{database, database.engine()}) {}

Changes::~Changes() {
  if (!work_->repeated) work_->giveBackNumbers();  // else one of them may be a row's
}

qint64 Changes::insert(const QString& name, const RowValues& values) {
  Table& table = work_->keyedTable(name);
  QVariantList row = table.presets;
  for (auto value = values.cbegin(); value != values.cend(); ++value) {
    const int position = table.position(value.key());
    row[position] =
        table.writer.toNative(table.converted(position, value.value()), table.field(position).type);
  }
  Change change{Change::Kind::Insert, &table};
  for (int i = 0; i < row.size(); ++i)
    if (!row[i].isValid()) table.converted(i, {});
  if (table.keyField >= 0 && row[table.keyField].isValid()) {
    change.key = row[table.keyField].toLongLong();
  } else if (table.info.autoNumber >= 0) {
    const int block = std::clamp(table.taken, Engine::kNumberBlock, kMostNumbersAtOnce);
    change.key = work_->engine.takeNumber(table.info, block);
    change.numbered = true;
    ++table.taken;
    row[table.info.autoNumber] = static_cast<qlonglong>(change.key);
  }
  change.columns.reserve(row.size());
  change.values.reserve(row.size());
  for (int i = 0; i < row.size(); ++i) {
    if (!row[i].isValid()) continue;
    change.columns.append(i);
    change.values.append(row[i]);
  }
  work_->changes.push_back(std::move(change));
  return work_->changes.back().key;
}

void Changes::update(const QString& name, qint64 key, const RowValues& values) {
  Table& table = work_->keyedTable(name);
  Change change{Change::Kind::Update, &table, key, false, work_->sorted(table, values)};
  change.values.resize(change.columns.size());
  for (auto value = values.cbegin(); value != values.cend(); ++value) {
    const int position = table.position(value.key());
    const FieldDef& field = table.field(position);
    if (field.autoNumber) throw Error(errors::kFieldNotUpdatable);
    change.values[change.columns.indexOf(position)] =
        table.writer.toNative(table.converted(position, value.value()), field.type);
  }
  if (!change.columns.isEmpty()) work_->changes.push_back(std::move(change));
}

void Changes::remove(const QString& name, qint64 key) {
  work_->changes.push_back({Change::Kind::Remove, &work_->keyedTable(name), key});
}

void Changes::execute(const QString& action) {
  sql::Statement statement = sql::parseStatement(action);
  if (std::holds_alternative<sql::Select>(statement)) throw Error(errors::kNoActionQuery);
  sql::resolve(statement, *work_->engine.catalogue());
  Change change{Change::Kind::Action};
  change.action = action;
  work_->changes.push_back(std::move(change));
}

void Changes::expect(const QString& name, qint64 key, const RowValues& values) {
  Table& table = work_->keyedTable(name);
  Work::Expectation expectation{&table, key, work_->sorted(table, values), {}};
  expectation.values.resize(expectation.columns.size());
  for (auto value = values.cbegin(); value != values.cend(); ++value) {
    const int position = table.position(value.key());
    expectation.values[expectation.columns.indexOf(position)] =
        convertedValue(value.value(), table.field(position));
  }
  work_->expectations.push_back(std::move(expectation));
}

void Changes::require(std::function<void()> condition) {
  work_->conditions.push_back(std::move(condition));
}

void Changes::hold(const QString& name) {
  Table* table = &work_->table(name);
  if (std::find(work_->held.begin(), work_->held.end(), table) == work_->held.end())
    work_->held.push_back(table);
}

bool Changes::isEmpty() const {
  return work_->changes.empty();
}

void Changes::write() {
  if (work_->engine.readOnly()) throw Error(errors::kNotUpdatable);
  if (!work_->repeated || !work_->wasStored()) {
    work_->repeated = true;
    withRightToWrite([this] {
      work_->engine.transactionOnce(
          [this] {
            for (const Table* table : work_->held) work_->engine.holdTable(table->info);
            for (const Work::Expectation& expectation : work_->expectations) work_->require(expectation);
            for (const auto& condition : work_->conditions) condition();
            for (const Change& change : work_->changes) work_->run(change);
            work_->learnFigures();
          },
          work_->doubt);
    });
  }
  work_->changes.clear();
  work_->expectations.clear();
  work_->conditions.clear();
  work_->held.clear();
  work_->repeated = false;
}

void Changes::Work::run(const Change& change) {
  switch (change.kind) {
    case Change::Kind::Insert:
      engine.insert(change.table->info, change.table->insertion(change.columns), change.values);
      break;
    case Change::Kind::Update:
      if (engine.write(change.table->updating(change.columns),
                       change.values + QVariantList{static_cast<qlonglong>(change.key)}) == 0)
        throw Error(errors::kRecordDeleted);
      break;
    case Change::Kind::Remove:
      engine.write(change.table->writer.deleteRow(change.table->info), {static_cast<qlonglong>(change.key)});
      break;
    case Change::Kind::Action:
      database.execute(change.action);
      break;
  }
}

void Changes::Work::require(const Expectation& expectation) {
  Table& table = *expectation.table;
  std::optional<NativeRow> row;
  engine.read(table.holding(expectation.columns), {static_cast<qlonglong>(expectation.key)},
              [&row](const NativeRow& native) {
                row = native;
                return true;
              });
  if (!row) throw Error(errors::kRecordDeleted);
  RowValues found;
  for (qsizetype i = 0; i < expectation.columns.size(); ++i) {
    const FieldDef& field = table.field(expectation.columns[i]);
    QVariant value = table.writer.fromNative((*row)[i], field.type);
    if (!value.isValid() && field.type == FieldType::Boolean) value = 0;
    if (!isSame(value, expectation.values[i])) found.insert(field.name, value);
  }
  if (!found.isEmpty()) throw RowChanged(table.info.def.name, expectation.key, found);
}

/// Whether a try that failed has come through after all: the row with the first number that was taken is
/// there, and is ours. (A number that was reserved in a lost log may be somebody else's by now.)
bool Changes::Work::wasStored() {
  const auto numbered =
      std::find_if(changes.begin(), changes.end(), [](const Change& change) { return change.numbered; });
  if (numbered == changes.end()) return false;
  Table& table = *numbered->table;
  bool stored = false;
  engine.read(table.writer.readRow(table.info, table.names(numbered->columns)),
              {static_cast<qlonglong>(numbered->key)}, [&](const NativeRow& row) {
                stored = true;
                for (qsizetype i = 0; i < numbered->columns.size(); ++i) {
                  const FieldType type = table.field(numbered->columns[i]).type;
                  stored = stored && isSame(table.writer.fromNative(row[i], type),
                                            table.writer.fromNative(numbered->values[i], type));
                }
                return false;
              });
  return stored;
}

void Changes::Work::learnFigures() {
  std::map<QString, int> rows;
  for (const Change& change : changes)
    if (change.kind == Change::Kind::Insert) ++rows[change.table->info.def.name];
  for (const auto& [name, count] : rows)
    if (count >= kMany) engine.learnFigures(name);
}

void Changes::Work::giveBackNumbers() {
  for (auto change = changes.rbegin(); change != changes.rend(); ++change)
    if (change->numbered) engine.giveBackNumber(change->table->info, change->key);
}

}  // namespace qk::dao

#include "platform/dao/database.h"

#include "platform/dao/engine/engine.h"
#include "platform/dao/engine/right_to_write.h"
#include "platform/dao/opening.h"
#include "platform/dao/rows/cursor.h"
#include "platform/dao/rows/joined_update.h"
#include "platform/dao/rows/select_plan.h"
#include "platform/dao/select_into.h"
#include "platform/dao/sql/parser.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

/// A table or query that must be there. The catalogue it comes from must live as long as it is used.
const TableInfo& known(const Catalogue& catalogue, const QString& name) {
  const TableInfo* info = catalogue.info(name);
  if (!info) throw Error(errors::kUnknownTable);
  return *info;
}

const TableInfo& knownTable(const Catalogue& catalogue, const QString& name) {
  const TableInfo& info = known(catalogue, name);
  if (info.query) throw Error(errors::kUnknownTable);
  return info;
}

void requireNewName(const Catalogue& catalogue, const QString& name) {
  if (name.trimmed().isEmpty()) throw Error(errors::kInvalidName);
  if (catalogue.info(name)) throw Error(errors::kTableExists);
}

void requireDistinctFields(const TableDef& table) {
  QStringList seen;
  for (const FieldDef& field : table.fields) {
    if (seen.contains(foldedName(field.name))) throw Error(errors::kFieldExists);
    seen.append(foldedName(field.name));
  }
}

void requireFields(const TableDef& table, const QStringList& names) {
  for (const QString& name : names)
    if (!table.field(name)) throw Error(errors::kNoSuchElement);
}

}  // namespace

Database::Database(std::unique_ptr<Engine> engine)
    : engine_(std::move(engine)), plans_(std::make_unique<PlanCache>()) {}

Database::~Database() = default;

std::unique_ptr<Database> Database::open(const QString& path, bool readOnly) {
  return open(path, OpenOptions{readOnly, true});
}

std::unique_ptr<Database> Database::open(const QString& path, const OpenOptions& options) {
  return std::unique_ptr<Database>(new Database(openEngine(path, options)));
}

std::unique_ptr<Database> Database::create(const QString& path, const OpenOptions& options) {
  return std::unique_ptr<Database>(new Database(createEngine(path, options)));
}

const QString& Database::path() const {
  return engine_->path();
}

std::unique_ptr<Recordset> Database::openRecordset(const QString& source, RecordsetType type) {
  return std::make_unique<Cursor>(engine_, plans_->get(*engine_, source), type);
}

int Database::execute(const QString& text) {
  sql::Statement statement = sql::parseStatement(text);
  if (auto* select = std::get_if<sql::Select>(&statement)) {
    if (select->into.isEmpty()) throw Error(errors::kNoActionQuery);
    return selectInto(*engine_, std::move(*select));
  }
  sql::resolve(statement, *engine_->catalogue());
  if (auto* update = std::get_if<sql::Update>(&statement);
      update && std::holds_alternative<sql::Join>(update->source->node))
    return withRightToWrite([&] { return updateOverJoin(*engine_, std::move(*update)); });
  const sql::NativeQuery query = engine_->writer().statement(statement);
  return withRightToWrite([&] { return engine_->execute(query.text, query.values); });
}

QStringList Database::tableNames() const {
  return engine_->catalogue()->tableNames();
}

QStringList Database::queryNames() const {
  return engine_->catalogue()->queryNames();
}

bool Database::hasTable(const QString& name) const {
  const TableInfo* info = engine_->catalogue()->info(name);
  return info && !info->query;
}

TableDef Database::tableDef(const QString& name) const {
  return known(*engine_->catalogue(), name).def;
}

void Database::createTable(const TableDef& table) {
  requireNewName(*engine_->catalogue(), table.name);
  requireDistinctFields(table);
  for (const IndexDef& index : table.indexes) requireFields(table, index.fields);
  engine_->createTable(table);
}

void Database::dropTable(const QString& name) {
  const auto catalogue = engine_->catalogue();
  engine_->dropTable(known(*catalogue, name));
}

void Database::appendField(const QString& table, const FieldDef& field) {
  const auto catalogue = engine_->catalogue();
  const TableInfo& info = knownTable(*catalogue, table);
  if (info.def.field(field.name)) throw Error(errors::kFieldExists);
  engine_->appendField(info, field);
}

void Database::appendIndex(const QString& table, const IndexDef& index) {
  const auto catalogue = engine_->catalogue();
  const TableInfo& info = knownTable(*catalogue, table);
  requireFields(info.def, index.fields);
  for (const IndexDef& existing : info.def.indexes) {
    if (sameName(existing.name, index.name)) throw Error(errors::kIndexExists);
    if (existing.primary && index.primary) throw Error(errors::kPrimaryKeyExists);
  }
  engine_->appendIndex(info, index);
}

void Database::createQuery(const QString& name, const QString& selectText) {
  const auto catalogue = engine_->catalogue();
  if (catalogue->info(name)) throw Error(errors::kObjectExists);
  sql::Statement statement = sql::parseStatement(selectText);
  auto* select = std::get_if<sql::Select>(&statement);
  if (!select || !select->into.isEmpty()) throw Error(errors::kInvalidOperation);
  sql::resolve(*select, *catalogue);
  engine_->createQuery(name, *select, selectText);
}

void Database::reserveNumbers(const QString& table) {
  const auto catalogue = engine_->catalogue();
  engine_->reserveNumbers(knownTable(*catalogue, table));
}

bool Database::isOpenElsewhere() const {
  return engine_->isOpenElsewhere();
}

std::optional<QString> Database::poorEncoding() const {
  return engine_->poorEncoding();
}

void Database::learnFigures(const QString& table) {
  engine_->learnFigures(table);
}

qint64 Database::commitCount() const {
  return engine_->commitCount();
}

}  // namespace qk::dao

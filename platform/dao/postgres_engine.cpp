#include "platform/dao/postgres_engine.h"

#include <algorithm>
#include <functional>

#include "platform/dao/postgres_errors.h"
#include "platform/dao/postgres_schema.h"
#include "platform/dao/sql/postgres_functions.h"

namespace qk::dao {

using postgres::quotedName;

namespace {

/// Guards the furnishing of one database against another program that does the same.
constexpr auto kFurnishLock = "SELECT pg_advisory_xact_lock(7113)";

/// Where the row's auto number stands among its values; -1 when the server gives it one.
qsizetype numberColumn(const TableInfo& table, const NewRow& row) {
  if (table.autoNumber < 0) return -1;
  return row.columns.indexOf(table.def.fields[static_cast<size_t>(table.autoNumber)].name);
}

/// The condition that finds a row by all its values.
QString thisRow(const NewRow& row) {
  QStringList conditions;
  for (const QString& column : row.columns) conditions.append(quotedName(column) + " IS NOT DISTINCT FROM ?");
  return " WHERE " + conditions.join(" AND ");
}

}  // namespace

std::unique_ptr<Engine> PostgresEngine::open(const QString& path, const ServerAddress& address,
                                             const OpenOptions& options) {
  std::unique_ptr<PostgresEngine> engine(new PostgresEngine(path, address, options));
  engine->requireFurnished();
  return engine;
}

std::unique_ptr<Engine> PostgresEngine::create(const QString& path, const ServerAddress& address,
                                               const OpenOptions& options) {
  std::unique_ptr<PostgresEngine> engine(new PostgresEngine(path, address, options));
  if (engine->connection_->value("SELECT to_regnamespace('dao') IS NOT NULL").toInt() != 0) throw Error(3204);
  engine->furnish();
  return engine;
}

PostgresEngine::PostgresEngine(const QString& path, const ServerAddress& address, const OpenOptions& options)
    : path_(path),
      options_(options),
      connection_(std::make_shared<PostgresConnection>(address, options)),
      writer_([this](const QString& name) { return storedTable(name); }) {}

void PostgresEngine::requireFurnished() {
  const qlonglong functions =
      connection_->value("SELECT to_regclass('dao.dao_version') IS NOT NULL").toInt() == 0
          ? 0
          : connection_->value("SELECT functions FROM " + postgres::kVersionTable).toLongLong();
  if (functions == 0)
    throw Error(3343, "Die Datenbank " + placeOf(connection_->address()) + " ist noch nicht eingerichtet.");
  if (functions < sql::kPostgresFunctionsVersion && !options_.readOnly) furnish();
}

/// Everything is made anew or not at all, so that a half furnished database stays recognizable as none.
void PostgresEngine::furnish() {
  transaction([this] {
    connection_->write(kFurnishLock);
    connection_->write("CREATE SCHEMA IF NOT EXISTS dao");
    for (const QString& statement : sql::postgresFunctions()) connection_->write(statement);
    for (const char* domain : {"yesno", "byte"})
      if (connection_->value("SELECT to_regtype(?::text) IS NULL", {"dao." + QString(domain)}).toInt() != 0)
        connection_->write("CREATE DOMAIN " + QString(domain) + " AS smallint");
    connection_->write("CREATE TABLE IF NOT EXISTS " + postgres::kVersionTable +
                       " (version bigint NOT NULL, functions integer NOT NULL)");
    if (connection_->write("UPDATE " + postgres::kVersionTable + " SET functions = ?",
                           {sql::kPostgresFunctionsVersion}) == 0)
      connection_->write("INSERT INTO " + postgres::kVersionTable + " VALUES (1, ?)",
                         {sql::kPostgresFunctionsVersion});
  });
}

std::shared_ptr<const Catalogue> PostgresEngine::catalogue() {
  const qint64 version = connection_->value("SELECT version FROM " + postgres::kVersionTable).toLongLong();
  if (!catalogue_ || catalogue_->version() != version)
    catalogue_ = std::make_shared<PostgresCatalogue>(connection_, version);
  return catalogue_;
}

sql::StoredTable PostgresEngine::storedTable(const QString& name) const {
  sql::StoredTable stored;
  const TableInfo* table = catalogue_ ? catalogue_->info(name) : nullptr;
  if (!table) return stored;
  for (const FieldDef& field : table->def.fields) {
    stored.columns.append(field.name);
    stored.kinds.push_back(sql::kindOf(field.type));
  }
  stored.key = table->key.names;
  return stored;
}

std::unique_ptr<Engine> PostgresEngine::reader(std::function<bool()> cancelled) const {
  OpenOptions options = connection_->optionsOfAnother();
  options.readOnly = true;
  std::unique_ptr<PostgresEngine> engine(new PostgresEngine(path_, connection_->address(), options));
  engine->connection_->cancelWhen(std::move(cancelled));
  return engine;
}

/// The server's own workers have no user.
bool PostgresEngine::isOpenElsewhere() {
  return connection_
             ->value(
                 "SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND pid <> "
                 "pg_backend_pid() AND usesysid IS NOT NULL")
             .toInt() > 0;
}

std::optional<QString> PostgresEngine::poorEncoding() {
  const QString name = connection_->value("SHOW server_encoding").toString();
  return name == "UTF8" ? std::nullopt : std::optional(name);
}

void PostgresEngine::read(const QString& text, const QVariantList& values,
                          const std::function<bool(const NativeRow&)>& take) {
  connection_->read(text, values, take);
}

int PostgresEngine::write(const QString& text, const QVariantList& values) {
  const int affected = connection_->write(text, values);
  if (depth_ == 0) ++commits_;
  return affected;
}

qint64 PostgresEngine::insert(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  try {
    if (depth_ == 0 && wasStored(table, row, values)) return 0;  // the key is among the values
    return insertNow(table, row, values);
  } catch (const Error& error) {
    if (error.number() == postgres::kConnectionLost && depth_ == 0) {
      unanswered_.push_back({row.text, values});
      if (const qsizetype at = numberColumn(table, row); at >= 0)
        numbers_.doubt(table, values[at].toLongLong());
    }
    throw;
  }
}

qint64 PostgresEngine::insertNow(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  QString text = row.text;
  const bool numbered = table.key.integer;
  if (numbered) text += " RETURNING " + quotedName(table.key.names.first());
  const bool next = numbered && depth_ == 0 && numbers_.isUsedUp(table);
  if (next) text += ", " + PostgresNumbers::reservation(table);

  qint64 assigned = 0;
  const auto take = [&](const QVariantList& returned) {
    assigned = returned.first().toLongLong();
    if (next) numbers_.keep(table, returned.last().toString());
    return true;
  };
  connection_->write(text, values, numbered ? PostgresConnection::Take(take) : PostgresConnection::Take());
  if (depth_ == 0) ++commits_;
  return assigned;
}

/// Whether this is a row that got no answer, and it is there. A row that was given up and comes again bears
/// another number: what is there takes that over.
bool PostgresEngine::wasStored(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  const qsizetype number = numberColumn(table, row);
  const auto isThisRow = [&](const Unanswered& other) {
    QVariantList numbered = other.values;
    if (number >= 0 && number < numbered.size()) numbered[number] = values[number];
    return other.text == row.text && numbered == values;
  };
  const auto first = std::partition(unanswered_.begin(), unanswered_.end(), std::not_fn(isThisRow));
  if (first == unanswered_.end()) return false;
  auto found =
      std::find_if(first, unanswered_.end(), [&](const Unanswered& other) { return other.values == values; });
  bool stored = isStored(table, row, values);
  for (auto other = first; !stored && other != unanswered_.end(); ++other)
    if (other->values != values && renumber(table, row, other->values, values[number])) {
      stored = true;
      found = other;
    }
  if (!stored)
    unanswered_.erase(first, unanswered_.end());
  else if (found != unanswered_.end())
    unanswered_.erase(found);
  return stored;
}

/// A key that was reserved is nobody else's; together with all other values it is this row.
bool PostgresEngine::isStored(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  const bool keyKnown = std::all_of(table.key.names.begin(), table.key.names.end(),
                                    [&](const QString& name) { return row.columns.contains(name); });
  return keyKnown &&
         connection_->value("SELECT count(*) FROM " + quotedName(table.def.name) + thisRow(row), values)
                 .toLongLong() > 0;
}

bool PostgresEngine::renumber(const TableInfo& table, const NewRow& row, const QVariantList& stored,
                              const QVariant& number) {
  return connection_->write("UPDATE " + quotedName(table.def.name) + " SET " +
                                quotedName(table.def.fields[static_cast<size_t>(table.autoNumber)].name) +
                                " = ?" + thisRow(row),
                            QVariantList{number} + stored) > 0;
}

void PostgresEngine::transaction(const std::function<void()>& body) {
  if (depth_ == 0) connection_->begin();
  ++depth_;
  try {
    body();
    if (depth_ == 1) {
      connection_->commit();
      ++commits_;
    }
  } catch (...) {
    --depth_;
    if (depth_ == 0) {
      connection_->rollback();
      catalogue_.reset();  // it may show what is undone
    }
    throw;
  }
  --depth_;
}

qint64 PostgresEngine::takeNumber(const TableInfo& table) {
  if (const auto number = numbers_.take(table)) return *number;
  reserveBlock(table);
  return *numbers_.take(table);
}

void PostgresEngine::giveBackNumber(const TableInfo& table, qint64 number) {
  numbers_.giveBack(table, number);
}

void PostgresEngine::reserveNumbers(const TableInfo& table) {
  if (table.autoNumber >= 0 && !numbers_.has(table)) reserveBlock(table);
}

/// Numbers that get lost on the way are a gap, so it may be asked again.
void PostgresEngine::reserveBlock(const TableInfo& table) {
  connection_->read("SELECT " + PostgresNumbers::reservation(table), {}, [&](const QVariantList& row) {
    numbers_.keep(table, row.first().toString());
    return true;
  });
  if (depth_ == 0) ++commits_;
}

}  // namespace qk::dao

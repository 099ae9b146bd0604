#include "platform/dao/postgres/postgres_engine.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "platform/dao/postgres/postgres_errors.h"
#include "platform/dao/postgres/postgres_functions.h"
#include "platform/dao/postgres/postgres_schema.h"

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

bool isLoss(const Error& error) {
  return error.number() == errors::kConnectionLost;
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
  if (engine->connection_->value("SELECT to_regnamespace('dao') IS NOT NULL").toInt() != 0)
    throw Error(errors::kStoreExists);
  engine->furnish();
  engine->makeMarks();
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
    throw Error(errors::kUnknownFormat,
                "Die Datenbank " + placeOf(connection_->address()) + " ist noch nicht eingerichtet.");
  if (options_.readOnly) return;
  if (functions < sql::kPostgresFunctionsVersion) renewFunctions();
  makeMarks();
}

/// Only who owns functions may replace them.
void PostgresEngine::renewFunctions() {
  try {
    furnish();
  } catch (const Error& error) {
    if (error.number() != errors::kNoReadPermission) throw;
    throw Error(
        errors::kNoReadPermission,
        "Die Datenbank " + placeOf(connection_->address()) +
            " wurde mit einem früheren Programm eingerichtet. Ihr Besitzer muss sie einmal mit diesem "
            "öffnen, danach kann es jeder. Wer noch das frühere hat, arbeitet dabei und danach weiter.");
  }
}

/// A store of before has no table for them yet; a desk may make it like the program's own ones. Without that
/// right there are no marks.
void PostgresEngine::makeMarks() {
  const QString mine =
      "SELECT has_table_privilege(t, 'SELECT') AND has_table_privilege(t, 'INSERT') AND "
      "has_table_privilege(t, 'UPDATE') AND has_table_privilege(t, 'DELETE') "
      "FROM (SELECT to_regclass('dao." +
      postgres::kMarksTable + "')::oid AS t) AS found";
  QVariant may = connection_->value(mine);
  if (may.isNull()) {
    try {
      connection_->write("CREATE TABLE IF NOT EXISTS " + postgres::kMarksTable +
                         " (mark uuid PRIMARY KEY, made timestamptz NOT NULL DEFAULT now())");
    } catch (const Error& error) {
      if (isLoss(error)) throw;  // else: no right, or another desk has just made it
    }
    may = connection_->value(mine);
  }
  if (may.toInt() != 0) connection_->leaveMarks();
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

/// Asked each time, so before each row that is added, too. A notice of the server's would spare the question,
/// but not what it is good for besides: it finds a connection dead or silent, and makes it anew, while
/// nothing is in doubt yet. Without it the row would be the first that is sent, and whoever stores it would
/// have to decide what to do about a lost answer.
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
  // Nobody's window waits for it, and a long list may need sorting first.
  constexpr int kMorePatience = 4;
  ServerAddress address = connection_->address();
  address.patience *= kMorePatience;
  std::unique_ptr<PostgresEngine> engine(new PostgresEngine(path_, address, options));
  engine->connection_->cancelWhen(std::move(cancelled));
  return engine;
}

void PostgresEngine::hold() {
  connection_->begin();
  connection_->write("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ");
}

void PostgresEngine::release() {
  connection_->rollback();
}

/// How far the server's log is, and which run of the server wrote it. What others do on the same server moves
/// it, too.
QString PostgresEngine::stamp() {
  return connection_
      ->value("SELECT pg_postmaster_start_time()::text || ' ' || pg_current_wal_insert_lsn()::text")
      .toString();
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

/// Without them the server takes a full table for an empty one, and joins two of them row by row.
void PostgresEngine::learnFigures(const QString& table) {
  connection_->write("ANALYZE " + quotedName(table));
}

int PostgresEngine::execute(const QString& text, const QVariantList& values) {
  return static_cast<int>(once(text, values, [&] { return write(text, values); }));
}

/// A change that would be another one when it is made again.
qint64 PostgresEngine::once(const QString& text, const QVariantList& values,
                            const std::function<qint64()>& change) {
  if (depth_ > 0) return change();
  const auto doubt = std::find_if(doubts_.begin(), doubts_.end(), [&](const Doubt& other) {
    return other.text == text && other.values == values;
  });
  QString mark;
  qint64 result = 0;
  if (doubt != doubts_.end()) {
    mark = doubt->mark;
    result = doubt->result;
    doubts_.erase(doubt);
  }
  try {
    transactionOnce([&] { result = change(); }, mark);
  } catch (const Error&) {
    if (!mark.isEmpty()) doubts_.push_back({text, values, mark, result});
    throw;
  }
  return result;
}

void PostgresEngine::transactionOnce(const std::function<void()>& body, QString& doubt) {
  if (!doubt.isEmpty()) {
    const bool stored = connection_->isStored(doubt);
    doubt.clear();
    if (stored) return;
  }
  try {
    transaction(body);
  } catch (const Error&) {
    doubt = connection_->takeDoubt();
    throw;
  }
}

qint64 PostgresEngine::insert(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  if (depth_ > 0) return insertNow(table, row, values);
  const bool keyKnown = std::all_of(table.key.names.begin(), table.key.names.end(),
                                    [&](const QString& name) { return row.columns.contains(name); });
  if (keyKnown) return insertKeyed(table, row, values);
  return once(row.text, values, [&] { return insertNow(table, row, values); });
}

qint64 PostgresEngine::insertKeyed(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  const qsizetype number = numberColumn(table, row);
  const bool repeated = isUnanswered(row, values, number);
  try {
    if (repeated && wasStored(table, row, values)) return 0;  // the key is among the values
    return insertNow(table, row, values);
  } catch (const Error& error) {
    // The first attempt may have come through just behind the look.
    if (repeated && error.number() == errors::kDuplicateKey && isStored(table, row, values)) {
      connection_->requireAllSafe();
      return 0;
    }
    if (isLoss(error)) {
      keepUnanswered(row, values);
      if (number >= 0) numbers_.doubt(table, values[number].toLongLong());
    }
    throw;
  }
}

qint64 PostgresEngine::insertNow(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  QString text = row.text;
  const bool numbered = table.key.integer;
  if (numbered) text += " RETURNING " + quotedName(table.key.names.first());
  const bool next = numbered && depth_ == 0 && numbers_.isUsedUp(table);
  if (next) text += ", " + PostgresNumbers::reservation(table, kNumberBlock);

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

/// Once, however often it fails: what is left here of a row that came through would be taken for the next one
/// like it.
void PostgresEngine::keepUnanswered(const NewRow& row, const QVariantList& values) {
  const bool kept = std::any_of(unanswered_.begin(), unanswered_.end(), [&](const Unanswered& other) {
    return other.text == row.text && other.values == values;
  });
  if (!kept) unanswered_.push_back({row.text, values});
}

bool PostgresEngine::isUnanswered(const NewRow& row, const QVariantList& values, qsizetype number) const {
  return std::any_of(unanswered_.begin(), unanswered_.end(),
                     [&](const Unanswered& other) { return other.is(row, values, number); });
}

/// A row that was given up and comes again bears another number.
bool PostgresEngine::Unanswered::is(const NewRow& row, const QVariantList& now, qsizetype number) const {
  QVariantList numbered = values;
  if (number >= 0 && number < numbered.size()) numbered[number] = now[number];
  return text == row.text && numbered == now;
}

/// Whether a row that got no answer is there. What is there under another number takes this one over.
bool PostgresEngine::wasStored(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  const qsizetype number = numberColumn(table, row);
  const auto first = std::partition(unanswered_.begin(), unanswered_.end(),
                                    [&](const Unanswered& other) { return !other.is(row, values, number); });
  auto found =
      std::find_if(first, unanswered_.end(), [&](const Unanswered& other) { return other.values == values; });
  bool stored = isStored(table, row, values);
  // A key keeps its row from coming twice. Under another number nothing does, so that attempt must be over.
  const bool otherNumber =
      std::any_of(first, unanswered_.end(), [&](const Unanswered& other) { return other.values != values; });
  if (!stored && otherNumber) connection_->requireFormerIdle();
  for (auto other = first; !stored && other != unanswered_.end(); ++other)
    if (other->values != values && renumber(table, row, other->values, values[number])) {
      stored = true;
      found = other;
    }
  if (stored) connection_->requireAllSafe();
  if (!stored)
    unanswered_.erase(first, unanswered_.end());
  else if (found != unanswered_.end())
    unanswered_.erase(found);
  return stored;
}

bool PostgresEngine::isStored(const TableInfo& table, const NewRow& row, const QVariantList& values) {
  return connection_->value("SELECT count(*) FROM " + quotedName(table.def.name) + thisRow(row), values)
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

/// Whoever reads goes on.
void PostgresEngine::holdTable(const TableInfo& table) {
  connection_->write("LOCK TABLE " + quotedName(table.def.name) + " IN SHARE ROW EXCLUSIVE MODE");
}

/// What is left of a block when the connection gets lost stays a gap: a standby that takes over may give the
/// same numbers again.
qint64 PostgresEngine::takeNumber(const TableInfo& table, int block) {
  const int losses = connection_->losses();
  if (std::exchange(knownLosses_, losses) != losses) numbers_.forgetAll();
  if (const auto number = numbers_.take(table)) return *number;
  reserveBlock(table, block);
  return *numbers_.take(table);
}

void PostgresEngine::giveBackNumber(const TableInfo& table, qint64 number) {
  numbers_.giveBack(table, number);
}

void PostgresEngine::reserveNumbers(const TableInfo& table) {
  if (table.autoNumber >= 0 && !numbers_.has(table)) reserveBlock(table, kNumberBlock);
}

/// The sequence stands outside of all transactions: it shows what was taken from it by now. Rows that came
/// with numbers of their own haven't moved it.
qint64 PostgresEngine::lastNumber(const TableInfo& table) {
  if (table.autoNumber < 0) return 0;
  const QString column = quotedName(table.def.fields[static_cast<size_t>(table.autoNumber)].name);
  return connection_
      ->value("SELECT greatest(CASE WHEN is_called THEN last_value ELSE last_value - 1 END, (SELECT max(" +
              column + ") FROM " + quotedName(table.def.name) + ")) FROM " + sequenceOf(table))
      .toLongLong();
}

/// What is set may be set again, so it may be asked again.
void PostgresEngine::goOnAfter(const TableInfo& table, qint64 number) {
  if (table.autoNumber < 0 || number < 1) return;
  const QString sequence = sequenceOf(table);
  connection_->value("SELECT setval(?::regclass, greatest(?::bigint, last_value)) FROM " + sequence,
                     {sequence, number});
  if (depth_ == 0) ++commits_;
  numbers_.forget(table);
}

/// Its name, as it stands in a statement.
QString PostgresEngine::sequenceOf(const TableInfo& table) {
  return connection_
      ->value("SELECT pg_get_serial_sequence(?, ?)",
              {quotedName(table.def.name), table.def.fields[static_cast<size_t>(table.autoNumber)].name})
      .toString();
}

/// Numbers that get lost on the way are a gap, so it may be asked again. A sequence writes down only some of
/// its steps, and no commit waits for the rest: the message makes this one wait until a standby knows of all
/// numbers that are handed out here, and gives none of them again.
void PostgresEngine::reserveBlock(const TableInfo& table, int count) {
  const QString text =
      "SELECT " + PostgresNumbers::reservation(table, count) + ", pg_logical_emit_message(true, 'qk', '')";
  connection_->read(text, {}, [&](const QVariantList& row) {
    numbers_.keep(table, row.first().toString());
    return true;
  });
  if (depth_ == 0) ++commits_;
}

}  // namespace qk::dao

#include "platform/dao/sqlite_connection.h"

#include <sqlite3.h>

#include <QUrl>

#include "platform/dao/sqlite_errors.h"

namespace qk::dao {
namespace {

constexpr int kKeptStatements = 200;
constexpr int kBusyMilliseconds = 5000;

/// Resets a statement, so that no cursor stays open.
class Reset {
 public:
  explicit Reset(sqlite3_stmt* statement) : statement_(statement) {}
  ~Reset() { sqlite3_reset(statement_); }
  Reset(const Reset&) = delete;
  Reset& operator=(const Reset&) = delete;

 private:
  sqlite3_stmt* statement_;
};

int openFlags(SqliteConnection::Access access) {
  switch (access) {
    case SqliteConnection::Access::ReadOnly:
      return SQLITE_OPEN_READONLY;
    case SqliteConnection::Access::ReadWrite:
      return SQLITE_OPEN_READWRITE;
    case SqliteConnection::Access::Create:
      return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  }
  return 0;
}

QVariant columnValue(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      return static_cast<qlonglong>(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
      return sqlite3_column_double(statement, column);
    case SQLITE_TEXT: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
    }
    case SQLITE_BLOB: {
      const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
      return QByteArray(bytes, sqlite3_column_bytes(statement, column));
    }
    default:
      return {};
  }
}

int bindOne(sqlite3_stmt* statement, int place, const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::UnknownType:
      return sqlite3_bind_null(statement, place);
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
      return sqlite3_bind_int64(statement, place, value.toLongLong());
    case QMetaType::Double:
      return sqlite3_bind_double(statement, place, value.toDouble());
    case QMetaType::QByteArray: {
      const QByteArray bytes = value.toByteArray();
      return sqlite3_bind_blob64(statement, place, bytes.constData(),
                                 static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT);
    }
    default: {
      const QByteArray text = value.toString().toUtf8();
      return sqlite3_bind_text64(statement, place, text.constData(), static_cast<sqlite3_uint64>(text.size()),
                                 SQLITE_TRANSIENT, SQLITE_UTF8);
    }
  }
}

}  // namespace

void SqliteConnection::Close::operator()(sqlite3* handle) const {
  sqlite3_close_v2(handle);
}
void SqliteConnection::Finalize::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

SqliteConnection::SqliteConnection(const QString& path, Access access, bool immutable) {
  QByteArray name = path.toUtf8();
  if (immutable) name = QUrl::fromLocalFile(path).toEncoded() + "?immutable=1";
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(name.constData(), &opened,
                                     openFlags(access) | (immutable ? SQLITE_OPEN_URI : 0), nullptr);
  handle_.reset(opened);
  if (!opened) throw sqlite::errorOf(SQLITE_NOMEM, {});
  if (result != SQLITE_OK) fail();
  sqlite3_extended_result_codes(opened, 1);
  sqlite3_busy_timeout(opened, kBusyMilliseconds);
}

void SqliteConnection::fail() const {
  throw sqlite::errorOf(sqlite3_extended_errcode(handle()), QString::fromUtf8(sqlite3_errmsg(handle())));
}

bool SqliteConnection::inTransaction() const {
  return sqlite3_get_autocommit(handle()) == 0;
}

SqliteConnection::Statement SqliteConnection::prepared(const QString& text) {
  if (const auto found = statements_.constFind(text); found != statements_.cend()) return *found;
  const QByteArray utf8 = text.toUtf8();
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v3(handle(), utf8.constData(), static_cast<int>(utf8.size()) + 1,
                         SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK)
    fail();
  Statement kept(statement, Finalize());
  if (statements_.size() >= kKeptStatements) statements_.clear();
  statements_.insert(text, kept);
  return kept;
}

void SqliteConnection::bind(sqlite3_stmt* statement, const QVariantList& values) const {
  for (int i = 0; i < values.size(); ++i)
    if (bindOne(statement, i + 1, values[i]) != SQLITE_OK) fail();
}

void SqliteConnection::read(const QString& text, const QVariantList& values,
                            const std::function<bool(const QVariantList&)>& take) {
  const Statement statement = prepared(text);
  const Reset reset(statement.get());
  bind(statement.get(), values);
  QVariantList row(sqlite3_column_count(statement.get()));
  for (;;) {
    const int result = sqlite3_step(statement.get());
    if (result == SQLITE_DONE) return;
    if (result != SQLITE_ROW) fail();
    for (int i = 0; i < row.size(); ++i) row[i] = columnValue(statement.get(), i);
    if (!take(row)) return;
  }
}

QVariant SqliteConnection::value(const QString& text, const QVariantList& values) {
  QVariant found;
  read(text, values, [&](const QVariantList& row) {
    found = row.first();
    return false;
  });
  return found;
}

void SqliteConnection::run(const QString& text, const QVariantList& values) {
  const Statement statement = prepared(text);
  const Reset reset(statement.get());
  bind(statement.get(), values);
  int result = SQLITE_ROW;
  while (result == SQLITE_ROW) result = sqlite3_step(statement.get());
  if (result != SQLITE_DONE) fail();
}

int SqliteConnection::write(const QString& text, const QVariantList& values) {
  run(text, values);
  return sqlite3_changes(handle());
}

qint64 SqliteConnection::insert(const QString& text, const QVariantList& values) {
  run(text, values);
  return sqlite3_last_insert_rowid(handle());
}

}  // namespace qk::dao

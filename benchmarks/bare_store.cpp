#include "benchmarks/bare_store.h"

#include <sqlite3.h>

#include <QByteArray>

#include "benchmarks/long_list.h"

namespace qk::bench {

BareStore::BareStore(const QString& path) {
  check(sqlite3_open(path.toUtf8().constData(), &raw_));
  execute("PRAGMA journal_mode = WAL");
  execute("PRAGMA synchronous = FULL");
}

BareStore::~BareStore() {
  for (sqlite3_stmt* statement : prepared_) sqlite3_finalize(statement);
  sqlite3_close(raw_);
}

sqlite3_stmt* BareStore::prepare(const QString& text) {
  sqlite3_stmt* statement = nullptr;
  check(sqlite3_prepare_v2(raw_, text.toUtf8().constData(), -1, &statement, nullptr));
  prepared_.push_back(statement);
  return statement;
}

void BareStore::run(sqlite3_stmt* statement, const QVariantList& values) {
  for (int i = 0; i < values.size(); ++i) bind(statement, i + 1, values[i]);
  step(statement);
}

void BareStore::execute(const char* text) {
  check(sqlite3_exec(raw_, text, nullptr, nullptr, nullptr));
}

qint64 BareStore::lastRow() const {
  return sqlite3_last_insert_rowid(raw_);
}

void BareStore::bind(sqlite3_stmt* statement, int position, int value) {
  sqlite3_bind_int(statement, position, value);
}
void BareStore::bind(sqlite3_stmt* statement, int position, qint64 value) {
  sqlite3_bind_int64(statement, position, value);
}
void BareStore::bind(sqlite3_stmt* statement, int position, double value) {
  sqlite3_bind_double(statement, position, value);
}
void BareStore::bind(sqlite3_stmt* statement, int position, const QString& value) {
  const QByteArray text = value.toUtf8();
  sqlite3_bind_text(statement, position, text.constData(), int(text.size()), SQLITE_TRANSIENT);
}
void BareStore::bind(sqlite3_stmt* statement, int position, const QVariant& value) {
  switch (value.userType()) {
    case QMetaType::UnknownType:
      sqlite3_bind_null(statement, position);
      break;
    case QMetaType::Double:
      bind(statement, position, value.toDouble());
      break;
    case QMetaType::QString:
      bind(statement, position, value.toString());
      break;
    default:
      bind(statement, position, value.toLongLong());
  }
}

void BareStore::step(sqlite3_stmt* statement) {
  if (sqlite3_step(statement) != SQLITE_DONE) failBench(QString::fromUtf8(sqlite3_errmsg(raw_)));
  sqlite3_reset(statement);
}

void BareStore::check(int code) const {
  if (code != SQLITE_OK) failBench(QString::fromUtf8(sqlite3_errmsg(raw_)));
}

}  // namespace qk::bench

// What a query text costs on its way to a prepared statement, against preparing SQLite's own text; every
// literal differs, so that nothing can be remembered.
#include <sqlite3.h>

#include <QHash>
#include <stdexcept>

#include "benchmarks/pairs.h"
#include "platform/dao/sql/parser.h"
#include "platform/dao/sql/resolver.h"
#include "platform/dao/sqlite/sqlite_functions.h"
#include "platform/dao/sqlite/sqlite_writer.h"

namespace qk::bench {
namespace {

using namespace qk::dao;

constexpr int kColumns = 28;

/// One wide table, in the catalogue and in a database in memory.
class Store : public Catalogue {
 public:
  Store() {
    table_.def.name = "Messwerte";
    QStringList columns = {"\"ID\" INTEGER PRIMARY KEY"};
    table_.def.fields.push_back({"ID", FieldType::Long});
    for (int i = 1; i < kColumns; ++i) {
      const QString name = QString("Messwert%1").arg(i);
      table_.def.fields.push_back({name, FieldType::Text});
      columns << "\"" + name + "\" TEXT COLLATE NOCASE";
    }
    names_.insert(table_.def.name.toCaseFolded(), &table_);
    sqlite3_open(":memory:", &database_);
    sql::registerSqliteFunctions(database_);
    const QByteArray create = ("CREATE TABLE \"Messwerte\" (" + columns.join(", ") + ")").toUtf8();
    if (sqlite3_exec(database_, create.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(database_));
    }
  }
  ~Store() override { sqlite3_close(database_); }
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  const TableInfo* info(const QString& name) const override { return names_.value(name.toCaseFolded()); }
  QStringList tableNames() const override { return {table_.def.name}; }
  QStringList queryNames() const override { return {}; }

  void prepare(const QByteArray& text) const {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_, text.constData(), int(text.size()), &statement, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(database_));
    }
    sqlite3_finalize(statement);
  }

  void translateAndPrepare(const QString& text) const {
    sql::Statement statement = sql::parseStatement(text);
    sql::resolve(statement, *this);
    prepare(writer_.statement(statement).text.toUtf8());
  }

 private:
  TableInfo table_;
  QHash<QString, const TableInfo*> names_;
  sql::SqliteWriter writer_;
  sqlite3* database_ = nullptr;
};

void house(Rounds& rounds) {
  const Store store;
  int literal = 100000;
  while (rounds.next())
    store.translateAndPrepare(QString("Select * from Messwerte where ID = %1").arg(++literal));
}

void bare(Rounds& rounds) {
  const Store store;
  int literal = 100000;
  while (rounds.next())
    store.prepare(QString("SELECT * FROM \"Messwerte\" WHERE \"ID\" = %1").arg(++literal).toUtf8());
}

const Registered registered{
    Pair{"Abfragesprache", 1.2, "Übersetzen und Vorbereiten gegen Vorbereiten", house, bare, 20}};

}  // namespace
}  // namespace qk::bench

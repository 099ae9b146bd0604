// A database with the semantics of the classic desktop database access objects.
//
// Query texts are in the old engine's query language (platform/dao/sql/grammar.md); one statement a call.
// Names of tables and columns resolve whatever their case. Nothing runs in a transaction beyond one call,
// and no cursor or write lock stays open between calls.
//
// Errors (qk::Error): 3021 no current record, 3022 duplicate key, 3024 file not found, 3044 path not found,
// 3061 unknown name in a query, 3075 syntax, 3078 unknown table, 3010 table exists, 3112 no read permission,
// 3126 bad name, 3265 no such field, 3343 not a database, 3421 type, 3020 update without edit …
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "platform/dao/engine/open_options.h"
#include "platform/dao/recordset.h"
#include "platform/dao/values/types.h"

namespace qk::dao {

class Engine;
class PlanCache;
class RowList;

class Database {
 public:
  /// Opens in shared mode. 3024 when the file is missing, 3044 when its folder is, 3051 for a folder or
  /// without rights, 3343 for another kind of file, 3049 for a damaged one (with the first need, where the
  /// process has it open already). A short text file that names a server (server_address.h) opens the
  /// database there; 3029 without a right password, 3043 where the server can't be reached.
  static std::unique_ptr<Database> open(const QString& path, bool readOnly = false);
  static std::unique_ptr<Database> open(const QString& path, const OpenOptions& options);
  /// Makes an empty file and opens it; 3204 when it exists. Where the file names a server, the database that
  /// it names must be there and holds nothing of ours yet: it is furnished, or 3204.
  static std::unique_ptr<Database> create(const QString& path, const OpenOptions& options = {});
  ~Database();

  const QString& path() const;

  /// A query text, or the plain name of a table or stored query. Opening only prepares.
  std::unique_ptr<Recordset> openRecordset(const QString& source,
                                           RecordsetType type = RecordsetType::Dynaset);
  /// Runs an action query (UPDATE, DELETE, INSERT, SELECT … INTO [IN 'file']); the count of affected rows.
  int execute(const QString& text);

  QStringList tableNames() const;
  QStringList queryNames() const;
  bool hasTable(const QString& name) const;
  TableDef tableDef(const QString& name) const;  ///< 3078 when missing
  void createTable(const TableDef& table);       ///< 3010 when it exists
  void dropTable(const QString& name);
  void appendField(const QString& table, const FieldDef& field);  ///< 3191 when it exists
  void appendIndex(const QString& table, const IndexDef& index);  ///< 3284 when it exists
  /// A stored query; a column may be named "Orte.Name" by its alias.
  void createQuery(const QString& name, const QString& selectText);

  /// Sees to it that the next AddNew on the table has its auto number without a write of its own.
  void reserveNumbers(const QString& table);

  /// Many rows of the table were stored at once: a store that plans its reads by figures learns them now.
  void learnFigures(const QString& table);

  /// Commits since opening, for benchmarks and tests.
  qint64 commitCount() const;

  /// Whether another connection, of this program or any other, stands on the database just now.
  bool isOpenElsewhere() const;
  /// The name of the database's encoding, if it is one that lacks characters.
  std::optional<QString> poorEncoding() const;

  Engine& engine() { return *engine_; }  ///< for platform/dao only

 private:
  friend class RowList;
  explicit Database(std::unique_ptr<Engine> engine);
  std::shared_ptr<Engine> engine_;
  std::unique_ptr<PlanCache> plans_;
};

}  // namespace qk::dao

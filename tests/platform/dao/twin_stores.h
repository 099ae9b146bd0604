// Two stores with the same tables and rows, one in a file and one on a server, and what a statement brings on
// each: names and types, rows, counts, or the error.
#pragma once

#include <QStringList>
#include <memory>
#include <vector>

#include "platform/dao/database.h"
#include "platform/dao/values/types.h"

class QTemporaryDir;

namespace qk::test {
class ServerDatabase;
}

namespace qk::dao::test {

/// A row as texts, by which the rows of two stores are compared: cells by " | ", Null as "NULL".
struct Outcome {
  int error = 0;
  QString description;
  QStringList columns;  ///< "name:type"
  QStringList rows;
  int affected = 0;

  QString text() const;
};

/// How the rows of two stores are compared. Where the order is open, so is the spelling: of texts that are
/// equal one stands for all of a group.
enum class Order { Defined, Open };

class TwinStores {
 public:
  TwinStores();
  ~TwinStores();
  TwinStores(const TwinStores&) = delete;
  TwinStores& operator=(const TwinStores&) = delete;

  Database& file() { return *file_; }
  Database& server() { return *server_; }
  /// Paths of two further stores, one of each kind, that are empty.
  struct Pair {
    QString file, server;
  };
  Pair emptyPair();

  void createTable(const TableDef& table);
  void createQuery(const QString& name, const QString& text);
  /// Adds a row on both through a recordset; values by name.
  void add(const QString& table, const std::vector<std::pair<QString, QVariant>>& values);

  /// Each compares the twins: empty when both bring the same, else the statement and what each brought.
  QString compareRows(const QString& select, Order order);
  QString compareAction(const QString& text);
  QString compareFound(const QString& select, const QString& criterion);
  /// Whether the last comparison ended in an error, the same one on both.
  bool lastFailed() const { return lastFailed_; }

 private:
  QString compared(const QString& text, const Outcome& file, const Outcome& server);

  std::unique_ptr<QTemporaryDir> folder_;
  std::vector<std::unique_ptr<qk::test::ServerDatabase>> databases_;
  std::unique_ptr<Database> file_, server_;
  bool lastFailed_ = false;
  int pairs_ = 0;
};

/// What a reading brings.
Outcome read(Database& database, const QString& select);

}  // namespace qk::dao::test

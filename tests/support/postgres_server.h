// A PostgreSQL server for tests, and databases of their own on it.
//
// Under CTest all test programs share one cluster that a fixture starts and ends (label "postgres"); a
// program that runs alone starts its own when the first database is asked for. Both end with their owner,
// crash included.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "platform/dao/server/server_address.h"

namespace qk::test {

/// A cluster by itself, for tests that stop and restart it.
class PostgresServer {
 public:
  /// In memory, where a commit waits for nothing; or on the disk, where it is durable.
  enum class Storage { Memory, Disk };
  explicit PostgresServer(Storage storage = Storage::Memory);  ///< starts it
  /// A standby of the server in that folder, which calls it "zweiter".
  static std::unique_ptr<PostgresServer> standbyOf(const QString& folder);
  /// A standby that each commit of the primary waits for from now on.
  static std::unique_ptr<PostgresServer> synchronousStandbyOf(const PostgresServer& primary);
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  const QString& folder() const { return folder_; }
  void kill();     ///< SIGKILL
  void again();    ///< starts it again, and waits until it answers
  void promote();  ///< makes a primary of a standby
  /// Runs a native statement as the superuser, as ServerDatabase::native().
  QStringList native(const QString& text, const QString& database = "postgres") const;
  /// From now on a commit waits for the standby of that name; for none with the empty name.
  void waitForStandby(const QString& name) const;

 private:
  PostgresServer(const QString& folder, const QStringList& action);

  QString folder_;
};

/// A database, at first empty, that belongs to the plain role qk_test; dropped with the object.
class ServerDatabase {
 public:
  /// On the shared cluster.
  ServerDatabase();
  /// folder: of the cluster; user: "qk_test", or "qk_secret" who needs the password "geheim".
  explicit ServerDatabase(const QString& folder, const QString& user = "qk_test");
  /// Beside another one, with the same content; nobody may be connected to that one.
  static std::unique_ptr<ServerDatabase> copyOf(const ServerDatabase& original);
  static int count();  ///< made so far by this program
  ~ServerDatabase();
  ServerDatabase(const ServerDatabase&) = delete;
  ServerDatabase& operator=(const ServerDatabase&) = delete;

  const dao::ServerAddress& address() const { return address_; }
  QString folder() const;  ///< of the cluster
  /// Writes the address as a file that opens the database.
  void writeAddress(const QString& path) const { writeAddress(path, {folder()}); }
  /// The same for a cluster and its standbys, by their folders. patience: in seconds.
  void writeAddress(const QString& path, const QStringList& folders, int patience = 15) const;
  /// Runs a native statement as the superuser; rows as texts, cells by "|".
  QStringList native(const QString& text) const;

 private:
  ServerDatabase(const QString& folder, const QString& user, const QString& original);

  dao::ServerAddress address_;
};

}  // namespace qk::test

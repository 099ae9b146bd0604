// A competition on a PostgreSQL server for benchmarks, and what the house is measured against there: a bare
// client that inserts the same row with one prepared statement.
#pragma once

#include <QString>
#include <QTemporaryDir>
#include <memory>

#include "benchmarks/bench_line.h"
#include "link/haeringschuss.h"
#include "platform/dao/database.h"
#include "platform/dao/server/server_address.h"
#include "tests/support/postgres_server.h"

struct pg_conn;
struct pg_result;

namespace qk::bench {

/// A shot of line 1 that differs from all others of the process.
HaeringSchuss nextServerShot();

/// A competition on a server, with its address as a file in a folder of its own.
class ServerPlace {
 public:
  /// Makes it, with so many booked shots, on the process's own server: in memory, where a commit waits for
  /// nothing, or on the disk.
  ServerPlace(test::PostgresServer::Storage storage, int rows);

  QString folder() const { return folder_.path(); }
  /// The file that opens it.
  QString competition() const;
  /// The folder of the server's socket.
  QString server() const { return store_.folder(); }
  /// Writes another address of it, with that folder for the server's, into the folder; its path.
  QString addressThrough(const QString& server) const;

 private:
  void addBookedShots(int rows);

  QTemporaryDir folder_;
  test::ServerDatabase store_;
};

/// The house on such a competition.
class ServerHouse {
 public:
  /// folder: of the place; competition: the file that opens it.
  ServerHouse(const QString& folder, const QString& competition);
  /// Throws std::runtime_error when the shot isn't stored.
  void store(HaeringSchuss shot);

 private:
  BenchPlace place_;
  std::unique_ptr<dao::Database> competition_;
};

/// The client library and nothing else: one row is one round trip and one commit.
class BareClient {
 public:
  explicit BareClient(const dao::ServerAddress& address);
  /// Throws std::runtime_error when the row isn't stored.
  void insert(const HaeringSchuss& shot);

 private:
  void require(pg_result* result, int status) const;
  QByteArray sequence() const;

  std::unique_ptr<pg_conn, void (*)(pg_conn*)> connection_;
};

}  // namespace qk::bench

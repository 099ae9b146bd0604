// A server that lives and says nothing: its processes are stopped, until goOn() or the end of the object.
#pragma once

#include <QList>

#include "tests/support/postgres_server.h"

namespace qk::test {

class StoppedServer {
 public:
  StoppedServer() = default;
  /// Stops what serves the database's connections now; new ones are answered.
  explicit StoppedServer(const ServerDatabase& database) { stop(database); }
  ~StoppedServer();
  StoppedServer(const StoppedServer&) = delete;
  StoppedServer& operator=(const StoppedServer&) = delete;

  void stop(const ServerDatabase& database);
  /// Nobody is answered. folder: of the cluster, which serves this test alone.
  void stopWhole(const QString& folder, const ServerDatabase& database);
  /// Lets them go on, and waits until those that were told to end have ended.
  void goOn();

 private:
  void stopProcess(qint64 process);

  const ServerDatabase* database_ = nullptr;
  QList<qint64> stopped_;
};

}  // namespace qk::test

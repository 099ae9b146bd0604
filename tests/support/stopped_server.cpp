#include "tests/support/stopped_server.h"

#include <signal.h>

#include <QFile>
#include <QTest>
#include <stdexcept>

namespace qk::test {
namespace {

const QString kOthers =
    " FROM pg_stat_activity WHERE datname = current_database() AND pid <> pg_backend_pid() AND "
    "backend_type = 'client backend'";

}  // namespace

StoppedServer::~StoppedServer() {
  for (const qint64 process : stopped_) ::kill(static_cast<pid_t>(process), SIGCONT);
}

void StoppedServer::stopProcess(qint64 process) {
  if (process <= 0 || ::kill(static_cast<pid_t>(process), SIGSTOP) != 0)
    throw std::runtime_error("can't stop a server process");
  stopped_.append(process);
}

void StoppedServer::stop(const ServerDatabase& database) {
  database_ = &database;
  for (const QString& process : database.native("SELECT pid" + kOthers)) stopProcess(process.toLongLong());
}

void StoppedServer::stopWhole(const QString& folder, const ServerDatabase& database) {
  stop(database);
  QFile file(folder + "/data/postmaster.pid");
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no server");
  stopProcess(file.readLine().trimmed().toLongLong());
}

void StoppedServer::goOn() {
  QStringList processes;
  for (const qint64 process : stopped_) {
    ::kill(static_cast<pid_t>(process), SIGCONT);
    processes.append(QString::number(process));
  }
  stopped_.clear();
  if (processes.isEmpty()) return;
  const QString left = "SELECT count(*)" + kOthers + " AND pid IN (" + processes.join(", ") + ")";
  if (!QTest::qWaitFor([&] { return database_->native(left) == QStringList{"0"}; }, 10000))
    throw std::runtime_error("a server process goes on");
}

}  // namespace qk::test

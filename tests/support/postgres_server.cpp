#include "tests/support/postgres_server.h"

#include <libpq-fe.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <atomic>
#include <memory>
#include <stdexcept>

namespace qk::test {
namespace {

std::atomic<int> made = 0;

QString newFolder(PostgresServer::Storage storage) {
  static std::atomic<int> count = 0;
  const bool inMemory = storage == PostgresServer::Storage::Memory && QDir("/dev/shm").exists();
  const QString root = inMemory ? "/dev/shm" : QDir::tempPath();
  return QString("%1/qk-postgres-%2-%3").arg(root).arg(QCoreApplication::applicationPid()).arg(++count);
}

void cluster(const QStringList& arguments) {
  QProcess script;
  script.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  script.start(QK_POSTGRES_CLUSTER, arguments);
  if (!script.waitForFinished(60000) || script.exitCode() != 0)
    throw std::runtime_error("postgres-cluster " + arguments.join(' ').toStdString());
}

QString owner() {
  return QString::number(QCoreApplication::applicationPid());
}

/// The cluster of the CTest run, or this program's own.
const QString& sharedFolder() {
  static const QString given = qEnvironmentVariable("QK_TEST_POSTGRES");
  if (!given.isEmpty()) return given;
  static const PostgresServer own;
  return own.folder();
}

QStringList run(const QString& folder, const QString& database, const QString& user, const QString& text) {
  const QString connection =
      QString("host='%1' port=5432 dbname='%2' user='%3' password=geheim").arg(folder, database, user);
  const std::unique_ptr<PGconn, void (*)(PGconn*)> opened(PQconnectdb(connection.toUtf8().constData()),
                                                          PQfinish);
  const std::unique_ptr<PGresult, void (*)(PGresult*)> result(PQexec(opened.get(), text.toUtf8().constData()),
                                                              PQclear);
  const ExecStatusType status = PQresultStatus(result.get());
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
    throw std::runtime_error(PQerrorMessage(opened.get()));
  QStringList rows;
  for (int row = 0; row < PQntuples(result.get()); ++row) {
    QStringList cells;
    for (int column = 0; column < PQnfields(result.get()); ++column)
      cells.append(PQgetisnull(result.get(), row, column)
                       ? QString("NULL")
                       : QString::fromUtf8(PQgetvalue(result.get(), row, column)));
    rows.append(cells.join(u'|'));
  }
  return rows;
}

}  // namespace

PostgresServer::PostgresServer(const QString& folder, const QStringList& action) : folder_(folder) {
  cluster(action + QStringList{owner()});
}

PostgresServer::PostgresServer(Storage storage) : folder_(newFolder(storage)) {
  if (storage == Storage::Disk) qputenv("QK_TEST_FSYNC", "on");
  cluster({"start", folder_, owner()});
  qunsetenv("QK_TEST_FSYNC");
}

std::unique_ptr<PostgresServer> PostgresServer::standbyOf(const QString& folder) {
  const QString own = newFolder(Storage::Memory);
  return std::unique_ptr<PostgresServer>(new PostgresServer(own, {"copy", own, folder}));
}

PostgresServer::~PostgresServer() {
  QProcess::execute(QK_POSTGRES_CLUSTER, {"stop", folder_});
}

std::unique_ptr<PostgresServer> PostgresServer::synchronousStandbyOf(const PostgresServer& primary) {
  std::unique_ptr<PostgresServer> standby = standbyOf(primary.folder());
  primary.waitForStandby("zweiter");
  const auto follows = [&] {
    return primary.native("SELECT sync_state FROM pg_stat_replication") == QStringList{"sync"};
  };
  if (!QTest::qWaitFor(follows, 10000)) throw std::runtime_error("the standby doesn't follow");
  return standby;
}

void PostgresServer::kill() {
  cluster({"kill", folder_});
}

void PostgresServer::again() {
  cluster({"again", folder_});
}

void PostgresServer::promote() {
  cluster({"promote", folder_});
}

QStringList PostgresServer::native(const QString& text, const QString& database) const {
  return run(folder_, database, "postgres", text);
}

void PostgresServer::waitForStandby(const QString& name) const {
  native("ALTER SYSTEM SET synchronous_standby_names = '" + name + "'");
  native("SELECT pg_reload_conf()");
}

ServerDatabase::ServerDatabase() : ServerDatabase(sharedFolder()) {}

ServerDatabase::ServerDatabase(const QString& folder, const QString& user)
    : ServerDatabase(folder, user, "template0") {}

ServerDatabase::ServerDatabase(const QString& folder, const QString& user, const QString& original) {
  address_ = {{{folder}}, QString("qk_%1_%2").arg(QCoreApplication::applicationPid()).arg(++made), user};
  run(folder, "postgres", user,
      "CREATE DATABASE " + address_.database + " TEMPLATE " + original + " STRATEGY file_copy");
}

int ServerDatabase::count() {
  return made;
}

std::unique_ptr<ServerDatabase> ServerDatabase::copyOf(const ServerDatabase& original) {
  const dao::ServerAddress& address = original.address();
  return std::unique_ptr<ServerDatabase>(
      new ServerDatabase(original.folder(), address.user, address.database));
}

ServerDatabase::~ServerDatabase() {
  try {
    run(folder(), "postgres", "postgres", "DROP DATABASE IF EXISTS " + address_.database + " WITH (FORCE)");
  } catch (const std::runtime_error&) {
    return;  // the test has ended the server
  }
}

QString ServerDatabase::folder() const {
  return address_.endpoints.first().host;
}

void ServerDatabase::writeAddress(const QString& path, const QStringList& folders, int patience) const {
  dao::ServerAddress address = address_;
  address.endpoints.clear();
  for (const QString& folder : folders) address.endpoints.append({folder});
  address.patience = patience;
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(dao::serverAddressText(address)) < 0)
    throw std::runtime_error("can't write " + path.toStdString());
}

QStringList ServerDatabase::native(const QString& text) const {
  return run(folder(), address_.database, "postgres", text);
}

}  // namespace qk::test

#include "platform/dao/engine.h"

#include <QFile>
#include <QFileInfo>

#include "platform/dao/postgres_engine.h"
#include "platform/dao/shared_passwords.h"
#include "platform/dao/sqlite_engine.h"
#include "platform/runtime/files.h"

namespace qk::dao {
namespace {

/// The server that the file names, where it is such a file.
std::optional<ServerAddress> addressIn(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return {};
  const QByteArray content = file.read(kLargestAddressFile);
  if (!isServerAddress(content)) return {};
  return parseServerAddress(content);
}

}  // namespace

std::unique_ptr<Engine> Engine::open(const QString& path, const OpenOptions& options) {
  const QString found = Files().resolve(path);
  if (const auto address = addressIn(found))
    return PostgresEngine::open(found, *address, SharedPasswords::supplied(options));
  return SqliteEngine::open(path, options);
}

std::unique_ptr<Engine> Engine::create(const QString& path, const OpenOptions& options) {
  if (const auto address = addressIn(path))
    return PostgresEngine::create(path, *address, SharedPasswords::supplied(options));
  return SqliteEngine::create(path, options);
}

}  // namespace qk::dao

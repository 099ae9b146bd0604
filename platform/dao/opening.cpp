#include "platform/dao/opening.h"

#include "platform/dao/postgres/postgres_engine.h"
#include "platform/dao/shared_passwords.h"
#include "platform/dao/sqlite/sqlite_engine.h"
#include "platform/runtime/files.h"

namespace qk::dao {

std::unique_ptr<Engine> openEngine(const QString& path, const OpenOptions& options) {
  if (const auto address = serverAddressIn(path))
    return PostgresEngine::open(Files().resolve(path), *address, SharedPasswords::supplied(options));
  return SqliteEngine::open(path, options);
}

std::unique_ptr<Engine> createEngine(const QString& path, const OpenOptions& options) {
  if (const auto address = serverAddressIn(path))
    return PostgresEngine::create(path, *address, SharedPasswords::supplied(options));
  return SqliteEngine::create(path, options);
}

}  // namespace qk::dao

#include "platform/dao/engine.h"

#include "platform/dao/shared_passwords.h"
#include "platform/dao/sqlite_engine.h"

namespace qk::dao {

std::unique_ptr<Engine> Engine::open(const QString& path, const OpenOptions& options) {
  return SqliteEngine::open(path, SharedPasswords::supplied(options));
}

std::unique_ptr<Engine> Engine::create(const QString& path, const OpenOptions& options) {
  return SqliteEngine::create(path, SharedPasswords::supplied(options));
}

}  // namespace qk::dao

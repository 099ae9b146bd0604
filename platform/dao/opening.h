// Which engine a store has: chosen by what its file holds, a database or the address of one on a server.
#pragma once

#include <QString>
#include <memory>

#include "platform/dao/engine/open_options.h"

namespace qk::dao {

class Engine;

/// Errors as Database::open() and Database::create() tell them.
std::unique_ptr<Engine> openEngine(const QString& path, const OpenOptions& options);
std::unique_ptr<Engine> createEngine(const QString& path, const OpenOptions& options);

}  // namespace qk::dao

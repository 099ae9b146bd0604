// How a store is opened.
#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "platform/dao/server/server_address.h"

namespace qk::dao {

struct OpenOptions {
  bool readOnly = false;
  bool durable = true;  ///< false: a commit may be lost at power failure; for benchmarks and throw-away files
  /// Seconds that a server may say nothing, where they are less than those of its address.
  std::optional<int> patience = {};
  /// Asked where a server wants a password that none of the system's places has, and again after a wrong one
  /// (`again`); nothing gives the opening up with error 3029. Without it the first refusal is 3029.
  std::function<std::optional<QString>(const ServerAddress& address, bool again)> askPassword = {};
};

}  // namespace qk::dao

// How the standby of a database's server stands: the second server that holds each change, too, and is made
// the primary when the first one is lost.
#pragma once

#include <QString>
#include <chrono>
#include <optional>

namespace qk::dao {

struct StandbyState {
  bool connected = false;  ///< a standby receives the changes just now
  QString name;  ///< of the connected one, as the server calls it; empty where the role may not know
  /// A change counts as stored only when a standby has it.
  bool synchronous = false;
  /// It does, and no such standby is there: nothing can be stored until one is, or the server waits for none.
  bool commitsWait = false;
  /// What the connected one has not on its disk yet; nothing where the role may not know.
  std::optional<qint64> bytesBehind = {};
  /// How old that is; 0 when nothing is missing.
  std::optional<std::chrono::seconds> behind = {};
};

}  // namespace qk::dao

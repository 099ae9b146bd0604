// The passwords of this run of the program. Connections come to be all over it, from a path alone; while an
// object of this class lives, those that bring no question of their own get the server's password from here:
// the one that was given before, or an answer to the question. Nothing is written anywhere.
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/dao/engine/open_options.h"

namespace qk::dao {

class SharedPasswords {
 public:
  /// The password for a server, or nothing when nobody gives one. `again` after a wrong one.
  using Ask = std::function<std::optional<QString>(const ServerAddress& address, bool again)>;

  /// Questions are put in the thread that makes the object; others get what was answered before. One object
  /// at a time.
  explicit SharedPasswords(Ask ask);
  ~SharedPasswords();
  SharedPasswords(const SharedPasswords&) = delete;
  SharedPasswords& operator=(const SharedPasswords&) = delete;

  /// The options with their question, or with this one where they have none and an object lives.
  static OpenOptions supplied(OpenOptions options);

 private:
  std::optional<QString> passwordFor(const ServerAddress& address, bool again);

  Ask ask_;
  std::thread::id thread_;
  std::mutex mutex_;
  std::map<QByteArray, QString> known_;  // by the address as a text
};

}  // namespace qk::dao

#include "platform/dao/shared_passwords.h"

#include <atomic>

namespace qk::dao {
namespace {

std::atomic<SharedPasswords*> current = nullptr;

}  // namespace

SharedPasswords::SharedPasswords(Ask ask) : ask_(std::move(ask)), thread_(std::this_thread::get_id()) {
  current = this;
}

SharedPasswords::~SharedPasswords() {
  current = nullptr;
}

OpenOptions SharedPasswords::supplied(OpenOptions options) {
  if (!options.askPassword && current)
    options.askPassword = [](const ServerAddress& address, bool again) -> std::optional<QString> {
      SharedPasswords* const shared = current;
      return shared ? shared->passwordFor(address, again) : std::nullopt;
    };
  return options;
}

std::optional<QString> SharedPasswords::passwordFor(const ServerAddress& address, bool again) {
  const QByteArray key = serverAddressText(address);
  {
    const std::scoped_lock lock(mutex_);
    if (const auto known = known_.find(key); known != known_.end() && !again) return known->second;
    known_.erase(key);
  }
  if (std::this_thread::get_id() != thread_) return std::nullopt;
  const std::optional<QString> answer = ask_(address, again);
  if (!answer) return std::nullopt;
  const std::scoped_lock lock(mutex_);
  known_[key] = *answer;
  return answer;
}

}  // namespace qk::dao

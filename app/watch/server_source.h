// The server that a competition lies on, and the standby that holds all of it once more.
#pragma once

#include <functional>
#include <optional>

#include "app/watch/watch_source.h"
#include "platform/dao/standby.h"

namespace qk {

class ServerSource : public WatchSource {
 public:
  /// What a standby may be behind before it counts; it has caught up at the half.
  static constexpr std::chrono::seconds kLate{60};
  static constexpr qint64 kMuch = 64 * 1000 * 1000;

  /// `ask` is called in the look's thread and throws qk::Error where the server doesn't answer.
  explicit ServerSource(std::function<std::optional<dao::StandbyState>()> ask);

  std::vector<Threat> look(const QDateTime& now) override;
  std::chrono::seconds interval() const override { return std::chrono::seconds(20); }
  std::chrono::seconds patience() const override { return std::chrono::seconds(30); }
  Threat silence(const QDateTime& since) const override;

 private:
  std::vector<Threat> findings(const dao::StandbyState& state);
  bool isBehind(const dao::StandbyState& state) const;

  std::function<std::optional<dao::StandbyState>()> ask_;
  int failures_ = 0;  // in a row
  bool behind_ = false;
};

}  // namespace qk

// The proven copies of the competition: of when the last one is, and why there is no newer one.
#pragma once

#include <mutex>

#include "app/watch/watch_source.h"
#include "backup/copy_keeper.h"

namespace qk {

/// Of what the keeper of the copies says; `opened` is since when the competition is open. A copy is old when
/// three intervals have passed since it was known to hold everything.
std::vector<Threat> copyFindings(const CopyState& state, const QDateTime& opened, const QDateTime& now);

class CopySource : public WatchSource {
 public:
  explicit CopySource(const QDateTime& opened) : opened_(opened) {}

  /// What counts from the next look on.
  void tell(const CopyState& state);
  /// Where the copies lie, as told last; from any thread.
  QString folder() const;

  std::vector<Threat> look(const QDateTime& now) override;
  std::chrono::seconds interval() const override { return std::chrono::seconds(30); }
  Threat silence(const QDateTime& since) const override;

 private:
  const QDateTime opened_;
  mutable std::mutex lock_;
  std::optional<CopyState> state_;
};

}  // namespace qk

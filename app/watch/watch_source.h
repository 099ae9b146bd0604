// One thing that is looked at for what may threaten the office: a disk, a folder, the copies, a server.
#pragma once

#include <QDateTime>
#include <chrono>
#include <vector>

#include "app/watch/threat.h"

namespace qk {

class WatchSource {
 public:
  virtual ~WatchSource() = default;

  /// What threatens at this moment. Runs in a thread of its own, one look at a time, and may take as long as
  /// a dead network takes: by then nobody may wait for it any more. Throws nothing.
  virtual std::vector<Threat> look(const QDateTime& now) = 0;
  /// How long from one look to the next.
  virtual std::chrono::seconds interval() const = 0;
  /// A look that hasn't come back for so long is a finding itself.
  virtual std::chrono::seconds patience() const { return std::chrono::seconds(10); }
  /// That finding. Called in the window's thread, beside a look that runs.
  virtual Threat silence(const QDateTime& since) const = 0;
};

}  // namespace qk

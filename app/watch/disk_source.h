// The room on a disk that something of the office lies on.
#pragma once

#include <functional>
#include <memory>

#include "app/watch/watch_source.h"
#include "platform/runtime/storage.h"

namespace qk {

/// Bytes that are to be left; below them it is a warning, or grave.
struct RoomLimits {
  qint64 warning = 0;
  qint64 grave = 0;
};

/// What a day of a large range writes (shots, results, payments, protocols: some 50 MB) several times over.
/// A disk so small that this is more than a twentieth of it is used for nothing but the office, and full
/// earlier: there it is the twentieth, and a hundredth is grave.
RoomLimits limitsOfADay(qint64 total);
/// What copies want besides: three more of that size; without room for the next one it is grave.
RoomLimits limitsOfCopies(qint64 total, qint64 sizeOfOne);
/// `before` is the level of the last look: a threat ends only a quarter above the limit that it began at, so
/// that it doesn't come and go with each file.
ThreatLevel roomLevel(qint64 free, const RoomLimits& limits, ThreatLevel before);

/// One of the things that want room.
struct RoomUser {
  QString thing;        ///< "der Wettkampf"
  QString consequence;  ///< what a full disk means for it
  /// Where it lies; asked in the look's thread. Empty: nowhere.
  std::function<QString()> folder;
  /// A file that its copies are as large as, asked there too; empty, or none: it isn't about copies.
  std::function<QString()> original = {};
};

class DiskSource : public WatchSource {
 public:
  DiskSource(std::shared_ptr<Storage> storage, RoomUser user);

  std::vector<Threat> look(const QDateTime& now) override;
  std::chrono::seconds interval() const override { return std::chrono::seconds(30); }
  Threat silence(const QDateTime& since) const override;

 private:
  RoomLimits limits(const DiskRoom& room) const;

  std::shared_ptr<Storage> storage_;
  RoomUser user_;
  QString root_;
  ThreatLevel before_ = ThreatLevel::Calm;
};

}  // namespace qk

// The door to what a disk and a folder are able to do just now: how much room is left, how long an answer
// takes. A test stands in it: a disk that is nearly full, a folder that is slow or never answers.
//
// Every call may wait for as long as a network does, so none belongs into a window's thread; all of them may
// be called from any thread, several at once. Nothing is opened and nothing is written.
#pragma once

#include <QString>
#include <chrono>
#include <optional>

namespace qk {

/// Of one disk, in bytes.
struct DiskRoom {
  QString root;     ///< where it begins: "/home", "C:/"
  qint64 free = 0;  ///< for this user
  qint64 total = 0;
};

class Storage {
 public:
  virtual ~Storage() = default;

  /// Of the disk that the folder lies on; nothing where it isn't there or tells nothing.
  virtual std::optional<DiskRoom> roomAt(const QString& folder);
  virtual bool isThere(const QString& folder);
  /// How long a plain listing of the folder takes; nothing where it isn't there.
  virtual std::optional<std::chrono::milliseconds> timeOfListing(const QString& folder);
  /// Bytes of a file, 0 where it is missing.
  virtual qint64 sizeOf(const QString& file);
};

}  // namespace qk

// Makes one copy of a competition and proves it.
//
//   snapshot -> draft, synced -> read back, compared with what was written -> opened, checked whole, its
//   tables compared with the snapshot's -> evidence, synced -> the draft gets the copy's name
//
// Only the last step makes a copy of it: a rename, which happens or doesn't. Ended at any moment before, it
// leaves a draft that the next making removes. Nothing older is deleted before.
#pragma once

#include <QDateTime>
#include <QString>
#include <chrono>
#include <functional>
#include <optional>

#include "backup/copy_folder.h"
#include "platform/dao/moving/snapshot.h"

namespace qk {

namespace dao {
class SnapshotReader;
}

struct CopyRequest {
  QString competition;  ///< its path, or that of the file that names its server
  QString folder;       ///< made when only its last level is missing
  QDateTime moment;     ///< now, local time
  /// A proven copy that is younger, made by whichever program, is taken for a new one.
  std::chrono::minutes interval{0};
};

struct CopyResult {
  enum class Kind {
    Made,
    Current,   ///< the last proven copy holds the same rows already
    Young,     ///< another program has just made one
    Elsewhere  ///< another program is making one just now
  } kind = Kind::Made;
  std::optional<ProvenCopy> copy;  ///< the last proven one; none with Elsewhere
};

/// What a test does between two steps.
struct CopyHooks {
  std::function<void(const QString& draft)> written = {};
};

/// Takes its time, in any thread. `done` hears the part that is done, 0 to 1. Errors, with German texts:
/// those of the store and of the folder; 3197 the copy isn't what was written or read; 3049 SQLite finds a
/// flaw in it; 3059 given up by the reader's `cancelled`. Then there is no new copy, and none that counts has
/// gone.
CopyResult makeCopy(dao::SnapshotReader& reader, const CopyRequest& request, Files& files,
                    const dao::PartDone& done = {}, const CopyHooks& hooks = {});

}  // namespace qk

// How the names in one folder are spelled, for finding a file whatever the case of its name, on a system that
// tells cases apart.
//
// A poll asks for each of its names every second, most of them aren't there, and others write into the folder
// all the time. So what an answer costs must not follow the folder's size. How the names are kept current
// depends on where the folder lies:
//
//   a disk of this machine       read once; from its first change on the system reports each name that comes
//                                or goes
//   a place that ignores case    nothing to keep: a plain look finds each spelling (a share of a Windows
//                                server)
//   any other share              read again when its time stamp moved, which may take no more than a fiftieth
//                                of the time: an unusual spelling is found that much later
#pragma once

#include <QMultiHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "platform/runtime/path_look.h"

namespace qk {

/// The system's reports of what changes in a folder.
class FolderNews {
 public:
  virtual ~FolderNews() = default;
  /// Hands out what came or went since the last call, in that order. False when something may be missing;
  /// nothing more is to be had then.
  virtual bool hear(const std::function<void(const QString& name, bool came)>& use) = 0;
};

/// A folder as the system shows it. A test has its own.
class FolderSight {
 public:
  virtual ~FolderSight() = default;
  virtual PathLook look() = 0;
  /// Reads the whole folder; nothing where it can't be read to its end.
  virtual std::optional<QStringList> names() = 0;
  virtual bool leadToOneFile(const QString& name, const QString& other) = 0;
  /// What happens from now on; null where the system doesn't hear of all of it.
  virtual std::unique_ptr<FolderNews> follow() = 0;
  /// The time of day, in nanoseconds since 1970.
  virtual qint64 now() = 0;
};

/// The real one.
std::unique_ptr<FolderSight> sightOf(const QString& folder);

class FolderNames {
 public:
  explicit FolderNames(std::unique_ptr<FolderSight> sight);

  /// A spelling of a name, which is given case-folded. Empty when nothing in the folder is called that, and
  /// wherever a plain look under any spelling finds it.
  QString spelling(const QString& foldedName);
  /// Right after spelling(): whether that was all there is to know. Where it found none, nothing is called
  /// that, and no plain look needs to be taken.
  bool hearsAll() const { return way_ == Way::News; }

 private:
  /// How it is known whether the names are still right.
  enum class Way {
    Unread,
    Stamp,  ///< read once: right while the folder's time stamp stands
    News,   ///< right after what is heard
    IgnoresCase,
    Pace,  ///< by the time stamp, as far as there was time to read again
  };

  bool isCurrent();
  bool isSameFolder();
  bool stampStands();
  bool isTimeToRead();
  bool hearNews();
  void read();
  void readNames();
  void forget();

  std::unique_ptr<FolderSight> sight_;
  std::unique_ptr<FolderNews> news_;
  QMultiHash<QString, QString> names_;  // by their case-folded form
  Way way_ = Way::Unread;
  PathLook look_;         // of the last reading
  bool settled_ = false;  // its stamp was old enough to show the next change
  qint64 lookedAt_ = 0;   // that this is still the same folder
  qint64 readAt_ = 0, readAgainAt_ = 0;
};

}  // namespace qk

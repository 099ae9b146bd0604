// What takes long to make, a store with a million rows, is made once a run of qk-bench, by a process that
// callgrind doesn't slow. Whoever works on it has a copy of his own, so that nobody meets what others left.
#pragma once

#include <QString>
#include <QTemporaryDir>
#include <functional>

namespace qk::bench {

/// The template of a temporary folder in a memory file system, where there is one: syncing costs nothing
/// there, for the house and for the bare way alike.
QString inMemory();

/// Where the processes of this run, which inherit it, keep what they make. Set by the first of them.
void keepMadeIn(const QString& folder);

class OwnCopy {
 public:
  /// A copy of the folder of that name, which is made when it isn't there yet: `make` fills an empty one. It
  /// is complete or not there at all.
  OwnCopy(const QString& name, const std::function<void(const QString& folder)>& make);

  QString filePath(const QString& name) const { return folder_.filePath(name); }
  QString path() const { return folder_.path(); }

 private:
  QTemporaryDir folder_;
};

/// The path of a competition's file that is made likewise, and copied once a process. `make` makes it at the
/// path that it is given.
QString madeStore(const QString& name, const std::function<void(const QString& path)>& make);

}  // namespace qk::bench

// The one door to files and folders. A test stands in this door: disk full, torn file, folder gone.
//
// Paths may use "/" or "\"; the last component is found whatever its case. A path of another platform
// ("C:\…" here) is never made: looking there finds nothing, writing there is Error 76.
// A file that this process holds (held_files.h), such as an open database, is never opened here.
// Errors: 53 file missing, 55 held by this process, 61 disk full, 70 permission denied, 75 access error, 76
// folder missing.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>

namespace qk {

class Files {
 public:
  virtual ~Files() = default;

  virtual QByteArray read(const QString& path);
  /// Creates or truncates, writes, closes.
  virtual void write(const QString& path, const QByteArray& content);
  /// Opens at the end (made when missing), writes, closes.
  virtual void append(const QString& path, const QByteArray& content);
  virtual void remove(const QString& path);
  virtual void copy(const QString& from, const QString& to);
  /// Renames over an existing target, whole or not at all.
  virtual void rename(const QString& from, const QString& to);
  /// Makes or replaces a file whole or not at all: written beside it under a name that nothing else has,
  /// then renamed. The path is taken as it stands, so that a run over many files needn't look through the
  /// folder for each of them.
  virtual void replace(const QString& path, const QByteArray& content);
  /// One folder level; no error if it exists.
  virtual void makeFolder(const QString& path);

  /// Directory look-up; never fails. Costs one look when the file is there under that name.
  virtual bool exists(const QString& path);
  virtual bool folderExists(const QString& path);
  /// True if the name isn't blank and opening for reading works.
  virtual bool readable(const QString& path);
  /// Names (without folder) that match a wildcard pattern, whatever their case, sorted; empty when
  /// unreachable.
  virtual QStringList list(const QString& folder, const QString& pattern);

  /// The path as the file system spells it: separators of this platform, last component by its stored case.
  QString resolve(const QString& path);

 private:
  struct Listing;
  /// The same path with its last component as the folder spells it; empty when nothing of that name is there.
  QString otherSpelling(const QString& path);
  struct Miss;
  bool isStillMissing(const QString& path);
  void rememberMiss(const QString& path, const QString& plain);
  QHash<QString, std::shared_ptr<Listing>> listings_;  // by folder
  QHash<QString, std::shared_ptr<Miss>> misses_;       // by path as asked, so that a poll costs two looks
};

/// True for "C:\…" or "\\server\…" where the platform's own paths begin otherwise.
bool isForeignPath(const QString& path);
/// Appends the platform's separator unless the path ends in "/" or "\".
QString withTrailingSeparator(const QString& folder);

}  // namespace qk

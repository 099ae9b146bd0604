#include "platform/runtime/storage.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStorageInfo>

#include "platform/runtime/files.h"

namespace qk {

bool Storage::isThere(const QString& folder) {
  return !folder.isEmpty() && !isForeignPath(folder) && QFileInfo(folder).isDir();
}

std::optional<DiskRoom> Storage::roomAt(const QString& folder) {
  if (!isThere(folder)) return {};
  const QStorageInfo disk(folder);
  // A disk of no size is one that can't be asked, not one that is full.
  if (!disk.isValid() || !disk.isReady() || disk.bytesTotal() <= 0) return {};
  return DiskRoom{disk.rootPath(), disk.bytesAvailable(), disk.bytesTotal()};
}

std::optional<std::chrono::milliseconds> Storage::timeOfListing(const QString& folder) {
  QElapsedTimer time;
  time.start();
  if (!isThere(folder)) return {};
  QDir(folder).entryList(QDir::NoFilter, QDir::Unsorted);
  return std::chrono::milliseconds(time.elapsed());
}

qint64 Storage::sizeOf(const QString& file) {
  return isForeignPath(file) ? 0 : QFileInfo(file).size();
}

}  // namespace qk

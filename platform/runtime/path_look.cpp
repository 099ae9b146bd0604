#include "platform/runtime/path_look.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace qk {

#ifdef Q_OS_UNIX
NativePath native(const QString& path) {
  return QFile::encodeName(path);
}

PathLook lookAt(const NativePath& path) {
  struct stat status;
  if (::stat(path.constData(), &status) != 0) return {};
  const qint64 stamp = status.st_mtim.tv_sec * qint64(1000000000) + status.st_mtim.tv_nsec;
  return {S_ISDIR(status.st_mode) ? PathKind::Folder : PathKind::File,
          stamp,
          {static_cast<quint64>(status.st_dev), static_cast<quint64>(status.st_ino)}};
}
#else
NativePath native(const QString& path) {
  return path;
}

PathLook lookAt(const NativePath& path) {
  const QFileInfo info(path);
  if (!info.exists()) return {};
  const qint64 stamp = info.lastModified().toMSecsSinceEpoch() * 1000000;
  return {info.isDir() ? PathKind::Folder : PathKind::File, stamp};
}
#endif

}  // namespace qk

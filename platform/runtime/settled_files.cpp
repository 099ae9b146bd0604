#include "platform/runtime/settled_files.h"

#include <QFile>

#include "platform/runtime/error.h"
#include "platform/runtime/held_files.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#else
#include <io.h>
#endif

namespace qk {

namespace {

void unheld(const QString& path, const std::function<void()>& use) {
  if (!unlessHeld(path, use)) throw Error(errors::kFileAlreadyOpen);
}

[[noreturn]] void fail(const QFile& file, bool writing) {
  switch (file.error()) {
    case QFileDevice::PermissionsError:
      throw Error(errors::kPermissionDenied);
    case QFileDevice::ResourceError:
      throw Error(writing ? 61 : 7);
    default:
      throw Error(!writing && !file.exists() ? 53 : errors::kDeviceError);
  }
}

void settle(const QFile& file) {
#ifdef Q_OS_UNIX
  const bool done = ::fsync(file.handle()) == 0;
#else
  const bool done = ::_commit(file.handle()) == 0;
#endif
  if (!done) throw Error(errors::kDeviceError);
}

}  // namespace

void settleFile(const QString& path) {
  unheld(path, [&] {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) fail(file, false);
    settle(file);
  });
}

void settleFolder([[maybe_unused]] const QString& path) {
#ifdef Q_OS_UNIX
  const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) throw Error(errors::kPathNotFound);
  // A file system of the network may not know this; what it knows it has done.
  ::fsync(folder);
  ::close(folder);
#endif
}

void writeSettled(const QString& path, const QByteArray& content) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
    if (file.exists()) throw Error(errors::kFileExists);
    fail(file, true);
  }
  try {
    if (file.write(content) != content.size()) fail(file, true);
    settle(file);
  } catch (const Error&) {
    file.remove();
    throw;
  }
}

void readInPieces(const QString& path, qsizetype size, const std::function<void(const QByteArray&)>& take) {
  unheld(path, [&] {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) fail(file, false);
    for (;;) {
      const QByteArray piece = file.read(size);
      if (piece.isEmpty()) break;
      take(piece);
    }
    if (file.error() != QFileDevice::NoError) fail(file, false);
  });
}

}  // namespace qk

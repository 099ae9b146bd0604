#include "platform/runtime/held_files.h"

#include <QFile>
#include <QReadWriteLock>
#include <map>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace qk {

namespace {

struct Held {
  QReadWriteLock lock;
  std::map<FileIdentity, int> count;
};

/// Never destroyed: a connection may outlive the other statics of the program.
Held& held() {
  static auto* const all = new Held;
  return *all;
}

bool isAmongHeld(const QString& path) {
  if (held().count.empty()) return false;
  const auto file = identityOf(path);
  return file && held().count.contains(*file);
}

}  // namespace

std::optional<FileIdentity> identityOf(const QString& path) {
  return identityOf(QFile::encodeName(path).constData());
}

std::optional<FileIdentity> identityOf([[maybe_unused]] const char* nativePath) {
#ifdef Q_OS_UNIX
  struct stat status;
  if (::stat(nativePath, &status) == 0)
    return FileIdentity{static_cast<quint64>(status.st_dev), static_cast<quint64>(status.st_ino)};
#endif
  return {};
}

HeldFile::HeldFile(const FileIdentity& file) : file_(file) {
  const QWriteLocker alone(&held().lock);
  ++held().count[file_];
}

HeldFile::~HeldFile() {
  const QWriteLocker alone(&held().lock);
  const auto entry = held().count.find(file_);
  if (--entry->second == 0) held().count.erase(entry);
}

bool isHeld(const QString& path) {
  const QReadLocker together(&held().lock);
  return isAmongHeld(path);
}

bool unlessHeld(const QString& path, const std::function<void()>& use) {
  const QReadLocker together(&held().lock);
  if (isAmongHeld(path)) return false;
  use();
  return true;
}

}  // namespace qk

#include "tests/support/lock_watch.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QMetaEnum>

namespace qk::test {

namespace {

/// " 4711 08:01:1234 " tells whose lock on which file it is.
bool isLocked(const QString& file, const QByteArray& kind, const QByteArray& process) {
  struct stat status;
  if (::stat(QFile::encodeName(file).constData(), &status) != 0) return false;
  QFile locks("/proc/locks");
  if (!locks.open(QIODevice::ReadOnly)) qFatal("the system doesn't tell its locks");
  const QByteArray inode = ':' + QByteArray::number(static_cast<qulonglong>(status.st_ino)) + ' ';
  for (const QByteArray& line : locks.readAll().split('\n'))
    if (line.contains(inode) && line.contains(kind) && line.contains(" READ ") &&
        line.contains(' ' + process + ' '))
      return true;
  return false;
}

/// Whether a connection of this process stands: the engine keeps the log open.
bool isOpenHere(const QString& file) {
  const QDir descriptors("/proc/self/fd");
  for (const QString& name : descriptors.entryList(QDir::Files | QDir::System))
    if (QFile::symLinkTarget(descriptors.filePath(name)).startsWith(file + "-wal")) return true;
  return false;
}

}  // namespace

bool hasReadLock(const QString& file) {
  return isLocked(file, "POSIX", QByteArray::number(::getpid()));
}

bool hasStandingLock(const QString& file) {
  return isLocked(file, "OFDLCK", "-1");
}

LockWatch::LockWatch(const QString& database) : database_(database) {
  QCoreApplication::instance()->installEventFilter(this);
}

LockWatch::~LockWatch() = default;

void LockWatch::look() {
  ++looks_;
  const bool stands = hasReadLock(database_) && hasReadLock(database_ + "-shm") &&
                      hasStandingLock(database_) && hasStandingLock(database_ + "-shm");
  if (stood_ && !stands && isOpenHere(database_)) ++losses_;
  stood_ = stands;
}

bool LockWatch::eventFilter(QObject* watched, QEvent* event) {
  const int before = losses_;
  look();
  if (losses_ > before && firstLoss_.isEmpty())
    firstLoss_ = QString(watched->metaObject()->className()) + " " +
                 QMetaEnum::fromType<QEvent::Type>().valueToKey(event->type());
  return false;
}

}  // namespace qk::test

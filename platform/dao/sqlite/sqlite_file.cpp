#include "platform/dao/sqlite/sqlite_file.h"

#include <sqlite3.h>

#include <QFile>
#include <QMutex>
#include <QTemporaryFile>
#include <map>
#include <utility>

#include "platform/runtime/error.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace qk::dao {
namespace {

/// Guards every SqliteFile: opening, closing and losing are rare.
QRecursiveMutex& door() {
  static auto* const mutex = new QRecursiveMutex;
  return *mutex;
}

std::map<FileIdentity, std::weak_ptr<SqliteFile>>& standing() {
  static auto* const files = new std::map<FileIdentity, std::weak_ptr<SqliteFile>>;
  return *files;
}

#ifdef F_OFD_SETLK
/// The bytes of SQLite's file format that a connection locks for reading while it stands: those of the
/// database are locked by the whole range, the one of the index (-shm) tells that somebody uses it.
struct flock readLock(bool ofIndex) {
  struct flock lock = {};
  lock.l_type = F_RDLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = ofIndex ? 128 : 0x40000000 + 2;
  lock.l_len = ofIndex ? 1 : 510;
  return lock;
}
#endif

/// Whether another process has the index of a log open.
bool isIndexInUse([[maybe_unused]] int index) {
#ifdef F_OFD_SETLK
  struct flock lock = readLock(true);
  lock.l_type = F_WRLCK;
  return index >= 0 && ::fcntl(index, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
#else
  return false;
#endif
}

}  // namespace

SqliteFile::Descriptor::Descriptor([[maybe_unused]] const QByteArray& path, [[maybe_unused]] bool writable) {
#ifdef Q_OS_UNIX
  number_ = ::open(path.constData(), (writable ? O_RDWR : O_RDONLY) | O_CLOEXEC);
#endif
}

SqliteFile::Descriptor& SqliteFile::Descriptor::operator=(Descriptor&& other) noexcept {
  if (this == &other) return *this;
  close();
  number_ = std::exchange(other.number_, -1);
  return *this;
}

void SqliteFile::Descriptor::close() {
#ifdef Q_OS_UNIX
  if (number_ >= 0) ::close(number_);
#endif
  number_ = -1;
}

std::shared_ptr<SqliteFile> SqliteFile::at(const QString& path) {
  const QMutexLocker locked(&door());
  const auto identity = identityOf(path);
  if (!identity) return std::make_shared<SqliteFile>(identity);
  std::weak_ptr<SqliteFile>& known = standing()[*identity];
  std::shared_ptr<SqliteFile> file = known.lock();
  if (!file) known = file = std::make_shared<SqliteFile>(identity);
  return file;
}

SqliteFile::SqliteFile(const std::optional<FileIdentity>& file) : file_(file) {
  if (file_) held_.emplace(*file_);
}

SqliteFile::~SqliteFile() {
  const QMutexLocker locked(&door());
  try {
    recover();
  } catch (const Error&) {
    // Whoever still works on the lost log puts it back himself.
  }
  forgetLog();
  if (!file_) return;
  const auto entry = standing().find(*file_);
  if (entry != standing().end() && entry->second.expired()) standing().erase(entry);
}

sqlite3* SqliteFile::join(Member& member, const std::function<sqlite3*()>& open) {
  const QMutexLocker locked(&door());
  sqlite3* handle = open();
  members_.push_back(&member);
  return handle;
}

void SqliteFile::leave(Member& member, sqlite3* handle) {
  const QMutexLocker locked(&door());
  members_.remove(&member);
  if (!lost_ && !logStands()) lost_ = true;
  // Closing the last handle copies the log into the database and removes it by name. A lost one must not be
  // copied, somebody may have gone on without it; and the name may be another's.
  if (lost_) sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  const bool last = members_.empty();
  if (last) lockBesideEngine(false);  // to the engine it is a stranger's
  sqlite3_close_v2(handle);
  if (last && !lost_) forgetLog();
}

void SqliteFile::noteLog(sqlite3* handle) {
  const QMutexLocker locked(&door());
  if (log_ || !file_ || lost_) return;
  path_ = sqlite3_db_filename(handle, "main");
  logPath_ = path_ + "-wal";
  log_ = identityOf(logPath_.constData());
  if (!log_) return;
  fileDescriptor_ = Descriptor(path_, false);
  logDescriptor_ = Descriptor(logPath_, false);
  indexDescriptor_ = Descriptor(path_ + "-shm", true);
  lockBesideEngine(true);
}

bool SqliteFile::isLogKnown() const {
  const QMutexLocker locked(&door());
  return log_.has_value();
}

bool SqliteFile::logStands() const {
  return !log_ || (identityOf(logPath_.constData()) == log_ && identityOf(path_.constData()) == file_);
}

bool SqliteFile::isOpenElsewhere() const {
  const QMutexLocker locked(&door());
  if (members_.size() > 1) return true;
#ifdef F_OFD_SETLK
  if (fileDescriptor_.number() < 0) return false;
  // The process's own locks of the engine don't count here, but the one beside them would.
  lockBesideEngine(false);
  struct flock lock = readLock(false);
  lock.l_type = F_WRLCK;
  const bool asked = ::fcntl(fileDescriptor_.number(), F_GETLK, &lock) == 0;
  lockBesideEngine(true);
  return asked && lock.l_type != F_UNLCK;
#else
  return false;
#endif
}

void SqliteFile::lose() {
  const QMutexLocker locked(&door());
  lost_ = true;
  closeIdle();
}

void SqliteFile::closeIdle() {
  const std::list<Member*> members = members_;
  for (Member* member : members) member->closeWhenIdle();
}

void SqliteFile::recover() {
  const QMutexLocker locked(&door());
  if (!lost_) return;
  closeIdle();  // those that have had no need since
  if (!members_.empty() || isAnotherOnLog())
    throw Error(errors::kConnectionLost,
                "Die Protokolldatei der Datenbank wurde von außen entfernt, und anderswo wird noch mit ihr "
                "gearbeitet. Schließen Sie die Datei an den anderen Arbeitsplätzen, und wiederholen Sie.");
  putLogBack();
  forgetLog();
  lost_ = false;
}

/// A file system that has no such locks leaves the engine's own.
void SqliteFile::lockBesideEngine([[maybe_unused]] bool locked) const {
#ifdef F_OFD_SETLK
  for (const bool ofIndex : {false, true}) {
    const int descriptor = ofIndex ? indexDescriptor_.number() : fileDescriptor_.number();
    struct flock lock = readLock(ofIndex);
    if (!locked) lock.l_type = F_UNLCK;
    if (descriptor >= 0) ::fcntl(descriptor, F_OFD_SETLK, &lock);
  }
#endif
}

/// Only when no handle stands: it closes a descriptor of the database.
void SqliteFile::forgetLog() {
  fileDescriptor_.close();
  logDescriptor_.close();
  indexDescriptor_.close();
  log_.reset();
}

bool SqliteFile::isAnotherOnLog() const {
  return isIndexInUse(indexDescriptor_.number()) || isIndexInUse(Descriptor(path_ + "-shm", true).number());
}

/// Whoever opened the file since then has made a log of his own. Without one nobody has: he couldn't remove
/// it again, for he wasn't alone. An empty one was made by a reader, who could do nothing with it.
void SqliteFile::putLogBack() const {
  const QString name = QFile::decodeName(logPath_);
  if (logStands() || identityOf(path_.constData()) != file_ || QFile(name).size() > 0) return;
  QFile old;
  QTemporaryFile restored(name + ".XXXXXX");
  if (!old.open(logDescriptor_.number(), QIODevice::ReadOnly) || !restored.open())
    throw Error(errors::kConnectionLost);
  const QByteArray content = old.readAll();
  bool written = restored.write(content) == content.size() && restored.flush();
#ifdef Q_OS_UNIX
  written = written && ::fsync(restored.handle()) == 0 &&
            ::rename(QFile::encodeName(restored.fileName()).constData(), logPath_.constData()) == 0;
#endif
  if (!written) throw Error(errors::kConnectionLost);
  restored.setAutoRemove(false);
}

}  // namespace qk::dao

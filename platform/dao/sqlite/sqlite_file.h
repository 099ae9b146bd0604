// A database file that connections of this process stand on, and the log beside it (-wal, -shm).
//
// Two dangers come from outside the engine, and both end in lost rows. The locks of the process on the file
// may be dropped by whoever closes a descriptor of it (held_files.h); therefore it is held against our own
// doors, and a lock of a kind that belongs to its descriptor stands beside the engine's, which no close
// elsewhere in the process can drop, be it in a library's file dialog. And the log may be taken away in spite
// of all locks, by hand or by a tool that knows no databases; what is committed then goes into a file that
// nobody will find. Therefore every commit asks logStands() before and after.
//
// When the log is lost all connections of the process close (the engine would go on sharing what it remembers
// of the old log), the log is put back as it was if nobody has begun a new one, and each connection opens
// anew with its next need.
#pragma once

#include <QByteArray>
#include <QString>
#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <optional>

#include "platform/runtime/held_files.h"

struct sqlite3;

namespace qk::dao {

class SqliteFile {
 public:
  /// A connection, as the file needs it. Called with the file's door locked.
  class Member {
   public:
    /// Closes its handle through leave(), unless it is just being used; then it does so afterwards.
    virtual void closeWhenIdle() = 0;

   protected:
    ~Member() = default;
  };

  /// The one object of the file at the path, for all connections of the process.
  static std::shared_ptr<SqliteFile> at(const QString& path);
  /// Only for at().
  explicit SqliteFile(const std::optional<FileIdentity>& file);
  ~SqliteFile();
  SqliteFile(const SqliteFile&) = delete;
  SqliteFile& operator=(const SqliteFile&) = delete;

  sqlite3* join(Member& member, const std::function<sqlite3*()>& open);
  /// Closes the handle. The last one leaves the file as the engine wants it: one file, no log.
  void leave(Member& member, sqlite3* handle);
  /// To be called when a connection in write-ahead mode has read for the first time: the log is there then.
  void noteLog(sqlite3* handle);
  /// Whether one of them has; from then on the file is known to be a database in write-ahead mode.
  bool isLogKnown() const;

  /// Whether the file and its log are still those that the connections work on. One look each.
  bool logStands() const;
  /// Whether a second connection stands on it, of this process or another.
  bool isOpenElsewhere() const;
  bool isLost() const { return lost_; }
  void lose();
  /// After a loss, before opening anew: puts the log back. 3043 while somebody still works on the lost one.
  void recover();

 private:
  class Descriptor {
   public:
    Descriptor() = default;
    Descriptor(const QByteArray& path, bool writable);
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&& other) noexcept;
    void close();
    int number() const { return number_; }

   private:
    int number_ = -1;
  };

  void lockBesideEngine(bool locked) const;
  void closeIdle();
  void forgetLog();
  bool isAnotherOnLog() const;
  void putLogBack() const;

  std::optional<FileIdentity> file_;
  std::optional<HeldFile> held_;
  std::list<Member*> members_;
  std::atomic<bool> lost_ = false;
  QByteArray path_;  // as the file system spells it, known with the log
  QByteArray logPath_;
  std::optional<FileIdentity> log_;
  Descriptor fileDescriptor_, logDescriptor_, indexDescriptor_;
};

}  // namespace qk::dao

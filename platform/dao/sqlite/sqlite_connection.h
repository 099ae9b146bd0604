// One connection to a SQLite file, with its prepared statements kept by text.
//
// Works on the library's own interface: a statement bound through Qt SQL costs several times what it costs
// here, and the error codes that tell a locked file from a full disk don't come through it.
#pragma once

#include <QHash>
#include <QRecursiveMutex>
#include <QString>
#include <QVariantList>
#include <functional>
#include <memory>

#include "platform/dao/sqlite/sqlite_file.h"

struct sqlite3;
struct sqlite3_stmt;

namespace qk::dao {

class SqliteConnection final : private SqliteFile::Member {
 public:
  enum class Access { ReadOnly, ReadWrite, Create };

  /// immutable: nobody writes to the file while it is open, and nothing is written beside it. `furnish` runs
  /// before the first statement that anybody asks for, and again whenever the connection had to be opened
  /// anew: at once, which proves the file, where no other connection of the process has.
  SqliteConnection(const QString& path, Access access, bool immutable,
                   const std::function<void(SqliteConnection&)>& furnish);
  ~SqliteConnection();
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  /// Null after a loss of the log, or where it couldn't be furnished, until the next statement.
  sqlite3* handle() const { return handle_; }

  /// Hands over row after row until `take` says false; Null is an invalid QVariant, a whole number a
  /// qlonglong. The statement is reset afterwards, also when `take` throws.
  void read(const QString& text, const QVariantList& values,
            const std::function<bool(const QVariantList&)>& take);
  /// The one value of a query's first row.
  QVariant value(const QString& text, const QVariantList& values = {});
  /// Affected rows.
  int write(const QString& text, const QVariantList& values = {});
  /// Inserts a row; the number that SQLite assigned to it.
  qint64 insert(const QString& text, const QVariantList& values);

  bool inTransaction() const;

  /// To be called before what is going to be committed, and after the commit. Error 3043 when the file or its
  /// log isn't the one any more that this connection writes to: what was committed isn't safe. All
  /// connections of the process to the file are opened anew with their next statement.
  void beforeCommit();
  void afterCommit();
  /// Whether the file and the log that this connection reads are the ones that lie there; two looks at the
  /// disk. From any thread.
  bool isLogThere() const { return handle_ && !file_->isLost() && file_->logStands(); }
  bool isOpenElsewhere() const { return file_->isOpenElsewhere(); }

 private:
  /// A statement runs: nobody closes the handle under it.
  class InUse;
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  using Statement = std::shared_ptr<sqlite3_stmt>;

  void open();
  void findFile();
  void openHandle();
  void makeReady(const std::function<void()>& body);
  void furnish();
  void close();
  void closeWhenIdle() override;
  bool isStale() const;
  [[noreturn]] void fail() const;
  Statement prepared(const QString& text);
  void run(const QString& text, const QVariantList& values);

  QString path_;
  Access access_;
  bool immutable_;
  std::function<void(SqliteConnection&)> furnishing_;
  std::shared_ptr<SqliteFile> file_;
  sqlite3* handle_ = nullptr;
  bool furnished_ = false;
  QHash<QString, Statement> statements_;
  QRecursiveMutex inUse_;
  int depth_ = 0;  // of statements under way
};

}  // namespace qk::dao

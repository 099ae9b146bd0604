// One connection to a SQLite file, with its prepared statements kept by text.
//
// Works on the library's own interface: a statement bound through Qt SQL costs several times what it costs
// here, and the error codes that tell a locked file from a full disk don't come through it.
#pragma once

#include <QHash>
#include <QString>
#include <QVariantList>
#include <functional>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace qk::dao {

class SqliteConnection {
 public:
  enum class Access { ReadOnly, ReadWrite, Create };

  /// immutable: nobody writes to the file while it is open, and nothing is written beside it.
  SqliteConnection(const QString& path, Access access, bool immutable);
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  sqlite3* handle() const { return handle_.get(); }

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

 private:
  struct Close {
    void operator()(sqlite3* handle) const;
  };
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  using Statement = std::shared_ptr<sqlite3_stmt>;

  [[noreturn]] void fail() const;
  Statement prepared(const QString& text);
  void bind(sqlite3_stmt* statement, const QVariantList& values) const;
  void run(const QString& text, const QVariantList& values);

  std::unique_ptr<sqlite3, Close> handle_;
  QHash<QString, Statement> statements_;  // after handle_: goes before it
};

}  // namespace qk::dao

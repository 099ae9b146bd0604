// The bare side of what is stored: the engine's own interface, prepared once, bound and run.
#pragma once

#include <QString>
#include <QVariant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace qk::bench {

/// Any failure ends the benchmark.
class BareStore {
 public:
  /// As durable as the house's own connections.
  explicit BareStore(const QString& path);
  ~BareStore();
  BareStore(const BareStore&) = delete;
  BareStore& operator=(const BareStore&) = delete;

  /// Lives as long as the store.
  sqlite3_stmt* prepare(const QString& text);
  /// A statement that brings no rows, with the values of its parameters in their order.
  template <class... Values>
  void run(sqlite3_stmt* statement, const Values&... values) {
    int position = 0;
    (bind(statement, ++position, values), ...);
    step(statement);
  }
  void run(sqlite3_stmt* statement, const QVariantList& values);
  void execute(const char* text);
  qint64 lastRow() const;

 private:
  static void bind(sqlite3_stmt* statement, int position, int value);
  static void bind(sqlite3_stmt* statement, int position, qint64 value);
  static void bind(sqlite3_stmt* statement, int position, double value);
  static void bind(sqlite3_stmt* statement, int position, const QString& value);
  static void bind(sqlite3_stmt* statement, int position, const QVariant& value);
  void step(sqlite3_stmt* statement);
  void check(int code) const;

  sqlite3* raw_ = nullptr;
  std::vector<sqlite3_stmt*> prepared_;
};

}  // namespace qk::bench

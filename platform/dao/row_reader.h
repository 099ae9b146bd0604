// Reads all rows of a query in a thread of its own, on a connection of its own, as fast as they come, so that
// whoever makes something of them never waits, and no cursor of his stays open.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "platform/dao/values/types.h"
#include "platform/runtime/error.h"

namespace qk::dao {

class Database;
class Engine;

class RowReader {
 public:
  /// Gets a row, in the reader's thread. It keeps no reference to it.
  using Take = std::function<void(const QVariantList& row)>;
  /// Called once, in the reader's thread, behind the last row, unless the reading was given up.
  using End = std::function<void(const std::optional<Error>& failure)>;

  /// What is wrong with the text is thrown here. A text without ORDER BY comes in the order of the keys. The
  /// database outlives the reader.
  RowReader(Database& database, const QString& query);
  /// Gives up what is being read.
  ~RowReader();
  RowReader(const RowReader&) = delete;
  RowReader& operator=(const RowReader&) = delete;

  const std::vector<FieldDef>& fields() const { return fields_; }
  /// Connects and begins to read. Once.
  void start(Take take, End end);

 private:
  void run(const Take& take, const End& end);

  Database& database_;
  std::atomic<bool> ending_ = false;
  std::vector<FieldDef> fields_;
  QString text_;
  QVariantList values_;
  std::unique_ptr<Engine> reader_;
  std::thread thread_;  // last: it uses all of the above
};

}  // namespace qk::dao

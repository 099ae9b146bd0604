// The rows of a query, packed: about the bytes of their texts, so that a hundred thousand cost little memory.
// One thread appends while another reads.
#pragma once

#include <QByteArray>
#include <QVariantList>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/runtime/error.h"

namespace qk::report {

class RowBuffer {
 public:
  /// `grown` is called in the appending thread whenever more can be read, and at the end.
  explicit RowBuffer(std::function<void()> grown = {}) : grown_(std::move(grown)) {}
  RowBuffer(const RowBuffer&) = delete;
  RowBuffer& operator=(const RowBuffer&) = delete;

  void append(const QVariantList& row);
  /// Nothing more comes.
  void finish(const std::optional<Error>& failure = {});

  int count() const;
  bool isComplete() const;
  std::optional<Error> failure() const;
  /// Rows that can be read now, and whether nothing more comes: both of one moment.
  std::pair<int, bool> state() const;
  void read(int row, QVariantList& values) const;

 private:
  struct Chunk {
    int first = 0;
    QByteArray bytes = {};
    std::vector<quint32> starts = {};
  };
  void publish();

  Chunk growing_;  // the appending thread's own
  mutable std::mutex mutex_;
  std::vector<std::shared_ptr<const Chunk>> chunks_;
  mutable std::shared_ptr<const Chunk> last_;  // the reading thread's own: the one it read from last
  int count_ = 0;
  bool complete_ = false;
  std::optional<Error> failure_;
  std::function<void()> grown_;
};

}  // namespace qk::report

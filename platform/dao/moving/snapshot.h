// A store as it was at one moment, for a thread that takes its time, while others go on working in it: read
// table by table, or written into a file as a whole.
//
// All of it is used in one thread at a time. Errors: those of opening a store; 3059 as soon as the reader was
// told to give up; 3043 when the server or the log of the file was lost. A snapshot that failed is of no use
// any more.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "platform/dao/engine/page_witness.h"
#include "platform/dao/moving/table_figures.h"
#include "platform/dao/values/catalogue.h"
#include "platform/runtime/error.h"

namespace qk::dao {

class Engine;

/// A read-only connection of its own.
class SnapshotReader {
 public:
  /// `cancelled` is asked now and then from the reading thread.
  SnapshotReader(const QString& path, std::function<bool()> cancelled);
  ~SnapshotReader();
  SnapshotReader(const SnapshotReader&) = delete;
  SnapshotReader& operator=(const SnapshotReader&) = delete;

  /// A text that stays the same as long as nobody changes the store. Those of two readers can't be compared.
  QString stamp();
  const std::function<bool()>& cancelled() const { return cancelled_; }

 private:
  friend class Snapshot;
  std::function<bool()> cancelled_;
  std::unique_ptr<Engine> engine_;
};

class Snapshot {
 public:
  /// Of this moment. One at a time; the reader outlives it. While it lives the store keeps what others
  /// overwrite, so it shouldn't live longer than it is read.
  explicit Snapshot(SnapshotReader& reader);
  ~Snapshot();
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;

  /// The reader's, of this moment.
  const QString& stamp() const { return stamp_; }

  /// Outlives the snapshot if need be.
  std::shared_ptr<const Catalogue> catalogue() const { return catalogue_; }
  TableFigures figures(const QString& table) const;

  /// Makes a file that isn't there yet: the whole store, as one file without a log, not synced. Besides it
  /// there may be files whose names begin with its name and "-"; after a failure whatever there is of them is
  /// the caller's to remove. What it tells of the pages is what PageWitness::compare() reads the file by.
  PageWitness writeTo(const QString& file, const PartDone& done) const;

 private:
  [[noreturn]] void passOn(const Error& error) const;
  PageWitness rowsTo(const QString& file, const PartDone& done) const;

  SnapshotReader& reader_;
  QString stamp_;
  std::shared_ptr<const Catalogue> catalogue_;
};

/// What is wrong with a file that a snapshot was written into, found by reading all of it: structure, counts,
/// indexes against rows. Empty for nothing.
QString flawsOfSnapshot(const QString& file, const std::function<bool()>& cancelled);

}  // namespace qk::dao

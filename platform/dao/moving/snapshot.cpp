#include "platform/dao/moving/snapshot.h"

#include <QFile>

#include "platform/dao/engine/engine.h"
#include "platform/dao/moving/store_copy.h"
#include "platform/dao/opening.h"
#include "platform/dao/sqlite/sqlite_pages.h"
#include "platform/dao/store_files.h"
#include "platform/runtime/error.h"

namespace qk::dao {

SnapshotReader::SnapshotReader(const QString& path, std::function<bool()> cancelled)
    : cancelled_(std::move(cancelled)) {
  const auto opened = openEngine(path, OpenOptions{true, true});
  // A log that is lost can be put back only when nobody reads on in it: so that counts as given up, too.
  engine_ = opened->reader([this] { return cancelled_() || (engine_ && !engine_->stands()); });
}

SnapshotReader::~SnapshotReader() = default;

QString SnapshotReader::stamp() {
  return engine_->stamp();
}

Snapshot::Snapshot(SnapshotReader& reader) : reader_(reader) {
  reader_.engine_->hold();
  try {
    stamp_ = reader_.engine_->stamp();
    catalogue_ = reader_.engine_->catalogue();
  } catch (...) {
    reader_.engine_->release();
    throw;
  }
}

Snapshot::~Snapshot() {
  reader_.engine_->release();
}

void Snapshot::passOn(const Error& error) const {
  if (error.number() == errors::kCancelled && !reader_.cancelled_()) throw Error(errors::kConnectionLost);
  throw error;
}

TableFigures Snapshot::figures(const QString& table) const {
  try {
    return figuresOf(*reader_.engine_, table, [this](qint64) {
      if (reader_.cancelled_() || !reader_.engine_->stands()) throw Error(errors::kCancelled);
    });
  } catch (const Error& error) {
    passOn(error);
  }
}

PageWitness Snapshot::writeTo(const QString& file, const PartDone& done) const {
  const auto givenUp = [this] { return reader_.cancelled_() || !reader_.engine_->stands(); };
  try {
    if (auto written = reader_.engine_->copyHeldPages(file, givenUp, done)) return *std::move(written);
    return rowsTo(file, done);
  } catch (const Error& error) {
    passOn(error);
  }
}

/// A store of another kind goes row by row into a file of its own, and that one's pages into the target.
PageWitness Snapshot::rowsTo(const QString& file, const PartDone& done) const {
  const QString rows = file + "-zeilen";
  const auto givenUp = [this] { return reader_.cancelled_(); };
  {
    const auto target = Database::create(rows, OpenOptions{false, false});
    const QStringList tables = catalogue_->tableNames();
    for (qsizetype i = 0; i < tables.size(); ++i) {
      copyTable(*reader_.engine_, *target, tables[i], [&](qint64) {
        if (givenUp()) throw Error(errors::kCancelled);
      });
      done(static_cast<double>(i + 1) / static_cast<double>(tables.size()));
    }
    copyQueries(*reader_.engine_, *target);
  }
  PageWitness written;
  {
    SnapshotReader reader(rows, givenUp);
    written = Snapshot(reader).writeTo(file, done);
  }
  for (const QString& left : QStringList{rows} + filesBeside(rows)) QFile::remove(left);
  return written;
}

QString flawsOfSnapshot(const QString& file, const std::function<bool()>& cancelled) {
  return flawsOf(file, cancelled);
}

}  // namespace qk::dao

// The pages of a SQLite file, copied from a transaction that stands, and known well enough that a single
// wrong byte in the copy shows.
#pragma once

#include <QString>
#include <functional>

#include "platform/dao/engine/page_witness.h"

struct sqlite3;

namespace qk::dao {

/// Copies all pages that `source` sees in the transaction that it holds (without one it would begin anew
/// with each change of the store) into a file that isn't there yet. It is one file then, without a log, and
/// not yet synced. 3059 as soon as `cancelled` says so; what was made so far is left.
PageWitness copyPages(sqlite3* source, const QString& file, const std::function<bool()>& cancelled,
                      const PartDone& done);

/// What SQLite finds wrong with the file by reading all of it: structure, counts, indexes against rows.
/// Empty for nothing.
QString flawsOf(const QString& file, std::function<bool()> cancelled);

}  // namespace qk::dao

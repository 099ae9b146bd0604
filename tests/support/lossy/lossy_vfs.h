// A file layer for SQLite that behaves as a machine does at power loss: what wasn't synced is gone, or half
// there. Writes stay in memory until the engine syncs the file; loseUnsynced() throws the rest away, but for
// a random part, which may be torn in the middle.
//
// One process, one thread. Register before the first database is opened.
#pragma once

#include <QString>
#include <cstdint>
#include <functional>

namespace qk::lossy {

/// Makes the layer the default for every database opened from here on.
void install();

/// Called before each write with the number of writes so far; may end the process.
void onWrite(std::function<void(std::int64_t)> hook);

/// Bytes written and not yet synced, over all files but temporary ones.
std::int64_t unsyncedBytes();
std::int64_t syncCount();

/// The moment of power loss: of the unsynced writes a random part (by `seed`) reaches the disk, the last of
/// them perhaps torn. Afterwards the process must end without touching a database.
void loseUnsynced(unsigned seed);

}  // namespace qk::lossy

// The copies in a folder: which there are, how they are called, which are needed no longer.
#pragma once

#include <QString>
#include <vector>

#include "backup/evidence.h"

namespace qk {

class Files;

/// How many of the last are kept besides the last of each day.
inline constexpr int kKeptCopies = 9;

/// A copy that counts: it lies there with its evidence, in the size that this tells.
struct ProvenCopy {
  QString path;
  Evidence evidence;
};

/// What the copies of a competition are known by: the database and its server, on whatever workstation they
/// are made, or the file and its machine. Several machines may share a folder of copies.
QString sourceOf(const QString& competition);
/// The name that copies of a competition begin with: its own, without dots (no competition opens from a path
/// with one), and without the time of a copy that is worked with.
QString copyBaseOf(const QString& competition);
/// The path of a copy, without its ending. Sorting by name sorts by the clock's time.
QString copyStemOf(const QString& folder, const QString& competition, const QDateTime& moment);

/// All proven copies of the source in the folder, in the order of their making, whatever the clock said.
/// Reads their evidence, not them.
std::vector<ProvenCopy> provenCopies(Files& files, const QString& folder, const QString& source);

/// Those that are neither among the last kKeptCopies nor the last of their day. `copies` in the order of
/// their making.
std::vector<ProvenCopy> superfluous(const std::vector<ProvenCopy>& copies);

/// Whether the copy is, byte by byte, what was proven. False, too, when it can't be read or this process has
/// it open.
bool isUnchanged(const ProvenCopy& copy);

/// Deletes superfluous copies, but none that somebody works in, has changed or renamed. What can't be deleted
/// stays.
void thinOut(Files& files, const std::vector<ProvenCopy>& copies);

/// What a making of copies of this competition that was ended by force left behind. Nobody may be making one.
void removeDrafts(Files& files, const QString& folder, const QString& competition);

}  // namespace qk

// The runs that try to lose a shot. Each prints what it did and is true when nothing was lost and nothing
// doubled.
#pragma once

#include <QString>

namespace qk::faults {

// Beside all that work on a file a foreign process opens and closes it, reading and writing, as a backup, a
// virus scanner or another program would; the runs say how often.

/// The real program and its stations, the program ended by SIGKILL `runs` times at random moments.
bool runKills(const QString& folder, int runs, unsigned seed);

/// Two programs with six lines each on one competition on a server, which is ended by SIGKILL and started
/// again `kills` times meanwhile; the operators answer the error boxes with "Wiederholen". About `shots`
/// shots.
bool runDesks(const QString& folder, int shots, int kills, unsigned seed);

/// The same desks on a server with a standby that each commit waits for: after a third of the shots the
/// server is ended by SIGKILL and the standby made the primary, after another third the old one is back,
/// where not one more row may be stored.
bool runPromotion(const QString& folder, int shots, unsigned seed);

/// Two programs with six lines each on one file, both ended by SIGKILL when all shots are read. About `shots`
/// shots.
bool runFileDesks(const QString& folder, int shots, unsigned seed);

/// Two programs that sell about `stakes` stakes on one server, which is ended by SIGKILL and started again
/// `kills` times while they book.
bool runTills(const QString& folder, int stakes, int kills, unsigned seed);

/// A competition moved `runs` times from file to file, every second move ended by SIGKILL at a random moment
/// and begun again.
bool runMoves(const QString& folder, int runs, unsigned seed);

/// The making of a copy ended by SIGKILL `runs` times at random moments, beside an office that stores shots:
/// at least the last nine copies count and are whole, and nothing else counts.
bool runCopies(const QString& folder, int runs, unsigned seed);
/// The same with the competition on a server of its own.
bool runServerCopies(const QString& folder, int runs, unsigned seed);

/// `runs` times a process of its own that stores shots on a file layer which loses what wasn't synced.
bool runPowerLosses(const QString& folder, int runs, unsigned seed);
/// The process of one power loss: stores shots until a random write, then ends as by power failure.
int powerLossChild(const QString& folder, unsigned seed);

}  // namespace qk::faults

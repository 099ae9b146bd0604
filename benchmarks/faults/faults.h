// The runs that try to lose a shot. Each prints what it did and is true when nothing was lost and nothing
// doubled.
#pragma once

#include <QString>

namespace qk::faults {

/// The real program and its stations, the program ended by SIGKILL `runs` times at random moments.
bool runKills(const QString& folder, int runs, unsigned seed);

/// Two programs with six lines each on one competition on a server, which is ended by SIGKILL and started
/// again `kills` times meanwhile; the operators answer the error boxes with "Wiederholen". About `shots`
/// shots.
bool runDesks(const QString& folder, int shots, int kills, unsigned seed);

/// `runs` times a process of its own that stores shots on a file layer which loses what wasn't synced.
bool runPowerLosses(const QString& folder, int runs, unsigned seed);
/// The process of one power loss: stores shots until a random write, then ends as by power failure.
int powerLossChild(const QString& folder, unsigned seed);

}  // namespace qk::faults

// Ratios in instructions instead of time: the same from run to run, whatever else the machine does. What
// waits, and the kernel's work, isn't counted; of the latter, the calls are.
#pragma once

#include "benchmarks/pairs.h"

namespace qk::bench {

/// Names of the counts that callgrind writes down: of a measured stretch, and of one between two.
inline constexpr auto kMeasured = "measured", kPaused = "paused";

/// The ratio house/bare of a pair with Pair::counted, in instructions, or in calls with Pair::calls. Runs
/// each side in a process of its own, under callgrind, after a native one that only makes what takes long to
/// make. Throws std::runtime_error with what went wrong.
double countedRatio(const Pair& pair);

/// Where a process is to count all it does (--erstmals among its arguments), this is its first call.
void countFromHere(int argc, const char* const* argv);

/// What such a process does: the rounds of one side ("house" or "bare") of the pair of that name, or only
/// what it makes before the first. Its exit status.
int runCounted(const QString& name, const QString& side, bool onlyMakes);

}  // namespace qk::bench

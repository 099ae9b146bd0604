// Ratios on the clock, for what waits.
#pragma once

#include "benchmarks/pairs.h"

namespace qk::bench {

/// The ratio house/bare of a pair without Pair::counted: its sides in turn. Throws std::runtime_error with
/// what went wrong.
Spread timedRatio(const Pair& pair);

}  // namespace qk::bench

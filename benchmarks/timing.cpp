#include "benchmarks/timing.h"

#include <stdexcept>

namespace qk::bench {

namespace {

/// Of a side, each time it is its turn.
constexpr int kRounds = 3;

double secondsOf(const Work& work) {
  Rounds rounds = Rounds::timed(kRounds);
  work(rounds);
  if (!rounds.failure().empty()) throw std::runtime_error(rounds.failure());
  return rounds.seconds();
}

}  // namespace

Spread timedRatio(const Pair& pair) {
  return ratioInTurns([&] { return secondsOf(pair.house); }, [&] { return secondsOf(pair.bare); });
}

}  // namespace qk::bench

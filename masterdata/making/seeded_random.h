// Chance that repeats itself: the same numbers for the same seed on every platform.
#pragma once

#include <cstdint>

#include "platform/runtime/clock.h"

namespace qk {

/// SplitMix64.
class SeededRandom : public Random {
 public:
  explicit SeededRandom(std::uint64_t seed) : state_(seed) {}

  double next() override { return static_cast<double>(bits() >> 11) / 9007199254740992.0; }
  /// 0 to limit - 1.
  int below(int limit) { return static_cast<int>(bits() % static_cast<std::uint64_t>(limit)); }

 private:
  std::uint64_t bits() {
    state_ += 0x9e3779b97f4a7c15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31);
  }

  std::uint64_t state_;
};

}  // namespace qk

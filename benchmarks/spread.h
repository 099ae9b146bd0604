// What was taken many times: its median, and the quartiles that say how far it may be trusted.
#pragma once

#include <functional>
#include <optional>
#include <vector>

namespace qk::bench {

struct Spread {
  /// Taken once.
  Spread(double value) : median(value) {}  // NOLINT(google-explicit-constructor): a plain figure is one, too
  /// Of values in any order, one at least.
  explicit Spread(std::vector<double> values);

  struct Quartiles {
    double lower, upper;
  };
  double median;
  std::optional<Quartiles> quartiles = {};
};

/// So many times both are taken, in turn.
inline constexpr int kTurns = 30;

/// The ratios of two that are taken in turn, now this one first, now that one, so that whatever else the
/// machine does meets both.
Spread ratioInTurns(const std::function<double()>& house, const std::function<double()>& bare);

}  // namespace qk::bench

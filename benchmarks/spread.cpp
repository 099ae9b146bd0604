#include "benchmarks/spread.h"

#include <algorithm>
#include <utility>

namespace qk::bench {

namespace {

/// Between the two values next to it, as far as it stands between them.
double quantile(const std::vector<double>& sorted, double part) {
  const double place = part * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  return sorted[below] + (place - static_cast<double>(below)) * (sorted[above] - sorted[below]);
}

}  // namespace

Spread::Spread(std::vector<double> values) : median(0) {
  std::sort(values.begin(), values.end());
  median = quantile(values, 0.5);
  quartiles = {quantile(values, 0.25), quantile(values, 0.75)};
}

Spread ratioInTurns(const std::function<double()>& house, const std::function<double()>& bare) {
  std::vector<double> ratios;
  for (int turn = 0; turn < kTurns; ++turn) {
    const bool houseFirst = turn % 2 == 0;
    const double first = houseFirst ? house() : bare();
    const double second = houseFirst ? bare() : house();
    ratios.push_back(houseFirst ? first / second : second / first);
  }
  return Spread(std::move(ratios));
}

}  // namespace qk::bench

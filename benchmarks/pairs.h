// Benchmarks by ratio: two ways to the same end, measured in turn in one run. Absolute times say nothing on a
// shared machine; the ratio of two processor times does.
#pragma once

#include <benchmark/benchmark.h>

#include <QString>
#include <functional>
#include <vector>

namespace qk::bench {

using Work = std::function<void(benchmark::State&)>;

struct Pair {
  QString name;
  double bound;  ///< what the ratio house/bare must not exceed
  QString unit;  ///< what is set against what
  Work house;
  Work bare;
};

/// A figure that is counted, not timed.
struct Figure {
  QString name;
  double bound;
  QString unit;
  std::function<double()> measure;
};

/// The ratio of one pair over the ratio of another.
struct Quotient {
  QString name;
  double bound;
  QString unit;
  QString over, under;  ///< names of two pairs
};

/// Collected before main() by each benchmark file: static const Registered r{Pair{…}}.
struct Registered {
  explicit Registered(Pair pair);
  explicit Registered(Figure figure);
  explicit Registered(Quotient quotient);
};

const std::vector<Pair>& pairs();
const std::vector<Figure>& figures();
const std::vector<Quotient>& quotients();

}  // namespace qk::bench

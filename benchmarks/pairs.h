// Benchmarks by ratio: two ways to the same end, measured in one run. Absolute times say nothing on a shared
// machine; the ratio of two counts is the same on each, and the median of many ratios taken in turn nearly.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "benchmarks/rounds.h"
#include "benchmarks/spread.h"

namespace qk::bench {

using Work = std::function<void(Rounds&)>;

struct Pair {
  QString name;
  double bound;  ///< what the ratio house/bare must not exceed
  QString unit;  ///< what is set against what
  Work house;
  Work bare;
  /// How many rounds are counted in instructions; 0 for a pair that is timed on the clock.
  int counted = 0;
  /// Done once before a pair is counted, in the process that starts those of both sides: what they share.
  std::function<void()> ground = {};
  /// Of one that is counted: its ratio is that of the calls of the system, for most of its work is there.
  bool calls = false;
  /// Of one that is counted: one round, and with it all that the process has done since main() began.
  bool fromStart = false;
  bool large = false;  ///< made of so much that it is measured when asked for only
};

/// A figure of another kind, or a ratio that a benchmark takes its own way.
struct Figure {
  QString name;
  double bound;
  QString unit;
  std::function<Spread()> measure;
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

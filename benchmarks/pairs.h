// Benchmarks by ratio: two ways to the same end, measured in turn in one run. Absolute times say nothing on a
// shared machine; the ratio of two processor times does.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "benchmarks/rounds.h"

namespace qk::bench {

using Work = std::function<void(Rounds&)>;

struct Pair {
  QString name;
  double bound;  ///< what the ratio house/bare must not exceed
  QString unit;  ///< what is set against what
  Work house;
  Work bare;
  /// How many rounds are counted in instructions; 0 for a pair whose processor time is measured.
  int counted = 0;
  /// Done once before a pair is counted, in the process that starts those of both sides: what they share.
  std::function<void()> ground = {};
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

// A visit at a line for a benchmark: shots and disciplines of all kinds, and the same as the bare way sees
// them.
#pragma once

#include <memory>
#include <vector>

#include "capture/records.h"
#include "link/haeringschuss.h"
#include "platform/runtime/clock.h"

namespace qk::bench {

/// Counts up, so that no two results of a second get the same key.
class CountingRandom : public Random {
 public:
  double next() override { return static_cast<double>(drawn_++ % 50000) / 50001 + 1e-6; }

 private:
  int drawn_ = 0;
};

using Shots = std::vector<std::shared_ptr<HaeringSchuss>>;
using Disciplines = std::vector<std::shared_ptr<Disziplin>>;

/// Ticked shots of line 1, scattered, one a second.
Shots visitShots(int count);
/// A quarter teilers, a quarter ring-teilers, half ring series with each of the flags; each series takes
/// `series` shots, the ring-teilers ten.
Disciplines visitDisciplines(int count, int series);
Schuetze visitShooter();

}  // namespace qk::bench

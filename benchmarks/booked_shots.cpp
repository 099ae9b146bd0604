// What open shots take of the memory comes back when they are booked.
#include <stdexcept>

#include "benchmarks/pairs.h"
#include "tests/app/full_lines.h"

namespace qk::bench {

namespace {

constexpr int kLines = 24;
constexpr int kShots = 1000;

/// The part that stays of the resident memory that a range full of open shots takes. The engine's pages of
/// each line's connection are among it: they are filled the first time, up to a limit.
double partThatStays() {
  test::FullLines range(kLines);
  const qint64 empty = test::residentBytes();
  range.load(kShots);
  const qint64 full = test::residentBytes();
  range.book();
  const qint64 booked = test::residentBytes();
  if (range.openShots() != 0) throw std::runtime_error("there are open shots");
  return double(booked - empty) / double(full - empty);
}

const Registered registered{Figure{"Speicher nach dem Verbuchen", 0.5,
                                   "Teil dessen, was 24 Linien mit je 1.000 Schüssen nahmen", partThatStays}};

}  // namespace

}  // namespace qk::bench

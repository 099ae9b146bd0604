// Lines full of open shots, as after a restart in the middle of a day, and their booking: what tests and
// benchmarks of the range office's memory do.
#pragma once

#include "tests/app/range_office.h"

namespace qk::test {

class FullLines {
 public:
  /// Opens the office with so many lines, each of them shown, with its shooter and a ticked discipline that
  /// takes every shot.
  explicit FullLines(int lines);

  /// Stores so many open shots for each line (at most 1,000) and has the lines take them up.
  void load(int shots);
  /// Transfers and books what is open on every line.
  void book();

  int openShots();

 private:
  RangeOffice office_;
  int lines_;
};

/// Bytes that the program holds from the heap, less what the engine keeps of the file: its pages have a limit
/// of their own.
qint64 allocatedBytes();
/// Bytes of the process that stand in memory, with what the heap can give back given back.
qint64 residentBytes();

}  // namespace qk::test

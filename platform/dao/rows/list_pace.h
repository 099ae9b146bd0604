// How long a list that is shown waits on the clock. One pace for the process, set before its first list.
#pragma once

namespace qk::dao {

/// Milliseconds.
struct ListPace {
  /// First rows that come within this time are there at once, so that nothing flickers.
  int firstRows = 25;
  /// The first rows are painted within this time; whoever types on gets to the next list without this one's
  /// rest.
  int firstRowsAlone = 50;
  /// A slow list shows what it has found so far.
  int silence = 100;
};

/// Where time says nothing, as in a process whose instructions are counted, nothing happens because it has
/// passed.
inline ListPace& listPace() {
  static ListPace pace;
  return pace;
}

}  // namespace qk::dao

// The rounds of one side of a pair: timed by the benchmark library, or counted in instructions.
//
//   while (rounds.next()) {
//     rounds.pause();
//     …                 // what a round needs and nobody measures
//     rounds.resume();
//     …
//   }
#pragma once

#include <benchmark/benchmark.h>

#include <string>

namespace qk::bench {

class Rounds {
 public:
  /// Timed: as many as the library wants. It outlives this.
  explicit Rounds(benchmark::State& state) : state_(&state) {}
  /// Counted, in a process that runs under callgrind: so many, after two that count nothing.
  explicit Rounds(int counted) : counted_(counted) {}

  /// Whether there is another round, which begins now.
  bool next();
  void pause();
  void resume();
  /// Ends the rounds; the figure is worth nothing.
  void fail(const char* why);
  /// Empty unless they failed; of counted ones.
  const std::string& failure() const { return failure_; }

 private:
  benchmark::State* state_ = nullptr;
  int counted_ = 0;
  int begun_ = 0;
  std::string failure_;
};

}  // namespace qk::bench

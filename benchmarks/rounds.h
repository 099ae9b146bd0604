// The rounds of one side of a pair: counted in instructions, or timed on the clock.
//
//   while (rounds.next()) {
//     rounds.pause();
//     …                 // what a round needs and nobody measures
//     rounds.resume();
//     …
//   }
#pragma once

#include <chrono>
#include <string>

namespace qk::bench {

/// What was made counts as used, so that the compiler doesn't leave the making out.
template <class Made>
void keep(const Made& made) {
  asm volatile("" : : "r"(&made) : "memory");
}

class Rounds {
 public:
  /// None: whatever is made before the first one is made, and nothing else done.
  static Rounds none() { return Rounds(How::Not, 0); }
  /// In a process that runs under callgrind: so many, after two that count nothing.
  static Rounds counted(int rounds) { return Rounds(How::Counted, rounds); }
  /// In one that has counted since it began: goes on counting with its one round, which nothing has warmed.
  static Rounds first();
  /// So many after two that count nothing, on the clock.
  static Rounds timed(int rounds) { return Rounds(How::Timed, rounds); }

  /// Whether there is another round, which begins now.
  bool next();
  void pause();
  void resume();
  /// Ends the rounds; the figure is worth nothing.
  void fail(const char* why) { failure_ = why; }
  /// Empty unless they failed.
  const std::string& failure() const { return failure_; }
  /// What the timed ones have taken together, without the pauses.
  double seconds() const { return std::chrono::duration<double>(taken_).count(); }

 private:
  using Clock = std::chrono::steady_clock;
  enum class How { Not, Counted, First, Timed };

  Rounds(How how, int rounds) : how_(how), rounds_(rounds) {}
  int warmUp() const;
  bool measures() const;
  void begin();
  void end();

  How how_;
  int rounds_;
  int begun_ = 0;
  Clock::time_point since_;
  Clock::duration taken_{};
  std::string failure_;
};

}  // namespace qk::bench

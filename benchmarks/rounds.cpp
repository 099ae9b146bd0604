#include "benchmarks/rounds.h"

#include <valgrind/callgrind.h>

#include "benchmarks/counting.h"

namespace qk::bench {

namespace {

/// The first time everything is read, prepared and laid out.
constexpr int kWarmUp = 2;

}  // namespace

Rounds Rounds::first() {
  Rounds rounds(How::First, 1);
  rounds.end();
  return rounds;
}

bool Rounds::next() {
  if (how_ == How::Not || !failure_.empty()) return false;
  if (begun_ == warmUp() + rounds_) {
    end();
    if (how_ != How::Timed) CALLGRIND_STOP_INSTRUMENTATION;
    return false;
  }
  if (begun_++ == warmUp()) {
    if (how_ == How::Counted) CALLGRIND_START_INSTRUMENTATION;
    begin();
  }
  return true;
}

int Rounds::warmUp() const {
  return how_ == How::First ? 0 : kWarmUp;
}

void Rounds::pause() {
  if (measures()) end();
}

void Rounds::resume() {
  if (measures()) begin();
}

bool Rounds::measures() const {
  return begun_ > warmUp();
}

/// A dump begins all counts anew, those of other threads too. Collecting can't be switched for all of them.
void Rounds::begin() {
  if (how_ == How::Timed) {
    since_ = Clock::now();
    return;
  }
  CALLGRIND_DUMP_STATS_AT(kPaused);
  VALGRIND_PRINTF("%s\n", kMeasured);
}

void Rounds::end() {
  if (how_ == How::Timed) {
    taken_ += Clock::now() - since_;
    return;
  }
  VALGRIND_PRINTF("%s\n", kPaused);
  CALLGRIND_DUMP_STATS_AT(kMeasured);
}

}  // namespace qk::bench

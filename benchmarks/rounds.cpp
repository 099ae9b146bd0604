#include "benchmarks/rounds.h"

#include <valgrind/callgrind.h>

#include "benchmarks/counting.h"

namespace qk::bench {

namespace {

/// The first time everything is read, prepared and laid out.
constexpr int kWarmUp = 2;

}  // namespace

bool Rounds::next() {
  if (how_ == How::Not || !failure_.empty()) return false;
  if (begun_ == kWarmUp + rounds_) {
    end();
    if (how_ == How::Counted) CALLGRIND_STOP_INSTRUMENTATION;
    return false;
  }
  if (begun_++ == kWarmUp) {
    if (how_ == How::Counted) CALLGRIND_START_INSTRUMENTATION;
    begin();
  }
  return true;
}

void Rounds::pause() {
  if (measures()) end();
}

void Rounds::resume() {
  if (measures()) begin();
}

bool Rounds::measures() const {
  return begun_ > kWarmUp;
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

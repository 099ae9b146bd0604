#include "benchmarks/rounds.h"

#include <valgrind/callgrind.h>

#include "benchmarks/counting.h"

namespace qk::bench {

namespace {

/// The first time everything is read, prepared and laid out.
constexpr int kWarmUp = 2;

}  // namespace

bool Rounds::next() {
  if (state_) return state_->KeepRunning();
  if (!failure_.empty()) return false;
  if (begun_ == kWarmUp) CALLGRIND_START_INSTRUMENTATION;
  if (begun_ == kWarmUp + counted_) {
    CALLGRIND_DUMP_STATS_AT(kMeasured);
    CALLGRIND_STOP_INSTRUMENTATION;
    return false;
  }
  ++begun_;
  return true;
}

/// A dump begins all counts anew, those of other threads too. Collecting can't be switched for all of them.
void Rounds::pause() {
  if (state_) return state_->PauseTiming();
  if (begun_ > kWarmUp) CALLGRIND_DUMP_STATS_AT(kMeasured);
}

void Rounds::resume() {
  if (state_) return state_->ResumeTiming();
  if (begun_ > kWarmUp) CALLGRIND_DUMP_STATS_AT(kPaused);
}

void Rounds::fail(const char* why) {
  if (state_) return state_->SkipWithError(why);
  failure_ = why;
}

}  // namespace qk::bench

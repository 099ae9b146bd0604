#include "tests/support/test_time.h"

#include <QCoreApplication>
#include <numeric>

#include "platform/runtime/datetext.h"
#include "platform/runtime/unasked.h"

namespace qk::test {

void TestClock::set(const QString& text) {
  now_ = parseDate(text);
}

double TestRandom::next() {
  if (values_.empty()) {
    complain_("the random source ran dry");
    return 0;
  }
  const double value = values_.front();
  values_.pop_front();
  return value;
}

void TestWaits::sleep(int milliseconds) {
  sleeps_ += milliseconds;
  const int number = static_cast<int>(sleeps_.size());
  clock_.advance(milliseconds);
  const Unasked::Aside aside;
  QCoreApplication::processEvents();
  if (hook_) hook_(number);
  if (const auto once = single_.take(number)) once();
}

void TestWaits::runMessageLoop() {
  ++messageLoops_;
  const Unasked::Aside aside;
  QCoreApplication::processEvents();
}

void TestWaits::inSleep(int number, std::function<void()> hook) {
  single_.insert(number, std::move(hook));
}

int TestWaits::total() const {
  return std::accumulate(sleeps_.begin(), sleeps_.end(), 0);
}

void TestWaits::clear() {
  sleeps_.clear();
  single_.clear();
  hook_ = nullptr;
  messageLoops_ = 0;
}

}  // namespace qk::test

// Time, chance and waiting that a test sets.
#pragma once

#include <QList>
#include <deque>
#include <functional>

#include "platform/runtime/clock.h"
#include "tests/support/expectations.h"

namespace qk::test {

/// Stands still until the test moves it. Begins on 20.11.2026 10:00:00.
class TestClock : public Clock {
 public:
  QDateTime now() const override { return now_; }
  void set(const QDateTime& now) { now_ = now; }
  void set(const QString& text);  ///< "20.11.2026 05:59:00"
  void advance(int milliseconds) { now_ = now_.addMSecs(milliseconds); }

 private:
  QDateTime now_ = QDateTime(QDate(2026, 11, 20), QTime(10, 0));
};

/// Gives the values it was given, in order; running dry fails the test.
class TestRandom : public Random {
 public:
  explicit TestRandom(Complain complain = failTest) : complain_(std::move(complain)) {}
  void give(const QList<double>& values) { values_.insert(values_.end(), values.begin(), values.end()); }
  double next() override;
  bool isEmpty() const { return values_.empty(); }

 private:
  Complain complain_;
  std::deque<double> values_;
};

/// Takes no time: the clock moves on at once, pending events are handled, hooks run in the wait.
class TestWaits : public Waits {
 public:
  explicit TestWaits(TestClock& clock) : clock_(clock) {}

  void sleep(int milliseconds) override;
  void runMessageLoop() override;

  /// Runs in every sleep, before it ends; gets the number of the sleep, from 1.
  void inEachSleep(std::function<void(int number)> hook) { hook_ = std::move(hook); }
  /// Runs in the sleep of that number only (counted from the start or the last clear()).
  void inSleep(int number, std::function<void()> hook);

  const QList<int>& sleeps() const { return sleeps_; }  ///< milliseconds, in order
  int total() const;
  int messageLoops() const { return messageLoops_; }
  void clear();

 private:
  TestClock& clock_;
  std::function<void(int)> hook_;
  QHash<int, std::function<void()>> single_;
  QList<int> sleeps_;
  int messageLoops_ = 0;
};

}  // namespace qk::test

// Time, chance and waiting, handed in so that tests set them.
#pragma once

#include <QDateTime>

namespace qk {

class Clock {
 public:
  virtual ~Clock() = default;
  virtual QDateTime now() const = 0;  ///< local time
};

class Random {
 public:
  virtual ~Random() = default;
  virtual double next() = 0;  ///< at least 0, below 1
};

/// Waiting means running the event loop: after every call check that what you hold still lives.
class Waits {
 public:
  virtual ~Waits() = default;
  virtual void sleep(int milliseconds) = 0;  ///< the window stays alive meanwhile
  virtual void runMessageLoop() = 0;         ///< handles what is pending, once
};

class SystemClock : public Clock {
 public:
  QDateTime now() const override;
};

class SystemRandom : public Random {
 public:
  double next() override;
};

class EventLoopWaits : public Waits {
 public:
  void sleep(int milliseconds) override;
  void runMessageLoop() override;
};

}  // namespace qk

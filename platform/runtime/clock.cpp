#include "platform/runtime/clock.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QRandomGenerator>
#include <QTimer>

#include "platform/runtime/unasked.h"

namespace qk {

QDateTime SystemClock::now() const {
  return QDateTime::currentDateTime();
}

double SystemRandom::next() {
  return QRandomGenerator::global()->generateDouble();
}

void EventLoopWaits::sleep(int milliseconds) {
  const Unasked::Aside aside;
  QEventLoop loop;
  QTimer::singleShot(std::max(milliseconds, 0), Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

void EventLoopWaits::runMessageLoop() {
  const Unasked::Aside aside;
  QCoreApplication::processEvents();
}

}  // namespace qk

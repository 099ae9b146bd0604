#include "platform/dao/server/server_wait.h"

#include <algorithm>

#include "platform/dao/signs/waiting_sign.h"

namespace qk::dao {
namespace {

/// Also what a read that was given up takes to notice.
constexpr qint64 kSlice = 10;
constexpr qint64 kMoment = 300;
constexpr qint64 kSignSlice = 100;

}  // namespace

ServerWait::ServerWait(std::chrono::milliseconds patience) : patience_(patience), end_(patience) {
  begun_.start();
}

ServerWait::~ServerWait() {
  WaitingSign::hide();
}

bool ServerWait::isReady(int socket, SocketUse use) {
  return isReadyInSlice([&](int milliseconds) { return dao::isReady(socket, use, milliseconds); });
}

bool ServerWait::isAnyReady(const std::vector<SocketWish>& wishes) {
  return isReadyInSlice([&](int milliseconds) { return dao::isAnyReady(wishes, milliseconds); });
}

bool ServerWait::isReadyInSlice(const std::function<bool(int milliseconds)>& look) {
  const bool isLong = begun_.elapsed() > kMoment;
  const qint64 slice = std::clamp<qint64>(end_.remainingTime(), 0, isLong ? kSignSlice : kSlice);
  if (look(static_cast<int>(slice))) return true;
  if (isLong) WaitingSign::show();
  return false;
}

}  // namespace qk::dao

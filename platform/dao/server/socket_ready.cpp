#include "platform/dao/server/socket_ready.h"

#include <chrono>
#include <thread>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <poll.h>
#endif

namespace qk::dao {
namespace {

#ifdef _WIN32
using Waiting = WSAPOLLFD;
constexpr short kRead = POLLRDNORM, kWrite = POLLWRNORM;
#else
using Waiting = pollfd;
constexpr short kRead = POLLIN, kWrite = POLLOUT;
#endif

Waiting waitingFor(int socket, SocketUse use) {
  const auto wanted = static_cast<short>((use == SocketUse::Write ? 0 : kRead) |  //
                                         (use == SocketUse::Read ? 0 : kWrite));
  return {static_cast<decltype(Waiting::fd)>(socket), wanted, 0};
}

bool isAny(Waiting* first, size_t count, int milliseconds) {
#ifdef _WIN32
  return WSAPoll(first, static_cast<ULONG>(count), milliseconds) > 0;
#else
  return poll(first, count, milliseconds) > 0;
#endif
}

}  // namespace

bool isReady(int socket, SocketUse use, int milliseconds) {
  Waiting waiting = waitingFor(socket, use);
  return isAny(&waiting, 1, milliseconds);
}

bool isAnyReady(const std::vector<SocketWish>& wishes, int milliseconds) {
  if (wishes.empty()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    return false;
  }
  std::vector<Waiting> waiting;
  for (const SocketWish& wish : wishes) waiting.push_back(waitingFor(wish.socket, wish.use));
  return isAny(waiting.data(), waiting.size(), milliseconds);
}

}  // namespace qk::dao

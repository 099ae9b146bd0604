#include "platform/dao/socket_ready.h"

#ifdef _WIN32
#include <winsock2.h>
#else
#include <poll.h>
#endif

namespace qk::dao {

bool isReady(int socket, SocketUse use, int milliseconds) {
#ifdef _WIN32
  constexpr short kRead = POLLRDNORM, kWrite = POLLWRNORM;
#else
  constexpr short kRead = POLLIN, kWrite = POLLOUT;
#endif
  const auto wanted = static_cast<short>((use == SocketUse::Write ? 0 : kRead) |  //
                                         (use == SocketUse::Read ? 0 : kWrite));
#ifdef _WIN32
  WSAPOLLFD waiting{static_cast<SOCKET>(socket), wanted, 0};
  return WSAPoll(&waiting, 1, milliseconds) > 0;
#else
  pollfd waiting{socket, wanted, 0};
  return poll(&waiting, 1, milliseconds) > 0;
#endif
}

}  // namespace qk::dao

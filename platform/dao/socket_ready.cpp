#include "platform/dao/socket_ready.h"

#ifdef _WIN32
#include <winsock2.h>
#else
#include <poll.h>
#endif

namespace qk::dao {

bool isReadable(int socket, int milliseconds) {
#ifdef _WIN32
  WSAPOLLFD waiting{static_cast<SOCKET>(socket), POLLRDNORM, 0};
  return WSAPoll(&waiting, 1, milliseconds) > 0;
#else
  pollfd waiting{socket, POLLIN, 0};
  return poll(&waiting, 1, milliseconds) > 0;
#endif
}

}  // namespace qk::dao

// Waiting for sockets of another library, the same on every system.
#pragma once

#include <vector>

namespace qk::dao {

enum class SocketUse { Read, Write, Both };

struct SocketWish {
  int socket;
  SocketUse use;
};

/// Whether the socket can be read from, its end included, or written to, within so many milliseconds.
bool isReady(int socket, SocketUse use, int milliseconds);
/// Whether any of them can. Without any it lets the time pass.
bool isAnyReady(const std::vector<SocketWish>& wishes, int milliseconds);

}  // namespace qk::dao

// Waiting for a socket of another library, the same on every system.
#pragma once

namespace qk::dao {

enum class SocketUse { Read, Write, Both };

/// Whether the socket can be read from, its end included, or written to, within so many milliseconds.
bool isReady(int socket, SocketUse use, int milliseconds);

}  // namespace qk::dao

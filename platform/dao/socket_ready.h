// Waiting for a socket of another library, the same on every system.
#pragma once

namespace qk::dao {

/// Whether something can be read from it, its end included, within so many milliseconds; -1 waits for ever.
bool isReadable(int socket, int milliseconds);

}  // namespace qk::dao

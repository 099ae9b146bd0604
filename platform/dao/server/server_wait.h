// One wait for a server: it has an end, and shows itself once it is longer than a moment.
#pragma once

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <chrono>
#include <functional>

#include "platform/dao/server/socket_ready.h"

namespace qk::dao {

class ServerWait {
 public:
  /// patience: how long the server may say nothing.
  explicit ServerWait(std::chrono::milliseconds patience);
  ~ServerWait();
  ServerWait(const ServerWait&) = delete;
  ServerWait& operator=(const ServerWait&) = delete;

  /// Whether the socket is ready; false after a slice of time in which nothing came.
  bool isReady(int socket, SocketUse use);
  /// The same for any of several.
  bool isAnyReady(const std::vector<SocketWish>& wishes);
  /// The server has said something.
  void heard() { end_.setRemainingTime(patience_); }
  /// The patience is at its end.
  bool isOver() const { return end_.hasExpired(); }

 private:
  bool isReadyInSlice(const std::function<bool(int milliseconds)>& look);

  std::chrono::milliseconds patience_;
  QDeadlineTimer end_;
  QElapsedTimer begun_;
};

}  // namespace qk::dao

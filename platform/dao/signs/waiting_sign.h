// What a workstation shows while a call to the store waits for a server.
//
// The wait runs no event loop. Whoever calls the store stands between two rows, and a click, a timer or a
// message that is delivered there would change what the caller holds: so nothing of the kind is delivered,
// and what comes meanwhile waits in its queue. The sign may paint. What it paints reads nothing: a call to a
// server from within it fails at once with 3260.
#pragma once

#include <functional>
#include <thread>

namespace qk::dao {

class WaitingSign {
 public:
  /// `show` is called several times a second while a call waits for longer than a moment, in the thread that
  /// makes the object; `hide` when it has ended. One object at a time.
  WaitingSign(std::function<void()> show, std::function<void()> hide);
  ~WaitingSign();
  WaitingSign(const WaitingSign&) = delete;
  WaitingSign& operator=(const WaitingSign&) = delete;

  static void show();
  static void hide();
  /// Whether this thread is within show() or hide().
  static bool isShowing();

 private:
  void call(const std::function<void()>& routine);

  std::function<void()> show_, hide_;
  std::thread::id thread_;
  bool visible_ = false;
};

}  // namespace qk::dao

// Stands between a program and the server of a PostgreSQL cluster and cuts the connection at a chosen moment,
// as a network does: before a request arrives, or after the server has done it and before its answer is
// heard. Counts meanwhile how often the one waits for the other.
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace qk::test {

class CuttingProxy {
 public:
  enum class Cut {
    Request,   ///< the server never hears of it
    Answer,    ///< the server has answered, and nothing of it arrives
    InAnswer,  ///< the beginning of a long answer arrives
  };

  /// serverFolder: of the cluster's socket.
  explicit CuttingProxy(const QString& serverFolder);
  ~CuttingProxy();
  CuttingProxy(const CuttingProxy&) = delete;
  CuttingProxy& operator=(const CuttingProxy&) = delete;

  /// Takes the place of the server's folder in an address.
  QString folder() const { return folder_.path(); }
  /// Cuts the connection of the next request that contains the words, once. `then` is run before the program
  /// can notice, in another thread.
  void cutNext(const QByteArray& words, Cut cut, const std::function<void()>& then = {});
  /// Cuts once more after that, in the same way.
  void cutThen(const QByteArray& words, Cut cut);
  /// Whether new connections are closed at once.
  void refuse(bool refusing) { refusing_ = refusing; }
  /// How often it has cut so far.
  int cuts() const { return cuts_; }
  /// How often the program has spoken so far after the server had: each time it waits for an answer. What it
  /// says first over a new connection counts, too.
  int turns() const { return turns_; }

 private:
  struct Link;
  void serve();
  bool passOn(Link& link);
  bool answer(Link& link);
  bool noteCut();

  QTemporaryDir folder_;
  QByteArray server_;
  int listener_ = -1;
  int wake_[2] = {-1, -1};
  std::mutex mutex_;
  struct Plan {
    QByteArray words;
    Cut cut;
    std::function<void()> then;
  };
  std::deque<Plan> plans_;
  std::function<void()> then_;  // of the one that is being cut
  std::atomic<bool> refusing_ = false;
  std::atomic<int> cuts_ = 0, turns_ = 0;
  std::thread thread_;
};

}  // namespace qk::test

// Reads a long list of keys in a thread of its own, on a connection of its own, so that nobody waits for a
// million rows. One list at a time: starting another gives up the one that is being read.
//
//   caller's thread:  start() ───────────────────► take() ► take() ► …   each gives what has come since the last
//                        │                            ▲        ▲
//   own thread:          └──► first page ► notify ────┘ more ► notify ► … complete
//
// Portions grow, so that the first rows come at once and a long list costs few deliveries.
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/dao/engine/engine.h"
#include "platform/dao/rows/key_list.h"
#include "platform/runtime/error.h"

namespace qk::dao {

class RowFeed {
 public:
  struct Job {
    sql::NativeQuery query;
    int width = 1;
    bool integer = false;
    bool packed = false;  ///< the rows have no key: a row's bytes stand for it
    /// The whole list comes only after the store has sorted it: its first page is asked for on its own
    /// before.
    bool sorted = false;
    sql::NativeQuery counting;  ///< likewise counted before; may be empty
  };

  struct Delivery {
    KeyList keys;
    bool restart = false;  ///< what came before doesn't count any more; the keys begin anew
    bool complete = false;
    std::optional<Error> failure = {};  ///< complete too: nothing more comes
    bool resting = false;               ///< nothing more comes until goOn()
    std::optional<int> expected = {};   ///< how many there will be, where they were counted
  };

  /// `notify` runs in the feed's thread whenever something waits to be taken.
  RowFeed(const Engine& engine, std::function<void()> notify);
  /// Gives up what is being read.
  ~RowFeed();
  RowFeed(const RowFeed&) = delete;
  RowFeed& operator=(const RowFeed&) = delete;

  void start(Job job);
  /// Nothing more comes until the next start().
  void cancel();
  /// After its first page the feed rests until it is called for the rest, so that whoever shows the first
  /// rows has the processor and the store to himself.
  void goOn();
  Delivery take();
  /// True when something waits to be taken, at the latest after that time.
  bool wait(int milliseconds);

 private:
  void run();
  void list(const Job& job, quint64 number);
  void readKeys(const Job& job, quint64 number, const KeyList& page);
  KeyList readPage(const Job& job);
  bool isCurrent(quint64 number) const { return number == current_; }
  std::optional<int> count(const Job& job);
  void deliver(quint64 number, Delivery portion);
  void rest(quint64 number);

  std::function<void()> notify_;
  std::unique_ptr<Engine> reader_;

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::atomic<quint64> current_ = 0;  // number of the newest job
  std::atomic<quint64> running_ = 0;  // the one that the thread reads
  std::atomic<bool> ending_ = false;
  quint64 released_ = 0;  // the job whose rest was called for
  std::optional<Job> next_;
  Delivery waiting_;
  bool hasWaiting_ = false;

  std::thread thread_;  // last: it uses all of the above
};

}  // namespace qk::dao

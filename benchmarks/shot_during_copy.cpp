// What a shot costs while a copy of its competition is made beside it, against the same shot without.
#include <QDir>
#include <QElapsedTimer>
#include <QThread>
#include <atomic>
#include <exception>
#include <thread>
#include <utility>

#include "backup/copy_making.h"
#include "benchmarks/bench_line.h"
#include "benchmarks/pairs.h"
#include "platform/dao/moving/snapshot.h"
#include "platform/runtime/background_work.h"

namespace qk::bench {

namespace {

constexpr int kShotsOfAVisit = 40;  ///< open shots of a line before they are booked

/// One copy after another, each of a store that has changed, in a thread like the keeper's.
class EndlessCopies {
 public:
  explicit EndlessCopies(const QString& competition)
      : thread_([this, competition] { run(competition, competition + "-kopien"); }) {}
  ~EndlessCopies() {
    ending_ = true;
    thread_.join();
  }
  int made() const { return made_; }

 private:
  void run(const QString& competition, const QString& folder) {
    stepBackThisThread();
    Files files;
    dao::SnapshotReader reader(competition, [this] { return ending_.load(); });
    while (!ending_) {
      try {
        makeCopy(reader, {competition, folder, QDateTime::currentDateTime()}, files);
        ++made_;
      } catch (const Error&) {
        if (!ending_) std::terminate();  // what is measured must not fail
      }
      QDir(folder).removeRecursively();
    }
  }

  std::atomic<bool> ending_ = false;
  std::atomic<int> made_ = 0;
  std::thread thread_;
};

class Shots {
 public:
  explicit Shots(BenchPlace& place) : place_(place) { freshLine(); }

  /// How long the middle one of a visit's shots took on the clock: what waits for the processor, the disk or
  /// a lock waits here.
  double fire() {
    freshLine();
    std::vector<double> times;
    for (int i = 0; i < kShotsOfAVisit; ++i) {
      report(place_.exchangeFolder(), record(++shot_));
      QElapsedTimer clock;
      clock.start();
      tick(*line_);
      times.push_back(static_cast<double>(clock.nsecsElapsed()));
    }
    return Spread(std::move(times)).median;
  }

 private:
  void freshLine() {
    line_ = std::make_unique<UserControl1>(place_.workplace(), place_.global(), 0);
    line_->setLinie(1);
    line_->Init(place_.competition());
    tick(*line_);
  }

  BenchPlace& place_;
  std::unique_ptr<UserControl1> line_;
  inline static int shot_ = 500000;  // other numbers than those of the other benchmarks on the place
};

/// Milliseconds.
qint64 lengthOfACopy(const QString& competition) {
  QElapsedTimer clock;
  clock.start();
  const EndlessCopies copies(competition);
  while (copies.made() == 0) QThread::msleep(1);
  return clock.elapsed();
}

Spread costDuringACopy() {
  BenchPlace& place = sharedPlace(kMillion);
  Shots shots(place);
  const qint64 length = lengthOfACopy(place.competition());
  int turn = 0;
  // Over all stages of a copy, a visit in each turn.
  const auto during = [&] {
    const EndlessCopies copies(place.competition());
    QThread::msleep(static_cast<unsigned long>(length * turn++ / kTurns));
    return shots.fire();
  };
  return ratioInTurns(during, [&] { return shots.fire(); });
}

const Registered during{Figure{"Ein Schuss während einer Sicherung", 1.5,
                               "gegen ihn ohne, 1.000.000 Zeilen, auf der Uhr", costDuringACopy}};

}  // namespace

}  // namespace qk::bench

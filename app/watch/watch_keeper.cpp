#include "app/watch/watch_keeper.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace qk {

namespace {

constexpr int kTickMilliseconds = 1000;
constexpr std::chrono::milliseconds kLastWait(300);

}  // namespace

struct WatchKeeper::Lookout {
  int number = 0;
  std::shared_ptr<WatchSource> source;
  Wanted wanted;
  std::optional<QDateTime> asked;  // the last time
  bool looking = false;
  bool again = false;
  std::vector<Threat> found;
};

/// From the looks to the keeper, who may be gone when one of them comes back.
struct WatchKeeper::WayBack {
  std::mutex lock;
  std::condition_variable returned;
  WatchKeeper* keeper = nullptr;
  int underWay = 0;
};

WatchKeeper::WatchKeeper(const Clock& clock, QObject* parent)
    : QObject(parent), clock_(clock), wayBack_(std::make_shared<WayBack>()) {
  wayBack_->keeper = this;
  timer_.setInterval(kTickMilliseconds);
  connect(&timer_, &QTimer::timeout, this, &WatchKeeper::tick);
  timer_.start();
}

WatchKeeper::~WatchKeeper() {
  std::unique_lock lock(wayBack_->lock);
  wayBack_->keeper = nullptr;
  wayBack_->returned.wait_for(lock, kLastWait, [this] { return wayBack_->underWay == 0; });
}

void WatchKeeper::add(std::shared_ptr<WatchSource> source, Wanted wanted) {
  auto lookout = std::make_unique<Lookout>();
  lookout->number = ++lastNumber_;
  lookout->source = std::move(source);
  lookout->wanted = std::move(wanted);
  lookouts_.push_back(std::move(lookout));
  tick();
}

void WatchKeeper::remove(const WatchSource* source) {
  std::erase_if(lookouts_, [source](const auto& lookout) { return lookout->source.get() == source; });
  gather();
}

void WatchKeeper::lookNow(const WatchSource* source) {
  for (const auto& lookout : lookouts_) {
    if (lookout->source.get() != source) continue;
    if (lookout->looking)
      lookout->again = true;
    else
      begin(*lookout);
  }
}

bool WatchKeeper::isLooking() const {
  return std::any_of(lookouts_.begin(), lookouts_.end(),
                     [](const auto& lookout) { return lookout->looking; });
}

/// A clock that was set back makes everything due.
bool WatchKeeper::isDue(const Lookout& lookout, const QDateTime& now) const {
  if (lookout.looking || (lookout.found.empty() && lookout.wanted && !lookout.wanted())) return false;
  return !lookout.asked || now < *lookout.asked || *lookout.asked + lookout.source->interval() <= now;
}

void WatchKeeper::tick() {
  const QDateTime now = clock_.now();
  for (const auto& lookout : lookouts_) {
    if (isDue(*lookout, now)) begin(*lookout);
    if (lookout->looking && *lookout->asked + lookout->source->patience() <= now)
      lookout->found = {lookout->source->silence(*lookout->asked)};
  }
  gather();
}

void WatchKeeper::begin(Lookout& lookout) {
  lookout.asked = clock_.now();
  lookout.again = false;
  {
    const std::lock_guard guard(wayBack_->lock);
    ++wayBack_->underWay;
  }
  const auto look = [way = wayBack_, source = lookout.source, number = lookout.number, now = *lookout.asked] {
    const std::vector<Threat> found = source->look(now);
    const std::lock_guard guard(way->lock);
    --way->underWay;
    way->returned.notify_all();
    if (WatchKeeper* keeper = way->keeper)
      QMetaObject::invokeMethod(
          keeper, [keeper, number, found] { keeper->returned(number, found); }, Qt::QueuedConnection);
  };
  try {
    std::thread(look).detach();
    lookout.looking = true;
  } catch (const std::system_error&) {  // no thread to be had: the next time
    const std::lock_guard guard(wayBack_->lock);
    --wayBack_->underWay;
  }
}

void WatchKeeper::returned(int number, const std::vector<Threat>& found) {
  const auto lookout = std::find_if(lookouts_.begin(), lookouts_.end(),
                                    [number](const auto& each) { return each->number == number; });
  if (lookout == lookouts_.end()) return;
  (*lookout)->looking = false;
  (*lookout)->found = found;
  if ((*lookout)->again) begin(**lookout);
  gather();
}

void WatchKeeper::gather() {
  std::vector<Threat> all;
  for (const auto& lookout : lookouts_) all.insert(all.end(), lookout->found.begin(), lookout->found.end());
  if (book_.update(all, clock_.now())) Q_EMIT changed();
}

}  // namespace qk

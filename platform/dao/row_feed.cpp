#include "platform/dao/row_feed.h"

#include <QElapsedTimer>
#include <algorithm>

#include "platform/dao/bookmark.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

/// About what a screen shows.
constexpr int kFirstPortion = 50;
constexpr int kGrowth = 8;
/// A slow list shows what it has found so far.
constexpr qint64 kLongestSilence = 100;

Key keyOf(const RowFeed::Job& job, const NativeRow& row) {
  return job.packed ? Key{bookmarkOf(row)} : row;
}

}  // namespace

RowFeed::RowFeed(const Engine& engine, std::function<void()> notify)
    : notify_(std::move(notify)),
      reader_(engine.reader([this] { return ending_ || running_ != current_; })),
      waiting_{KeyList(1, true), false, false, {}},
      thread_([this] { run(); }) {}

RowFeed::~RowFeed() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void RowFeed::start(Job job) {
  {
    const std::lock_guard lock(mutex_);
    ++current_;
    waiting_ = {KeyList(job.width, job.integer), true, false, {}};
    hasWaiting_ = false;
    next_ = std::move(job);
  }
  changed_.notify_all();
}

void RowFeed::cancel() {
  {
    const std::lock_guard lock(mutex_);
    ++current_;
    next_.reset();
    waiting_.keys = KeyList(waiting_.keys.width(), waiting_.keys.isInteger());
    hasWaiting_ = false;
  }
  changed_.notify_all();
}

void RowFeed::goOn() {
  {
    const std::lock_guard lock(mutex_);
    released_ = current_;
  }
  changed_.notify_all();
}

void RowFeed::rest(quint64 number) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return ending_ || !isCurrent(number) || released_ == number; });
}

RowFeed::Delivery RowFeed::take() {
  const std::lock_guard lock(mutex_);
  Delivery taken = std::move(waiting_);
  waiting_ = {KeyList(taken.keys.width(), taken.keys.isInteger()), false, false, {}};
  hasWaiting_ = false;
  return taken;
}

bool RowFeed::wait(int milliseconds) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return hasWaiting_; });
}

void RowFeed::run() {
  for (;;) {
    Job job;
    quint64 number = 0;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return ending_ || next_; });
      if (ending_) return;
      job = std::move(*next_);
      next_.reset();
      number = current_;
      running_ = number;
    }
    list(job, number);
  }
}

void RowFeed::list(const Job& job, quint64 number) {
  Delivery end{KeyList(job.width, job.integer), false, true, {}};
  try {
    KeyList page(job.width, job.integer);
    if (job.sorted) {
      page = readPage(job);
      if (page.size() < kFirstPortion) {
        end.keys = std::move(page);
        return deliver(number, std::move(end));
      }
      deliver(number, {page, false, false, {}});
      rest(number);
    }
    readKeys(job, number, page);
  } catch (const Error& error) {
    end.failure = error;
  }
  deliver(number, std::move(end));
}

KeyList RowFeed::readPage(const Job& job) {
  KeyList page(job.width, job.integer);
  reader_->read(job.query.text + " LIMIT " + QString::number(kFirstPortion), job.query.values,
                [&](const NativeRow& row) {
                  page.append(keyOf(job, row));
                  return true;
                });
  return page;
}

/// `page` was delivered already: it is passed over, or taken back where the rows have changed meanwhile.
void RowFeed::readKeys(const Job& job, quint64 number, const KeyList& page) {
  Delivery portion{KeyList(job.width, job.integer), false, false, {}};
  qsizetype size = page.size() > 0 ? page.size() * kGrowth : kFirstPortion;
  qsizetype passed = 0;
  QElapsedTimer silence;
  silence.start();
  reader_->read(job.query.text, job.query.values, [&](const NativeRow& row) {
    if (!isCurrent(number) || ending_) return false;
    Key key = keyOf(job, row);
    if (passed < page.size() && page.at(passed) == key) {
      ++passed;
      return true;
    }
    if (passed < page.size()) {
      portion.restart = true;
      for (qsizetype i = 0; i < passed; ++i) portion.keys.append(page.at(i));
      passed = page.size();
    }
    portion.keys.append(key);
    if (portion.keys.size() < size && !silence.hasExpired(kLongestSilence)) return true;
    deliver(number, std::move(portion));
    rest(number);
    portion = {KeyList(job.width, job.integer), false, false, {}};
    size *= kGrowth;
    silence.restart();
    return true;
  });
  if (passed < page.size()) {
    portion.restart = true;
    for (qsizetype i = 0; i < passed; ++i) portion.keys.append(page.at(i));
  }
  if (portion.keys.size() > 0 || portion.restart) deliver(number, std::move(portion));
}

void RowFeed::deliver(quint64 number, Delivery portion) {
  {
    const std::lock_guard lock(mutex_);
    if (!isCurrent(number) || ending_) return;
    if (portion.restart)
      waiting_ = {KeyList(portion.keys.width(), portion.keys.isInteger()), true, false, {}};
    waiting_.keys.append(portion.keys);
    waiting_.complete = portion.complete;
    waiting_.failure = std::move(portion.failure);
    hasWaiting_ = true;
  }
  changed_.notify_all();
  notify_();
}

}  // namespace qk::dao

#include "platform/dao/rows/row_feed.h"

#include <QElapsedTimer>
#include <algorithm>
#include <utility>

#include "platform/dao/rows/bookmark.h"
#include "platform/dao/rows/list_pace.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

/// About what a screen shows.
constexpr int kFirstPage = 50;
constexpr int kGrowth = 8;

Key keyOf(const RowFeed::Job& job, const NativeRow& row) {
  return job.packed ? Key{bookmarkOf(row)} : row;
}

}  // namespace

RowFeed::RowFeed(const Engine& engine, std::function<void()> notify)
    : notify_(std::move(notify)),
      reader_(engine.reader([this] { return ending_ || running_ != current_; })),
      waiting_{.keys = KeyList(1, true)},
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
    waiting_ = {.keys = KeyList(job.width, job.integer), .restart = true};
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
  waiting_ = {.keys = KeyList(taken.keys.width(), taken.keys.isInteger())};
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
  Delivery end{.keys = KeyList(job.width, job.integer), .complete = true};
  try {
    KeyList page(job.width, job.integer);
    if (job.sorted) {
      page = readPage(job);
      if (page.size() < kFirstPage) {
        end.keys = std::move(page);
        return deliver(number, std::move(end));
      }
      deliver(number, {.keys = page, .resting = true});
      rest(number);
      if (const auto counted = count(job))
        deliver(number, {.keys = KeyList(job.width, job.integer), .expected = counted});
    }
    readKeys(job, number, page);
  } catch (const Error& error) {
    end.failure = error;
  }
  deliver(number, std::move(end));
}

KeyList RowFeed::readPage(const Job& job) {
  KeyList page(job.width, job.integer);
  const sql::NativeQuery first = reader_->writer().first(job.query, kFirstPage);
  reader_->read(first.text, first.values, [&](const NativeRow& row) {
    page.append(keyOf(job, row));
    return true;
  });
  return page;
}

std::optional<int> RowFeed::count(const Job& job) {
  std::optional<int> counted;
  if (job.counting.text.isEmpty()) return counted;
  reader_->read(job.counting.text, job.counting.values, [&](const NativeRow& row) {
    counted = row.first().toInt();
    return false;
  });
  return counted;
}

/// `page` was delivered already: it is passed over, or taken back where the rows have changed meanwhile.
void RowFeed::readKeys(const Job& job, quint64 number, const KeyList& page) {
  Delivery portion{.keys = KeyList(job.width, job.integer)};
  bool firstPage = page.size() == 0;
  qsizetype size = firstPage ? kFirstPage : kFirstPage * kGrowth;
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
    if (portion.keys.size() < size && !silence.hasExpired(listPace().silence)) return true;
    const qsizetype missing = size - portion.keys.size();
    const bool rests = firstPage && missing <= 0;
    portion.resting = rests;
    deliver(number, std::exchange(portion, {.keys = KeyList(job.width, job.integer)}));
    if (rests) {
      rest(number);
      firstPage = false;
      size = kFirstPage * kGrowth;
    } else {
      size = firstPage ? missing : size * kGrowth;
    }
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
      waiting_ = {.keys = KeyList(portion.keys.width(), portion.keys.isInteger()), .restart = true};
    waiting_.keys.append(portion.keys);
    waiting_.complete = portion.complete;
    waiting_.failure = std::move(portion.failure);
    waiting_.resting = portion.resting;
    if (portion.expected) waiting_.expected = portion.expected;
    hasWaiting_ = true;
  }
  changed_.notify_all();
  notify_();
}

}  // namespace qk::dao

// A door to disks and folders that a test sets: how much room there is, how slow a folder is, which one never
// answers. Notes in which threads it was asked. May be called from any thread.
#pragma once

#include <QHash>
#include <QSet>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <type_traits>

#include "platform/runtime/storage.h"

namespace qk::test {

class TestStorage : public Storage {
 public:
  ~TestStorage() override { letGo(); }

  /// For every folder that isn't set.
  void setRoom(const DiskRoom& room) {
    set([&] { room_ = room; });
  }
  void setRoom(const QString& folder, const std::optional<DiskRoom>& room) {
    set([&] { rooms_[folder] = room; });
  }
  void setTime(std::optional<int> milliseconds) {
    set([&] { time_ = milliseconds; });
  }
  void setSize(qint64 bytes) {
    set([&] { size_ = bytes; });
  }
  /// Questions about folders that begin so get no answer until letGo().
  void hang(const QString& folder) {
    set([&] { hanging_ = folder; });
  }
  void letGo() {
    set([&] { hanging_.clear(); });
    goOn_.notify_all();
  }

  int asked() const {
    return get([&] { return asked_; });
  }
  bool wasAskedIn(std::thread::id thread) const {
    return get([&] { return threads_.contains(hash(thread)); });
  }

  bool isThere(const QString& folder) override {
    return answer(folder, [&] { return time_.has_value(); });
  }
  std::optional<DiskRoom> roomAt(const QString& folder) override {
    return answer(folder, [&]() -> std::optional<DiskRoom> { return rooms_.value(folder, room_); });
  }
  std::optional<std::chrono::milliseconds> timeOfListing(const QString& folder) override {
    return answer(folder, [&]() -> std::optional<std::chrono::milliseconds> {
      if (!time_) return {};
      return std::chrono::milliseconds(*time_);
    });
  }
  qint64 sizeOf(const QString& file) override {
    return answer(file, [&] { return size_; });
  }

 private:
  static size_t hash(std::thread::id thread) { return std::hash<std::thread::id>()(thread); }
  void set(const std::function<void()>& change) {
    const std::lock_guard guard(lock_);
    change();
  }
  template <class Get>
  std::invoke_result_t<Get> get(Get value) const {
    const std::lock_guard guard(lock_);
    return value();
  }
  template <class Get>
  std::invoke_result_t<Get> answer(const QString& folder, Get value) {
    std::unique_lock guard(lock_);
    ++asked_;
    threads_.insert(hash(std::this_thread::get_id()));
    goOn_.wait(guard, [&] { return hanging_.isEmpty() || !folder.startsWith(hanging_); });
    return value();
  }

  mutable std::mutex lock_;
  std::condition_variable goOn_;
  std::optional<DiskRoom> room_;
  QHash<QString, std::optional<DiskRoom>> rooms_;
  std::optional<int> time_ = 0;
  qint64 size_ = 0;
  QString hanging_;
  int asked_ = 0;
  QSet<size_t> threads_;
};

}  // namespace qk::test

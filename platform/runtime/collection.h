// A keyed collection: an ordered set of shared objects with unique text keys.
// Adding a key twice is Error 457, asking for a missing one Error 5, a position outside is Error 9.
// Keys are told apart by case. Positions count from 0. Copies share the objects.
#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

#include "platform/runtime/error.h"

namespace qk {

template <class T>
class KeyedCollection {
 public:
  using Pointer = std::shared_ptr<T>;

  void add(Pointer object, const QString& key) {
    if (objects_.contains(key)) throw Error(errors::kDuplicateElement);
    objects_.insert(key, object);
    order_.push_back({key, std::move(object)});
  }
  bool contains(const QString& key) const { return objects_.contains(key); }
  Pointer get(const QString& key) const {
    const auto found = objects_.find(key);
    if (found == objects_.end()) throw Error(errors::kInvalidCall);
    return *found;
  }
  Pointer at(int position) const { return entry(position).object; }
  const QString& keyAt(int position) const { return entry(position).key; }
  void removeAt(int position) {
    objects_.remove(entry(position).key);
    order_.erase(order_.begin() + position);
  }
  void remove(const QString& key) {
    for (int i = 0; i < count(); ++i)
      if (order_[static_cast<size_t>(i)].key == key) return removeAt(i);
    throw Error(errors::kInvalidCall);
  }
  void clear() {
    objects_.clear();
    order_.clear();
  }
  int count() const { return static_cast<int>(order_.size()); }
  bool isEmpty() const { return order_.empty(); }

  /// Walks the objects in order: for (const auto& object : collection.objects()).
  std::vector<Pointer> objects() const {
    std::vector<Pointer> all;
    all.reserve(order_.size());
    for (const Entry& e : order_) all.push_back(e.object);
    return all;
  }

 private:
  struct Entry {
    QString key;
    Pointer object;
  };
  const Entry& entry(int position) const {
    if (position < 0 || position >= count()) throw Error(errors::kIndexOutOfRange);
    return order_[static_cast<size_t>(position)];
  }
  QHash<QString, Pointer> objects_;
  std::vector<Entry> order_;
};

}  // namespace qk

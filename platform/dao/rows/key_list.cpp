#include "platform/dao/rows/key_list.h"

#include <algorithm>

namespace qk::dao {

qsizetype KeyList::size() const {
  return static_cast<qsizetype>(integer_ ? numbers_.size() : values_.size() / static_cast<size_t>(width_));
}

void KeyList::reserve(qsizetype keys) {
  if (integer_)
    numbers_.reserve(static_cast<size_t>(keys));
  else
    values_.reserve(static_cast<size_t>(keys * width_));
}

void KeyList::append(const Key& key) {
  if (!integer_) {
    values_.insert(values_.end(), key.cbegin(), key.cend());
    return;
  }
  const qint64 number = key.first().toLongLong();
  if (ascending_ == size() && (numbers_.empty() || number > numbers_.back())) ++ascending_;
  numbers_.push_back(number);
}

void KeyList::append(const KeyList& more) {
  const bool goesOn = ascending_ == size() &&
                      (numbers_.empty() || more.numbers_.empty() || more.numbers_.front() > numbers_.back());
  if (goesOn) ascending_ += more.ascending_;
  numbers_.insert(numbers_.end(), more.numbers_.begin(), more.numbers_.end());
  values_.insert(values_.end(), more.values_.begin(), more.values_.end());
}

void KeyList::remove(qsizetype first, qsizetype count) {
  if (integer_) {
    numbers_.erase(numbers_.begin() + first, numbers_.begin() + first + count);
    ascending_ -= std::clamp<qsizetype>(ascending_ - first, 0, count);
  } else {
    values_.erase(values_.begin() + first * width_, values_.begin() + (first + count) * width_);
  }
}

void KeyList::replace(qsizetype index, const Key& key) {
  if (integer_) {
    numbers_[static_cast<size_t>(index)] = key.first().toLongLong();
    ascending_ = std::min(ascending_, index);
  } else {
    std::copy(key.cbegin(), key.cend(), values_.begin() + index * width_);
  }
}

Key KeyList::at(qsizetype index) const {
  if (integer_) return {static_cast<qlonglong>(numbers_[static_cast<size_t>(index)])};
  const auto first = values_.begin() + index * width_;
  return Key(first, first + width_);
}

bool KeyList::equals(qsizetype index, const Key& key) const {
  return std::equal(key.cbegin(), key.cend(), values_.begin() + index * width_);
}

qsizetype KeyList::lowerBound(const Key& key) const {
  return std::lower_bound(numbers_.begin(), numbers_.begin() + ascending_, key.first().toLongLong()) -
         numbers_.begin();
}

qsizetype KeyList::indexOf(const Key& key) const {
  if (integer_) {
    const qsizetype found = lowerBound(key);
    const qint64 number = key.first().toLongLong();
    if (found < ascending_ && numbers_[static_cast<size_t>(found)] == number) return found;
    const auto unordered = std::find(numbers_.begin() + ascending_, numbers_.end(), number);
    return unordered == numbers_.end() ? -1 : unordered - numbers_.begin();
  }
  for (qsizetype i = 0; i < size(); ++i)
    if (equals(i, key)) return i;
  return -1;
}

void KeyList::bury(qsizetype index) {
  if (static_cast<qsizetype>(dead_.size()) <= index) dead_.resize(static_cast<size_t>(index) + 1, false);
  dead_[static_cast<size_t>(index)] = true;
  while (firstLive_ < static_cast<qsizetype>(dead_.size()) && dead_[static_cast<size_t>(firstLive_)])
    ++firstLive_;
}

bool KeyList::isLive(qsizetype index) const {
  return index >= static_cast<qsizetype>(dead_.size()) || !dead_[static_cast<size_t>(index)];
}

qsizetype KeyList::nextLive(qsizetype index) const {
  for (index = std::max(index, firstLive_); index < size(); ++index)
    if (isLive(index)) return index;
  return size();
}

qsizetype KeyList::previousLive(qsizetype index) const {
  for (; index >= firstLive_; --index)
    if (isLive(index)) return index;
  return -1;
}

}  // namespace qk::dao

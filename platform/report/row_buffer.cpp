#include "platform/report/row_buffer.h"

#include <QDateTime>
#include <algorithm>
#include <cstring>

#include "platform/runtime/money.h"

namespace qk::report {

namespace {

/// The first rows come soon, so that the first page does.
constexpr size_t kFirstRows = 100;
constexpr size_t kRows = 1000;

enum class Tag : char { Null, Whole, Real, Money, Date, Text, Bytes };

template <class Value>
void put(QByteArray& bytes, const Value& value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class Value>
Value get(const char*& at) {
  Value value;
  std::memcpy(&value, at, sizeof value);
  at += sizeof value;
  return value;
}

void putBytes(QByteArray& bytes, Tag tag, const QByteArray& content) {
  put(bytes, tag);
  put(bytes, static_cast<quint32>(content.size()));
  bytes.append(content);
}

void pack(QByteArray& bytes, const QVariant& value) {
  if (value.typeId() == qMetaTypeId<Money>()) {
    put(bytes, Tag::Money);
    put(bytes, static_cast<qint64>(value.value<Money>().units()));
    return;
  }
  switch (value.typeId()) {
    case QMetaType::UnknownType:
      return put(bytes, Tag::Null);
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
      put(bytes, Tag::Whole);
      return put(bytes, value.toLongLong());
    case QMetaType::Double:
      put(bytes, Tag::Real);
      return put(bytes, value.value<double>());
    case QMetaType::QDateTime: {
      const QDateTime date = value.toDateTime();
      put(bytes, Tag::Date);
      put(bytes, date.date().toJulianDay());
      return put(bytes, date.time().msecsSinceStartOfDay());
    }
    case QMetaType::QByteArray:
      return putBytes(bytes, Tag::Bytes, value.toByteArray());
    default:
      return putBytes(bytes, Tag::Text, value.toString().toUtf8());
  }
}

QVariant unpacked(const char*& at) {
  switch (get<Tag>(at)) {
    case Tag::Null:
      return {};
    case Tag::Whole:
      return get<qlonglong>(at);
    case Tag::Real:
      return get<double>(at);
    case Tag::Money:
      return QVariant::fromValue(Money::fromUnits(get<qint64>(at)));
    case Tag::Date: {
      const auto day = QDate::fromJulianDay(get<qint64>(at));
      // As the clock on the wall shows it, in a time without summer: asking the system for the local one is
      // what most of reading a row would be, and moves what stands in the hour that is left out in spring.
      return QDateTime(day, QTime::fromMSecsSinceStartOfDay(get<int>(at)), Qt::UTC);
    }
    case Tag::Text: {
      const auto size = get<quint32>(at);
      at += size;
      return QString::fromUtf8(at - size, static_cast<qsizetype>(size));
    }
    case Tag::Bytes: {
      const auto size = get<quint32>(at);
      at += size;
      return QByteArray(at - size, static_cast<qsizetype>(size));
    }
  }
  return {};
}

}  // namespace

void RowBuffer::append(const QVariantList& row) {
  growing_.starts.push_back(static_cast<quint32>(growing_.bytes.size()));
  for (const QVariant& value : row) pack(growing_.bytes, value);
  if (growing_.starts.size() >= (growing_.first == 0 ? kFirstRows : kRows)) publish();
}

void RowBuffer::publish() {
  if (growing_.starts.empty()) return;
  const int next = growing_.first + static_cast<int>(growing_.starts.size());
  growing_.bytes.squeeze();
  {
    const std::lock_guard lock(mutex_);
    chunks_.push_back(std::make_shared<const Chunk>(std::move(growing_)));
    count_ = next;
  }
  growing_ = {.first = next};
  if (grown_) grown_();
}

void RowBuffer::finish(const std::optional<Error>& failure) {
  publish();
  {
    const std::lock_guard lock(mutex_);
    complete_ = true;
    failure_ = failure;
  }
  if (grown_) grown_();
}

int RowBuffer::count() const {
  return state().first;
}

bool RowBuffer::isComplete() const {
  return state().second;
}

std::pair<int, bool> RowBuffer::state() const {
  const std::lock_guard lock(mutex_);
  return {count_, complete_};
}

std::optional<Error> RowBuffer::failure() const {
  const std::lock_guard lock(mutex_);
  return failure_;
}

void RowBuffer::read(int row, QVariantList& values) const {
  const auto holds = [row](const Chunk& chunk) {
    return row >= chunk.first && row < chunk.first + static_cast<int>(chunk.starts.size());
  };
  if (!last_ || !holds(*last_)) {
    const std::lock_guard lock(mutex_);
    const auto behind = std::upper_bound(
        chunks_.begin(), chunks_.end(), row,
        [](int wanted, const std::shared_ptr<const Chunk>& chunk) { return wanted < chunk->first; });
    last_ = *std::prev(behind);
  }
  const size_t index = static_cast<size_t>(row - last_->first);
  const char* at = last_->bytes.constData() + last_->starts[index];
  const char* end = last_->bytes.constData() +
                    (index + 1 < last_->starts.size() ? last_->starts[index + 1] : last_->bytes.size());
  values.clear();
  while (at < end) values.append(unpacked(at));
}

}  // namespace qk::report

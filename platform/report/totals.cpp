#include "platform/report/totals.h"

#include <limits>

#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk::report {

namespace {

bool fits(qint64 a, qint64 b) {
  return b >= 0 ? a <= std::numeric_limits<qint64>::max() - b : a >= std::numeric_limits<qint64>::min() - b;
}

}  // namespace

void Total::add(const QVariant& value) {
  const bool money = value.typeId() == qMetaTypeId<Money>();
  const bool whole = value.typeId() == QMetaType::Int || value.typeId() == QMetaType::LongLong;
  if (!money && !whole && value.typeId() != QMetaType::Double) return;
  if (kind_ == Kind::Nothing) kind_ = money ? Kind::Money : whole ? Kind::Whole : Kind::Real;
  if (kind_ == Kind::Money) {
    const qint64 units =
        money ? value.value<Money>().units() : Money::fromDouble(value.value<double>()).units();
    if (!fits(whole_, units)) throw Error(errors::kOverflow);
    whole_ += units;
    return;
  }
  if (kind_ == Kind::Whole && whole && fits(whole_, value.toLongLong())) {
    whole_ += value.toLongLong();
    return;
  }
  if (kind_ == Kind::Whole) {
    kind_ = Kind::Real;
    real_ = static_cast<double>(whole_);
  }
  real_ += money ? parseStrict(value.value<Money>().toText()) : value.value<double>();
}

QVariant Total::value() const {
  switch (kind_) {
    case Kind::Nothing:
      return {};
    case Kind::Money:
      return QVariant::fromValue(Money::fromUnits(whole_));
    case Kind::Whole:
      return whole_;
    case Kind::Real:
      return real_;
  }
  return {};
}

}  // namespace qk::report

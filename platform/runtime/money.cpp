#include "platform/runtime/money.h"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/runtime/error.h"

namespace qk {

namespace {

std::uint64_t magnitude(std::int64_t units) {
  const auto bits = static_cast<std::uint64_t>(units);
  return units < 0 ? ~bits + 1 : bits;  // the lowest value has no positive twin
}

/// The value that the 15-digit decimal text names: 0.00015 times 10000 is meant to be 1.5, not a hair less.
double asWritten(double value) {
  if (!(std::fabs(value) < 1e14)) return value;  // every digit counts there
  std::array<char, 40> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, 14);
  double written = value;
  std::from_chars(text.data(), end.ptr, written);
  return written;
}

}  // namespace

Money Money::fromDouble(double euro) {
  constexpr double kLimit = 9223372036854775808.0;  // 2 to the 63rd
  const double scaled = std::nearbyint(asWritten(euro * 10000.0));
  if (!(scaled >= -kLimit && scaled < kLimit)) throw Error(errors::kOverflow);
  return fromUnits(static_cast<std::int64_t>(scaled));
}

void Money::overflow() {
  throw Error(errors::kOverflow);
}

QString Money::toText() const {
  const std::uint64_t amount = magnitude(units_);
  QString text = units_ < 0 ? "-" : "";
  text += QString::number(amount / 10000);
  QString behind = QString::number(amount % 10000).rightJustified(4, u'0');
  while (behind.endsWith(u'0')) behind.chop(1);
  return behind.isEmpty() ? text : text + "," + behind;
}

QString Money::toCurrencyText() const {
  const std::uint64_t cents = (magnitude(units_) + 50) / 100;  // halves away from zero
  QString whole = QString::number(cents / 100);
  for (qsizetype i = whole.size() - 3; i > 0; i -= 3) whole.insert(i, u'.');
  const QString sign = units_ < 0 && cents != 0 ? "-" : "";
  return sign + whole + "," + QString::number(cents % 100).rightJustified(2, u'0') + " €";
}

}  // namespace qk

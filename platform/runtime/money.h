// Money: a fixed-point amount in euro, 64 bit, four decimals. No implicit conversion from or to double.
#pragma once

#include <QMetaType>
#include <QString>
#include <compare>
#include <cstdint>
#include <limits>

namespace qk {

class Money {
 public:
  constexpr Money() = default;
  /// Ten-thousandths of a euro: Money::fromUnits(15000) is 1,50 €.
  static constexpr Money fromUnits(std::int64_t tenThousandths) { return Money(tenThousandths); }
  /// Rounds halves to even at the fourth decimal; beyond the range is Error 6.
  static Money fromDouble(double euro);

  constexpr std::int64_t units() const { return units_; }
  double toDouble() const { return static_cast<double>(units_) / 10000.0; }

  /// Plain text, at most four decimals, decimal comma: "1573,45".
  QString toText() const;
  /// The named format "Currency": "1.573,45 €".
  QString toCurrencyText() const;

  /// Error 6 beyond the range.
  friend constexpr Money operator+(Money a, Money b) {
    if (b.units_ > 0 ? a.units_ > kMost - b.units_ : a.units_ < kLeast - b.units_) overflow();
    return Money(a.units_ + b.units_);
  }
  friend constexpr Money operator-(Money a, Money b) {
    if (b.units_ < 0 ? a.units_ > kMost + b.units_ : a.units_ < kLeast + b.units_) overflow();
    return Money(a.units_ - b.units_);
  }
  constexpr Money operator-() const { return Money() - *this; }
  constexpr Money& operator+=(Money b) { return *this = *this + b; }
  constexpr Money& operator-=(Money b) { return *this = *this - b; }
  friend constexpr auto operator<=>(Money, Money) = default;

 private:
  static constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  static constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  [[noreturn]] static void overflow();
  explicit constexpr Money(std::int64_t units) : units_(units) {}
  std::int64_t units_ = 0;
};

}  // namespace qk

Q_DECLARE_METATYPE(qk::Money)

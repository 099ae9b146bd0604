// Sums of columns: money stays money, whole numbers stay whole.
#pragma once

#include <QVariant>
#include <vector>

#include "platform/runtime/money.h"

namespace qk::report {

class Total {
 public:
  /// What is no number counts nothing. Error 6 beyond the range of money.
  void add(const QVariant& value);
  /// Money, a whole number or a double; Null where nothing was added.
  QVariant value() const;

 private:
  enum class Kind : char { Nothing, Money, Whole, Real };
  Kind kind_ = Kind::Nothing;
  qint64 whole_ = 0;  ///< also units of money
  double real_ = 0;
};

/// The sums of the rows since they began.
struct Level {
  std::vector<Total> sums;
  int count = 0;
};

}  // namespace qk::report

// The one exception type of the house: a number and a German description.
// The numbers have names in error_numbers.h.
#pragma once

#include <QString>
#include <exception>

#include "platform/runtime/error_numbers.h"  // IWYU pragma: export

namespace qk {

/// German description of a known error number; for an unknown one a text that names the number.
QString errorDescription(int number);

class Error : public std::exception {
 public:
  explicit Error(int number) : Error(number, errorDescription(number)) {}
  Error(int number, QString description, QString place = {});

  int number() const { return number_; }
  const QString& description() const { return description_; }
  /// Where it arose, for whoever reports it far from there: a line of German text, or nothing.
  const QString& place() const { return place_; }
  const char* what() const noexcept override { return what_.constData(); }

 private:
  int number_;
  QString description_;
  QString place_;
  QByteArray what_;
};

}  // namespace qk

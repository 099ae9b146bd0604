// The one exception type of the house: a number and a German description.
// Numbers are those of the classic run time (5, 6, 9, 11, 13, 53, 70, 75, 76, 91, 94, 457 …) and of the
// classic desktop database engine (3010, 3021, 3022, 3044, 3061, 3075, 3078, 3112, 3126, 3265, 3421 …).
#pragma once

#include <QString>
#include <exception>

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

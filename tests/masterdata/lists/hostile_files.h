// Lists as they shouldn't be, made from a seed: always the same files.
#pragma once

#include <QByteArray>
#include <QString>

namespace qk::test {

struct HostileFile {
  enum class Outcome {
    Fine,      ///< every row is new
    Faulty,    ///< it can be read, and at least one row is faulty
    Refused,   ///< it can't be read, or nothing in it says who is meant
    Anything,  ///< whatever it is: a verdict
  };
  QString name;
  QByteArray bytes;
  Outcome outcome = Outcome::Anything;
};

/// One of them by its number.
HostileFile hostileFile(int number);

}  // namespace qk::test

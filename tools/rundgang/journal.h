// What the operator did to the open shots of the lines, in order, so that it can be reckoned again.
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <vector>

namespace qk {

struct Act {
  enum class Kind {
    Discard,        ///< `shots` are discarded
    ChangeShooter,  ///< all open shots go to `shooter`
    Transfer,       ///< `shots` are worked out for `disciplines`
    Store,          ///< what was transferred is stored, with a picture of `shots`
    Book            ///< the same, and `shots` are booked
  };
  Kind kind = Kind::Transfer;
  int line = 0;
  QString shooter;          ///< start number on the line
  QList<int> shots;         ///< places among the line's open shots at that moment, from 0, ascending
  QStringList disciplines;  ///< by name
  QDateTime from, to;       ///< the act took place between them
};

using Journal = std::vector<Act>;

}  // namespace qk

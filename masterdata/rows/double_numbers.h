// Start numbers and names that stand there twice, and numbers that nobody has.
#pragma once

#include <QString>
#include <vector>

#include "platform/dao/database.h"

namespace qk {

struct Double {
  QString value;  ///< as its first row spells it; case doesn't tell texts apart
  std::vector<qint64> keys;
};

/// Texts of the column that more than one row has, in their order; empty ones aside.
std::vector<Double> doublesOf(dao::Database& database, const QString& table, const QString& column);

/// Start numbers that more than one shooter bears.
std::vector<Double> doubleNumbers(dao::Database& database);

struct LostNumber {
  QString number;
  qint64 results = 0, payments = 0;
};

/// Start numbers of results and payments that no shooter bears, by number.
std::vector<LostNumber> lostNumbers(dao::Database& database);

}  // namespace qk

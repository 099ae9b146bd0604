// The second opinion: what the stations fired, by their own log, and what the operator did with it, against
// what stands in the competition. Reads log and file on ways of its own.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "tools/rundgang/journal.h"
#include "tools/rundgang/reckoning_log.h"

namespace qk {

struct Row {  ///< of the closing table
  QString what;
  QString stations, competition;
  bool agrees() const { return stations == competition; }
};

struct Reckoning {
  std::vector<Row> rows;
  QStringList differences;  ///< figures that don't agree, in words
  int binaryRests = 0;      ///< block sums that hold nothing but the rest of a binary fraction
};

Reckoning reckon(const QString& competition, const std::vector<FiredShot>& fired, const Journal& journal);
/// Prints table and differences; true when all agrees.
bool printTable(const Reckoning& reckoning);

}  // namespace qk

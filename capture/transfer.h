// The transfer: from ticked shots and disciplines to pending results. A function of values, no window, no
// store.
//
//   teiler discipline       one record "T" per shot
//   ring-teiler discipline  one record "RT" per batch of RingSerie shots
//   ring discipline         one series per RingSerie shots, block sums by ten
//
// An incomplete batch or series at the end counts as well.
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "capture/records.h"
#include "link/haeringschuss.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "platform/runtime/retry.h"

namespace qk {

struct PendingResults {
  KeyedCollection<QKTeilerDisziplin> m_colTeilerErg;
  KeyedCollection<QKRingDisziplin> m_colRingErg;
  /// Positions of the extra shots. Their ring values count 0 in the rest of this run; whoever owns the shots
  /// zeroes them (clearRingValues), so that they count 0 in later runs too.
  std::vector<int> extraShots;
};

/// The two kinds of chance that a transfer needs: when it is, and the numbers in the keys.
struct TransferSurroundings {
  QDateTime now;
  Random& random;
  /// Answers for a statement that failed while a record was made (Error 457: another one has the same key);
  /// `routine` is the name of the routine that makes it. An abort leaves that record out.
  std::function<ErrorAnswer(const Error& error, const QString& routine)> report;
};

/// The shots are those ticked, in the order of the open shots. Each record is made under the report of its
/// routine: without a shooter the four statements that ask him are Error 91, one by one. No Error leaves.
void transferShots(const std::vector<std::shared_ptr<HaeringSchuss>>& shots,
                   const std::vector<std::shared_ptr<Disziplin>>& disciplines, const Schuetze* shooter,
                   const TransferSurroundings& surroundings, PendingResults& results);

/// Zeroes the four ring values of an extra shot.
void clearRingValues(HaeringSchuss& shot);

}  // namespace qk

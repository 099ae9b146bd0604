// The journal reckoned again: what the acts of the operator make of the shots that were fired, in whole
// tenths and on a way of its own. Shares no line with result capture.
#pragma once

#include <vector>

#include "tools/rundgang/journal.h"
#include "tools/rundgang/reckoning_facts.h"
#include "tools/rundgang/reckoning_figures.h"
#include "tools/rundgang/reckoning_log.h"

namespace qk {

/// A shot on its way from the station to the result tables. Values in tenths.
struct ReckonedShot {
  enum class State { Open, Booked, Discarded };
  const FiredShot* fired = nullptr;
  QString weapon;
  int factor = 10;
  int teiler = 0;
  bool teilerMayBeLess = false;  ///< the division leaves no rest: cut in binary, it may fall a tenth short
  bool ringsCleared = false;     ///< was the extra shot of a series
  QString shooter;
  State state = State::Open;
  QDateTime from, to;  ///< between them it was booked or discarded

  int ring() const { return ringsCleared ? 0 : fired->tenths; }
  int whole() const { return ringsCleared ? 0 : fired->wholeRing * 10; }
};

/// The shots in the order of firing, open.
std::vector<ReckonedShot> receivedShots(const std::vector<FiredShot>& fired, const Facts& facts);
/// The key under which the office keeps a shot.
QString storedKey(const FiredShot& shot);

struct Expected {
  std::vector<ExpectedRow> teilers;   ///< rows of Schuss
  std::vector<ExpectedRow> series;    ///< rows of SchussSerien
  std::vector<ExpectedRow> pictures;  ///< rows of Grafik_Scheibe, each with its rows of Grafik_Schuss
};

/// Replays the acts; the shots end in their last state.
Expected replay(const Journal& journal, const Facts& facts, std::vector<ReckonedShot>& shots);

}  // namespace qk

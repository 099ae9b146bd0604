// The profile evaluation: a shooter's results judged against the profiles of the competition. A function of
// values; what reads and stores them stands elsewhere.
#pragma once

#include <vector>

#include "evaluation/result_filters.h"
#include "evaluation/values.h"

namespace qk {

struct Profilauswertung {
  std::vector<EinzelErgebnis> einzelErgebnisse;  ///< what the filters left
  std::vector<ErgebnisZeile> ergebnisse;
};

/// `ergebnisse`: all of the shooter's, of both sources. `letzteTage` names the day of every discipline whose
/// profile asks for it (`OptTage`).
Profilauswertung werteProfileAus(const std::vector<ProfilDisziplin>& profile,
                                 const std::vector<EinzelErgebnis>& ergebnisse, const Zulassung& zulassung,
                                 const LetzteSchiesstage& letzteTage);

/// What `werteProfileAus` makes of results that the filters have left.
std::vector<ErgebnisZeile> ergebnisZeilen(std::vector<ProfilDisziplin> profile,
                                          const EinzelErgebnisse& einzel);

}  // namespace qk

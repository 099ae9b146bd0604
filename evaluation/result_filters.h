// Which of a shooter's results count for a profile. The filters run in their order here, each over all rows
// of `Profile` before the next one: the cut to a highest number comes before weapons and classes are looked
// at.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "evaluation/values.h"

namespace qk {

/// The rows of `EinzelErgebnisse` by profile (`WkID`) and discipline.
using EinzelErgebnisse = std::map<std::pair<qint32, qint32>, std::vector<EinzelErgebnis>>;

/// What the shooter has in the disciplines of the profiles, from the source that each discipline has. A
/// discipline that a profile names twice brings its results twice.
EinzelErgebnisse kopiereErgebnisse(const std::vector<ProfilDisziplin>& profile,
                                   const std::vector<EinzelErgebnis>& ergebnisse);

/// a. The best `nGewErg` of a discipline stay. The discipline's being one of teilers decides what is best,
/// also where it counts rings besides.
void pruefeMaxErgebnisse(const std::vector<ProfilDisziplin>& profile, EinzelErgebnisse& einzel);
/// b. Without weapons of the profile, or of the discipline, all stay.
void pruefeWaffen(const std::vector<ProfilDisziplin>& profile, const Zulassung& zulassung,
                  EinzelErgebnisse& einzel);
/// c. Without classes of the profile all stay.
void pruefeKlassen(const std::vector<ProfilDisziplin>& profile, const Zulassung& zulassung,
                   EinzelErgebnisse& einzel);
/// d. Only the discipline's last shooting day stays. The profile's own list of days has no say.
void pruefeTage(const std::vector<ProfilDisziplin>& profile, const LetzteSchiesstage& letzteTage,
                EinzelErgebnisse& einzel);
/// e. The first `nBestTageswertung` of each day or month stay, and at least one.
void ermittleTagesMonatswertung(const std::vector<ProfilDisziplin>& profile, EinzelErgebnisse& einzel);

}  // namespace qk

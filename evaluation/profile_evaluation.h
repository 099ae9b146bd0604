// The profile evaluation: a shooter's results judged against the profiles of the competition. A function of
// values; what reads, filters and stores them stands elsewhere.
#pragma once

#include <vector>

#include "evaluation/result_filters.h"
#include "evaluation/values.h"

namespace qk {

/// What comes of the results that the filters have left, in the order in which it is printed.
std::vector<ErgebnisZeile> ergebnisZeilen(std::vector<ProfilDisziplin> profile,
                                          const EinzelErgebnisse& einzel);

}  // namespace qk

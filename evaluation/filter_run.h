// The filters of the profile evaluation on the rows of a print database: what result_filters.h leaves out is
// deleted there, row by row.
#pragma once

#include "evaluation/result_filters.h"
#include "evaluation/sheet.h"

namespace qk {

/// Runs all filters in their order. Each is a routine of its own, with its own text for failures. The event
/// loop runs after each deletion of the filters of weapons, classes and days. False as soon as one was
/// aborted: what it would have left out must not be printed.
bool filtere(const Auswertungsplatz& platz, const Druckdatei& druck,
             const std::vector<ProfilDisziplin>& profile, EinzelErgebnisse& einzel);

}  // namespace qk

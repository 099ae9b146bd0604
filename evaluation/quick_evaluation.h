// The two quick evaluations of a shooter: each fills a print database, runs its report on it, and leaves
// nothing behind. The competition decides which of them its shooters get.
#pragma once

#include "evaluation/sheet.h"

namespace qk {

/// The results judged by the competition's profiles: "kurzauswertung.rpt". False when nothing was shown or
/// printed: no number, no profiles, aborted or given up, or the report failed. Failures are reported.
bool druckeProfilauswertung(const Auswertungsplatz& platz, const QString& Startnummer,
                            ReportOrder::Ziel ziel);

/// The plain list: "schnell.rpt". The same.
bool druckeSchnellliste(const Auswertungsplatz& platz, const QString& Startnummer, ReportOrder::Ziel ziel);

}  // namespace qk

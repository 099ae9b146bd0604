// Cases of an evaluation as an official writes them, and its rows in the same way.
//
//   profiles   "Pokal | LG Teiler | Typ=0 Anzahl=3 Waffen=LG,LP Klassen=1"   one discipline of one a line
//   results    "LG Teiler: 12,3; 8,1 LP K2 21.11.2026 #7"   value, weapon, class, day (or whatever stands
//              there, behind "am="), source key. What isn't said: LG, K1, 20.11.2026, the next key. "@Schuss"
//              or "@SchussSerien" puts a result into the source that its discipline doesn't have.
//   days       "LG Teiler: 21.11.2026"   the last shooting day of a discipline
//
// The disciplines: LG Teiler, LP Teiler (teilers), LG Serie, LP Serie, Auflage (rings), LG Ringteiler (both).
// They are shot with LG (weapon 1), LP (2) and the series also with LGA (3); Auflage has no weapon, and KK
// (4) none of these disciplines. A word that isn't known is Error 5.
#pragma once

#include "evaluation/plain_list.h"
#include "evaluation/profile_evaluation.h"
#include "evaluation/values.h"

namespace qk::test {

std::vector<ProfilDisziplin> profileAus(const QString& text);
/// The weapons and classes of those profiles, and those of the disciplines.
Zulassung zulassungAus(const QString& text);
std::vector<EinzelErgebnis> ergebnisseAus(const QString& text);
LetzteSchiesstage tageAus(const QString& text);
/// "Pokal | LG Serie, LP Serie | Teiler=nein Anzahl=3 Waffen=LG": one profile a line. `disziplinen`:
/// "LG Serie: 3" has the highest number of results that a discipline shows.
Listenregeln regelnAus(const QString& profile, const QString& disziplinen = {});

struct Profilauswertung {
  std::vector<EinzelErgebnis> einzelErgebnisse;  ///< what the filters left
  std::vector<ErgebnisZeile> ergebnisse;
};
/// All filters in their order, and the rows that come of it.
Profilauswertung werteProfileAus(const std::vector<ProfilDisziplin>& profile,
                                 const std::vector<EinzelErgebnis>& ergebnisse, const Zulassung& zulassung,
                                 const LetzteSchiesstage& letzteTage);

/// "Pokal | LG Teiler | 20,4 | 8,1 12,3": one row a line.
QString profilZeilen(const std::vector<ErgebnisZeile>& zeilen);
/// "Teiler | LG Teiler | LG | 8,1 12,3": one row a line.
QString listenZeilenText(const std::vector<ErgebnisZeile>& zeilen);
/// "8,1 12,3": in the order of their keys.
QString werte(std::vector<EinzelErgebnis> ergebnisse);

/// Lines without the blanks around them.
QString zeilenVon(const QString& text);

}  // namespace qk::test

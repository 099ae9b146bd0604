// The orders in which results are judged. None leaves anything to chance: equal ones go by their source key.
#pragma once

#include <vector>

#include "evaluation/values.h"

namespace qk {

enum class Richtung { Aufsteigend, Absteigend };

void sortiereNachErgebnis(std::vector<EinzelErgebnis>& ergebnisse, Richtung richtung);

/// The nearest to the target value first. What is equally far on paper is equally far here, on whichever
/// side: 10,2 and 10,4 from 10,3.
void sortiereNachAbstand(std::vector<EinzelErgebnis>& ergebnisse, double dblVorgabe);

}  // namespace qk

#include "evaluation/result_order.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace qk {

namespace {

// Results have few decimals. Beyond these two distances differ by the binary form of their numbers only.
constexpr double kFinestDistance = 1e-9;

double abstand(double dblVorgabe, double dblErgebnis) {
  return std::round(std::abs(dblVorgabe - dblErgebnis) / kFinestDistance);
}

}  // namespace

void sortiereNachErgebnis(std::vector<EinzelErgebnis>& ergebnisse, Richtung richtung) {
  const double sign = richtung == Richtung::Aufsteigend ? 1 : -1;
  std::stable_sort(
      ergebnisse.begin(), ergebnisse.end(), [sign](const EinzelErgebnis& left, const EinzelErgebnis& right) {
        return std::tuple(sign * left.Ergebnis, left.ErgID) < std::tuple(sign * right.Ergebnis, right.ErgID);
      });
}

void sortiereNachAbstand(std::vector<EinzelErgebnis>& ergebnisse, double dblVorgabe) {
  std::stable_sort(ergebnisse.begin(), ergebnisse.end(),
                   [dblVorgabe](const EinzelErgebnis& left, const EinzelErgebnis& right) {
                     return std::tuple(abstand(dblVorgabe, left.Ergebnis), left.ErgID) <
                            std::tuple(abstand(dblVorgabe, right.Ergebnis), right.ErgID);
                   });
}

}  // namespace qk

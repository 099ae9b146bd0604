#include "evaluation/profile_evaluation.h"

#include <algorithm>
#include <array>

#include "evaluation/german_names.h"
#include "evaluation/result_order.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

// Types that stand in no place of this order are not printed.
constexpr std::array kTypen = {7, 8, 0, 1, 2, 6};
constexpr int kTypSumme = 0;
constexpr int kTypVorgabe = 2;

Richtung richtungVon(const ProfilDisziplin& zeile) {
  return zeile.Disziplin_Teiler ? Richtung::Aufsteigend : Richtung::Absteigend;
}

std::vector<EinzelErgebnis> derDisziplin(const ProfilDisziplin& zeile, const EinzelErgebnisse& einzel) {
  const auto found = einzel.find({zeile.AwProfilID, zeile.DisziID});
  if (found == einzel.end()) return {};
  std::vector<EinzelErgebnis> ergebnisse = found->second;
  if (zeile.Typ == kTypVorgabe)
    sortiereNachAbstand(ergebnisse, parseTolerant(zeile.Vorgabe));
  else
    sortiereNachErgebnis(ergebnisse, richtungVon(zeile));
  return ergebnisse;
}

/// Of all disciplines of the profile, in the order of this one: a profile may mix teilers and rings.
std::vector<EinzelErgebnis> desProfils(const ProfilDisziplin& zeile, const EinzelErgebnisse& einzel) {
  std::vector<EinzelErgebnis> alle;
  for (const auto& [schluessel, ergebnisse] : einzel)
    if (schluessel.first == zeile.AwProfilID) alle.insert(alle.end(), ergebnisse.begin(), ergebnisse.end());
  sortiereNachErgebnis(alle, richtungVon(zeile));
  return alle;
}

struct Summe {
  double dblSumme = 0;
  int nGezaehlt = 0;
};

Summe summeDerBesten(const std::vector<EinzelErgebnis>& ergebnisse, int nAnzahl) {
  Summe summe;
  for (const EinzelErgebnis& ergebnis : ergebnisse) {
    if (summe.nGezaehlt == nAnzahl) break;
    summe.dblSumme += ergebnis.Ergebnis;
    ++summe.nGezaehlt;
  }
  return summe;
}

std::vector<double> einzelspalten(const std::vector<EinzelErgebnis>& ergebnisse) {
  std::vector<double> spalten;
  for (const EinzelErgebnis& ergebnis : ergebnisse) {
    if (spalten.size() == kEinzelspalten) break;
    spalten.push_back(ergebnis.Ergebnis);
  }
  return spalten;
}

}  // namespace

std::vector<ErgebnisZeile> ergebnisZeilen(std::vector<ProfilDisziplin> profile,
                                          const EinzelErgebnisse& einzel) {
  sortiereNachNamen(profile, &ProfilDisziplin::AuswertProfil_Name);
  std::vector<ErgebnisZeile> zeilen;
  // Only a sum moves it. Whatever else is printed compares its own minimum with what the last sum left here.
  int nLaufend = 0;
  for (const int nTyp : kTypen)
    for (const ProfilDisziplin& zeile : profile) {
      if (zeile.Typ != nTyp) continue;
      const std::vector<EinzelErgebnis> ergebnisse = derDisziplin(zeile, einzel);
      if (ergebnisse.empty()) continue;
      Summe summe;
      if (nTyp == kTypSumme && zeile.Anzahl > 0) {
        summe = summeDerBesten(desProfils(zeile, einzel), zeile.Anzahl);
        nLaufend = summe.nGezaehlt + 1;
      }
      if (zeile.nMinAnzahlErgAktiv != 0 && nLaufend - 1 < zeile.nMinAnzahlErg) continue;
      zeilen.push_back({.Wettkampf = zeile.AuswertProfil_Name,
                        .Disziplin = zeile.Disziplin_Name,
                        .Gruppe = {},
                        .WTyp = {},
                        .Startnummer = ergebnisse.front().Startnummer,
                        .DisziErgebnis = summe.dblSumme,
                        .E = einzelspalten(ergebnisse)});
    }
  return zeilen;
}

}  // namespace qk

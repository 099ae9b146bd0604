// The plain list: a shooter's best results of each discipline and weapon, and a bonus line ("Prämie") for
// each profile. A function of values.
#pragma once

#include <vector>

#include "evaluation/values.h"

namespace qk {

struct ListenDisziplin {
  qint32 ID = 0;
  QString Name;
  bool bGewErg = false;
  int nGewErg = 0;
};

struct ListenProfil {
  qint32 ID = 0;
  QString Name;
  bool Teiler = false;
  int Anzahl = 0;
  int nMinAnzahlErgAktiv = 0;
  int nMinAnzahlErg = 0;
};

struct ProfilZuordnung {
  qint32 AwProfilID = 0;
  qint32 DisziID = 0;
};

/// What the competition says about its lists, each in the order of its table's key.
struct Listenregeln {
  std::vector<ListenDisziplin> disziplinen;
  std::vector<ListenProfil> profile;
  std::vector<ProfilZuordnung> profilDisziplinen;
  Zulassung zulassung;
};

/// A row for each discipline and weapon, teilers before series. Disciplines of the same name share their
/// rows, and the first of them says how many results are shown. A result of no known discipline isn't listed.
std::vector<ErgebnisZeile> listenZeilen(const Listenregeln& regeln,
                                        const std::vector<EinzelErgebnis>& ergebnisse);

/// The bonus lines. A profile counts whether or not it is shown in quick evaluations.
std::vector<ErgebnisZeile> praemienZeilen(const Listenregeln& regeln,
                                          const std::vector<EinzelErgebnis>& ergebnisse);

/// Both: the whole list. `ergebnisse`: all of the shooter's, of both sources.
std::vector<ErgebnisZeile> schnellliste(const Listenregeln& regeln, const QString& Startnummer,
                                        const std::vector<EinzelErgebnis>& ergebnisse);

}  // namespace qk

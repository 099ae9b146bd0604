#include "evaluation/plain_list.h"

#include <algorithm>
#include <iterator>

#include "evaluation/german_names.h"
#include "evaluation/result_order.h"

namespace qk {

namespace {

constexpr int kUeblicheGrenze = 20;

std::vector<EinzelErgebnis> ausQuelle(Quelle quelle, const std::vector<EinzelErgebnis>& ergebnisse) {
  std::vector<EinzelErgebnis> auswahl;
  std::copy_if(ergebnisse.begin(), ergebnisse.end(), std::back_inserter(auswahl),
               [quelle](const EinzelErgebnis& ergebnis) { return ergebnis.Tabelle == quelle; });
  sortiereNachErgebnis(auswahl, quelle == Quelle::Schuss ? Richtung::Aufsteigend : Richtung::Absteigend);
  return auswahl;
}

struct Benannt {
  QString Disziplin;
  QString WTyp;
  double Ergebnis = 0;
};

/// By discipline and weapon; the results of one weapon stay in their order.
std::vector<Benannt> nachDisziplin(const Listenregeln& regeln, Quelle quelle,
                                   const std::vector<EinzelErgebnis>& ergebnisse) {
  std::vector<Benannt> rows;
  for (const EinzelErgebnis& ergebnis : ausQuelle(quelle, ergebnisse))
    for (const ListenDisziplin& disziplin : regeln.disziplinen)
      if (disziplin.ID == ergebnis.DisziId)
        rows.push_back({disziplin.Name, ergebnis.WTyp, ergebnis.Ergebnis});
  sortiereNachNamen(rows, &Benannt::WTyp);
  sortiereNachNamen(rows, &Benannt::Disziplin);
  return rows;
}

int grenzeVon(const QString& Name, const Listenregeln& regeln) {
  for (const ListenDisziplin& disziplin : regeln.disziplinen)
    if (disziplin.Name.compare(Name, Qt::CaseInsensitive) == 0)
      return disziplin.bGewErg ? disziplin.nGewErg : kUeblicheGrenze;
  return kUeblicheGrenze;
}

void haengeGruppenAn(std::vector<ErgebnisZeile>& zeilen, const QString& Gruppe, Quelle quelle,
                     const Listenregeln& regeln, const std::vector<EinzelErgebnis>& ergebnisse) {
  const QCollator german = deutscheOrdnung();
  const Benannt* gruppe = nullptr;
  int nGrenze = 0;
  const std::vector<Benannt> rows = nachDisziplin(regeln, quelle, ergebnisse);
  for (const Benannt& row : rows) {
    if (!gruppe || german.compare(row.Disziplin, gruppe->Disziplin) != 0 ||
        german.compare(row.WTyp, gruppe->WTyp) != 0) {
      gruppe = &row;
      nGrenze = std::min(grenzeVon(row.Disziplin, regeln), kEinzelspalten);
      zeilen.push_back({.Wettkampf = {},
                        .Disziplin = row.Disziplin,
                        .Gruppe = Gruppe,
                        .WTyp = row.WTyp,
                        .Startnummer = {}});
    }
    std::vector<double>& E = zeilen.back().E;
    if (static_cast<int>(E.size()) < nGrenze) E.push_back(row.Ergebnis);
  }
}

/// What the shooter has in a profile's disciplines, the best first.
std::vector<EinzelErgebnis> desProfils(const ListenProfil& profil, const Listenregeln& regeln,
                                       const std::vector<EinzelErgebnis>& ergebnisse) {
  std::vector<EinzelErgebnis> auswahl;
  for (const EinzelErgebnis& ergebnis :
       ausQuelle(profil.Teiler ? Quelle::Schuss : Quelle::SchussSerien, ergebnisse))
    for (const ProfilZuordnung& zuordnung : regeln.profilDisziplinen)
      if (zuordnung.AwProfilID == profil.ID && zuordnung.DisziID == ergebnis.DisziId)
        auswahl.push_back(ergebnis);
  return auswahl;
}

/// The first weapon of that sign decides, whichever discipline it is of.
bool waffeZaehlt(const ListenProfil& profil, const EinzelErgebnis& ergebnis, const Zulassung& zulassung) {
  if (ergebnis.WTyp.isEmpty()) return false;
  const auto& waffen = zulassung.disziplinWaffen;
  const auto waffe = std::find_if(waffen.begin(), waffen.end(), [&](const DisziplinWaffe& eine) {
    return eine.KZ.compare(ergebnis.WTyp, Qt::CaseInsensitive) == 0;
  });
  if (waffe == waffen.end()) return false;
  return std::any_of(zulassung.auswertWaffen.begin(), zulassung.auswertWaffen.end(),
                     [&](const AuswertWaffe& erlaubt) {
                       return erlaubt.AuswertID == profil.ID && erlaubt.WaffenID == waffe->WaffenID;
                     });
}

/// A profile without classes takes every one.
bool klasseZaehlt(const ListenProfil& profil, const EinzelErgebnis& ergebnis, const Zulassung& zulassung) {
  bool bListe = false;
  for (const AuswertKlasse& erlaubt : zulassung.auswertKlassen) {
    if (erlaubt.AuswertID != profil.ID) continue;
    if (erlaubt.KlassenID == ergebnis.KlassenID) return true;
    bListe = true;
  }
  return !bListe;
}

/// The name, and that the shooter falls short, where he does.
QString praemienName(const ListenProfil& profil, int nGezaehlt) {
  const int nNoetig = profil.Teiler ? profil.Anzahl : profil.nMinAnzahlErg;
  const bool bGeprueft = profil.Teiler || profil.nMinAnzahlErgAktiv != 0;
  if (!bGeprueft || nGezaehlt >= nNoetig) return profil.Name;
  return QString("%1 -ohne Wertung (%2/%3)")
      .arg(profil.Name, QString::number(nGezaehlt), QString::number(nNoetig));
}

}  // namespace

std::vector<ErgebnisZeile> listenZeilen(const Listenregeln& regeln,
                                        const std::vector<EinzelErgebnis>& ergebnisse) {
  std::vector<ErgebnisZeile> zeilen;
  haengeGruppenAn(zeilen, "Teiler", Quelle::Schuss, regeln, ergebnisse);
  haengeGruppenAn(zeilen, "Serien", Quelle::SchussSerien, regeln, ergebnisse);
  return zeilen;
}

std::vector<ErgebnisZeile> praemienZeilen(const Listenregeln& regeln,
                                          const std::vector<EinzelErgebnis>& ergebnisse) {
  std::vector<ErgebnisZeile> zeilen;
  for (const ListenProfil& profil : regeln.profile) {
    double dblSumme = 0;
    int nGezaehlt = 0, nGelesen = 0;
    for (const EinzelErgebnis& ergebnis : desProfils(profil, regeln, ergebnisse)) {
      if (nGelesen >= profil.Anzahl) break;
      ++nGelesen;  // a result that doesn't count takes a place all the same
      if (!waffeZaehlt(profil, ergebnis, regeln.zulassung)) continue;
      if (!klasseZaehlt(profil, ergebnis, regeln.zulassung)) continue;
      dblSumme += ergebnis.Ergebnis;
      ++nGezaehlt;
    }
    if (nGezaehlt == 0) continue;
    zeilen.push_back({.Wettkampf = {},
                      .Disziplin = praemienName(profil, nGezaehlt),
                      .Gruppe = "Prämie",
                      .WTyp = {},
                      .Startnummer = {},
                      .DisziErgebnis = {},
                      .E = {dblSumme}});
  }
  return zeilen;
}

std::vector<ErgebnisZeile> schnellliste(const Listenregeln& regeln, const QString& Startnummer,
                                        const std::vector<EinzelErgebnis>& ergebnisse) {
  std::vector<ErgebnisZeile> zeilen = listenZeilen(regeln, ergebnisse);
  for (ErgebnisZeile& praemie : praemienZeilen(regeln, ergebnisse)) zeilen.push_back(std::move(praemie));
  for (ErgebnisZeile& zeile : zeilen) zeile.Startnummer = Startnummer;
  return zeilen;
}

}  // namespace qk

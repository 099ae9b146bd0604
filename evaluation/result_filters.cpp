#include "evaluation/result_filters.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "evaluation/result_order.h"
#include "platform/runtime/datetext.h"

namespace qk {

namespace {

/// The day of a stored date; an invalid one where nothing readable stands.
QDate tag(const QString& Datum) {
  return isDate(Datum) ? parseDate(Datum).date() : QDate();
}

bool gleich(const QString& left, const QString& right) {
  return left.compare(right, Qt::CaseInsensitive) == 0;
}

/// The results of a row of `Profile`; nothing where it has none.
std::vector<EinzelErgebnis>* ergebnisseVon(const ProfilDisziplin& zeile, EinzelErgebnisse& einzel) {
  const auto found = einzel.find({zeile.AwProfilID, zeile.DisziID});
  return found == einzel.end() || found->second.empty() ? nullptr : &found->second;
}

std::vector<DisziplinWaffe> waffenVon(qint32 lDisziID, const Zulassung& zulassung) {
  std::vector<DisziplinWaffe> waffen;
  std::copy_if(zulassung.disziplinWaffen.begin(), zulassung.disziplinWaffen.end(), std::back_inserter(waffen),
               [lDisziID](const DisziplinWaffe& waffe) { return waffe.DisziID == lDisziID; });
  return waffen;
}

/// Under which sign a weapon of the profile shoots the discipline; nothing where it doesn't.
std::optional<QString> kennzeichen(qint32 lWaffenID, const std::vector<DisziplinWaffe>& waffen) {
  const auto found = std::find_if(waffen.begin(), waffen.end(), [lWaffenID](const DisziplinWaffe& waffe) {
    return waffe.WaffenID == lWaffenID;
  });
  return found == waffen.end() ? std::nullopt : std::optional(found->KZ);
}

struct Periode {
  bool bMonat = false;

  /// What the rows are ordered by: a month without its year, so that the same month of two years mingles.
  qint64 rang(const QDate& day) const {
    return !day.isValid() ? -1 : bMonat ? day.month() : day.toJulianDay();
  }

  /// Whether two days lie in the same day or month, here of the same year. What has no day lies in none.
  bool dieselbe(const QDate& left, const QDate& right) const {
    if (!left.isValid() || !right.isValid()) return false;
    return bMonat ? left.year() == right.year() && left.month() == right.month() : left == right;
  }
};

struct MitTag {
  QDate tag;
  EinzelErgebnis ergebnis;
};

std::vector<MitTag> geordnet(std::vector<EinzelErgebnis> ergebnisse, const Periode& periode,
                             Richtung richtung) {
  sortiereNachErgebnis(ergebnisse, richtung);
  std::vector<MitTag> rows;
  for (const EinzelErgebnis& ergebnis : ergebnisse) rows.push_back({tag(ergebnis.Datum), ergebnis});
  std::stable_sort(rows.begin(), rows.end(), [&periode](const MitTag& left, const MitTag& right) {
    const int number = left.ergebnis.Startnummer.compare(right.ergebnis.Startnummer, Qt::CaseInsensitive);
    return std::tuple(number, periode.rang(left.tag)) < std::tuple(0, periode.rang(right.tag));
  });
  return rows;
}

/// Walks the rows in groups; a group takes at least its first row, whatever `nBest`.
std::vector<EinzelErgebnis> besteJeGruppe(const std::vector<MitTag>& rows, const Periode& periode,
                                          int nBest) {
  std::vector<EinzelErgebnis> bleiben;
  const MitTag* gruppe = nullptr;  // its first row
  int nAnzahl = 0;
  for (const MitTag& row : rows) {
    if (gruppe && gleich(row.ergebnis.Startnummer, gruppe->ergebnis.Startnummer) &&
        periode.dieselbe(row.tag, gruppe->tag)) {
      if (nAnzahl < nBest) bleiben.push_back(row.ergebnis);
      ++nAnzahl;
    } else {
      gruppe = &row;
      nAnzahl = 1;
      bleiben.push_back(row.ergebnis);
    }
  }
  return bleiben;
}

}  // namespace

EinzelErgebnisse kopiereErgebnisse(const std::vector<ProfilDisziplin>& profile,
                                   const std::vector<EinzelErgebnis>& ergebnisse) {
  EinzelErgebnisse einzel;
  for (const ProfilDisziplin& zeile : profile)
    for (const EinzelErgebnis& ergebnis : ergebnisse)
      if (ergebnis.DisziId == zeile.DisziID && ergebnis.Tabelle == zeile.quelle()) {
        EinzelErgebnis& kopie = einzel[{zeile.AwProfilID, zeile.DisziID}].emplace_back(ergebnis);
        kopie.WkID = zeile.AwProfilID;
      }
  return einzel;
}

void pruefeMaxErgebnisse(const std::vector<ProfilDisziplin>& profile, EinzelErgebnisse& einzel) {
  for (const ProfilDisziplin& zeile : profile) {
    auto* ergebnisse = ergebnisseVon(zeile, einzel);
    if (!ergebnisse || !zeile.bGewErg || zeile.nGewErg <= 0) continue;
    sortiereNachErgebnis(*ergebnisse, zeile.Disziplin_Teiler ? Richtung::Aufsteigend : Richtung::Absteigend);
    const auto nBleiben = static_cast<std::size_t>(zeile.nGewErg);
    if (ergebnisse->size() > nBleiben) ergebnisse->resize(nBleiben);
  }
}

void pruefeWaffen(const std::vector<ProfilDisziplin>& profile, const Zulassung& zulassung,
                  EinzelErgebnisse& einzel) {
  for (const ProfilDisziplin& zeile : profile) {
    auto* ergebnisse = ergebnisseVon(zeile, einzel);
    if (!ergebnisse || zeile.OptWaffen == 0) continue;
    const std::vector<DisziplinWaffe> waffen = waffenVon(zeile.DisziID, zulassung);
    std::vector<QString> erlaubt;
    bool bListe = false;
    for (const AuswertWaffe& waffe : zulassung.auswertWaffen) {
      if (waffe.AuswertID != zeile.AwProfilID) continue;
      bListe = true;
      if (const auto KZ = kennzeichen(waffe.WaffenID, waffen)) erlaubt.push_back(*KZ);
    }
    if (!bListe || waffen.empty()) continue;
    std::erase_if(*ergebnisse, [&erlaubt](const EinzelErgebnis& ergebnis) {
      return ergebnis.WTyp.isEmpty() ||
             std::none_of(erlaubt.begin(), erlaubt.end(),
                          [&ergebnis](const QString& KZ) { return gleich(ergebnis.WTyp, KZ); });
    });
  }
}

void pruefeKlassen(const std::vector<ProfilDisziplin>& profile, const Zulassung& zulassung,
                   EinzelErgebnisse& einzel) {
  for (const ProfilDisziplin& zeile : profile) {
    auto* ergebnisse = ergebnisseVon(zeile, einzel);
    if (!ergebnisse || zeile.OptKlassen == 0) continue;
    std::vector<qint32> erlaubt;
    for (const AuswertKlasse& klasse : zulassung.auswertKlassen)
      if (klasse.AuswertID == zeile.AwProfilID) erlaubt.push_back(klasse.KlassenID);
    if (erlaubt.empty()) continue;
    std::erase_if(*ergebnisse, [&erlaubt](const EinzelErgebnis& ergebnis) {
      return std::find(erlaubt.begin(), erlaubt.end(), ergebnis.KlassenID) == erlaubt.end();
    });
  }
}

void pruefeTage(const std::vector<ProfilDisziplin>& profile, const LetzteSchiesstage& letzteTage,
                EinzelErgebnisse& einzel) {
  for (const ProfilDisziplin& zeile : profile) {
    auto* ergebnisse = ergebnisseVon(zeile, einzel);
    if (!ergebnisse || zeile.OptTage == 0) continue;
    const auto letzter = letzteTage.find({ergebnisse->front().Tabelle, zeile.DisziID});
    const QDate LetzterSchiesstag = letzter == letzteTage.end() ? QDate() : letzter->second;
    std::erase_if(*ergebnisse, [&LetzterSchiesstag](const EinzelErgebnis& ergebnis) {
      return tag(ergebnis.Datum) != LetzterSchiesstag;
    });
  }
}

void ermittleTagesMonatswertung(const std::vector<ProfilDisziplin>& profile, EinzelErgebnisse& einzel) {
  for (const ProfilDisziplin& zeile : profile) {
    auto* ergebnisse = ergebnisseVon(zeile, einzel);
    if (!ergebnisse || !(zeile.Tageswertung || zeile.Monatswertung)) continue;
    const Periode periode{.bMonat = zeile.Monatswertung};
    const Richtung richtung = zeile.Ringe ? Richtung::Absteigend : Richtung::Aufsteigend;
    *ergebnisse = besteJeGruppe(geordnet(*ergebnisse, periode, richtung), periode, zeile.nBestTageswertung);
  }
}

}  // namespace qk

#include "evaluation/filter_run.h"

#include <algorithm>
#include <set>

#include "evaluation/evaluation_tables.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"

namespace qk {

namespace {

std::set<qint32> schluesselVon(const EinzelErgebnisse& einzel) {
  std::set<qint32> schluessel;
  for (const auto& [profil, ergebnisse] : einzel)
    for (const EinzelErgebnis& ergebnis : ergebnisse) schluessel.insert(ergebnis.ID);
  return schluessel;
}

enum class NachJeder { Nichts, Ereignisse };

class Filterlauf {
 public:
  Filterlauf(const Auswertungsplatz& platz, const Druckdatei& druck,
             const std::vector<ProfilDisziplin>& profile, EinzelErgebnisse& einzel)
      : platz_(platz), druck_(druck), profile_(profile), einzel_(einzel) {}

  bool maxErgebnisse() {
    return unter("Fehler beim Prüfen der Max.Ergebnisse - Kurzauswertung!", [&](Steps& step) {
      loesche(step, NachJeder::Nichts, [&] { pruefeMaxErgebnisse(profile_, einzel_); });
    });
  }

  bool waffen() {
    return unter("Fehler beim Prüfen der Wettkampfwaffen - Kurzauswertung!", [&](Steps& step) {
      if (!istGefragt(&ProfilDisziplin::OptWaffen)) return;
      Zulassung zulassung;
      step([&] { zulassung.auswertWaffen = leseAuswertWaffen(platz_.wettkampf); });
      step([&] { zulassung.disziplinWaffen = leseDisziplinWaffen(platz_.wettkampf); });
      loesche(step, NachJeder::Ereignisse, [&] { pruefeWaffen(profile_, zulassung, einzel_); });
    });
  }

  bool klassen() {
    return unter("Fehler beim Prüfen der Wettkampfklassen - Kurzauswertung!", [&](Steps& step) {
      if (!istGefragt(&ProfilDisziplin::OptKlassen)) return;
      Zulassung zulassung;
      step([&] { zulassung.auswertKlassen = leseAuswertKlassen(platz_.wettkampf); });
      loesche(step, NachJeder::Ereignisse, [&] { pruefeKlassen(profile_, zulassung, einzel_); });
    });
  }

  bool tage() {
    return unter("Fehler beim Prüfen der Wettkampftage - Kurzauswertung!", [&](Steps& step) {
      std::vector<ProfilDisziplin> bekannte;
      LetzteSchiesstage tage;
      for (const ProfilDisziplin& zeile : profile_) {
        if (zeile.OptTage == 0 || !hatErgebnisse(zeile)) continue;
        // A day that couldn't be read throws no result out.
        if (step([&] {
              QDate& tag = tage[{zeile.quelle(), zeile.DisziID}];
              if (!tag.isValid()) tag = leseLetztenTag(platz_.wettkampf, zeile.quelle(), zeile.DisziID);
            }))
          bekannte.push_back(zeile);
      }
      loesche(step, NachJeder::Ereignisse, [&] { pruefeTage(bekannte, tage, einzel_); });
    });
  }

  bool tagesMonatswertung() {
    return unter("Fehler beim Ermitteln der Tages-/MonatsAuswertung!", [&](Steps& step) {
      loesche(step, NachJeder::Nichts, [&] { ermittleTagesMonatswertung(profile_, einzel_); });
    });
  }

 private:
  template <class Body>
  bool unter(const QString& sText, const Body& body) {
    return reported(fehlerReport(platz_.workplace.dialogs, sText), body);
  }

  bool hatErgebnisse(const ProfilDisziplin& zeile) const {
    const auto ergebnisse = einzel_.find({zeile.AwProfilID, zeile.DisziID});
    return ergebnisse != einzel_.end() && !ergebnisse->second.empty();
  }

  bool istGefragt(int ProfilDisziplin::*option) const {
    return std::any_of(profile_.begin(), profile_.end(), [&](const ProfilDisziplin& zeile) {
      return zeile.*option != 0 && hatErgebnisse(zeile);
    });
  }

  /// Deletes in the print database what the filter takes away from the values.
  template <class Filter>
  void loesche(Steps& step, NachJeder nachJeder, const Filter& filter) {
    std::set<qint32> weg = schluesselVon(einzel_);
    filter();
    for (const qint32 lID : schluesselVon(einzel_)) weg.erase(lID);
    for (const qint32 lID : weg) {
      step([&] { druck_.db().execute("Delete * from EinzelErgebnisse where ID = " + QString::number(lID)); });
      if (nachJeder == NachJeder::Ereignisse) platz_.workplace.waits.runMessageLoop();
    }
  }

  const Auswertungsplatz& platz_;
  const Druckdatei& druck_;
  const std::vector<ProfilDisziplin>& profile_;
  EinzelErgebnisse& einzel_;
};

}  // namespace

bool filtere(const Auswertungsplatz& platz, const Druckdatei& druck,
             const std::vector<ProfilDisziplin>& profile, EinzelErgebnisse& einzel) {
  Filterlauf lauf(platz, druck, profile, einzel);
  return lauf.maxErgebnisse() && lauf.waffen() && lauf.klassen() && lauf.tage() && lauf.tagesMonatswertung();
}

}  // namespace qk

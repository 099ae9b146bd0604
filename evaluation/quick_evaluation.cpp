#include "evaluation/quick_evaluation.h"

#include "capture/row_values.h"
#include "evaluation/evaluation_tables.h"
#include "evaluation/filter_run.h"
#include "evaluation/plain_list.h"
#include "evaluation/profile_evaluation.h"
#include "platform/dialog/dialogs.h"

namespace qk {

namespace {

bool istGewaehlt(const Auswertungsplatz& platz, const QString& Startnummer) {
  if (!Startnummer.isEmpty()) return true;
  platz.workplace.dialogs.note("Kein Schütze gewählt!", BoxIcon::None, "Fehler");
  return false;
}

std::vector<EinzelErgebnis> alleErgebnisse(Steps& step, const Auswertungsplatz& platz,
                                           const QString& Startnummer) {
  std::vector<EinzelErgebnis> alle;
  for (const Quelle quelle : {Quelle::Schuss, Quelle::SchussSerien})
    step([&] {
      for (EinzelErgebnis& ergebnis : leseErgebnisse(platz.wettkampf, quelle, Startnummer))
        alle.push_back(std::move(ergebnis));
    });
  return alle;
}

void schreibeEinzelErgebnisse(Steps& step, const Druckdatei& druck, EinzelErgebnisse& einzel) {
  std::unique_ptr<dao::Recordset> tabelle;
  step([&] { tabelle = druck.db().openRecordset("EinzelErgebnisse"); });
  for (auto& [profil, ergebnisse] : einzel)
    for (EinzelErgebnis& ergebnis : ergebnisse)
      step([&] { schreibeEinzelErgebnis(required(tabelle), ergebnis); });
}

bool werteAus(Steps& step, const Auswertungsplatz& platz, const QString& Startnummer,
              ReportOrder::Ziel ziel) {
  gleicheErgebnisseAb(step, platz);
  const std::unique_ptr<Druckdatei> druckdatei = neueDruckdatei(step, platz);
  std::vector<ProfilDisziplin> profile;
  step([&] { platz.wettkampf.execute(profileAnweisung(required(druckdatei).path())); });
  if (!step([&] { profile = leseProfile(required(druckdatei).db()); })) return false;
  if (profile.empty()) {
    platz.workplace.dialogs.note(
        "Es wurden noch keine Wettkämpfe/Setups im aktuellen Wettkampf gespeichert oder konfiguriert.\r\n"
        "Bitte prüfen Sie Ihre Einstellungen.");
    return false;
  }
  Druckdatei& druck = required(druckdatei);
  EinzelErgebnisse einzel = kopiereErgebnisse(profile, alleErgebnisse(step, platz, Startnummer));
  schreibeEinzelErgebnisse(step, druck, einzel);
  if (!filtere(platz, druck, profile, einzel)) return false;
  const std::vector<ErgebnisZeile> zeilen = ergebnisZeilen(profile, einzel);
  schreibeZeilen(step, platz, druck, Startnummer, zeilen, {});
  schreibeKopf(step, platz, druck, Startnummer);
  return zeigeBericht(step, platz, druck, "kurzauswertung.rpt", ziel);
}

bool listeAuf(Steps& step, const Auswertungsplatz& platz, const QString& Startnummer,
              ReportOrder::Ziel ziel) {
  gleicheErgebnisseAb(step, platz);
  const std::unique_ptr<Druckdatei> druckdatei = neueDruckdatei(step, platz);
  Druckdatei& druck = required(druckdatei);
  const SchuetzenSpalten schuetze = schreibeKopf(step, platz, druck, Startnummer);
  const std::vector<EinzelErgebnis> ergebnisse = alleErgebnisse(step, platz, Startnummer);
  Listenregeln regeln;
  step([&] { regeln.disziplinen = leseDisziplinen(platz.wettkampf); });
  step([&] { regeln.profile = leseListenprofile(platz.wettkampf); });
  step([&] { regeln.profilDisziplinen = leseZuordnungen(platz.wettkampf); });
  step([&] { regeln.zulassung.disziplinWaffen = leseDisziplinWaffen(platz.wettkampf); });
  step([&] { regeln.zulassung.auswertWaffen = leseAuswertWaffen(platz.wettkampf); });
  step([&] { regeln.zulassung.auswertKlassen = leseAuswertKlassen(platz.wettkampf); });
  schreibeZeilen(step, platz, druck, Startnummer, schnellliste(regeln, Startnummer, ergebnisse), schuetze);
  return zeigeBericht(step, platz, druck, "schnell.rpt", ziel);
}

}  // namespace

bool druckeProfilauswertung(const Auswertungsplatz& platz, const QString& Startnummer,
                            ReportOrder::Ziel ziel) {
  if (!istGewaehlt(platz, Startnummer)) return false;
  bool bGedruckt = false;
  reported(fehlerReport(platz.workplace.dialogs, "Fehler beim Drucken der Kurzauswertung!"),
           [&](Steps& step) { bGedruckt = werteAus(step, platz, Startnummer, ziel); });
  return bGedruckt;
}

bool druckeSchnellliste(const Auswertungsplatz& platz, const QString& Startnummer, ReportOrder::Ziel ziel) {
  if (!istGewaehlt(platz, Startnummer)) return false;
  bool bGedruckt = false;
  reported(fehlerReport(platz.workplace.dialogs, "Es ist ein Fehler beim Drucken aufgetreten!"),
           [&](Steps& step) { bGedruckt = listeAuf(step, platz, Startnummer, ziel); });
  return bGedruckt;
}

}  // namespace qk

#include "evaluation/sheet.h"

#include "app/ground/temp_module.h"
#include "capture/row_values.h"
#include "evaluation/evaluation_tables.h"
#include "evaluation/target_pictures.h"
#include "platform/runtime/clock.h"

namespace qk {

void gleicheErgebnisseAb(Steps& step, const Auswertungsplatz& platz) {
  if (DateiVorhanden(platz.workplace.files, Programmverzeichnis() + "NoUpdate.txt")) return;
  for (const QString& anweisung : abgleichAnweisungen()) step([&] { platz.wettkampf.execute(anweisung); });
}

std::unique_ptr<Druckdatei> neueDruckdatei(Steps& step, const Auswertungsplatz& platz) {
  std::unique_ptr<Druckdatei> druck;
  step([&] {
    druck = std::make_unique<Druckdatei>(platz.workplace, platz.SystemVerzeichnis + "ergschdruck.mdb");
  });
  return druck;
}

SchuetzenSpalten schreibeKopf(Steps& step, const Auswertungsplatz& platz, const Druckdatei& druck,
                              const QString& Startnummer) {
  SchuetzenSpalten schuetze;
  step([&] { schuetze = fuelleSchuetze(platz.workplace, platz.wettkampf, druck.db(), Startnummer); });
  step([&] { fuelleWettkampf(platz.workplace, platz.wettkampf, druck.db()); });
  return schuetze;
}

void schreibeZeilen(Steps& step, const Auswertungsplatz& platz, const Druckdatei& druck,
                    const QString& Startnummer, const std::vector<ErgebnisZeile>& zeilen,
                    const SchuetzenSpalten& schuetze) {
  std::unique_ptr<dao::Recordset> tabelle;
  step([&] { tabelle = druck.db().openRecordset("Ergebnisse"); });
  QStringList disziplinen;
  for (const ErgebnisZeile& zeile : zeilen) {
    step([&] { schreibeErgebnis(required(tabelle), zeile, schuetze); });
    disziplinen << zeile.Disziplin;
  }
  step([&] { schreibeScheibenbilder(platz.wettkampf, druck.db(), Startnummer, disziplinen); });
}

bool zeigeBericht(Steps& step, const Auswertungsplatz& platz, Druckdatei& druck, const QString& sBericht,
                  ReportOrder::Ziel ziel) {
  druck.close();
  platz.workplace.waits.runMessageLoop();
  ReportOrder order;
  order.reportFile = platz.SystemVerzeichnis + sBericht;
  order.dataFile = druck.path();
  order.titel = "Kurzauswertung";
  order.ziel = ziel;
  bool bGezeigt = false;
  step([&] { bGezeigt = platz.reports.run(order); });
  return bGezeigt;
}

}  // namespace qk

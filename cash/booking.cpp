#include "cash/booking.h"

#include "app/ground/temp_module.h"
#include "cash/amounts.h"

namespace qk {

namespace {

void speichereZeile(dao::Recordset& payments, const TextTable& flex, int row, const QString& sStartNr) {
  try {
    payments.addNew();
    payments.setValue("Startnummer", sStartNr);
    payments.setValue("KasseID", flex.rowData(row));
    payments.setValue("Offen", flex.text(row, CashColumn::Offen));
    payments.setValue("Betrag", QVariant::fromValue(BetragAusText(flex.text(row, CashColumn::Betrag))));
    payments.setValue("DatumEingang", flex.text(row, CashColumn::Datum));
    payments.setValue("Gruppe", "");
    payments.update();
  } catch (const Error&) {
    payments.cancelUpdate();
    throw;
  }
}

}  // namespace

BookingOutcome verbuche(const Workplace& workplace, CashStore& store, Purchase& purchase,
                        const QString& sStartNr, const BookingSides& sides) {
  BookingOutcome outcome;
  dao::Recordset* payments = store.eingaenge();
  if (!payments) return outcome;
  outcome.begonnen = true;
  try {
    if (sides.druckeBeleg) sides.druckeBeleg();
    if (sides.druckeEtiketten) sides.druckeEtiketten();
    for (int row = 1; row < purchase.flex().rows(); ++row) {
      speichereZeile(*payments, purchase.flex(), row, sStartNr);
      ++outcome.gespeichert;
    }
    const QString datum = Buchungsdatum(workplace);
    if (sides.speichereScheiben) sides.speichereScheiben(datum);
    if (sides.speichereStapel) sides.speichereStapel();
    if (sides.ladeNeu) sides.ladeNeu();
  } catch (const Error& error) {
    outcome.fehler = error;
    for (int row = 1; row <= outcome.gespeichert; ++row) purchase.markiereGespeichert(row);
  }
  return outcome;
}

QString buchungsFehlerText(const BookingOutcome& outcome, int zeilen) {
  QString text = "Fehler: " + QString::number(outcome.fehler->number()) + " - " +
                 outcome.fehler->description() + "\r\n\r\n";
  if (outcome.gespeichert == 0) return text + "Es wurde noch keine Zeile des Kaufs gespeichert.";
  text += QString("Von %1 Zeilen des Kaufs sind %2 gespeichert; sie sind in der Liste gekennzeichnet.")
              .arg(zeilen)
              .arg(outcome.gespeichert);
  return text + "\r\nVor dem nächsten Verbuchen entfernen, sonst werden sie doppelt gebucht.";
}

}  // namespace qk

#include "cash/booking.h"

#include "app/ground/temp_module.h"
#include "cash/amounts.h"

namespace qk {

namespace {

/// Whose payment it is; of the three columns two stay Null.
void schreibePayer(dao::Recordset& payments, const Payer& payer) {
  switch (payer.art()) {
    case Payer::Art::Schuetze:
      return payments.setValue("Startnummer", payer.Startnummer());
    case Payer::Art::Verein:
      return payments.setValue("VereinID", payer.id());
    case Payer::Art::Mannschaft:
      return payments.setValue("MannID", payer.id());
  }
}

void speichereZeile(dao::Recordset& payments, const TextTable& flex, int row, const Payer& payer) {
  try {
    payments.addNew();
    schreibePayer(payments, payer);
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

BookingOutcome verbuche(const Workplace& workplace, CashStore& store, Purchase& purchase, const Payer& payer,
                        const BookingSides& sides) {
  BookingOutcome outcome;
  dao::Recordset* payments = store.eingaenge();
  if (!payments) return outcome;
  outcome.begonnen = true;
  try {
    outcome.verweigert = sides.darf && !sides.darf();
    if (outcome.verweigert) return outcome;
    if (sides.druckeBeleg) sides.druckeBeleg();
    if (sides.druckeEtiketten) sides.druckeEtiketten();
    for (int row = 1; row < purchase.flex().rows(); ++row) {
      speichereZeile(*payments, purchase.flex(), row, payer);
      ++outcome.gespeichert;
    }
    const QString datum = Buchungsdatum(workplace);
    if (sides.speichereScheiben) sides.speichereScheiben(datum, outcome.scheiben);
    if (sides.speichereStapel) sides.speichereStapel();
    if (sides.ladeNeu) sides.ladeNeu();
  } catch (const Error& error) {
    outcome.fehler = error;
    for (int row = 1; row <= outcome.gespeichert; ++row) purchase.markiereGespeichert(row);
  }
  return outcome;
}

QString verbuchtText(const Money& zuBezahlen, const QString& erhalten, int zeilen) {
  QString text = "Verbucht: " + (zeilen == 1 ? QString("1 Einlage") : QString("%1 Einlagen").arg(zeilen)) +
                 "\nZu bezahlen " + zuBezahlen.toCurrencyText();
  if (const auto zurueck = rueckgeld(erhalten, zuBezahlen))
    text += "\nErhalten " + BetragAnzeige(erhalten) + "\nZurück " + zurueck->toCurrencyText();
  return text;
}

QString buchungsFehlerText(const BookingOutcome& outcome, int zeilen) {
  QString text = "Fehler: " + QString::number(outcome.fehler->number()) + " - " +
                 outcome.fehler->description() + "\r\n\r\n";
  if (outcome.gespeichert == 0)
    text += "Es wurde noch keine Zeile des Kaufs gespeichert.";
  else
    text += QString(
                "Von %1 Zeilen des Kaufs sind %2 gespeichert; sie sind in der Liste gekennzeichnet.\r\n"
                "Vor dem nächsten Verbuchen entfernen, sonst werden sie doppelt gebucht.")
                .arg(zeilen)
                .arg(outcome.gespeichert);
  if (outcome.scheiben > 0)
    text += QString(
                "\r\nScheiben gespeichert: %1. Sie stehen kursiv im Baum und werden nicht noch einmal "
                "gespeichert.")
                .arg(outcome.scheiben);
  return text;
}

}  // namespace qk

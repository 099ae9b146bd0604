#include "cash/payments.h"

#include "app/ground/temp_module.h"
#include "cash/amounts.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"

namespace qk {

namespace {

const char* const kNoSuchRow = "Kein gültiger Eintrag gewählt!";

QString datumText(const dao::Recordset& payment) {
  const QVariant value = payment.value("DatumEingang");
  return value.isNull() ? QString() : dateText(value.toDateTime());
}

}  // namespace

Payments::Payments(const Workplace& workplace, CashStore& store) : workplace_(workplace), store_(store) {
  richteKassenTabelleEin(flexAll_);
  flexAll_.setColumnWidth(CashColumn::Merkmal, 0);
  flexAll_.setEditable(CashColumn::Datum, true);
}

QString Payments::stakeName(qint32 KasseID) {
  return store_.findeEinlage(KasseID) ? FeldWert(store_.einlagen(), "Bezeichnung").toString() : QString();
}

void Payments::lade(const Payer& payer) {
  payer_ = payer;
  flexAll_.setRows(1);
  store_.openEingaenge(payer_);
  for (dao::Recordset& payment = *store_.eingaenge(); !payment.eof(); payment.moveNext())
    flexAll_.addRow(
        kassenZeile(stakeName(FeldWert(payment, "KasseID").toInt()), FeldWert(payment, "Offen").toInt() != 0,
                    BetragAusFeld(payment, "Betrag"), datumText(payment)),
        QString::number(FeldWert(payment, "ID").toInt()));
  Q_EMIT changed();
}

void Payments::leere() {
  flexAll_.setRows(1);
  Q_EMIT changed();
}

bool Payments::finde(int row) {
  dao::Recordset* payments = store_.eingaenge();
  if (!payments) return false;
  payments->findFirst("ID = " + flexAll_.rowData(row));
  return !payments->noMatch();
}

/// Strict readings first: nothing is edited that can't be written.
void Payments::schreibe(int row) {
  dao::Recordset& payment = *store_.eingaenge();
  const Money betrag = BetragStrikt(flexAll_.text(row, CashColumn::Betrag));
  const QString datum = flexAll_.text(row, CashColumn::Datum);
  if (!isDate(datum))
    throw Error(errors::kTypeMismatch,
                "»" + datum + "« ist kein Datum (TT.MM.JJJJ oder TT.MM.JJJJ HH:MM:SS).");
  try {
    payment.edit();
    payment.setValue("Offen", flexAll_.text(row, CashColumn::Offen));
    payment.setValue("Betrag", QVariant::fromValue(betrag));
    payment.setValue("DatumEingang", parseDate(datum));
    payment.update();
  } catch (const Error&) {
    payment.cancelUpdate();
    throw;
  }
}

void Payments::zeigeGespeichertes(int row) {
  const dao::Recordset& payment = *store_.eingaenge();
  flexAll_.setText(row, CashColumn::Offen, FeldWert(payment, "Offen").toInt() != 0 ? kOffen : kBezahlt);
  flexAll_.setText(row, CashColumn::Betrag, BetragAusFeld(payment, "Betrag").toText());
  flexAll_.setText(row, CashColumn::Datum, datumText(payment));
}

Payments::Eingabe Payments::nachEingabe(int row, int column) {
  const QString typed = flexAll_.text(row, column);
  if (flexAll_.text(0, column) == "Offen" &&
      workplace_.dialogs.confirm("Soll das Datum auf den aktuellen Tag angepasst werden?"))
    flexAll_.setText(row, CashColumn::Datum, Buchungsdatum(workplace_));
  if (!finde(row)) return {};
  try {
    schreibe(row);
  } catch (const Error& error) {
    zeigeGespeichertes(row);
    workplace_.dialogs.note("Fehler: " + QString::number(error.number()) + " - " + error.description(),
                            BoxIcon::Exclamation);
    return {error.number() == errors::kTypeMismatch || error.number() == errors::kOverflow, typed};
  }
  Q_EMIT changed();
  return {};
}

/// What giving up the settling of that row means.
QString Payments::bleibtOffen(int row, bool alleWeiteren) const {
  if (row == 0) return {};
  const QString name = flexAll_.text(row, CashColumn::Bezeichnung);
  return "Der offene Posten »" + name + "« über " + BetragAnzeige(flexAll_.text(row, CashColumn::Betrag)) +
         (alleWeiteren ? " und alle folgenden bleiben offen." : " bleibt offen.") + "\r\nIst das so gewollt?";
}

void Payments::cmdOPVerbuchen() {
  int at = 0;
  // The money lies on the counter: what isn't settled now would be asked for again.
  const ErrorReport report =
      reportOfALoss(workplace_.dialogs, fehlerReport(workplace_.dialogs, "Fehler beim Verbuchen der OP!"),
                    [&](ErrorAnswer answer) { return bleibtOffen(at, answer == ErrorAnswer::Abort); });
  reported(report, [&](Steps& step) {
    for (int row = 1; row < flexAll_.rows(); ++row)
      step([&] {
        at = row;
        if (!finde(row) || FeldWert(*store_.eingaenge(), "Offen").toInt() == 0) return;
        const QString before = flexAll_.text(row, CashColumn::Datum);
        flexAll_.setText(row, CashColumn::Offen, kBezahlt);
        flexAll_.setText(row, CashColumn::Datum, Buchungsdatum(workplace_));
        try {
          schreibe(row);
        } catch (const Error&) {
          flexAll_.setText(row, CashColumn::Offen, kOffen);  // not settled: it must not look so
          flexAll_.setText(row, CashColumn::Datum, before);
          throw;
        }
      });
  });
  Q_EMIT changed();
}

void Payments::cmdDelete(int row) {
  if (row < 1 || row >= flexAll_.rows()) return;
  if (!finde(row)) return workplace_.dialogs.note(kNoSuchRow);
  if (!workplace_.dialogs.confirm(
          "Soll der aktuelle Eingang " + payer_.wesfall() + " unwiderruflich gelöscht werden?",
          BoxIcon::Question, BoxAnswer::No))
    return;
  store_.eingaenge()->remove();
  flexAll_.removeRow(row);
  Q_EMIT changed();
}

void Payments::cmdDeleteAll() {
  if (!workplace_.dialogs.confirm(
          "Sollen alle Eingänge " + payer_.wesfall() + " unwiderruflich gelöscht werden?", BoxIcon::Question,
          BoxAnswer::No))
    return;
  int done = 0;
  try {
    for (int row = 1; row < flexAll_.rows(); ++row, ++done) {
      if (finde(row))
        store_.eingaenge()->remove();
      else
        workplace_.dialogs.note(kNoSuchRow);
    }
  } catch (const Error&) {
    for (; done > 0; --done) flexAll_.removeRow(1);
    Q_EMIT changed();
    throw;
  }
  flexAll_.setRows(1);
  Q_EMIT changed();
}

}  // namespace qk

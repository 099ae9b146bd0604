#include "cash/payments.h"

#include <set>

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

/// What others did to the rows while they were shown here.
struct Fremdes {
  std::set<int> bezahlt, geloescht, geaendert;  // rows; each counts once, however often it is tried
};

QString zeile(size_t count, const QString& one, const QString& several) {
  if (count == 0) return {};
  return (count == 1 ? one : several.arg(count)) + "\r\n";
}

/// The money was counted by what stood on the screen.
QString fremdesText(const Fremdes& found, const Money& verbucht) {
  return "An einem anderen Platz wurde inzwischen geändert:\r\n" +
         zeile(found.bezahlt.size(), "1 Posten ist dort schon bezahlt worden.",
               "%1 Posten sind dort schon bezahlt worden.") +
         zeile(found.geloescht.size(), "1 Eingang ist dort gelöscht worden.",
               "%1 Eingänge sind dort gelöscht worden.") +
         zeile(found.geaendert.size(), "1 Posten ist dort geändert worden (Betrag, oder wieder offen).",
               "%1 Posten sind dort geändert worden (Betrag, oder wieder offen).") +
         "Hier jetzt verbucht: " + verbucht.toCurrencyText() + ". Nur so viel ist zu kassieren.";
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
  // As it will be read again: another spelling isn't to be taken for another desk's change.
  flexAll_.setText(row, CashColumn::Betrag, betrag.toText());
  flexAll_.setText(row, CashColumn::Datum, dateText(parseDate(datum)));
}

void Payments::zeigeGespeichertes(int row) {
  const dao::Recordset& payment = *store_.eingaenge();
  flexAll_.setText(row, CashColumn::Offen, FeldWert(payment, "Offen").toInt() != 0 ? kOffen : kBezahlt);
  flexAll_.setText(row, CashColumn::Betrag, BetragAusFeld(payment, "Betrag").toText());
  flexAll_.setText(row, CashColumn::Datum, datumText(payment));
}

Payments::Eingabe Payments::nachEingabe(int row, int column) {
  const QString typed = flexAll_.text(row, column);
  QStringList shown;
  for (int each = 0; each < flexAll_.columns(); ++each) shown += flexAll_.text(row, each);
  std::optional<QString> today;
  if (flexAll_.text(0, column) == "Offen" &&
      workplace_.dialogs.confirm("Soll das Datum auf den aktuellen Tag angepasst werden?")) {
    today = Buchungsdatum(workplace_);
    flexAll_.setText(row, CashColumn::Datum, *today);
  }
  if (!finde(row)) return {};
  bool fremd = false;
  try {
    zeigeGespeichertes(row);
    // A tick turns what was shown: stored like that already, it was turned elsewhere.
    for (int other : {CashColumn::Offen, CashColumn::Betrag, CashColumn::Datum})
      fremd |= other == column ? other == CashColumn::Offen && flexAll_.text(row, other) == typed
                               : flexAll_.text(row, other) != shown[other];
    flexAll_.setText(row, column, typed);
    if (today) flexAll_.setText(row, CashColumn::Datum, *today);
    schreibe(row);
  } catch (const Error& error) {
    zeigeGespeichertes(row);
    Q_EMIT changed();
    workplace_.dialogs.note("Fehler: " + QString::number(error.number()) + " - " + error.description(),
                            BoxIcon::Exclamation);
    return {error.number() == errors::kTypeMismatch || error.number() == errors::kOverflow, typed};
  }
  Q_EMIT changed();
  if (fremd)
    workplace_.dialogs.note(
        "An einem anderen Platz wurde dieser Eingang inzwischen geändert. Gespeichert ist jetzt:\r\n" +
            flexAll_.text(row, CashColumn::Bezeichnung) + ", " +
            BetragAnzeige(flexAll_.text(row, CashColumn::Betrag)) + ", " +
            (flexAll_.text(row, CashColumn::Offen) == kOffen ? "offen" : "bezahlt") + ", " +
            flexAll_.text(row, CashColumn::Datum),
        BoxIcon::Exclamation);
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
  int at = 0, tried = 0;
  const QString today = dateText(parseDate(Buchungsdatum(workplace_)));
  Fremdes found;
  Money verbucht;
  // The money lies on the counter: what isn't settled now would be asked for again.
  const ErrorReport report =
      reportOfALoss(workplace_.dialogs, fehlerReport(workplace_.dialogs, "Fehler beim Verbuchen der OP!"),
                    [&](ErrorAnswer answer) { return bleibtOffen(at, answer == ErrorAnswer::Abort); });
  reported(report, [&](Steps& step) {
    for (int row = 1; row < flexAll_.rows(); ++row)
      step([&] {
        at = row;
        if (!finde(row)) return void(found.geloescht.insert(row));
        const bool open = flexAll_.text(row, CashColumn::Offen) == kOffen;
        const QString amount = flexAll_.text(row, CashColumn::Betrag);
        zeigeGespeichertes(row);
        if (flexAll_.text(row, CashColumn::Offen) != kOffen) {
          // Tried here before the answer got lost, it is our own.
          const bool own = tried == row && flexAll_.text(row, CashColumn::Datum) == today;
          if (own) verbucht += BetragStrikt(flexAll_.text(row, CashColumn::Betrag));
          if (open && !own) found.bezahlt.insert(row);
          return;
        }
        if (!open || amount != flexAll_.text(row, CashColumn::Betrag)) found.geaendert.insert(row);
        const QString before = flexAll_.text(row, CashColumn::Datum);
        flexAll_.setText(row, CashColumn::Offen, kBezahlt);
        flexAll_.setText(row, CashColumn::Datum, today);
        tried = row;
        try {
          schreibe(row);
        } catch (const Error&) {
          flexAll_.setText(row, CashColumn::Offen, kOffen);  // not settled: it must not look so
          flexAll_.setText(row, CashColumn::Datum, before);
          throw;
        }
        verbucht += BetragStrikt(flexAll_.text(row, CashColumn::Betrag));
      });
  });
  Q_EMIT changed();
  if (!found.bezahlt.empty() || !found.geloescht.empty() || !found.geaendert.empty())
    workplace_.dialogs.note(fremdesText(found, verbucht), BoxIcon::Exclamation);
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

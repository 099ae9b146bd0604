#include "cash/amounts.h"

#include "app/ground/feld_wert.h"
#include "app/ground/temp_module.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {

Money BetragAusText(const QString& text) {
  try {
    return Money::fromDouble(ZahlAusText(text));
  } catch (const Error&) {
    throw Error(errors::kOverflow, "Der Betrag »" + text + "« ist zu groß.");
  }
}

Money BetragStrikt(const QString& text) {
  try {
    return Money::fromDouble(parseStrict(text));
  } catch (const Error& error) {
    if (error.number() == errors::kOverflow)
      throw Error(errors::kOverflow, "Der Betrag »" + text + "« ist zu groß.");
    throw Error(errors::kTypeMismatch,
                "»" + text + "« ist kein Betrag. Bitte mit Komma und ohne Punkte eingeben, z. B. 12,50.");
  }
}

Money BetragAusFeld(const dao::Recordset& recordset, const QString& column) {
  const QVariant value = FeldWert(recordset, column);
  return value.canConvert<Money>() ? value.value<Money>() : Money::fromDouble(value.toDouble());
}

QString BetragAnzeige(const QString& text) {
  try {
    return BetragAusText(text).toCurrencyText();
  } catch (const Error&) {
    return text;
  }
}

}  // namespace qk

#include "cash/cash_rows.h"

#include "cash/amounts.h"

namespace qk {

void richteKassenTabelleEin(TextTable& table) {
  table.setColumns(CashColumn::Anzahl);
  table.setText(0, CashColumn::Bezeichnung, "Bezeichnung");
  table.setText(0, CashColumn::Offen, "Offen");
  table.setText(0, CashColumn::Betrag, "Betrag");
  table.setText(0, CashColumn::Datum, "Datum");
  table.setTickColumn(CashColumn::Offen, kOffen);
  table.setEditable(CashColumn::Betrag, true);
  table.setRightAligned(CashColumn::Betrag, true);
  table.setDisplay(CashColumn::Betrag, BetragAnzeige);
}

QStringList kassenZeile(const QString& Bezeichnung, bool offen, const Money& Betrag, const QString& Datum) {
  return {QString(), Bezeichnung, offen ? kOffen : kBezahlt, Betrag.toText(), Datum};
}

CashSums summen(const TextTable& flexAll) {
  CashSums sums;
  for (int row = 1; row < flexAll.rows(); ++row) {
    const Money amount = BetragAusText(flexAll.text(row, CashColumn::Betrag));
    sums.Gesamt += amount;
    (flexAll.text(row, CashColumn::Offen) == kBezahlt ? sums.Bezahlt : sums.Offen) += amount;
  }
  return sums;
}

Money zuBezahlen(const TextTable& flex) {
  Money sum;
  for (int row = 1; row < flex.rows(); ++row)
    if (flex.text(row, CashColumn::Offen) != kOffen) sum += BetragAusText(flex.text(row, CashColumn::Betrag));
  return sum;
}

std::optional<Money> rueckgeld(const QString& erhalten, const Money& zuBezahlen) {
  if (erhalten.isEmpty()) return std::nullopt;
  return BetragAusText(erhalten) - zuBezahlen;
}

}  // namespace qk

// The five columns that the purchase and the shooter's payments have in common. Row 0 is the header; a row's
// data is the stake's id in a purchase, the payment's id among the stored ones.
#pragma once

#include <QString>
#include <QStringList>

#include "platform/grid/text_table.h"
#include "platform/runtime/money.h"

namespace qk {

struct CashColumn {
  enum : int { Merkmal = 0, Bezeichnung = 1, Offen = 2, Betrag = 3, Datum = 4, Anzahl = 5 };
};

inline const QString kOffen = "-1";  ///< of a row that is or will be an open item
inline const QString kBezahlt = "0";

/// Header, ticks and alignment; amounts show as they are read.
void richteKassenTabelleEin(TextTable& table);

QStringList kassenZeile(const QString& Bezeichnung, bool offen, const Money& Betrag, const QString& Datum);

/// What the rows of a purchase or of a shooter come to. Error 6 beyond what money holds.
struct CashSums {
  Money Gesamt, Bezahlt, Offen;
};
/// Of stored payments: open is whatever isn't "0".
CashSums summen(const TextTable& flexAll);
/// To be paid now: all rows of a purchase but those marked "-1".
Money zuBezahlen(const TextTable& flex);

/// The change for the money received; nothing while no amount is entered.
std::optional<Money> rueckgeld(const QString& erhalten, const Money& zuBezahlen);

}  // namespace qk

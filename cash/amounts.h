// Amounts of the cash desk: how they are typed, held in cells and shown.
#pragma once

#include <QString>

#include "platform/dao/recordset.h"
#include "platform/runtime/money.h"

namespace qk {

/// The tolerant reading of a typed amount: a comma is the decimal point, points are dropped ("12.50" is
/// 1250), what can't be read is 0. Error 6 with a text for the operator beyond what money holds.
Money BetragAusText(const QString& text);

/// The strict reading ("12,50"; no points, no letters): Error 13 with a text for the operator.
Money BetragStrikt(const QString& text);

/// A column that holds money; Null is 0.
Money BetragAusFeld(const dao::Recordset& recordset, const QString& column);

/// How the text of an amount cell was read: "12.50" shows as "1.250,00 €". What no money holds shows as it
/// stands.
QString BetragAnzeige(const QString& text);

}  // namespace qk

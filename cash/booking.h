// The booking: what makes stored payments of the purchase in hand. Needs no window.
#pragma once

#include <functional>
#include <optional>

#include "cash/cash_store.h"
#include "cash/purchase.h"
#include "platform/runtime/error.h"
#include "platform/workplace.h"

namespace qk {

/// What the booking has done by others, in this order; an empty one is left out. An Error ends the booking.
struct BookingSides {
  /// Before anything is printed or stored: false books nothing, and whoever says so has told why.
  std::function<bool()> darf;
  std::function<void()> druckeBeleg;      ///< before anything is stored
  std::function<void()> druckeEtiketten;  ///< likewise
  /// `gespeichert` counts up with each target that is stored.
  std::function<void(const QString& Buchungsdatum, int& gespeichert)> speichereScheiben;
  std::function<void()> speichereStapel;  ///< the next numbers of the stacks
  /// Trees and stacks as they are stored now. Before the purchase is emptied: should it fail, the rows that
  /// stand there are marked, not left as if they were still to be booked.
  std::function<void()> ladeNeu;
};

struct BookingOutcome {
  bool begonnen = false;        ///< there is somebody to book on
  bool verweigert = false;      ///< BookingSides::darf said no: nothing was done
  int gespeichert = 0;          ///< payment rows that are stored
  int scheiben = 0;             ///< targets that are stored
  std::optional<Error> fehler;  ///< what ended it early
  bool ganz() const { return begonnen && !verweigert && !fehler; }
};

/// Books all rows of the purchase on the payer. Nothing runs in a transaction: after a failure the rows
/// before it are stored, and marked in the purchase. Emptying the purchase and reading the shooter anew is
/// the caller's. No Error leaves it.
BookingOutcome verbuche(const Workplace& workplace, CashStore& store, Purchase& purchase, const Payer& payer,
                        const BookingSides& sides);

/// What the operator is told of a booking, until the next purchase begins.
QString verbuchtText(const Money& zuBezahlen, const QString& erhalten, int zeilen);
/// What he is told of one that ended early.
QString buchungsFehlerText(const BookingOutcome& outcome, int zeilen);

}  // namespace qk

// The cash of one club or one team, without its window: stakes of clubs and teams are sold, open items
// settled. No class is asked for; how often a stake may be bought is counted by its id.
#pragma once

#include <vector>

#include "cash/booking.h"
#include "cash/cash_store.h"
#include "cash/payments.h"
#include "cash/purchase.h"
#include "cash/receipt.h"

namespace qk {

class ClubCash {
 public:
  /// `payer` is a club or a team.
  ClubCash(const Workplace& workplace, const Payer& payer);

  const Workplace& workplace() const { return workplace_; }
  const Payer& payer() const { return payer_; }
  CashStore& store() { return store_; }
  Purchase& purchase() { return purchase_; }
  Payments& payments() { return payments_; }

  /// Opens the competition, reads names and payments. Errors pass: 3021 for a club or team that is gone.
  void open(const QString& DataBaseName);
  bool isOpen() const { return store_.isOpen(); }
  /// Names and payments as stored now. Errors pass.
  void lade();

  const std::vector<Stake>& einlagen() const { return einlagen_; }
  const QString& name() const { return name_; }  ///< "SG Grünau", "Grünau I"
  const QString& herkunft() const {
    return origin_;
  }               ///< the club's full name; of a team, its club's short one
  Money saldo();  ///< what came in less what is outstanding

  /// Books the purchase; `druckeBeleg` comes before, unless it is empty.
  BookingOutcome verbuche(std::function<void()> druckeBeleg);
  /// The receipt of the purchase in hand, or of all that is stored.
  Receipt beleg(bool aktuellerKauf) const;

  // Titles and place of the competition, for receipts.
  QString sBez1, sBez2, sOrt;

 private:
  Workplace workplace_;
  Payer payer_;
  CashStore store_;
  Payments payments_;
  Purchase purchase_;
  std::vector<Stake> einlagen_;
  QString name_, origin_;
};

}  // namespace qk

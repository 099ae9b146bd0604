// What the cashier did, in order, so that it can be reckoned again. Money in whole cents.
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>
#include <vector>

namespace qk {

struct Bought {
  QString stake;
  std::optional<qint64> cents;                  ///< what the cashier said; without it the stake's price
  bool open = false;                            ///< by the cashier's choice
  QDateTime at = QDateTime::currentDateTime();  ///< not before this moment it came into the purchase
};

struct Target {
  int number = 0;       ///< 0: the next one of the stack
  QString stack;        ///< that it was taken from; empty for a number that was typed
  QString place;        ///< discipline or combination by name; empty: the stack decides
  bool byHand = false;  ///< typed without a look at the stacks
};

struct CashAct {
  enum class Kind {
    Take,      ///< `target` goes into the trees
    TakeBack,  ///< the last one of `target.place` comes back
    PutBack,   ///< trees and stacks as they were stored
    Book,      ///< `purchase` and the targets in hand are stored for the buyer
    Settle,    ///< all open items of the buyer are paid
    Delete     ///< the payment of `purchase`, the oldest of that stake, goes
  };
  enum class Buyer { Shooter, Club, Team };

  Kind kind = Kind::Book;
  Buyer buyer = Buyer::Shooter;
  QString name;  ///< start number, or the name of club or team
  QList<Bought> purchase;
  Target target;
  QDateTime from, to;  ///< the act took place between them
};

using CashJournal = std::vector<CashAct>;

}  // namespace qk

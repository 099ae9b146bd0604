// In which order a competition lists its disciplines and combinations: by name, or by the position that its
// master data give them.
#pragma once

#include <QString>

namespace qk {

namespace dao {
class Database;
}

enum class ListOrder { Position, Name };

struct ListOrders {
  ListOrder disciplines = ListOrder::Position;
  ListOrder combinations = ListOrder::Position;
};

/// As the competition wants it, by position where it says nothing. Errors of the store pass to the caller.
ListOrders listOrders(dao::Database& db);

// Queries for all rows in that order.
QString disciplinesQuery(ListOrder order);
QString combinationsQuery(ListOrder order);

}  // namespace qk

#include "app/ground/list_order.h"

#include "app/ground/feld_wert.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace qk {

ListOrders listOrders(dao::Database& db) {
  const auto competition = db.openRecordset("Select * from Wettkampf");
  const auto order = [&](const char* sorted) {
    const bool byName = !competition->eof() && FeldWert(*competition, sorted).toInt() != 0;
    return byName ? ListOrder::Name : ListOrder::Position;
  };
  return {order("SortedDiszi"), order("SortedKombi")};
}

QString disciplinesQuery(ListOrder order) {
  return order == ListOrder::Name ? "Select * from Disziplin order by Name"
                                  : "Select * from Disziplin order by CmdIndex";
}

QString combinationsQuery(ListOrder order) {
  return order == ListOrder::Name ? "Select * from Kombination_Name order by Kombinationsname"
                                  : "Select * from Kombination_Name order by CmdIndex";
}

}  // namespace qk

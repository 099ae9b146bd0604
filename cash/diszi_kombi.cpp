#include "cash/diszi_kombi.h"

#include "app/ground/feld_wert.h"
#include "app/ground/list_order.h"
#include "platform/dao/recordset.h"

namespace qk {

namespace {

void fuegeAn(std::vector<DisziKombi>& all, dao::Database& database, const QString& query, bool kombi,
             const QString& nameColumn) {
  for (const auto rows = database.openRecordset(query); !rows->eof(); rows->moveNext())
    all.push_back({kombi, FeldWert(*rows, "ID").toInt(), FeldWert(*rows, nameColumn).toString()});
}

}  // namespace

std::vector<DisziKombi> ladeDisziKombi(dao::Database& database) {
  const ListOrders orders = listOrders(database);
  std::vector<DisziKombi> all;
  fuegeAn(all, database, disciplinesQuery(orders.disciplines), false, "Name");
  fuegeAn(all, database, combinationsQuery(orders.combinations), true, "Kombinationsname");
  return all;
}

}  // namespace qk

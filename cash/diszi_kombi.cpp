#include "cash/diszi_kombi.h"

#include "app/ground/feld_wert.h"
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
  const auto wettkampf = database.openRecordset("Select * from Wettkampf");
  const auto sorted = [&](const QString& column) {
    return !wettkampf->eof() && FeldWert(*wettkampf, column).toInt() != 0;
  };
  std::vector<DisziKombi> all;
  fuegeAn(all, database,
          sorted("SortedDiszi") ? "Select * from Disziplin order by Name"
                                : "Select * from Disziplin order by CmdIndex",
          false, "Name");
  fuegeAn(all, database,
          sorted("SortedKombi") ? "Select * from Kombination_Name order by Kombinationsname"
                                : "Select * from Kombination_Name order by CmdIndex",
          true, "Kombinationsname");
  return all;
}

}  // namespace qk

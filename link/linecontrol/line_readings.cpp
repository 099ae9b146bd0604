#include "link/linecontrol/line_readings.h"

#include "platform/dao/recordset.h"

namespace qk {

namespace {

LineGroups readGroups(dao::Database& db) {
  LineGroups groups;
  const auto rs = db.openRecordset("Select * from Haering_Gruppen order by GruppenName");
  for (; !rs->eof(); rs->moveNext())
    groups.emplace_back(rs->value("GruppenName").toString(), rs->value("ID").toInt());
  return groups;
}

}  // namespace

DisciplineGrid LineReadings::stationDisciplines(Files& files, const QString& folder) {
  if (stationDisciplines_) return *stationDisciplines_;
  DisciplineGrid read = readDisciplineGrid(files, folder);
  if (!read.iniMissing) stationDisciplines_ = read;
  return read;
}

const CompetitionLists& LineReadings::lists(dao::Database& db) {
  if (!lists_) lists_ = LadeListen(db, listOrders(db));
  return *lists_;
}

const LineGroups& LineReadings::groups(dao::Database& db) {
  if (!groups_) groups_ = readGroups(db);
  return *groups_;
}

}  // namespace qk

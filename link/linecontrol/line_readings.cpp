#include "link/linecontrol/line_readings.h"

#include <utility>

#include "capture/open_shots.h"
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

std::optional<QSet<int>> findLinesWithOpenShots(dao::Database& db, int lines) {
  try {
    return LinienMitOffenenSchuessen(db, lines);
  } catch (const Error&) {
    return {};
  }
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

bool LineReadings::mayHaveOpenShots(dao::Database& db, int nLinie) {
  if (!std::exchange(askedForOpenShots_, true)) linesWithOpenShots_ = findLinesWithOpenShots(db, lines_);
  return !linesWithOpenShots_ || nLinie > lines_ || linesWithOpenShots_->contains(nLinie);
}

}  // namespace qk

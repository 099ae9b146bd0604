#include "targetconfig/discipline_groups.h"

#include "platform/runtime/files.h"
#include "targetconfig/station_files.h"
#include "targetconfig/station_lines.h"

namespace qk {

std::vector<DisciplineGroup> DisciplineGroups::all() {
  if (reading_)
    reading_->requery();
  else
    reading_ = db_.openRecordset("Select * from Haering_Gruppen order by GruppenName");
  std::vector<DisciplineGroup> groups;
  for (; !reading_->eof(); reading_->moveNext())
    groups.push_back({reading_->value("ID").toInt(), reading_->value("GruppenName").toString()});
  return groups;
}

QSet<QString> DisciplineGroups::members(int id) {
  const auto rows =
      db_.openRecordset("Select * from Haering_Gruppen_Disziplinen WHERE GruppenID = " + QString::number(id));
  QSet<QString> titles;
  for (; !rows->eof(); rows->moveNext()) titles.insert(rows->value("DisziplinName").toString());
  return titles;
}

std::optional<int> DisciplineGroups::add(const QString& name, Steps& step) {
  std::unique_ptr<dao::Recordset> rows;
  int id = 0;
  if (!step([&] { rows = db_.openRecordset("Haering_Gruppen"); })) return std::nullopt;
  const bool filled = step([&] {
    rows->addNew();
    rows->setValue("GruppenName", name);
    id = rows->value("ID").toInt();
  });
  // Members of a group that isn't stored would belong to nobody.
  if (!filled || !step([&] { rows->update(); })) return std::nullopt;
  return id;
}

void DisciplineGroups::addMembers(int id, const QStringList& titles, Steps& step) {
  std::unique_ptr<dao::Recordset> rows;
  if (!step([&] { rows = db_.openRecordset("Select * from Haering_Gruppen_Disziplinen"); })) return;
  for (const QString& title : titles) {
    const bool filled = step([&] {
      rows->addNew();
      rows->setValue("GruppenID", id);
      rows->setValue("DisziplinName", title);
    });
    if (filled) step([&] { rows->update(); });
  }
}

void DisciplineGroups::replaceMembers(int id, const QStringList& titles, Steps& step) {
  step([&] {
    db_.execute("Delete * from Haering_Gruppen_Disziplinen where GruppenID = " + QString::number(id));
  });
  addMembers(id, titles, step);
}

void DisciplineGroups::remove(int id, Steps& step) {
  step([&] {
    db_.execute("Delete * from Haering_Gruppen_Disziplinen where GruppenID = " + QString::number(id));
  });
  step([&] { db_.execute("Delete * from Haering_Gruppen where ID = " + QString::number(id)); });
}

QStringList groupTitles(Files& files, const QString& iniPath) {
  QStringList titles;
  for (const QString& line : readStationLines(files, iniPath))
    if (holdsTitle(line)) titles += titleForGroups(line);
  return titles;
}

}  // namespace qk

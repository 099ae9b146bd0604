#include "tests/targetconfig/configured_competition.h"

#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "tests/support/test_store.h"

namespace qk::test {

namespace {

const StoreOriginal& emptyCompetition() {
  static const StoreOriginal made([](const QString& path) { makeCompetition(path, {}); });
  return made;
}

}  // namespace

ConfiguredCompetition::ConfiguredCompetition(Complain complain) : place(std::move(complain)) {
  emptyCompetition().copyTo(place.path("wettkampf.qkk"));
  dao::OpenOptions options;
  options.durable = false;
  database_ = dao::Database::open(place.path("wettkampf.qkk"), options);
  place.files.makeFolder(place.path("austausch"));
  place.settings.setValue("Tarvex", "Häring", "Netzverzeichnis", folder());
}

int ConfiguredCompetition::add(const QString& table, const QList<std::pair<QString, QVariant>>& values) {
  const auto rows = database_->openRecordset("Select * from " + table);
  rows->addNew();
  const int id = rows->value("ID").toInt();
  for (const auto& [column, value] : values) rows->setValue(column, value);
  rows->update();
  return id;
}

int ConfiguredCompetition::addDiscipline(const DisciplineSetup& setup) {
  const int id = add("Disziplin", {{"Name", setup.name},
                                   {"CmdIndex", ++disciplines_},
                                   {"RingSerie", setup.series},
                                   {"RingZentel", setup.tenths ? -1 : 0}});
  for (const QString& weapon : setup.weapons) add("DisziplinWaffen", {{"DisziID", id}, {"KZ", weapon}});
  return id;
}

int ConfiguredCompetition::addCombination(const QString& name, const std::vector<int>& disciplines) {
  const int id = add("Kombination_Name", {{"Kombinationsname", name}, {"CmdIndex", ++combinations_}});
  for (const int discipline : disciplines)
    add("Kombination_Diszi", {{"KombiID", id}, {"disziID", discipline}});
  return id;
}

void ConfiguredCompetition::addKey(const QString& MeldeKZ, const QString& name, const QString& ScheibenKZ) {
  add("MeldeDisziplin", {{"MeldeKZ", MeldeKZ}, {"MeldeDisziplin", name}, {"ScheibenKZ", ScheibenKZ}});
}

void ConfiguredCompetition::sortByName(bool disciplines, bool combinations) {
  const auto row = database_->openRecordset("Select * from Wettkampf");
  row->edit();
  row->setValue("SortedDiszi", disciplines ? -1 : 0);
  row->setValue("SortedKombi", combinations ? -1 : 0);
  row->update();
}

}  // namespace qk::test

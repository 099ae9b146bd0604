#include "tools/rundgang/reckoning_facts.h"

#include <cmath>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace qk {

namespace {

class Row {
 public:
  explicit Row(const dao::Recordset& rows) : rows_(rows) {}
  int number(const QString& column) const { return rows_.value(column).toInt(); }
  int tenths(const QString& column) const {
    return static_cast<int>(std::lround(rows_.value(column).toDouble() * 10));
  }
  bool flag(const QString& column) const { return number(column) != 0; }
  QString text(const QString& column) const { return rows_.value(column).toString(); }

 private:
  const dao::Recordset& rows_;
};

template <class Take>
void eachRow(dao::Database& store, const QString& table, Take&& take) {
  const auto rows = store.openRecordset("Select * from " + table);
  for (; !rows->eof(); rows->moveNext()) take(Row(*rows));
}

Rule ruleOf(const Row& row) {
  return {row.number("ID"),
          row.number("CmdIndex"),
          row.flag("Ringe"),
          row.flag("Teiler"),
          row.flag("RingZentel"),
          row.flag("Ring0XZehntel"),
          row.flag("RingXXZehntel"),
          row.number("RingSerie"),
          row.tenths("dblMaxSerieDSB"),
          row.flag("DSBTeilerGrenze"),
          row.tenths("DSBTeilerGrenzWert"),
          row.number("ZusatzTeiler")};
}

}  // namespace

Facts readFacts(dao::Database& store) {
  Facts facts;
  eachRow(store, "Disziplin", [&](const Row& row) { facts.rules[row.text("Name")] = ruleOf(row); });
  QMap<int, QString> clubs;
  eachRow(store, "Verein", [&](const Row& row) { clubs[row.number("ID")] = row.text("Name"); });
  eachRow(store, "Schützen", [&](const Row& row) {
    const int club = row.number("VereinsID");
    facts.persons[row.text("Startnummer")] = {row.text("Name"), clubs[club], club, row.number("lMannID"),
                                              row.number("KlassenID")};
  });
  eachRow(store, "MeldeDisziplin", [&](const Row& row) {
    const int factor = row.tenths("TeilerfaktorESA");
    facts.targets[row.text("MeldeKZ")] = {row.text("ScheibenKZ"), factor == 0 ? 10 : factor};
  });
  return facts;
}

}  // namespace qk

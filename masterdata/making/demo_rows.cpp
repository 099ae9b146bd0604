#include "masterdata/making/demo_rows.h"

#include <QDateTime>
#include <algorithm>

#include "masterdata/making/demo_shooters.h"
#include "masterdata/making/seeded_random.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"

namespace qk {

namespace {

// Rows of Demo.txt.
constexpr int AuflageDiscipline = 22;
constexpr int KkDiscipline = 26;
constexpr int DisciplineWithoutClasses = 28;

QDateTime shootingTime(SeededRandom& random) {
  const QDate firstDay(2026, 6, 26);
  const int day = random.below(3);
  const int seconds = random.below(9 * 3600);
  return QDateTime(firstDay.addDays(day), QTime(9, 0).addSecs(seconds));
}

QVariant euro(int cents) {
  return QVariant::fromValue(Money::fromUnits(std::int64_t{cents} * 100));
}

/// Most disciplines take every class; one wants those that shoot with a rest, one none below 15, one takes
/// nobody.
TableData admittedClasses(const TableData& disciplines, const TableData& classes) {
  TableData data{"DisziplinKlasse", {"DisziID", "KlasseID"}, {}};
  const auto id = classes.columns.indexOf("ID");
  const auto rested = classes.columns.indexOf("Auflage");
  const auto oldest = classes.columns.indexOf("Alter bis");
  for (const QVariantList& disciplineRow : disciplines.rows) {
    const int discipline = disciplineRow.at(disciplines.columns.indexOf("ID")).toInt();
    if (discipline == DisciplineWithoutClasses) continue;
    for (const QVariantList& row : classes.rows) {
      if (discipline == AuflageDiscipline && row.at(rested).toInt() == 0) continue;
      if (discipline == KkDiscipline && row.at(oldest).toInt() < 15) continue;
      data.rows.push_back({discipline, row.at(id)});
    }
  }
  return data;
}

/// Shooter 1 stands for two teams; the others of every third for their own one or for none.
TableData registrations(const TableData& shooters) {
  TableData data{"Schuetzen_SPO_Anmeldungen", {"SchuetzeID", "SPOID", "SPOKey", "MannID"}, {}};
  data.rows = {{1, 1, "1.10", 1}, {1, 13, "2.10", 2}, {1, 2, "1.11", 0}};
  const auto id = shooters.columns.indexOf("ID");
  const auto team = shooters.columns.indexOf("lMannID");
  for (const QVariantList& row : shooters.rows)
    if (row.at(id).toInt() % 3 == 2) data.rows.push_back({row.at(id), 1, "1.10", row.at(team)});
  return data;
}

TableData groupMembers() {
  TableData data{"SchuetzenGruppenZuordnung", {"SchuetzeID", "GruppenID"}, {}};
  for (int shooter = 1; shooter <= DemoShooters; shooter += 5)
    data.rows.push_back({shooter, 1 + shooter % 3});
  data.rows.push_back({1, 3});
  return data;
}

/// Sales of most shooters, paid and open, a sale of a stake that is gone, and payments of clubs and teams.
TableData payments(const TableData& shooters, SeededRandom& random) {
  TableData data{
      "Kasse_Eingang",
      {"Startnummer", "KasseID", "Offen", "Betrag", "DatumEingang", "Gruppe", "VereinID", "MannID"},
      {}};
  const auto add = [&](const QVariant& number, int stake, bool open, int cents, QVariant club,
                       QVariant team) {
    data.rows.push_back({number, stake, open ? -1 : 0, euro(cents), shootingTime(random), "", std::move(club),
                         std::move(team)});
  };
  const auto number = shooters.columns.indexOf("Startnummer");
  for (size_t i = 0; i < shooters.rows.size(); ++i) {
    if (i % 7 == 2) continue;  // shooters without any sale
    const QVariant& startNumber = shooters.rows.at(i).at(number);
    add(startNumber, 1, i % 5 == 4, 1500, {}, {});
    for (int extra = random.below(4); extra > 0; --extra)
      add(startNumber, 2, random.below(4) == 0, 350, {}, {});
    if (i % 6 == 0) add(startNumber, 6, true, 1250, {}, {});
    if (i % 9 == 0) add(startNumber, 7, false, 100 * (1 + random.below(20)), {}, {});
  }
  add("101", 99, false, 400, {}, {});
  add({}, 11, false, 5000, 1, {});
  add({}, 11, true, 5000, 2, {});
  add({}, 10, false, 3000, {}, 1);
  add({}, 10, false, 3000, {}, 2);
  add({}, 10, true, 3000, {}, 2);
  add({}, 10, false, 1000, {}, 2);
  return data;
}

struct IssuedStack {
  int stack;
  int first;
  int count;
  int combination;
  int target;  ///< discipline or combination
};

/// What the stacks' next numbers say has gone, and numbers typed by hand that belong to no stack.
TableData issuedTargets(const TableData& shooters, SeededRandom& random) {
  TableData data{"Schuetzen_ScheibenNummern",
                 {"Startnummer", "Scheibennummer", "Kaufdatum", "Speicherdatum", "DisziKombiWahl",
                  "DisziKombiID", "StapelID"},
                 {}};
  const auto number = shooters.columns.indexOf("Startnummer");
  const auto issue = [&](int target, const IssuedStack& from, const QVariant& stack) {
    const auto shooter = static_cast<size_t>(random.below(static_cast<int>(shooters.rows.size())));
    const QDateTime bought = shootingTime(random);
    const QVariant handedIn = random.below(2) == 0 ? QVariant(bought.addSecs(1800)) : QVariant();
    data.rows.push_back({shooters.rows.at(shooter).at(number), target, bought, handedIn, from.combination,
                         from.target, stack});
  };
  const IssuedStack stacks[] = {
      {1, 1, 37, 0, 1}, {2, 1001, 20, 0, 6}, {3, 2001, 8, 1, 2}, {5, 4001, 9, 1, 4}};
  for (const IssuedStack& stack : stacks)
    for (int i = 0; i < stack.count; ++i) issue(stack.first + i, stack, stack.stack);
  for (int target : {7001, 7002, 7003}) issue(target, {0, 0, 0, 0, 3}, {});
  return data;
}

/// What the other tables refer to, of all shooters.
TableData shooterKeys(const TableData& described, const TableData& generated) {
  TableData keys{"Schützen", {"ID", "Startnummer", "lMannID"}, {}};
  for (const TableData* source : {&described, &generated}) {
    for (const QVariantList& row : source->rows) {
      QVariantList key;
      for (const QString& column : keys.columns) key << row.at(source->columns.indexOf(column));
      keys.rows.push_back(key);
    }
  }
  return keys;
}

const TableData& dataOf(const std::vector<TableData>& all, const QString& table) {
  const auto found =
      std::find_if(all.begin(), all.end(), [&table](const TableData& data) { return data.table == table; });
  if (found == all.end())
    throw Error(errors::kIndexOutOfRange, QString("Demo: keine Zeilen für %1").arg(table));
  return *found;
}

}  // namespace

int classFor(const TableData& classes, int age, const QString& sex) {
  const auto from = classes.columns.indexOf("Alter von");
  const auto to = classes.columns.indexOf("Alter bis");
  const auto wanted = classes.columns.indexOf("Geschlecht");
  const int code = sex.isEmpty() ? 0 : (sex.toUpper() == "M" ? 1 : 2);
  for (const QVariantList& row : classes.rows) {
    const bool fits = age >= row.at(from).toInt() && age <= row.at(to).toInt();
    if (fits && (row.at(wanted).toInt() == 0 || row.at(wanted).toInt() == code))
      return row.at(classes.columns.indexOf("ID")).toInt();
  }
  return 0;
}

std::vector<TableData> demoRows(const Schema& tables, const Schema& fixed) {
  std::vector<TableData> all;
  for (const RowSection& section : fixed.rows) {
    const dao::TableDef* table = tables.table(section.table);
    if (!table)
      throw Error(errors::kUnknownTable, QString("%1: keine Tabelle »%2«").arg(fixed.source, section.table));
    all.push_back(typedRows(section, *table, fixed.source));
  }
  SeededRandom random(20260701);
  const TableData classes = dataOf(all, "Schützenklassen");
  const TableData described = dataOf(all, "Schützen");
  all.push_back(generatedShooters(DemoShooters - static_cast<int>(described.rows.size()),
                                  static_cast<int>(described.rows.size()) + 1, classes, random));
  const TableData shooters = shooterKeys(described, all.back());
  all.push_back(admittedClasses(dataOf(all, "Disziplin"), classes));
  all.push_back(registrations(shooters));
  all.push_back(groupMembers());
  all.push_back(payments(shooters, random));
  all.push_back(issuedTargets(shooters, random));
  return all;
}

}  // namespace qk

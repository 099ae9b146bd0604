#include "tests/shooters/competition.h"

#include "platform/dao/recordset.h"
#include "tests/support/test_store.h"

namespace qk::test {

namespace {

using dao::FieldDef;
using dao::FieldType;
using dao::IndexDef;

FieldDef field(const QString& name, FieldType type) {
  FieldDef result;
  result.name = name;
  result.type = type;
  return result;
}
FieldDef number(const QString& name) {
  return field(name, FieldType::Long);
}
FieldDef text(const QString& name) {
  return field(name, FieldType::Text);
}

void createTable(dao::Database& database, const QString& name, std::vector<FieldDef> fields) {
  IndexDef primary;
  primary.name = "PrimaryKey";
  primary.fields = QStringList{fields.front().name};
  primary.primary = primary.unique = true;
  dao::TableDef table;
  table.name = name;
  table.fields = std::move(fields);
  table.indexes = {primary};
  database.createTable(table);
}

void makeOriginal(const QString& path) {
  const auto database = dao::Database::create(path);
  std::vector<FieldDef> shooter{number("ID"),      text("Startnummer"), text("Name"),     number("VereinsID"),
                                number("lMannID"), text("GebDat"),      text("AusweisNr")};
  // What else stands in the list, so that the shown columns come at their positions.
  for (int i = 1; i <= 24; ++i) shooter.push_back(text("Feld" + QString::number(i)));
  shooter.push_back(text("Geschlecht"));
  shooter.push_back(field("bGebKlasseManuell", FieldType::Boolean));
  shooter.push_back(number("KlassenID"));
  createTable(*database, "Schützen", shooter);
  createTable(*database, "Schützenklassen",
              {number("ID"), text("Klasse"), text("KZ"), number("Alter von"), number("Alter bis"),
               number("Geschlecht")});
  createTable(*database, "Klassenwechsel", {number("ID"), text("wechseldatumneu")});
  createTable(*database, "Verein", {number("ID"), text("Name"), text("Kurzname")});
  createTable(*database, "Mannschaften",
              {number("ID"), text("MannName"), number("VereinID"), number("GruppenID")});
  createTable(*database, "MannschaftsGruppen", {number("MannGrpID"), text("Bezeichnung")});
  createTable(*database, "MeldeDisziplin", {number("ID"), text("MeldeDisziplin"), text("MeldeKZ")});
  createTable(*database, "Schuetzen_SPO_Anmeldungen",
              {number("ID"), number("SchuetzeID"), number("SPOID"), text("SPOKey"), number("MannID")});

  QStringList columns{"Schützen.ID", "Schützen.Startnummer"};
  int filler = 1;
  const auto fillUpTo = [&](int position) {
    while (columns.size() < position) columns.append("Schützen.Feld" + QString::number(filler++));
  };
  fillUpTo(4);
  columns.append("Schützen.Name AS [Schützen.Name]");
  fillUpTo(12);
  columns.append("Schützen.GebDat");
  fillUpTo(25);
  columns.append("Verein.Name AS [Verein.Name]");
  columns.append("Mannschaften.MannName");
  columns.append("Schützen.Feld24 AS Klasse");
  columns.append("Verein.Kurzname");
  columns.append("Schützen.AusweisNr");
  database->createQuery("Schützenliste",
                        "SELECT " + columns.join(", ") +
                            " FROM (Schützen LEFT JOIN Verein ON Schützen.VereinsID = Verein.ID)"
                            " LEFT JOIN Mannschaften ON Schützen.lMannID = Mannschaften.ID");
}

}  // namespace

std::unique_ptr<dao::Database> newCompetition(const QString& path) {
  static const StoreOriginal original(makeOriginal);
  original.copyTo(path);
  return dao::Database::open(path);
}

void addShooter(dao::Database& database, const Shooter& shooter) {
  addRow(database, "Schützen",
         {{"ID", shooter.id},
          {"Startnummer", shooter.startnummer},
          {"Name", shooter.name},
          {"VereinsID", shooter.vereinsID},
          {"lMannID", shooter.lMannID},
          {"GebDat", shooter.gebDat},
          {"Geschlecht", shooter.geschlecht},
          {"bGebKlasseManuell", shooter.manuell},
          {"KlassenID", shooter.klassenID},
          {"AusweisNr", "A" + QString::number(shooter.id)}});
}

void addRow(dao::Database& database, const QString& table, const QVariantMap& values) {
  const auto rows = database.openRecordset(table);
  rows->addNew();
  for (auto it = values.cbegin(); it != values.cend(); ++it) rows->setValue(it.key(), it.value());
  rows->update();
}

}  // namespace qk::test

#include "masterdata/rows/erase_person.h"

#include "masterdata/rows/import_table_name.h"
#include "platform/dao/changes.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

constexpr int kRefused = errors::kInvalidCall;

const QStringList kPersonal = {
    "Anrede",     "Vorname",         "Strasse",    "PLZ",   "Ort",      "Telefon",
    "Geschlecht", "AusweisNr",       "Bank",       "BLZ",   "Kto",      "BIC",
    "IBAN",       "Mandatsreferenz", "KtoInhaber", "email", "homepage", "Bemerkungen"};
/// Texts that say nothing of the person, or are set by themselves.
const QStringList kKept = {"Startnummer", "Name", "Gebdat", "SPOKey", "StartnummerEinzel"};

bool isAmong(const QStringList& names, const QString& name) {
  return std::any_of(names.begin(), names.end(),
                     [&name](const QString& known) { return dao::sameName(known, name); });
}

bool isText(const dao::FieldDef& field) {
  return field.type == dao::FieldType::Text || field.type == dao::FieldType::Memo;
}

void refuseDoubleNumber(dao::Database& database, qint64 shooter, const QString& number) {
  const auto other =
      database.openRecordset(QString("Select * from [Schützen] where Startnummer = %1 and ID <> %2")
                                 .arg(dao::sql::quoted(number))
                                 .arg(shooter),
                             dao::RecordsetType::Snapshot);
  if (!other->eof())
    throw Error(kRefused,
                QString("Die Startnummer %1 hat auch %2. Geben Sie einem von beiden zuerst eine andere.")
                    .arg(number, other->value("Name").toString()));
}

/// Empties columns of all rows with the number, and says how many held a name.
qint64 eraseIn(dao::Database& database, dao::Changes& changes, const QString& table,
               const QString& numberColumn, const QString& number, const QString& nameColumn,
               const QString& assignments) {
  if (number.isEmpty() || !database.hasTable(table)) return 0;
  const QString rows =
      QString(" where [%1] = %2 and [%3] <> '' and [%3] <> %4")
          .arg(numberColumn, dao::sql::quoted(number), nameColumn, dao::sql::quoted(erasedName()));
  changes.execute("Update [" + table + "] set " + assignments + rows);
  return database
      .openRecordset("Select Count(*) as Anzahl from [" + table + "]" + rows, dao::RecordsetType::Snapshot)
      ->value("Anzahl")
      .toLongLong();
}

}  // namespace

QString erasedName() {
  return "gelöscht";
}

Erasure erasePerson(dao::Database& database, qint64 shooter) {
  const auto row = database.openRecordset(QString("Select * from [Schützen] where ID = %1").arg(shooter),
                                          dao::RecordsetType::Snapshot);
  if (row->eof()) throw Error(errors::kRecordDeleted);
  const QString number = row->value("Startnummer").toString();

  Erasure erasure;
  dao::RowValues values{{"Name", erasedName()}, {"Gebdat", "00.00.0000"}, {"bGebKlasseManuell", true}};
  for (int i = 0; i < row->fieldCount(); ++i) {
    const dao::FieldDef& field = row->fieldDef(i);
    if (!isText(field) || row->value(i).toString().isEmpty()) continue;
    if (isAmong(kPersonal, field.name)) {
      values.insert(field.name, QVariant());
      erasure.emptied.append(field.name);
    } else if (dao::sameName(field.name, "Name") || dao::sameName(field.name, "Gebdat")) {
      erasure.emptied.append(field.name);
    } else if (!isAmong(kKept, field.name)) {
      erasure.unknown.append(field.name);
    }
  }

  dao::Changes changes(database);
  changes.expect("Schützen", shooter, {{"Startnummer", number}});
  if (!number.isEmpty()) changes.require([&] { refuseDoubleNumber(database, shooter, number); });
  changes.update("Schützen", shooter, values);
  const QString name = dao::sql::quoted(erasedName());
  erasure.pictures = eraseIn(database, changes, "Grafik_Scheibe", "StartNr", number, "Name",
                             "[Name] = " + name + ", [Verein] = ''");
  erasure.shots =
      eraseIn(database, changes, "Haering_Daten", "Startnummer", number, "Schütze", "[Schütze] = " + name);
  // Former values lie in what takes the last import back.
  if (database.hasTable(importTableName())) changes.execute("Delete * from " + importTableName());
  changes.write();
  return erasure;
}

}  // namespace qk

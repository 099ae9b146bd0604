#include "masterdata/counter/counter.h"

#include <algorithm>

#include "app/ground/feld_wert.h"
#include "masterdata/people/start_numbers.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/runtime/error.h"

namespace qk {

namespace {

NameList readNames(dao::Database& database, const QString& query) {
  NameList names;
  const auto rows = database.openRecordset(query);
  for (; !rows->eof(); rows->moveNext())
    names.add(FeldWert(*rows, 0).toInt(), FeldWert(*rows, 1).toString(), FeldWert(*rows, 2).toString());
  return names;
}

/// As this room spells it, however the table does.
QString columnName(const QString& name) {
  static const QHash<QString, QString> spelled = [] {
    QHash<QString, QString> all;
    for (const QString& column :
         QStringList{"Startnummer", "Name", "Vorname", "Gebdat", "Geschlecht", "VereinsID", "lMannID",
                     "KlassenID", "bGebKlasseManuell", "AusweisNr"} +
             furtherColumns())
      all.insert(dao::foldedName(column), column);
    return all;
  }();
  return spelled.value(dao::foldedName(name), name);
}

/// However each of them was written; two that nobody knows are the same.
bool sameBirth(const QString& a, const QString& b, const QDate& refDatum) {
  if (!isKnownBirthDate(a) || !isKnownBirthDate(b)) return isKnownBirthDate(a) == isKnownBirthDate(b);
  return birthDateOf(a, refDatum) == birthDateOf(b, refDatum);
}

}  // namespace

QString lineOf(const PresentShooter& shooter) {
  QStringList parts{shooter.name};
  for (const QString& part : {shooter.gebDat, shooter.verein})
    if (!part.isEmpty()) parts << part;
  return shooter.startnummer + "  " + parts.join(", ");
}

NameList readClubs(dao::Database& database) {
  return readNames(database, "SELECT ID, Name, Kurzname FROM Verein ORDER BY Name, ID");
}

NameList readTeams(dao::Database& database) {
  return readNames(database,
                   "SELECT Mannschaften.ID AS MannID, Mannschaften.MannName AS Mannschaft, Verein.Name AS "
                   "Vereinsname FROM Mannschaften LEFT JOIN Verein ON Mannschaften.VereinID = Verein.ID "
                   "ORDER BY Mannschaften.MannName, Mannschaften.ID");
}

NameList readTeamsOf(dao::Database& database, qint32 club) {
  return readNames(database, "SELECT ID, MannName, MannName AS Auch FROM Mannschaften WHERE VereinID = " +
                                 QString::number(club) + " ORDER BY MannName, ID");
}

Counter::Counter(dao::Database& database) : database_(database), table_(database.tableDef("Schützen")) {
  for (const dao::FieldDef& field : table_.fields) empty_.insert(columnName(field.name), {});
  refresh();
}

void Counter::refresh() {
  refreshClasses();
  clubs_ = readClubs(database_);
  teams_ = readTeams(database_);
}

void Counter::refreshClasses() {
  classes_ = readShooterClasses(database_);
}

int Counter::lengthOf(const QString& column) const {
  const dao::FieldDef* field = table_.field(column);
  if (!field || field->type != dao::FieldType::Text) return 0;
  return field->size > 0 ? field->size : 255;
}

QString Counter::nextStartNumber() const {
  // Longer ones are no numbers that anybody counts on.
  const auto rows = database_.openRecordset(
      "SELECT Max(val(Startnummer)) AS Hoechste FROM Schützen WHERE Len(Startnummer) < 10");
  StartNumbers numbers;
  if (!rows->eof()) numbers.take(QString::number(qMax(qint64(0), FeldWert(*rows, 0).toLongLong())));
  return numbers.next();
}

dao::RowValues Counter::row(qint64 id) const {
  if (id == 0) return empty_;
  const auto rows = database_.openRecordset("Select * from Schützen where ID = " + QString::number(id));
  if (rows->eof()) throw Error(errors::kRecordDeleted);
  dao::RowValues values;
  for (int i = 0; i < rows->fieldCount(); ++i)
    values.insert(columnName(rows->fieldDef(i).name), rows->value(i));
  return values;
}

std::vector<PresentShooter> Counter::present(const QString& criterion, qint64 except) const {
  std::vector<PresentShooter> found;
  const auto rows = database_.openRecordset(
      "SELECT Schützen.ID AS Nummer, Schützen.Startnummer AS Start, Schützen.Name AS Wer, Schützen.Gebdat AS "
      "Geboren, Verein.Name AS Vereinsname FROM Schützen LEFT JOIN Verein ON Schützen.VereinsID = Verein.ID "
      "WHERE " +
      criterion + " AND Schützen.ID <> " + QString::number(except));
  for (; !rows->eof(); rows->moveNext())
    found.push_back({FeldWert(*rows, 0).toLongLong(), FeldWert(*rows, 1).toString(),
                     FeldWert(*rows, 2).toString(), FeldWert(*rows, 3).toString(),
                     FeldWert(*rows, 4).toString()});
  return found;
}

std::vector<PresentShooter> Counter::holdersOf(const QString& startnummer, qint64 except) const {
  if (startnummer.trimmed().isEmpty()) return {};
  return present("Schützen.Startnummer = " + dao::sql::quoted(startnummer.trimmed()), except);
}

std::vector<PresentShooter> Counter::namesakes(const QString& name, const QString& gebDat,
                                               qint64 except) const {
  if (name.trimmed().isEmpty()) return {};
  std::vector<PresentShooter> found = present("Schützen.Name = " + dao::sql::quoted(name), except);
  const auto other = [&](const PresentShooter& one) {
    return !sameBirth(one.gebDat, gebDat, classes_.refDatum());
  };
  found.erase(std::remove_if(found.begin(), found.end(), other), found.end());
  return found;
}

}  // namespace qk

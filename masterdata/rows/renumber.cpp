#include "masterdata/rows/renumber.h"

#include <map>

#include "masterdata/rows/numbered_columns.h"
#include "platform/dao/changes.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

constexpr int kRefused = errors::kInvalidCall;
constexpr int kLongestNumber = 50;

const QString kOpenShots = "Haering_Daten";

std::unique_ptr<dao::Recordset> rowsWith(dao::Database& database, const NumberedColumn& column,
                                         const QString& number, const QString& further = {}) {
  return database.openRecordset(QString("Select * from [%1] where [%2] = %3")
                                        .arg(column.table, column.column, dao::sql::quoted(number)) +
                                    further,
                                dao::RecordsetType::Snapshot);
}

QString nameOf(const dao::Recordset& shooter) {
  return shooter.value("Name").toString();
}

/// Open shots are found by their line: without naming the lines the store would read all shots ever fired,
/// while those that arrive have to wait.
QString onAnyLine(dao::Database& database) {
  const auto line = [&database](const QString& which) {
    return database
        .openRecordset("Select " + which + "(Liniennummer) as Linie from " + kOpenShots,
                       dao::RecordsetType::Snapshot)
        ->value("Linie")
        .toInt();
  };
  const int first = line("Min"), last = line("Max");
  constexpr int kMostLines = 500;
  if (last - first >= kMostLines) return {};
  QStringList lines;
  for (int number = first; number <= last; ++number) lines.append(QString::number(number));
  return " and Liniennummer in (" + lines.join(", ") + ")";
}

/// Open shots are still to be credited to who stands on the line: its window and its station know the number.
void refuseOpenShots(dao::Database& database, const QString& number) {
  if (!database.hasTable(kOpenShots)) return;
  const auto shots = rowsWith(database, {kOpenShots, "Startnummer"}, number,
                              onAnyLine(database) + " and Verbucht = 0 and Verworfen = 0");
  std::map<std::pair<int, int>, int> places;
  for (; !shots->eof(); shots->moveNext())
    ++places[{shots->value("Liniennummer").toInt(), shots->value("StandnummerOrt").toInt()}];
  if (places.empty()) return;
  QStringList texts;
  for (const auto& [place, count] : places)
    texts.append(
        QString("Linie %1 (Stand %2): %3")
            .arg(place.first)
            .arg(place.second)
            .arg(count == 1 ? QString("1 offener Schuss") : QString("%1 offene Schüsse").arg(count)));
  throw Error(kRefused,
              QString("Die Startnummer %1 kann jetzt nicht geändert werden, Linie und Station halten sie "
                      "noch:\n%2\nVerbuchen oder verwerfen Sie diese Schüsse zuerst.")
                  .arg(number, texts.join("\n")));
}

void refuseOtherShooter(dao::Database& database, qint64 shooter, const QString& number, const QString& text) {
  const auto other =
      rowsWith(database, {"Schützen", "Startnummer"}, number, QString(" and ID <> %1").arg(shooter));
  if (!other->eof()) throw Error(kRefused, text.arg(number, nameOf(*other)));
}

/// Rows that bear the number though no shooter has it would become this one's.
void refuseForeignRows(dao::Database& database, const QString& number) {
  for (const NumberedColumn& column : numberedColumns(database)) {
    if (dao::sameName(column.table, "Schützen") || rowsWith(database, column, number)->eof()) continue;
    throw Error(kRefused,
                QString("Unter der Startnummer %1 ist schon etwas gespeichert (Tabelle %2), obwohl kein "
                        "Schütze sie hat. Wählen Sie eine andere.")
                    .arg(number, column.table));
  }
}

}  // namespace

void renumber(dao::Database& database, qint64 shooter, const QString& number, Renumbering kind) {
  dao::Changes changes(database);
  renumber(database, changes, shooter, number, kind);
  changes.write();
}

void renumber(dao::Database& database, dao::Changes& changes, qint64 shooter, const QString& number,
              Renumbering kind) {
  const QString wanted = number.trimmed();
  if (wanted.isEmpty() || wanted.size() > kLongestNumber)
    throw Error(kRefused, QString("Eine Startnummer hat 1 bis %1 Zeichen.").arg(kLongestNumber));
  const auto row = database.openRecordset(QString("Select * from [Schützen] where ID = %1").arg(shooter),
                                          dao::RecordsetType::Snapshot);
  if (row->eof()) throw Error(errors::kRecordDeleted);
  const QString present = row->value("Startnummer").toString();
  if (present == wanted) return;

  const auto mayBe = [&database, shooter, present, wanted, kind] {
    refuseOtherShooter(database, shooter, wanted, "Die Startnummer %1 hat schon %2.");
    if (kind == Renumbering::ShooterOnly || present.isEmpty()) return;
    refuseOtherShooter(database, shooter, present,
                       "Die Startnummer %1 hat auch %2. Entscheiden Sie zuerst, wem die Ergebnisse gehören.");
    refuseOpenShots(database, present);
  };
  mayBe();
  if (!dao::sameName(present, wanted))
    refuseForeignRows(database, wanted);  // reads all shots: nobody waits yet

  const auto columns = numberedColumns(database);
  for (const NumberedColumn& column : columns) changes.hold(column.table);
  changes.expect("Schützen", shooter, {{"Startnummer", present}});
  changes.require(mayBe);
  changes.update("Schützen", shooter, {{"Startnummer", wanted}});
  for (const NumberedColumn& column : columns) {
    if (kind == Renumbering::ShooterOnly || present.isEmpty() || dao::sameName(column.table, "Schützen"))
      continue;
    changes.execute(
        QString("Update [%1] set [%2] = %3 where [%2] = %4")
            .arg(column.table, column.column, dao::sql::quoted(wanted), dao::sql::quoted(present)));
  }
}

}  // namespace qk

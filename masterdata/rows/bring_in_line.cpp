#include "masterdata/rows/bring_in_line.h"

#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

/// MannID is the club and VorMannID the team, crossed as they may look.
QString rowsOutOfLine(const QString& number, const Standing& standing) {
  return QString(
             " where Startnummer = %1 and (KlassenID <> %2 or KlassenID Is Null or MannID <> %3 or MannID Is "
             "Null or "
             "VorMannID <> %4 or VorMannID Is Null)")
      .arg(dao::sql::quoted(number))
      .arg(standing.shooterClass)
      .arg(standing.club)
      .arg(standing.team);
}

constexpr const char* kResultTables[] = {"Schuss", "SchussSerien"};

}  // namespace

Standing standingOf(dao::Database& database, qint64 shooter) {
  const auto row = database.openRecordset(QString("Select * from [Schützen] where ID = %1").arg(shooter),
                                          dao::RecordsetType::Snapshot);
  if (row->eof()) throw Error(errors::kRecordDeleted);
  return {row->value("KlassenID").toInt(), row->value("VereinsID").toInt(), row->value("lMannID").toInt()};
}

qint64 resultsOutOfLine(dao::Database& database, const QString& number, const Standing& standing) {
  qint64 count = 0;
  if (number.isEmpty()) return count;
  for (const char* table : kResultTables)
    count += database
                 .openRecordset(QString("Select Count(*) as Anzahl from %1").arg(table) +
                                    rowsOutOfLine(number, standing),
                                dao::RecordsetType::Snapshot)
                 ->value("Anzahl")
                 .toLongLong();
  return count;
}

void bringInLine(dao::Changes& changes, const QString& number, const Standing& standing) {
  if (number.isEmpty()) return;
  for (const char* table : kResultTables)
    changes.execute(QString("Update %1 set KlassenID = %2, MannID = %3, VorMannID = %4")
                        .arg(table)
                        .arg(standing.shooterClass)
                        .arg(standing.club)
                        .arg(standing.team) +
                    rowsOutOfLine(number, standing));
}

}  // namespace qk

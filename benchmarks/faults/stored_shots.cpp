#include "benchmarks/faults/stored_shots.h"

#include <QTextStream>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tools/rundgang/reckoning_log.h"

namespace qk::faults {

StoredShots storedShots(const QString& competition) {
  StoredShots found;
  const auto store = dao::Database::open(competition);
  const auto rows = store->openRecordset("Select * from Haering_Daten");
  for (; !rows->eof(); rows->moveNext(), ++found.rows) {
    found.keys.insert(QStringList{rows->value("Liniennummer").toString(),
                                  rows->value("Treffernummer").toString(), rows->value("Datum").toString(),
                                  rows->value("ZeitAbsolut").toString()}
                          .join('/'));
    const bool booked = rows->value("Verbucht").toInt() != 0;
    if (booked) ++found.booked;
    if (!booked && rows->value("Verworfen").toInt() == 0) ++found.open;
  }
  return found;
}

bool reportShots(const QString& what, const Range& range, const StoredShots& store, QStringList missing) {
  const auto fired = firedShots(range.stationLog());
  for (const FiredShot& shot : fired)
    if (!store.keys.contains(shot.key)) missing << shot.key;
  QTextStream out(stdout);
  out << QString(
             "%1: %2 Schuss gefeuert, %3 gespeichert, davon %4 offen, %5 verbucht; %6 fehlen, %7 doppelt\n")
             .arg(what)
             .arg(fired.size())
             .arg(store.rows)
             .arg(store.open)
             .arg(store.booked)
             .arg(missing.size())
             .arg(store.rows - store.keys.size());
  for (const QString& key : missing) out << "  fehlt: " << key << Qt::endl;
  return missing.isEmpty() && store.rows == store.keys.size() && !fired.empty() &&
         store.keys.size() == static_cast<qsizetype>(fired.size());
}

}  // namespace qk::faults

#include "cash/class_release.h"

#include "app/ground/feld_wert.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"

namespace qk {

bool KassePruefung(dao::Database& database, Dialogs& dialogs, qint32 lEinlageID, qint32 KlassenID) {
  bool released = false;
  reported(fehlerReport(dialogs, "Fehler beim Ermitteln KassePruefung zu Klassen!"), [&](Steps& step) {
    bool named = false;
    step([&] {
      named = false;
      released = false;
      const auto rows = database.openRecordset(
          "Select * from Kasse_Schuetzenklassen where KasseEinlageID = " + QString::number(lEinlageID));
      for (; !rows->eof() && !released; rows->moveNext()) {
        named = true;
        released = FeldWert(*rows, "SchuetzenklasseID").toInt() == KlassenID;
      }
      if (!named) released = true;
    });
    if (!released)
      dialogs.note(
          "Die Einlage ist für die Klasse des Schützen nicht freigegeben!\r\n"
          "Menü: Kasse - Einlagen - Zuordnung Klassen",
          BoxIcon::Exclamation);
  });
  return released;
}

}  // namespace qk

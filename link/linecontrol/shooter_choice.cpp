#include "link/linecontrol/shooter_choice.h"

#include "capture/discipline_loader.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"

namespace qk {

ShooterChoice chooseShooter(const Workplace& workplace, dao::Database& db, LineCapture& capture,
                            const QString& sNummer) {
  using Outcome = ShooterChoice::Outcome;
  if (db.openRecordset("Select * from Schützen where Startnummer = " + dao::sql::quoted(sNummer))->eof())
    return {Outcome::Unknown, nullptr};
  if (capture.nOffeneSchuss() > 0) {
    // Credit moves from one person to another: Enter must not do that.
    if (!workplace.dialogs.confirm(
            "Bisheriger Schütze hat noch offene Schüsse!\r\nDiese werden dann dem neuen Schützen "
            "zuordnet!\r\nTrotzdem wechseln?",
            BoxIcon::Exclamation, BoxAnswer::No))
      return {Outcome::Refused, nullptr};
    capture.assignOpenShots(sNummer);
  }
  return {Outcome::Chosen, LadeSchuetze(db, sNummer)};
}

}  // namespace qk

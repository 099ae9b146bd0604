#include "link/linecontrol/shooter_choice.h"

#include "capture/discipline_loader.h"
#include "platform/dialog/dialogs.h"

namespace qk {

ShooterChoice chooseShooter(const Workplace& workplace, dao::Database& db, LineCapture& capture,
                            const QString& sNummer) {
  using Outcome = ShooterChoice::Outcome;
  // Loaded first: a failure must not come between the shots' new owner and the line's.
  const auto shooter = LadeSchuetze(db, sNummer);
  if (!shooter) return {Outcome::Unknown, nullptr};
  if (capture.nOffeneSchuss() > 0) {
    // Credit moves from one person to another: Enter must not do that.
    if (!workplace.dialogs.confirm(
            "Bisheriger Schütze hat noch offene Schüsse!\r\nDiese werden dann dem neuen Schützen "
            "zuordnet!\r\nTrotzdem wechseln?",
            BoxIcon::Exclamation, BoxAnswer::No))
      return {Outcome::Refused, nullptr};
    capture.assignOpenShots(sNummer);
  }
  return {Outcome::Chosen, shooter};
}

}  // namespace qk

#include "app/ground/printing.h"

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"

namespace qk {

CurrentPrinter currentPrinter(const Workplace& workplace) {
  return CurrentPrinter(workplace.settings, keys::kTarvex.toString(), keys::kHaering.toString());
}

AskAboutPaused fragtObEsWartet(const Workplace& workplace) {
  return [workplace](const QString& printer) {
    return workplace.dialogs.confirm(
        "Der Drucker »" + printer +
            "« ist angehalten. Der Druck wartet dort, bis er weiterläuft.\r\nTrotzdem drucken?",
        BoxIcon::Exclamation, BoxAnswer::Yes);
  };
}

}  // namespace qk

#include "cash/attempt.h"

#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"

namespace qk {

void versuche(const Workplace& workplace, const std::function<void()>& routine) {
  try {
    routine();
  } catch (const Error& error) {
    workplace.dialogs.note("Fehler: " + QString::number(error.number()) + " - " + error.description(),
                           BoxIcon::Exclamation, "Fehler");
  }
}

}  // namespace qk

#include "app/ground/printing.h"

#include "app/ground/settings_keys.h"

namespace qk {

CurrentPrinter currentPrinter(const Workplace& workplace) {
  return CurrentPrinter(workplace.settings, keys::kTarvex.toString(), keys::kHaering.toString());
}

}  // namespace qk

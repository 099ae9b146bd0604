#include "app/ground/copy_settings.h"

#include <algorithm>

namespace qk {

CopySettings liesKopien(const Settings& settings) {
  CopySettings found;
  found.enabled = liesFlag(settings, keys::KopienAktiv);
  found.interval = std::chrono::minutes(
      std::clamp(liesZahl(settings, keys::KopienMinuten), kFewestCopyMinutes, kMostCopyMinutes));
  found.folder = liesText(settings, keys::KopienOrdner);
  if (found.folder.isEmpty()) found.folder = liesText(settings, keys::SicherungsVerzeichnis);
  return found;
}

}  // namespace qk

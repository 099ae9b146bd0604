// How the copies of the open competition are made: whether, how often, where.
#pragma once

#include <QString>
#include <chrono>

#include "app/ground/settings_keys.h"

namespace qk {

namespace keys {

inline constexpr SettingKey KopienAktiv{kTarvex, kDaten, u"KopienAktiv", u"1"};
inline constexpr SettingKey KopienMinuten{kTarvex, kDaten, u"KopienMinuten", u"10"};
/// Empty for the folder of backups (SicherungsVerzeichnis).
inline constexpr SettingKey KopienOrdner{kTarvex, kDaten, u"KopienOrdner"};

}  // namespace keys

inline constexpr int kFewestCopyMinutes = 1;
inline constexpr int kMostCopyMinutes = 240;

struct CopySettings {
  bool enabled = true;
  std::chrono::minutes interval{10};  ///< within the limits above
  QString folder;                     ///< empty where none is known

  bool operator==(const CopySettings&) const = default;
};

CopySettings liesKopien(const Settings& settings);

}  // namespace qk

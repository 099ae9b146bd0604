#include "app/shell/kept_timelines.h"

#include "app/ground/settings_keys.h"

namespace qk {

namespace {

SettingKey timelineOf(const QString& key) {
  return {keys::kTarvex, keys::kServer, key, u"0"};
}

QString keyOf(const QString& system) {
  return "Zeitlinie_" + system;
}

}  // namespace

/// They are asked in any thread: each look has a store of its own.
dao::ServerMemory::Keeper timelinesIn(const QString& settingsFile) {
  const auto read = [settingsFile](const QString& system) {
    return liesZahl(Settings(settingsFile), timelineOf(keyOf(system)));
  };
  const auto write = [settingsFile](const QString& system, int timeline) {
    Settings settings(settingsFile);
    try {
      schreibe(settings, timelineOf(keyOf(system)), timeline);
    } catch (const Error&) {
      return;  // this run knows it all the same, and whatever else is stored there tells of the failure
    }
  };
  return {read, write};
}

}  // namespace qk

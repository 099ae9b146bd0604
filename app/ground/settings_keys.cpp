#include "app/ground/settings_keys.h"

#include <cmath>

#include "platform/runtime/numbers.h"

namespace qk {

QString liesText(const Settings& settings, const SettingKey& key) {
  return settings.value(key.application.toString(), key.section.toString(), key.key.toString(),
                        key.preset.toString());
}

int liesZahl(const Settings& settings, const SettingKey& key) {
  const int preset = static_cast<int>(std::trunc(parsePrefix(key.preset)));
  return settings.number(key.application.toString(), key.section.toString(), key.key.toString(), preset);
}

bool liesFlag(const Settings& settings, const SettingKey& key) {
  return settings.flag(key.application.toString(), key.section.toString(), key.key.toString(),
                       parsePrefix(key.preset) != 0);
}

void schreibe(Settings& settings, const SettingKey& key, const QString& value) {
  settings.setValue(key.application.toString(), key.section.toString(), key.key.toString(), value);
}

void schreibe(Settings& settings, const SettingKey& key, bool value) {
  schreibe(settings, key, QString(value ? "1" : "0"));
}

void schreibe(Settings& settings, const SettingKey& key, int value) {
  schreibe(settings, key, QString::number(value));
}

}  // namespace qk

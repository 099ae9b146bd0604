#include "app/shell/demo_competition.h"

#include <QEventLoop>
#include <QProcess>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/settings/settings.h"

namespace qk {

namespace {

const QString kLines = "111111";

/// What went wrong, empty for nothing. The event loop runs meanwhile.
QString make(const QString& file, const QString& exchangeFolder) {
  QProcess maker;
  QEventLoop loop;
  QObject::connect(&maker, &QProcess::finished, &loop, &QEventLoop::quit);
  QObject::connect(&maker, &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) loop.exit();
  });
  const QString program = Programmverzeichnis() + "qk-wettkampf";
  QTimer::singleShot(0, &maker, [&] { maker.start(program, {"demo", file, "--austausch", exchangeFolder}); });
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  if (maker.error() == QProcess::FailedToStart) return "Das Programm lässt sich nicht starten: " + program;
  if (maker.exitStatus() == QProcess::NormalExit && maker.exitCode() == 0) return {};
  return QString::fromUtf8(maker.readAllStandardError()).trimmed();
}

void setIfUnset(Settings& settings, const SettingKey& key, const QString& value) {
  if (settings.value(key.application.toString(), key.section.toString(), key.key.toString()).isEmpty())
    schreibe(settings, key, value);
}

}  // namespace

QString demoFolder(const GlobalVariablen& global) {
  return withTrailingSeparator(global.Basisverzeichnis) + withTrailingSeparator("Demo");
}

QString demoCompetition(const Workplace& workplace, const GlobalVariablen& global) {
  const QString folder = demoFolder(global);
  const QString file = folder + "Demo.qkk";
  const QString exchangeFolder = folder + withTrailingSeparator("Austausch");
  try {
    if (!workplace.files.exists(file)) {
      if (!workplace.files.folderExists(folder)) workplace.files.makeFolder(folder);
      if (const QString trouble = make(file, exchangeFolder); !trouble.isEmpty())
        throw Error(errors::kPathAccess, trouble);
    }
    setIfUnset(workplace.settings, keys::Netzverzeichnis, exchangeFolder);
    setIfUnset(workplace.settings, keys::LinienAktiv, kLines);
    return file;
  } catch (const Error& error) {
    workplace.dialogs.note("Der Demo-Wettkampf konnte nicht angelegt werden.\n" + error.description(),
                           BoxIcon::Exclamation, "Fehler");
    return {};
  }
}

}  // namespace qk

// Where the program finds and keeps its files.
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"

namespace qk {

namespace {

constexpr char kProof[] = "ErgSchützen.mdb";  // its presence proves the right system folder

/// Copied for the user once. The family's links to other target systems would add theirs here.
const QStringList kCopiedDatabases{"QKUtil.mdb", "Scheiben.mdb"};

QString below(const QString& folder, const QString& name) {
  return withTrailingSeparator(withTrailingSeparator(folder) + name);
}

/// What can't be made stays missing: whoever needs the folder meets the error and reports it.
void tryTo(const std::function<void()>& make) {
  try {
    make();
  } catch (const Error&) {
  }
}

/// The root of all: made with whatever is missing above it.
void makeRoot(Files& files, const QString& folder) {
  if (files.folderExists(folder) || isForeignPath(folder)) return;
  const QString parent = QDir::cleanPath(QDir::fromNativeSeparators(folder) + "/..");
  if (parent != QDir::cleanPath(folder)) makeRoot(files, parent);
  tryTo([&] { files.makeFolder(folder); });
}

QString systemFolder(const Workplace& workplace) {
  const QString own = below(Programmverzeichnis(), "System");
  QString folder = liesText(workplace.settings, keys::SystemVerzeichnis);
  if (folder.isEmpty()) {
    folder = own;
    schreibe(workplace.settings, keys::SystemVerzeichnis, folder);
  }
  if (workplace.files.exists(withTrailingSeparator(folder) + kProof)) return withTrailingSeparator(folder);
  workplace.dialogs.note(
      "Fehler:\n\nFalscher Systempfad: " + folder.toUpper() + "\nNeuer Systempfad: " + own.toUpper(),
      BoxIcon::Exclamation);
  schreibe(workplace.settings, keys::SystemVerzeichnis, own);
  return own;
}

QString dataFolder(const Workplace& workplace, const QString& base, const SettingKey& key,
                   const QString& name) {
  QString folder = liesText(workplace.settings, key);
  if (folder.isEmpty()) {
    folder = below(base, name);
    schreibe(workplace.settings, key, folder);
  }
  if (!VerzeichnisVorhanden(workplace.files, folder)) {
    tryTo([&] { VerzeichnisAnlegen(workplace.files, base); });
    tryTo([&] { VerzeichnisAnlegen(workplace.files, folder); });
  }
  return withTrailingSeparator(folder);
}

}  // namespace

QString Programmverzeichnis() {
  const QString redirected = qEnvironmentVariable("QK_PROGRAMM");
  return withTrailingSeparator(redirected.isEmpty() ? QCoreApplication::applicationDirPath() : redirected);
}

QString Dokumentenverzeichnis() {
  const QString redirected = qEnvironmentVariable("QK_DOKUMENTE");
  if (!redirected.isEmpty()) return withTrailingSeparator(redirected);
#ifdef Q_OS_WIN
  return withTrailingSeparator(qEnvironmentVariable("PUBLIC") + "\\Documents");
#else
  return withTrailingSeparator(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
#endif
}

void OrdnerErmitteln(const Workplace& workplace, GlobalVariablen& global) {
  global.SystemVerzeichnis = systemFolder(workplace);
  const QString documents = Dokumentenverzeichnis();
  makeRoot(workplace.files, documents);
  const QString base = below(documents, "Tarvex");
  global.Basisverzeichnis = base;
  global.Verzeichnis = dataFolder(workplace, base, keys::Verzeichnis, "Daten");
  global.SicherungsVerzeichnis = dataFolder(workplace, base, keys::SicherungsVerzeichnis, "Sicherung");
  global.Exportpfad = dataFolder(workplace, base, keys::Exportpfad, "Export");
  global.SystemVerzeichnisUser = dataFolder(workplace, base, keys::SystemVerzeichnisUser, "SystemUser");
  for (const QString& name : kCopiedDatabases) {
    const QString target = global.SystemVerzeichnisUser + name;
    if (workplace.files.exists(target)) continue;
    tryTo([&] { workplace.files.copy(global.SystemVerzeichnis + name, target); });
  }
}

}  // namespace qk

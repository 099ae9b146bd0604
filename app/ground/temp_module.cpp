#include "app/ground/temp_module.h"

#include <QCoreApplication>
#include <QDir>
#include <cmath>
#include <limits>

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

constexpr int kEditRight = 7;        // position of the right to edit results, from 1
constexpr int kOldRightsLength = 6;  // the family's older rights string lacks its first position
constexpr int kScramble = 12;
constexpr int kLastHourOfTheDayBefore = 5;

/// Each character becomes the one whose code is 12 lower; one that has none is Error 5.
QString unscrambled(QString text) {
  for (QChar& c : text) {
    if (c.unicode() < kScramble) throw Error(errors::kInvalidCall);
    c = QChar(static_cast<char16_t>(c.unicode() - kScramble));
  }
  return text;
}

SettingKey fontKey(const QString& key, QStringView preset = u"") {
  return {keys::kTarvex, keys::kHaering, key, preset};
}

/// A 32-bit number in whichever sign it was written; none gives the default.
quint32 colour(const Settings& settings, const QString& key, quint32 missing) {
  const QString text = liesText(settings, fontKey(key));
  if (text.isEmpty()) return missing;
  const double value = parseStrict(text);
  if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<quint32>::max())
    throw Error(errors::kOverflow);
  return static_cast<quint32>(static_cast<qint64>(value));
}

}  // namespace

void BenutzerRechteLaden(const Workplace& workplace, GlobalVariablen& global) {
  reported(fehlerReport(workplace.dialogs, "Fehler beim Ermitteln der Oberflächenfreigabe"),
           [&](Steps& step) {
             QString rights = liesText(workplace.settings, keys::Oberflaeche);
             // The family reads its password here; a damaged one shows at once, although nothing is made of
             // it.
             step([&] { unscrambled(liesText(workplace.settings, keys::OberflaechePasswort)); });
             if (rights.isEmpty()) rights = keys::Oberflaeche.preset.toString();
             if (rights.size() == kOldRightsLength) rights.prepend(u'1');
             global.bErgebnisseAendern = rights.mid(kEditRight - 1, 1) == "1";
           });
}

bool RechtPruefen(Dialogs& dialogs, const GlobalVariablen& global) {
  if (global.bErgebnisseAendern) return true;
  dialogs.note(
      "Sie besitzen nicht das erforderliche Recht\r\num Ergebnisse zu löschen oder nachträglich zu ändern!",
      BoxIcon::Critical);
  return false;
}

bool DateiVorhanden(Files& files, const QString& path) {
  return files.readable(path);
}

bool VerzeichnisVorhanden(Files& files, const QString& path) {
  return files.folderExists(path);
}

void VerzeichnisAnlegen(Files& files, const QString& path) {
  files.makeFolder(path);
}

bool DateiLoeschen(Files& files, const QString& path, bool lockFile) {
  if (path.trimmed().isEmpty()) return false;
  try {
    files.remove(path);
    const QString lock = path.chopped(std::min<qsizetype>(3, path.size())) + "LDB";
    if (lockFile && files.exists(lock)) files.remove(lock);
    return true;
  } catch (const Error&) {
    return false;
  }
}

QString TempVerzeichnis() {
  const QString folder = qEnvironmentVariable("temp");
  return folder.isEmpty() ? QDir::tempPath() : folder;
}

QString TempDateiName(const Workplace& workplace, const QString& prefix) {
  const QString folder = TempVerzeichnis();
  const QString process = QString::number(QCoreApplication::applicationPid(), 16);
  for (;;) {
    const auto chance = static_cast<uint>(workplace.random.next() * 65536.0);
    const QString path =
        withTrailingSeparator(folder) + prefix + process + QString::number(chance, 16) + ".tmp";
    if (workplace.files.exists(path)) continue;
    workplace.files.write(path, {});  // taken from now on
    return path;
  }
}

QString Buchungsdatum(const Workplace& workplace) {
  const QDateTime now = workplace.clock.now();
  const bool dayBefore =
      liesFlag(workplace.settings, keys::SpeichernVortag) && now.time().hour() <= kLastHourOfTheDayBefore;
  return dateText(dayBefore ? now.addDays(-1) : now);
}

double ZahlAusText(const QString& text) {
  return parseTolerant(text);
}

double Nachkommaanteil(const QString& text) {
  const double value = ZahlAusText(text);
  return value > 0 ? value - parsePrefix(text) : 0;
}

double Abschneiden(double x, int nStellen) {
  const double scale = std::pow(10.0, nStellen);
  return std::floor(scale * x) / scale;
}

void SchriftSpeichern(const Workplace& workplace, const QString& name, const Schrift& schrift) {
  reported(fehlerReport(workplace.dialogs, "Fehler beim Speichern der Schriftarten!"), [&](Steps& step) {
    Settings& settings = workplace.settings;
    step([&] { schreibe(settings, fontKey(name + "_BackColor"), QString::number(schrift.backColor)); });
    step([&] { schreibe(settings, fontKey(name + "_ForeColor"), QString::number(schrift.foreColor)); });
    step([&] { schreibe(settings, fontKey(name + "_Font"), fontText(schrift.font)); });
  });
}

Schrift SchriftLaden(const Workplace& workplace, const QString& name, const Schrift& current) {
  Schrift schrift = current;
  reported(fehlerReport(workplace.dialogs, "Fehler beim Laden der Schriftarten!"), [&](Steps& step) {
    const Settings& settings = workplace.settings;
    step([&] { schrift.backColor = colour(settings, name + "_BackColor", Schrift{}.backColor); });
    step([&] { schrift.foreColor = colour(settings, name + "_ForeColor", Schrift{}.foreColor); });
    const QString text = liesText(settings, fontKey(name + "_Font"));
    if (!text.isEmpty()) schrift.font = parseFontText(text, current.font);
  });
  return schrift;
}

}  // namespace qk

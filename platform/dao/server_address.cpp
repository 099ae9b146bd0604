#include "platform/dao/server_address.h"

#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QStringConverter>
#include <algorithm>

#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/held_files.h"

namespace qk::dao {
namespace {

constexpr int kUnknownFormat = 3343;
constexpr int kGreatestPort = 65535;
constexpr int kLongestPatience = 600;

[[noreturn]] void refuse(const QString& why) {
  throw Error(kUnknownFormat, "Die Datei nennt keinen brauchbaren Datenbankserver: " + why);
}

/// The text of UTF-8 bytes without control characters; nothing for anything else.
std::optional<QString> plainText(const QByteArray& content) {
  if (content.size() >= kLargestAddressFile) return {};
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = decoder(content);
  const bool hasControls = std::any_of(text.begin(), text.end(), [](QChar c) {
    return c.unicode() < u' ' && c != u'\n' && c != u'\r' && c != u'\t';
  });
  if (decoder.hasError() || hasControls) return {};
  return text;
}

/// Empty for a database that this process has open: that is no such text.
QByteArray beginningOf(const QString& path) {
  QByteArray beginning;
  const QString found = Files().resolve(path);
  unlessHeld(found, [&] {
    QFile file(found);
    if (QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly))
      beginning = file.read(kLargestAddressFile);
  });
  return beginning;
}

struct Line {
  int number;
  QString text;
};

/// Lines that say something, without outer blanks.
QList<Line> linesOf(const QString& text) {
  QList<Line> lines;
  int number = 0;
  for (const QString& raw : text.split(u'\n')) {
    const QString line = raw.trimmed();
    ++number;
    if (!line.isEmpty() && !line.startsWith(u'#')) lines.append({number, line});
  }
  return lines;
}

int numberOf(const QString& value, int greatest, int line, const QString& what) {
  bool ok = false;
  const int number = value.toInt(&ok);
  if (!ok || number < 1 || number > greatest)
    refuse(QString("Zeile %1: '%2' ist keine %3.").arg(QString::number(line), value, what));
  return number;
}

}  // namespace

bool isServerAddress(const QByteArray& content) {
  const std::optional<QString> text = plainText(content);
  if (!text) return false;
  const QList<Line> lines = linesOf(*text);
  return !lines.isEmpty() && lines.first().text.contains(u'=');
}

ServerAddress parseServerAddress(const QByteArray& content) {
  const std::optional<QString> text = plainText(content);
  if (!text) refuse("Sie ist kein kurzer UTF-8-Text.");
  ServerAddress address;
  QStringList seen;
  for (const Line& line : linesOf(*text)) {
    const qsizetype mark = line.text.indexOf(u'=');
    if (mark < 0) refuse(QString("Zeile %1: Das Gleichheitszeichen fehlt.").arg(line.number));
    const QString key = line.text.left(mark).trimmed().toLower();
    const QString value = line.text.mid(mark + 1).trimmed();
    if (seen.contains(key)) refuse(QString("Zeile %1: '%2' steht doppelt.").arg(line.number).arg(key));
    seen.append(key);
    if (value.isEmpty()) refuse(QString("Zeile %1: '%2' ist leer.").arg(line.number).arg(key));
    if (key == "host") {
      address.host = value;
    } else if (key == "port") {
      address.port = numberOf(value, kGreatestPort, line.number, "Portnummer");
    } else if (key == "wartezeit") {
      address.patience = numberOf(value, kLongestPatience, line.number,
                                  QString("Zahl von Sekunden zwischen 1 und %1").arg(kLongestPatience));
    } else if (key == "datenbank") {
      address.database = value;
    } else if (key == "benutzer") {
      address.user = value;
    } else if (key == "passwort" || key == "kennwort" || key == "password") {
      refuse(QString("Zeile %1: Ein Passwort darf nicht in der Datei stehen.").arg(line.number));
    } else {
      refuse(QString("Zeile %1: '%2' ist unbekannt.").arg(line.number).arg(key));
    }
  }
  for (const char* key : {"host", "datenbank", "benutzer"})
    if (!seen.contains(QLatin1String(key))) refuse(QString("'%1' fehlt.").arg(QLatin1String(key)));
  return address;
}

bool isServerFile(const QString& path) {
  return isServerAddress(beginningOf(path));
}

std::optional<ServerAddress> serverAddressIn(const QString& path) {
  const QByteArray content = beginningOf(path);
  if (!isServerAddress(content)) return {};
  return parseServerAddress(content);
}

QByteArray serverAddressText(const ServerAddress& address) {
  return QString("host=%1\nport=%2\ndatenbank=%3\nbenutzer=%4\nwartezeit=%5\n")
      .arg(address.host, QString::number(address.port), address.database, address.user,
           QString::number(address.patience))
      .toUtf8();
}

QString placeOf(const ServerAddress& address) {
  return address.database + " auf " + address.host;
}

}  // namespace qk::dao

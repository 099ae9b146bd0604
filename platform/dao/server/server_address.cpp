#include "platform/dao/server/server_address.h"

#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QRegularExpression>
#include <QStringConverter>
#include <algorithm>

#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/held_files.h"

namespace qk::dao {
namespace {

constexpr int kGreatestPort = 65535;
constexpr int kLongestPatience = 600;

[[noreturn]] void refuse(const QString& why) {
  throw Error(errors::kUnknownFormat, "Die Datei nennt keinen brauchbaren Datenbankserver: " + why);
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

/// 0 for what is none of 1 to `greatest`.
int numberIn(const QString& value, int greatest) {
  bool ok = false;
  const int number = value.toInt(&ok);
  return ok && number >= 1 && number <= greatest ? number : 0;
}

int numberOf(const QString& value, int greatest, int line, const QString& what) {
  const int number = numberIn(value, greatest);
  if (number == 0) refuse(QString("Zeile %1: '%2' ist keine %3.").arg(QString::number(line), value, what));
  return number;
}

/// "erster:5433", "[fe80::1]:5433", "fe80::1", "/folder:5433": the host, and the port's text if there is one.
struct EndpointText {
  explicit EndpointText(const QString& text) {
    static const QRegularExpression bracketed(R"(^\[([^\]]*)\](?::(.*))?$)");
    static const QRegularExpression folder(R"(^(/.*):(\d+)$)");
    static const QRegularExpression named(R"(^([^:/]*):([^:]*)$)");
    host = text;
    for (const QRegularExpression* form : {&bracketed, &folder, &named})
      if (const auto match = form->match(text); match.hasMatch()) {
        host = match.captured(1).trimmed();
        if (match.hasCaptured(2)) port = match.captured(2).trimmed();
        return;
      }
  }

  QString host;
  std::optional<QString> port;
};

QString textOf(const ServerEndpoint& endpoint, bool withPort) {
  const QString host = endpoint.host.contains(u':') ? u'[' + endpoint.host + u']' : endpoint.host;
  return withPort ? host + u':' + QString::number(endpoint.port) : host;
}

}  // namespace

EndpointList endpointsIn(const QString& text, int port) {
  EndpointList list;
  for (const QString& part : text.split(u',')) {
    const EndpointText read(part.trimmed());
    ServerEndpoint endpoint{read.host, port};
    if (read.port) endpoint.port = numberIn(*read.port, kGreatestPort);
    if (endpoint.host.isEmpty())
      list.trouble = QString("In '%1' fehlt der Name eines Rechners.").arg(text);
    else if (endpoint.port == 0)
      list.trouble = QString("'%1' ist keine Portnummer.").arg(*read.port);
    else if (list.endpoints.contains(endpoint))
      list.trouble = QString("'%1' steht doppelt.").arg(part.trimmed());
    if (!list.trouble.isEmpty()) break;
    list.endpoints.append(endpoint);
  }
  return list;
}

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
  Line hosts{0, {}};
  int port = kUsualPort;
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
      hosts = {line.number, value};
    } else if (key == "port") {
      port = numberOf(value, kGreatestPort, line.number, "Portnummer");
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
  const EndpointList list = endpointsIn(hosts.text, port);
  if (!list.trouble.isEmpty())
    refuse(QString("Zeile %1: %2").arg(QString::number(hosts.number), list.trouble));
  address.endpoints = list.endpoints;
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
  const int port = address.endpoints.first().port;
  const bool onePort = std::all_of(address.endpoints.begin(), address.endpoints.end(),
                                   [&](const ServerEndpoint& other) { return other.port == port; });
  QStringList hosts;
  for (const ServerEndpoint& endpoint : address.endpoints) hosts.append(textOf(endpoint, !onePort));
  return QString("host=%1\nport=%2\ndatenbank=%3\nbenutzer=%4\nwartezeit=%5\n")
      .arg(hosts.join(", "), QString::number(port), address.database, address.user,
           QString::number(address.patience))
      .toUtf8();
}

QString nameOf(const ServerAddress& address, qsizetype endpoint) {
  const ServerEndpoint& named = address.endpoints[endpoint];
  const auto namesakes = std::count_if(address.endpoints.begin(), address.endpoints.end(),
                                       [&](const ServerEndpoint& other) { return other.host == named.host; });
  return namesakes > 1 ? textOf(named, true) : named.host;
}

QString placeOf(const ServerAddress& address) {
  QStringList names;
  for (qsizetype i = 0; i < address.endpoints.size(); ++i) names.append(nameOf(address, i));
  const QString last = names.takeLast();
  return address.database + " auf " + (names.isEmpty() ? last : names.join(", ") + " oder " + last);
}

}  // namespace qk::dao

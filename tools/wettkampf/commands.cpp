#include "tools/wettkampf/commands.h"

#include <QDir>
#include <QFileInfo>

#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "tools/wettkampf/competition.h"
#include "tools/wettkampf/exchange.h"

namespace qk {

namespace {

const QString Help =
    "qk-wettkampf: legt Wettkampfdateien an\n"
    "\n"
    "Aufruf:\n"
    "  qk-wettkampf neu DATEI [--name TEXT] [--ort TEXT] [--datum TT.MM.JJJJ]\n"
    "      legt einen leeren Wettkampf mit allen Tabellen an.\n"
    "      --name   Bezeichnung des Wettkampfs\n"
    "      --ort    Ort des Wettkampfs\n"
    "      --datum  Stichtag der Altersklassen (sonst 01.01.2026)\n"
    "  qk-wettkampf demo DATEI [--austausch ORDNER]\n"
    "      legt einen Wettkampf mit Beispieldaten an, bei jedem Aufruf denselben.\n"
    "      --austausch  schreibt dazu esa_preis.ini und def-Dateien in den Ordner\n"
    "  qk-wettkampf --help\n"
    "      zeigt diese Hilfe.\n"
    "\n"
    "DATEI soll auf .qkk enden; ihr Pfad soll sonst keinen Punkt enthalten. Eine Datei, die es schon gibt,\n"
    "wird nie überschrieben. Rückgabewert: 0 angelegt, 1 Fehler, 2 falscher Aufruf.\n";

/// A wrong call; what() goes to the user as it stands.
struct UsageError {
  QString text;
};

struct Request {
  enum class Kind { Empty, Demo } kind = Kind::Empty;
  QString path;
  CompetitionTitle title;
  QString exchangeFolder;
};

QDate dateOf(const QString& text) {
  try {
    return parseDate(text).date();
  } catch (const Error&) {
    throw UsageError{QString("»%1« ist kein Datum der Form TT.MM.JJJJ.").arg(text)};
  }
}

void applyOption(Request& request, const QString& option, const QString& value) {
  const bool demo = request.kind == Request::Kind::Demo;
  if (demo && option == "--austausch")
    request.exchangeFolder = value;
  else if (!demo && option == "--name")
    request.title.name = value;
  else if (!demo && option == "--ort")
    request.title.place = value;
  else if (!demo && option == "--datum")
    request.title.referenceDate = dateOf(value);
  else
    throw UsageError{QString("Unbekannte Angabe »%1«.").arg(option)};
}

Request parseRequest(QStringList arguments) {
  Request request;
  const QString command = arguments.isEmpty() ? QString() : arguments.takeFirst();
  if (command == "demo")
    request.kind = Request::Kind::Demo;
  else if (command != "neu")
    throw UsageError{command.isEmpty() ? QString("Es fehlt ein Befehl: neu oder demo.")
                                       : QString("Unbekannter Befehl »%1«.").arg(command)};
  while (!arguments.isEmpty()) {
    const QString argument = arguments.takeFirst();
    if (argument.startsWith("--")) {
      if (arguments.isEmpty()) throw UsageError{QString("Hinter »%1« fehlt der Wert.").arg(argument)};
      applyOption(request, argument, arguments.takeFirst());
    } else if (request.path.isEmpty()) {
      request.path = argument;
    } else {
      throw UsageError{QString("Mehr als eine Datei: »%1«.").arg(argument)};
    }
  }
  if (request.path.isEmpty()) throw UsageError{"Es fehlt der Name der Datei."};
  return request;
}

QString missingFolder(const QFileInfo& file) {
  return file.absoluteDir().exists() ? QString()
                                     : QString("Den Ordner gibt es nicht: %1").arg(file.absolutePath());
}

/// What stands in the way, before anything is made; empty for nothing.
QString obstacle(const Request& request) {
  const QFileInfo file(request.path);
  if (file.exists()) return QString("Die Datei gibt es schon, sie bleibt unverändert: %1").arg(request.path);
  const QString missing = missingFolder(file);
  if (!missing.isEmpty() || request.exchangeFolder.isEmpty()) return missing;
  return missingFolder(QFileInfo(QDir::cleanPath(request.exchangeFolder)));
}

int carryOut(const Request& request, QTextStream& out, QTextStream& errors) {
  if (const QString text = obstacle(request); !text.isEmpty()) {
    errors << text << "\n";
    return 1;
  }
  if (request.kind == Request::Kind::Demo)
    makeDemoCompetition(request.path);
  else
    makeCompetition(request.path, request.title);
  out << "Wettkampf angelegt: " << request.path << "\n";
  if (!request.exchangeFolder.isEmpty()) {
    Files files;
    writeExchangeFolder(files, request.exchangeFolder);
    out << "Austauschordner geschrieben: " << request.exchangeFolder << "\n";
  }
  if (!request.path.endsWith(".qkk", Qt::CaseInsensitive))
    out << "Hinweis: QK-Intarso öffnet nur Dateien mit der Endung qkk.\n";
  return 0;
}

}  // namespace

int runCompetitionTool(const QStringList& arguments, QTextStream& out, QTextStream& errors) {
  if (arguments.contains("--help") || arguments.contains("-h")) {
    out << Help;
    return 0;
  }
  try {
    return carryOut(parseRequest(arguments), out, errors);
  } catch (const UsageError& error) {
    errors << error.text << "\n\n" << Help;
    return 2;
  } catch (const Error& error) {
    errors << "Fehler: " << error.number() << " - " << error.description() << "\n";
    return 1;
  }
}

}  // namespace qk

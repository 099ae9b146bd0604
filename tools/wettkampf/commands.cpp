#include "tools/wettkampf/commands.h"

#include <QDir>
#include <QFileInfo>

#include "masterdata/making/competition.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/program_call.h"
#include "tools/wettkampf/exchange.h"
#include "tools/wettkampf/move_command.h"
#include "tools/wettkampf/usage_error.h"

namespace qk {

namespace {

constexpr int kDatabaseExists = 3204;

const QString Help =
    "qk-wettkampf: legt Wettkämpfe an und zieht mit ihnen um\n"
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
    "  qk-wettkampf umziehen VON NACH [--von-vorn]\n"
    "      kopiert einen Wettkampf, von einer Datei auf einen Server, zurück, oder von Datei zu Datei, und\n"
    "      vergleicht danach beide. VON wird nur gelesen. NACH ist eine Datei, die es noch nicht gibt, oder\n"
    "      eine Serverdatei, deren Datenbank leer ist. Solange muss überall QK-Intarso geschlossen sein.\n"
    "      --von-vorn  verwirft, was ein abgebrochener Umzug am Ziel liegen ließ, und beginnt neu\n"
    "  qk-wettkampf --hilfe | --version\n"
    "      zeigt diese Hilfe oder die Version.\n"
    "\n"
    "DATEI soll auf .qkk enden; ihr Pfad soll sonst keinen Punkt enthalten. Statt einer neuen Datei kann "
    "sie\n"
    "eine Serverdatei sein, ein Text, der eine leere Datenbank auf einem Server nennt (siehe im Handbuch\n"
    "\"Mehrere Arbeitsplätze\"). Ein Wettkampf, den es schon gibt, wird nie überschrieben.\n"
    "Rückgabewert: 0 fertig, 1 Fehler, 2 falscher Aufruf.\n";

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
    throw UsageError{command.isEmpty() ? QString("Es fehlt ein Befehl: neu, demo oder umziehen.")
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
  const QString missing = missingFolder(file);
  if (!missing.isEmpty() || request.exchangeFolder.isEmpty()) return missing;
  return missingFolder(QFileInfo(QDir::cleanPath(request.exchangeFolder)));
}

void make(const Request& request) {
  if (request.kind == Request::Kind::Demo)
    makeDemoCompetition(request.path);
  else
    makeCompetition(request.path, request.title);
}

int carryOut(const Request& request, QTextStream& out, QTextStream& errors) {
  if (const QString text = obstacle(request); !text.isEmpty()) {
    errors << text << "\n";
    return 1;
  }
  try {
    make(request);
  } catch (const Error& error) {
    if (error.number() != kDatabaseExists) throw;
    errors << "Den Wettkampf gibt es schon, er bleibt unverändert: " << request.path << "\n";
    return 1;
  }
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
  if (const auto answer = answerToCall(arguments, "qk-wettkampf", Help)) {
    out << *answer;
    return 0;
  }
  try {
    if (arguments.value(0) == "umziehen") {
      runMoveCommand(arguments.mid(1), out);
      return 0;
    }
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

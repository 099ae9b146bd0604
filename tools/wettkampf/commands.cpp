#include "tools/wettkampf/commands.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include "masterdata/making/competition.h"
#include "masterdata/making/starter_set.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/program_call.h"
#include "tools/wettkampf/copy_commands.h"
#include "tools/wettkampf/exchange.h"
#include "tools/wettkampf/furnish_command.h"
#include "tools/wettkampf/move_command.h"
#include "tools/wettkampf/usage_error.h"

namespace qk {

namespace {

const QString Help =
    "qk-wettkampf: legt Wettkämpfe an, zieht mit ihnen um, sichert sie und holt sie zurück\n"
    "\n"
    "Aufruf:\n"
    "  qk-wettkampf neu DATEI [--name TEXT] [--zeile2 TEXT] [--ort TEXT] [--datum TT.MM.JJJJ]\n"
    "          [--klassenwechsel TT.MM.] [--starter NAME | --wie DATEI [--mit-vereinen]\n"
    "          [--mit-mannschaften] [--mit-schuetzen]] [--von-vorn]\n"
    "      legt einen Wettkampf mit allen Tabellen an, ohne --starter und --wie einen leeren.\n"
    "      --name, --zeile2   Bezeichnung des Wettkampfs\n"
    "      --ort              Ort des Wettkampfs\n"
    "      --datum            Stichtag der Altersklassen (sonst 01.01.2026)\n"
    "      --klassenwechsel   Tag, an dem ein Klassenjahr beginnt (sonst 01.01.)\n"
    "      --starter          beginnt mit einer Vorlage: Klassen, Waffen, Disziplinen …; ihre Dateien "
    "liegen\n"
    "                         neben dem Programm im Ordner starter und dürfen geändert werden\n"
    "      --wie              beginnt wie ein früherer Wettkampf: Klassen, Disziplinen, Waffen, "
    "Kombinationen,\n"
    "                         Einlagen, Auswerteprofile, Schlüssel, Gruppen; nie mit Ergebnissen oder "
    "Zahlungen\n"
    "      --mit-schuetzen    dazu Schützen und Anmeldungen (mit Vereinen und Mannschaften), in den "
    "Klassen,\n"
    "                         die der neue Stichtag ergibt\n"
    "      --von-vorn         verwirft, was ein abgebrochener Aufruf auf dem Server liegen ließ\n"
    "  qk-wettkampf demo DATEI [--austausch ORDNER]\n"
    "      legt einen Wettkampf mit Beispieldaten an, bei jedem Aufruf denselben.\n"
    "      --austausch  schreibt dazu esa_preis.ini und def-Dateien in den Ordner\n"
    "  qk-wettkampf umziehen VON NACH [--von-vorn]\n"
    "      kopiert einen Wettkampf, von einer Datei auf einen Server, zurück, oder von Datei zu Datei, und\n"
    "      vergleicht danach beide. VON wird nur gelesen. NACH ist eine Datei, die es noch nicht gibt, oder\n"
    "      eine Serverdatei, deren Datenbank leer ist. Solange muss überall QK-Intarso geschlossen sein.\n"
    "      --von-vorn  verwirft, was ein abgebrochener Umzug am Ziel liegen ließ, und beginnt neu\n"
    "  qk-wettkampf einrichten SERVERDATEI\n"
    "      erneuert, was das Programm auf dem Server braucht, nachdem es selbst erneuert wurde. Nur der "
    "Besitzer\n"
    "      der Datenbank darf das; die anderen Arbeitsplätze dürfen dabei arbeiten.\n"
    "  qk-wettkampf sichern WETTKAMPF ORDNER\n"
    "      macht neben der Arbeit her eine geprüfte Kopie mit Beleg, wie das Büroprogramm es von selbst "
    "tut;\n"
    "      es bleiben die letzten neun und die letzte jedes Tages.\n"
    "  qk-wettkampf zurueck KOPIE ZIEL [--ungeprueft] [--von-vorn]\n"
    "      vergleicht eine Sicherung mit ihrem Beleg und bringt sie in eine neue Datei oder in eine leere\n"
    "      Datenbank, die eine Serverdatei nennt. KOPIE wird nur gelesen.\n"
    "      --ungeprueft  auch ohne Beleg, wenn die Datei in sich stimmt\n"
    "      --von-vorn    verwirft, was ein abgebrochener Aufruf am Ziel liegen ließ\n"
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
  CompetitionRequest competition;
  QString exchangeFolder;
};

QDate dateOf(const QString& text) {
  try {
    return parseDate(text).date();
  } catch (const Error&) {
    throw UsageError{QString("»%1« ist kein Datum der Form TT.MM.JJJJ.").arg(text)};
  }
}

QString yearBeginOf(const QString& text) {
  static const QRegularExpression day(R"(^\d{1,2}\.\d{1,2}\.$)");
  if (!day.match(text).hasMatch() || !isDate(text + "2024"))
    throw UsageError{QString("»%1« ist kein Tag der Form TT.MM.").arg(text)};
  return text;
}

/// By the name of its file or by its title.
QString starterOf(const QString& name) {
  Files files;
  QStringList names;
  for (const StarterSet& set : starterSets(files, starterFolder())) {
    if (set.name.compare(name, Qt::CaseInsensitive) == 0 || set.title.compare(name, Qt::CaseInsensitive) == 0)
      return set.path;
    names.append(set.name);
  }
  throw UsageError{names.isEmpty()
                       ? QString("Es gibt keine Vorlagen: %1").arg(starterFolder())
                       : QString("Es gibt keine Vorlage »%1«, aber: %2.").arg(name, names.join(", "))};
}

/// False for an option that takes a value.
bool applySwitch(CompetitionRequest& request, const QString& option) {
  if (option == "--mit-vereinen")
    request.withClubs = true;
  else if (option == "--mit-mannschaften")
    request.withTeams = request.withClubs = true;
  else if (option == "--mit-schuetzen")
    request.withShooters = request.withTeams = request.withClubs = true;
  else if (option == "--von-vorn")
    request.again = true;
  else
    return false;
  return true;
}

void applyOption(Request& request, const QString& option, const QString& value) {
  const bool demo = request.kind == Request::Kind::Demo;
  CompetitionRequest& wanted = request.competition;
  if (demo && option == "--austausch")
    request.exchangeFolder = value;
  else if (!demo && option == "--name")
    wanted.title.name = value;
  else if (!demo && option == "--zeile2")
    wanted.title.secondLine = value;
  else if (!demo && option == "--ort")
    wanted.title.place = value;
  else if (!demo && option == "--datum")
    wanted.title.referenceDate = dateOf(value);
  else if (!demo && option == "--klassenwechsel")
    wanted.yearBegin = yearBeginOf(value);
  else if (!demo && option == "--starter")
    wanted.starter = starterOf(value);
  else if (!demo && option == "--wie")
    wanted.earlier = value;
  else
    throw UsageError{QString("Unbekannte Angabe »%1«.").arg(option)};
}

void refuseContradiction(const CompetitionRequest& request) {
  if (!request.starter.isEmpty() && !request.earlier.isEmpty())
    throw UsageError{"--starter und --wie gehen nicht zusammen."};
  if (request.earlier.isEmpty() && (request.withClubs || request.withTeams || request.withShooters))
    throw UsageError{"--mit-vereinen, --mit-mannschaften und --mit-schuetzen gehören zu --wie."};
}

Request parseRequest(QStringList arguments) {
  Request request;
  const QString command = arguments.isEmpty() ? QString() : arguments.takeFirst();
  if (command == "demo")
    request.kind = Request::Kind::Demo;
  else if (command != "neu")
    throw UsageError{
        command.isEmpty()
            ? QString("Es fehlt ein Befehl: neu, demo, umziehen, einrichten, sichern oder zurueck.")
            : QString("Unbekannter Befehl »%1«.").arg(command)};
  while (!arguments.isEmpty()) {
    const QString argument = arguments.takeFirst();
    if (request.kind == Request::Kind::Empty && applySwitch(request.competition, argument)) continue;
    if (argument.startsWith("--")) {
      if (arguments.isEmpty()) throw UsageError{QString("Hinter »%1« fehlt der Wert.").arg(argument)};
      applyOption(request, argument, arguments.takeFirst());
    } else if (request.competition.path.isEmpty()) {
      request.competition.path = argument;
    } else {
      throw UsageError{QString("Mehr als eine Datei: »%1«.").arg(argument)};
    }
  }
  refuseContradiction(request.competition);
  if (request.competition.path.isEmpty()) throw UsageError{"Es fehlt der Name der Datei."};
  return request;
}

QString missingFolder(const QFileInfo& file) {
  return file.absoluteDir().exists() ? QString()
                                     : QString("Den Ordner gibt es nicht: %1").arg(file.absolutePath());
}

/// What stands in the way, before anything is made; empty for nothing.
QString obstacle(const Request& request) {
  const QFileInfo file(request.competition.path);
  const QString missing = missingFolder(file);
  if (!missing.isEmpty() || request.exchangeFolder.isEmpty()) return missing;
  return missingFolder(QFileInfo(QDir::cleanPath(request.exchangeFolder)));
}

void make(const Request& request, QTextStream& out) {
  if (request.kind == Request::Kind::Demo) return makeDemoCompetition(request.competition.path);
  const MakingResult result = makeCompetition(request.competition);
  if (result.shooters > 0)
    out << QString("%1 Schützen übernommen, %2 davon in einer anderen Klasse, %3 passen in keine.\n")
               .arg(result.shooters)
               .arg(result.newClasses)
               .arg(result.withoutClass);
}

int carryOut(const Request& request, QTextStream& out, QTextStream& errors) {
  if (const QString text = obstacle(request); !text.isEmpty()) {
    errors << text << "\n";
    return 1;
  }
  try {
    make(request, out);
  } catch (const Error& error) {
    if (error.number() != errors::kStoreExists) throw;
    errors << "Den Wettkampf gibt es schon, er bleibt unverändert: " << request.competition.path << "\n";
    return 1;
  }
  out << "Wettkampf angelegt: " << request.competition.path << "\n";
  if (!request.exchangeFolder.isEmpty()) {
    Files files;
    writeExchangeFolder(files, request.exchangeFolder);
    out << "Austauschordner geschrieben: " << request.exchangeFolder << "\n";
  }
  if (!request.competition.path.endsWith(".qkk", Qt::CaseInsensitive))
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
    using Command = void (*)(const QStringList&, QTextStream&);
    static const QHash<QString, Command> commands = {{"umziehen", runMoveCommand},
                                                     {"einrichten", runFurnishCommand},
                                                     {"sichern", runCopyCommand},
                                                     {"zurueck", runBringBackCommand}};
    if (const Command command = commands.value(arguments.value(0))) {
      command(arguments.mid(1), out);
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

#include "tools/station/options.h"

#include <QCommandLineParser>

#include "platform/runtime/files.h"

namespace qk {

namespace {

struct FaultName {
  QString name;
  Fault fault;
};

const std::vector<FaultName>& faultNames() {
  static const std::vector<FaultName> all = {
      {"langsam", Fault::Slow},  {"doppelt", Fault::Duplicate},
      {"code78", Fault::Code78}, {"zerrissen", Fault::Torn},
      {"muell", Fault::Garbage}, {"flagge-ohne-daten", Fault::FlagWithoutData}};
  return all;
}

constexpr int highestLine = 999;

/// "6" is the lines 1 to 6; "2,5-7" is the lines 2, 5, 6 and 7. Empty when it can't be read.
std::vector<int> parseLines(const QString& text) {
  std::vector<int> lines;
  const QString list = text.contains(',') || text.contains('-') ? text : "1-" + text;
  for (const QString& part : list.split(',')) {
    const QStringList ends = part.split('-');
    bool firstOk = false;
    bool lastOk = false;
    const int first = ends.first().toInt(&firstOk);
    const int last = ends.last().toInt(&lastOk);
    if (!firstOk || !lastOk || ends.size() > 2 || first < 1 || last < first || last > highestLine) return {};
    for (int line = first; line <= last; ++line) lines.push_back(line);
  }
  return lines;
}

/// Reads the values of a command line and remembers the first mistake.
class Reader {
 public:
  Reader(const QCommandLineParser& parser, QString* fault) : parser_(parser), fault_(fault) {}

  void number(const QString& option, int lowest, int highest, int& value) {
    if (!parser_.isSet(option)) return;
    bool ok = false;
    const int read = parser_.value(option).toInt(&ok);
    if (!ok || read < lowest || read > highest)
      return complain("--" + option + ": \"" + parser_.value(option) + "\" ist keine Zahl von " +
                      QString::number(lowest) + " bis " + QString::number(highest) + ".");
    value = read;
  }
  void complain(const QString& sentence) {
    if (fault_->isEmpty()) *fault_ = sentence;
  }

 private:
  const QCommandLineParser& parser_;
  QString* fault_;
};

QSet<Fault> parseFaults(const QString& text, Reader& reader) {
  QSet<Fault> faults;
  for (const QString& name : text.split(',', Qt::SkipEmptyParts)) {
    bool known = name == "alle";
    for (const FaultName& candidate : faultNames()) {
      // A flag without data ends the office program: only who names it gets it.
      const bool meant =
          candidate.name == name || (name == "alle" && candidate.fault != Fault::FlagWithoutData);
      if (meant) faults.insert(candidate.fault);
      known |= meant;
    }
    if (!known) reader.complain("--fehler: \"" + name + "\" ist kein bekannter Fehler.");
  }
  return faults;
}

}  // namespace

StationOptions parseStationOptions(const QStringList& arguments, QString* fault) {
  QCommandLineParser parser;
  for (const QString name :
       {"ordner", "linien", "tempo", "zufall", "protokoll", "wiederholen", "fehler", "fehlerquote", "schuss"})
    parser.addOption(QCommandLineOption(name, {}, "wert"));
  parser.addOption(QCommandLineOption("beenden"));

  fault->clear();
  Reader reader(parser, fault);
  StationOptions options;
  const bool readable = parser.parse(QStringList{"qk-station"} + arguments);
  if (!parser.unknownOptionNames().isEmpty())
    reader.complain("Unbekannte Option: " + parser.unknownOptionNames().first());
  else if (!readable)
    reader.complain("Einer Option fehlt ihr Wert.");
  if (!parser.positionalArguments().isEmpty())
    reader.complain("Unerwartete Angabe: " + parser.positionalArguments().first());

  if (parser.value("ordner").isEmpty())
    reader.complain("Der Austauschordner fehlt (--ordner).");
  else
    options.folder = withTrailingSeparator(parser.value("ordner"));
  if (parser.isSet("linien")) options.lines = parseLines(parser.value("linien"));
  if (options.lines.empty())
    reader.complain("--linien: \"" + parser.value("linien") + "\" nennt keine Linien.");

  int seed = 1;
  reader.number("tempo", 0, 3600000, options.paceMs);
  reader.number("zufall", 0, 2147483647, seed);
  reader.number("fehlerquote", 0, 100, options.faultPercent);
  reader.number("schuss", 0, 1000000, options.shotLimit);
  options.seed = static_cast<quint64>(seed);
  options.faults = parseFaults(parser.value("fehler"), reader);
  options.logFile = parser.value("protokoll");
  options.replayFile = parser.value("wiederholen");
  options.endWhenDone = parser.isSet("beenden");
  return options;
}

QString stationHelp() {
  return R"(qk-station - spielt die Stände einer Schießanlage, zum Üben und Prüfen

Aufruf: qk-station --ordner ORDNER [Optionen]

Die Stände nehmen die Befehle des Schießbüros aus dem Austauschordner entgegen. Im Preismodus schießt ein
angemeldeter Schütze die gewählten Disziplinen der esa_preis.ini, so viele Schuss, wie die def-Datei nennt.

  --ordner ORDNER       Austauschordner mit esa_preis.ini und def-Dateien
  --linien LINIEN       "6" sind die Linien 1 bis 6, "2,5-7" die Linien 2, 5, 6 und 7 (Vorgabe: 1)
  --tempo MS            Millisekunden von Schuss zu Schuss; 0 so schnell wie möglich (Vorgabe: 1000)
  --zufall ZAHL         gleiche Zahl, gleiche Treffer (Vorgabe: 1)
  --schuss ANZAHL       höchstens so viele Schuss je Anmeldung; 0 ohne Grenze (Vorgabe: 0)
  --beenden             endet, wenn auf jeder Linie alles geschossen und abgeholt ist
  --protokoll DATEI     hängt jeden Schuss und jede Serie an, bevor das Büro sie sehen kann
  --wiederholen DATEI   schießt im Preismodus die Schüsse eines solchen Protokolls noch einmal
  --fehler LISTE        Störungen, durch Komma getrennt, oder "alle" (ohne flagge-ohne-daten):
                          langsam            nimmt Befehle erst nach bis zu 12 Sekunden an
                          doppelt            meldet einen Schuss zweimal
                          code78             meldet einen Schuss mit der Kennung 78
                          zerrissen          meldet erst einen halben, dann den ganzen Schuss
                          muell              meldet sinnlose Zeichen
                          flagge-ohne-daten  meldet Daten, ohne sie zu schreiben (beendet das Büroprogramm)
  --fehlerquote PROZENT wie oft jede gewählte Störung eintritt (Vorgabe: 20)
  -h, --help, --hilfe   diese Hilfe
  --version             die Version

Das Programm läuft, bis es beendet wird (Strg+C) oder --beenden greift.
)";
}

}  // namespace qk

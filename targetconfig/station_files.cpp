#include "targetconfig/station_files.h"

#include <optional>

#include "platform/runtime/files.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/textcodec.h"
#include "targetconfig/station_lines.h"

namespace qk {

namespace {

const QString lineEnd = "\r\n";

QString quotedText(const QString& text) {
  return '"' + text + '"';
}

QString withoutQuotes(QString text) {
  return text.remove('"');
}

/// One entry of a def file; a counted one stands as often as its count says, its key numbered from 1.
struct Entry {
  QString key;
  QString Definition::*value;
  QString Definition::*count = nullptr;
};

const std::vector<Entry>& entries() {
  static const std::vector<Entry> all = {
      {">Bezeichnung", &Definition::bezeichnung},
      {">KennNummer", &Definition::kennNummer},
      {">RegelNummer", &Definition::regelNummer},
      {">WertungsRadius", &Definition::wertungsRadius},
      {">MaximalDurchmesser", &Definition::maximalDurchmesser},
      {">MinimalDurchmesser", &Definition::minimalDurchmesser},
      {">Schusszahl", &Definition::schusszahl},
      {">ProbeSchuesse", &Definition::probeSchuesse},
      {">SchiessZeit", &Definition::schiessZeit},
      {">ProbeZeit", &Definition::probeZeit},
      {">Wertung", &Definition::wertung},
      {">SchiessPosition", &Definition::schiessPosition},
      {">SerienLaenge", &Definition::serienLaenge},
      {">DateiWaffe", &Definition::dateiWaffe},
      {">DateiScheibe", &Definition::dateiScheibe},
      {">ZeitenAnzahl", &Definition::zeitenAnzahl},
      {">Zeit", &Definition::zeit, &Definition::zeitenAnzahl},
      {">SchussAnzahl", &Definition::schussAnzahl},
      {">SchussZahl", &Definition::schussZahl, &Definition::schussAnzahl},
      {">PositionsAnzahl", &Definition::positionsAnzahl},
      {">Position", &Definition::position, &Definition::positionsAnzahl},
      {">SerienAnzahl", &Definition::serienAnzahl},
      {">Serien", &Definition::serien, &Definition::serienAnzahl},
      {">DateiName", &Definition::dateiName},
  };
  return all;
}

bool isRepetitionOf(const QString& key, const QString& text) {
  if (!text.startsWith(key) || text.size() == key.size()) return false;
  for (const QChar c : QStringView(text).sliced(key.size()))
    if (c < '0' || c > '9') return false;
  return true;
}

const Entry* entryOfKey(const QString& text) {
  for (const Entry& entry : entries())
    if (entry.count ? isRepetitionOf(entry.key, text) : entry.key == text) return &entry;
  return nullptr;
}

int repetitions(const Definition& definition, const Entry& entry) {
  return entry.count ? toInt16(parsePrefix(definition.*entry.count)) : 1;
}

/// The value of `key = "value"`, or nothing when the line is something else.
std::optional<QString> valueOf(const QString& line, const QString& key) {
  const qsizetype equals = line.indexOf('=');
  if (equals < 0 || line.first(equals).trimmed() != key) return std::nullopt;
  return withoutQuotes(line.sliced(equals + 1)).trimmed();
}

QString shotCount(const QStringList& lines) {
  for (qsizetype i = 0; i + 1 < lines.size(); ++i)
    if (lines[i].contains(">Schusszahl")) return numberText(parsePrefix(withoutQuotes(lines[i + 1])));
  return {};
}

}  // namespace

QStringList stationLines(const QByteArray& bytes) {
  return splitLines(fromWindows1252(bytes));
}

QStringList readStationLines(Files& files, const QString& path) {
  return stationLines(files.read(path));
}

QByteArray stationDisciplinesToBytes(const std::vector<StationDiscipline>& disciplines) {
  QStringList lines = {"[Setting]", "Preselection = 1", "RemoteInput = 1", "PrePaid = 0", "NurMatch = 0"};
  int section = 0;
  for (const StationDiscipline& discipline : disciplines) {
    lines += "[W" + QString::number(++section) + "]";
    lines += "Bezeichnung = " + quotedText(discipline.title);
    lines += "Definition = " + quotedText(discipline.definition);
    lines += "Check = 0";
    lines += "RemoteNr = 1";
  }
  return toWindows1252(lines.join(lineEnd) + lineEnd);
}

bool hasEntry(const Definition& definition, QString Definition::*value) {
  for (const Entry& entry : entries())
    if (entry.value == value) return !entry.count || parsePrefix(definition.*entry.count) > 0.5;
  return false;
}

std::vector<StationDiscipline> stationDisciplinesFromBytes(const QByteArray& bytes) {
  std::vector<StationDiscipline> disciplines;
  for (const QString& line : stationLines(bytes)) {
    if (const auto title = valueOf(line, "Bezeichnung"))
      disciplines.push_back({*title, {}});
    else if (const auto definition = valueOf(line, "Definition"); definition && !disciplines.empty())
      disciplines.back().definition = *definition;
  }
  return disciplines;
}

void writeStationDisciplines(Files& files, const QString& folder,
                             const std::vector<StationDiscipline>& disciplines) {
  files.write(folder + EsaPreisIni, stationDisciplinesToBytes(disciplines));
}

std::vector<StationDiscipline> readStationDisciplines(Files& files, const QString& folder) {
  return stationDisciplinesFromBytes(files.read(folder + EsaPreisIni));
}

QByteArray definitionToBytes(const Definition& definition) {
  QString text;
  for (const Entry& entry : entries()) {
    for (int i = 1; i <= repetitions(definition, entry); ++i) {
      const QString key = entry.count ? entry.key + QString::number(i) : entry.key;
      text += quotedText(key) + lineEnd + quotedText(definition.*entry.value) + lineEnd;
    }
  }
  return toWindows1252(text);
}

Definition definitionFromBytes(const QByteArray& bytes) {
  Definition definition;
  const Entry* current = nullptr;
  for (const QString& line : stationLines(bytes)) {
    const QString text = withoutQuotes(line);
    if (const Entry* key = entryOfKey(text)) {
      current = key;
    } else {
      if (current) definition.*current->value = text;
      current = nullptr;
    }
  }
  return definition;
}

void writeDefinition(Files& files, const QString& path, const Definition& definition) {
  files.write(path, definitionToBytes(definition));
}

Definition readDefinition(Files& files, const QString& path) {
  return definitionFromBytes(files.read(path));
}

QString definitionFileName(const QString& weapon, const QString& title) {
  QString name = weapon + "_" + title;
  for (const QChar c : QString(":\"/\\<>*?|+")) name.remove(c);
  // Each replacement is a single pass; long runs of blanks may leave "__" standing.
  name.replace(' ', '_').replace("__", "_").replace("___", "_");
  return "0_hd_" + name + ".def";
}

QString iniMissingText(const QString& iniPath) {
  return "Datei: " + iniPath +
         " nicht gefunden!\r\nHinweis: Diese Fehlermeldung erscheint noch je Linie!\r\n\r\n"
         "Bitte setzen Sie im Menü: Optionen - Standeinstellungen den Intarso-Netzwerkpfad.";
}

DisciplineGrid readDisciplineGrid(Files& files, const QString& folder) {
  DisciplineGrid grid;
  grid.iniPath = folder + EsaPreisIni;
  grid.iniMissing = !files.readable(grid.iniPath);
  if (grid.iniMissing) return grid;

  for (const QString& line : readStationLines(files, grid.iniPath)) {
    if (holdsTitle(line)) grid.rows.push_back({titleForLine(line), {}});
    if (holdsDefinition(line)) {
      const QString name = definitionForLine(line);
      if (grid.rows.empty() || !files.readable(folder + name)) continue;
      grid.rows.back().shots = shotCount(readStationLines(files, folder + name));
    }
  }
  return grid;
}

}  // namespace qk

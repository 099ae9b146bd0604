#include "targetconfig/definition_files.h"

#include <QStringList>
#include <algorithm>

#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/folder_writer.h"
#include "platform/runtime/textcodec.h"

namespace qk {

namespace {

using C = DefinitionRows;

constexpr int kMostRowsNamed = 10;

/// Where a def file's entry comes from.
struct Source {
  int column;
  QString Definition::*entry;
};
const std::vector<Source>& sources() {
  static const std::vector<Source> all = {
      {C::Bezeichnung, &Definition::bezeichnung},
      {C::KennNummer, &Definition::kennNummer},
      {C::Regelnummer, &Definition::regelNummer},
      {C::WertungsRadius, &Definition::wertungsRadius},
      {C::MaximalDurchmesser, &Definition::maximalDurchmesser},
      {C::MinimalDurchmesser, &Definition::minimalDurchmesser},
      {C::Schusszahl, &Definition::schusszahl},
      {C::Probeschuesse, &Definition::probeSchuesse},
      {C::SchiessZeit, &Definition::schiessZeit},
      {C::ProbeZeit, &Definition::probeZeit},
      {C::Wertung, &Definition::wertung},
      {C::SchiessPosition, &Definition::schiessPosition},
      {C::SerienLaenge, &Definition::serienLaenge},
      {C::DateiWaffe, &Definition::dateiWaffe},
      {C::DateiScheibe, &Definition::dateiScheibe},
      {C::ZeitenAnzahl, &Definition::zeitenAnzahl},
      {C::Zeit, &Definition::zeit},
      {C::SchussAnzahl, &Definition::schussAnzahl},
      {C::SchussZahl, &Definition::schussZahl},
      {C::PositionsAnzahl, &Definition::positionsAnzahl},
      {C::Position, &Definition::position},
      {C::SerienAnzahl, &Definition::serienAnzahl},
      {C::Serien, &Definition::serien},
      {C::DateiName, &Definition::dateiName},
  };
  return all;
}

QString sightersCode(const QString& text) {
  return text == "unbegrenzt" ? "0" : text == "keine" ? "-1" : text;
}

QString scoringCode(const QString& text) {
  return text == "Ring"               ? "0"
         : text == "Zehntelringe"     ? "1"
         : text == "Ring + Teiler"    ? "10"
         : text == "Zehntel + Teiler" ? "11"
                                      : "";
}

/// The first character that a station's file can't hold: outside its code page, or the end of a line.
QString unwritable(const QString& text) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool pair = text[i].isHighSurrogate() && i + 1 < text.size();
    const QString character = text.mid(i, pair ? 2 : 1);
    if (character == "\r" || character == "\n") return "Zeilenende";
    bool lossy = false;
    toWindows1252(character, &lossy);
    if (lossy) return character;
  }
  return {};
}

QString rowName(const TextTable& table, int row) {
  return "Zeile " + QString::number(row) + " (" + table.text(row, C::Waffe) + ", " +
         table.text(row, C::Name) + ")";
}

/// The texts of a row as they are written, by column: what a def file translates or leaves out isn't there.
std::vector<std::pair<int, QString>> writtenTexts(const TextTable& table, int row, Output output) {
  if (output == Output::Ini)
    return {{C::Bezeichnung, table.text(row, C::Bezeichnung)}, {C::DefDatei, table.text(row, C::DefDatei)}};
  const Definition definition = definitionOf(table, row);
  std::vector<std::pair<int, QString>> texts;
  for (const Source& source : sources())
    if (hasEntry(definition, source.entry)) texts.emplace_back(source.column, definition.*source.entry);
  return texts;
}

}  // namespace

Definition definitionOf(const TextTable& table, int row) {
  Definition definition;
  for (const Source& source : sources()) definition.*source.entry = table.text(row, source.column);
  definition.probeSchuesse = sightersCode(definition.probeSchuesse);
  definition.wertung = scoringCode(definition.wertung);
  return definition;
}

std::vector<StationDiscipline> stationDisciplinesOf(const DefinitionRows& rows, int column) {
  std::vector<StationDiscipline> disciplines;
  for (int row = 1; row < rows.table().rows(); ++row)
    if (rows.isChosen(row) && !rows.isHidden(row))
      disciplines.push_back({rows.table().text(row, C::Bezeichnung), rows.table().text(row, column)});
  return disciplines;
}

bool isWritten(const DefinitionRows& rows, int row, Output output) {
  if (!rows.isChosen(row) || rows.isHidden(row)) return false;
  return output != Output::Def || !rows.table().text(row, C::DateiName).isEmpty();
}

std::vector<int> definitionFileRows(const DefinitionRows& rows) {
  std::vector<int> found;
  for (int row = 1; row < rows.table().rows(); ++row)
    if (isWritten(rows, row, Output::Def)) found.push_back(row);
  return found;
}

std::optional<int> rowWithoutEntry(const DefinitionRows& rows, int column) {
  for (int row = 1; row < rows.table().rows(); ++row)
    if (rows.isChosen(row) && !rows.isHidden(row) && rows.table().text(row, column).isEmpty()) return row;
  return std::nullopt;
}

std::optional<int> rowWithoutFiles(const DefinitionRows& rows) {
  const TextTable& table = rows.table();
  for (int row = 1; row < table.rows(); ++row)
    if (rows.isChosen(row) &&
        (table.text(row, C::DateiWaffe).isEmpty() || table.text(row, C::DateiScheibe).isEmpty()))
      return row;
  return std::nullopt;
}

DefinitionFiles::DefinitionFiles(const Workplace& workplace, const DefinitionRows& rows,
                                 const QString& folder)
    : workplace_(workplace), rows_(rows), folder_(folder) {}

bool DefinitionFiles::create(Output output) {
  if (!check(output) || !checkCharacters(output) || !write(output)) return false;
  workplace_.dialogs.note("Datei(en) erstellt", BoxIcon::Information);
  return true;
}

bool DefinitionFiles::check(Output output) const {
  switch (output) {
    case Output::Ini:
      return checkEntries(C::DefDatei);
    case Output::IniUndDef: {
      const bool entries = checkEntries(C::DateiName);
      return checkFiles() && entries;
    }
    case Output::Def:
      return checkFiles();
  }
  Q_UNREACHABLE();
}

bool DefinitionFiles::checkEntries(int column) const {
  const auto row = rowWithoutEntry(rows_, column);
  if (!row) return true;
  show(*row, column);
  workplace_.dialogs.note(
      "Prüfung fehlgeschlagen: \r\nFür jede gewählte Disziplin/Kombination muss eine def-Datei ausgewählt "
      "sein!",
      BoxIcon::Exclamation);
  return false;
}

bool DefinitionFiles::checkFiles() const {
  if (!rowWithoutFiles(rows_)) return true;
  show(1, C::DateiWaffe);
  workplace_.dialogs.note(
      "Prüfung fehlgeschlagen\r\nFür die Erstellung der def-Dateien müssen die Einträge >DateiWaffe und "
      ">DateiScheibe vorhanden sein",
      BoxIcon::Exclamation);
  return false;
}

/// A "?" in a title or name would part the stations from what the office has; so nothing is written at all.
bool DefinitionFiles::checkCharacters(Output output) const {
  const TextTable& table = rows_.table();
  QStringList lines;
  int flawed = 0;
  for (int row = 1; row < table.rows(); ++row) {
    if (!isWritten(rows_, row, output)) continue;
    for (const auto& [column, text] : writtenTexts(table, row, output)) {
      const QString character = unwritable(text);
      if (character.isEmpty()) continue;
      if (++flawed == 1) show(row, column);
      if (flawed <= kMostRowsNamed)
        lines += rowName(table, row) + ", " + table.text(0, column) + ": " + character;
      break;
    }
  }
  if (flawed == 0) return true;
  if (flawed > kMostRowsNamed) lines += QString("und %1 weitere").arg(flawed - kMostRowsNamed);
  workplace_.dialogs.note(
      "Prüfung fehlgeschlagen\r\nDiese Zeichen können die Stationen nicht lesen:\r\n" + lines.join("\r\n"),
      BoxIcon::Exclamation);
  return false;
}

bool DefinitionFiles::write(Output output) {
  const std::vector<int> defRows = output == Output::Ini ? std::vector<int>() : definitionFileRows(rows_);
  const int all = int(defRows.size()) + (output == Output::Def ? 0 : 1);
  int written = 0;
  QString name;
  const ErrorReport report = [&](const Error& error) {
    return FehlerAnzeigen(workplace_.dialogs, error,
                          "Fehler beim Schreiben der Datei " + folder_ + name + "!");
  };
  bool stopped = false;
  const bool finished = reported(report, [&](Steps& step) {
    try {
      workplace_.files.makeFolder(folder_);
    } catch (const Error&) {
      // It exists as a rule; where it doesn't, the first file says so.
    }
    FolderWriter folder(workplace_.files, folder_);
    const auto goesOn = [&] { return !(stopped = progress && !progress(written, all)); };
    for (const int row : defRows) {
      if (!goesOn()) return;
      name = rows_.table().text(row, C::DateiName);
      if (step([&] { folder.write(name, definitionToBytes(definitionOf(rows_.table(), row))); })) ++written;
    }
    if (output == Output::Def || !goesOn()) return;
    name = EsaPreisIni;
    const int column = output == Output::Ini ? C::DefDatei : C::DateiName;
    if (step([&] { folder.write(name, stationDisciplinesToBytes(stationDisciplinesOf(rows_, column))); }))
      ++written;
  });
  if (stopped)
    workplace_.dialogs.note(
        "Angehalten: " + QString::number(written) + " von " + QString::number(all) + " Dateien erstellt",
        BoxIcon::Exclamation);
  return finished && !stopped;
}

void DefinitionFiles::show(int row, int column) const {
  if (showCell) showCell(row, column);
}

}  // namespace qk

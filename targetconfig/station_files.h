// The target system's configuration in its network folder: esa_preis.ini lists the disciplines offered at the
// firing lines, a def file describes one discipline. Windows-1252; written with CR LF, read with CR LF or LF.
//
// Reading takes what can be read from a damaged file: unknown lines are skipped, missing entries stay empty.
// A file that can't be opened is the Error of platform/runtime/files.h.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

namespace qk {

class Files;

inline const QString EsaPreisIni = "esa_preis.ini";

/// The lines of such a file without their ends; damaged bytes stand for some character each.
QStringList stationLines(const QByteArray& bytes);
QStringList readStationLines(Files& files, const QString& path);

/// One section of esa_preis.ini, in the order of the file: that order is the position in the discipline mask.
struct StationDiscipline {
  QString title;
  QString definition;  ///< bare name of the def file
  friend bool operator==(const StationDiscipline&, const StationDiscipline&) = default;
};

/// The entries of a def file in their order, values as the file holds them. The four counted entries repeat
/// one value as often as their count says (not at all when it isn't a number).
struct Definition {
  QString bezeichnung;
  QString kennNummer;
  QString regelNummer;
  QString wertungsRadius;
  QString maximalDurchmesser;
  QString minimalDurchmesser;
  QString schusszahl;
  QString probeSchuesse;  ///< "0" without limit, "-1" none, else a number
  QString schiessZeit;
  QString probeZeit;
  QString wertung;  ///< "0" ring, "1" tenths, "10" ring + teiler, "11" tenths + teiler
  QString schiessPosition;
  QString serienLaenge;
  QString dateiWaffe;
  QString dateiScheibe;
  QString zeitenAnzahl;
  QString zeit;  ///< repeated
  QString schussAnzahl;
  QString schussZahl;  ///< repeated
  QString positionsAnzahl;
  QString position;  ///< repeated
  QString serienAnzahl;
  QString serien;  ///< repeated
  QString dateiName;
  friend bool operator==(const Definition&, const Definition&) = default;
};

QByteArray stationDisciplinesToBytes(const std::vector<StationDiscipline>& disciplines);
std::vector<StationDiscipline> stationDisciplinesFromBytes(const QByteArray& bytes);
/// `folder` with its final separator.
void writeStationDisciplines(Files& files, const QString& folder,
                             const std::vector<StationDiscipline>& disciplines);
std::vector<StationDiscipline> readStationDisciplines(Files& files, const QString& folder);

/// Whether its def file has that entry: a counted one may be left out by its count.
bool hasEntry(const Definition& definition, QString Definition::*value);
QByteArray definitionToBytes(const Definition& definition);  ///< Error 6 for a count beyond 16 bits
Definition definitionFromBytes(const QByteArray& bytes);
void writeDefinition(Files& files, const QString& path, const Definition& definition);
Definition readDefinition(Files& files, const QString& path);

/// Name of the def file of a discipline for a weapon: "LG" and "Luftgewehr: Auflage 1+2" give
/// "0_hd_LG_Luftgewehr_Auflage_12.def".
QString definitionFileName(const QString& weapon, const QString& title);

/// What is said where esa_preis.ini isn't found.
QString iniMissingText(const QString& iniPath);

/// What a firing line offers, for its discipline grid.
struct GridDiscipline {
  QString title;
  QString shots;  ///< number text; empty when the def file or its entry is missing
  friend bool operator==(const GridDiscipline&, const GridDiscipline&) = default;
};
struct DisciplineGrid {
  bool iniMissing = false;
  QString iniPath;
  std::vector<GridDiscipline> rows;
};

/// A row per line of esa_preis.ini that contains "Bezeichnung"; a line that contains "Definition" names the
/// def file of the last row, whose shot count stands on the line after the one that contains ">Schusszahl".
/// Case matters. `folder` with its final separator.
DisciplineGrid readDisciplineGrid(Files& files, const QString& folder);

}  // namespace qk

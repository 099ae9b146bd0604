// What the generator of the station files works on: a row for each discipline or combination and weapon, a
// column for each entry of a def file. Needs no window.
//
// Rows are counted with the header, from 1. A row's hidden text is "Diszi" or "Kombi", the ID, "-", the
// weapon's key; then, parted by ";", the shots of a series and the tenths flag ("-1" or "0"). What the filter
// hides has no height, what the kind of output doesn't use has no width.
#pragma once

#include <QColor>
#include <QString>
#include <optional>

#include "app/ground/list_order.h"
#include "platform/dao/database.h"
#include "platform/grid/suggestions.h"
#include "platform/grid/text_table.h"

namespace qk {

class Files;

/// In the order of the window's options.
enum class Naming { Direkt, MitDoppelpunkt, MitUnterstrich };
enum class RowFilter { Alle, NurDisziplinen, NurKombinationen };
enum class Output { Ini, IniUndDef, Def };

class DefinitionRows {
 public:
  enum Column {
    Gewaehlt,  ///< "-1" for chosen
    Name,      ///< of the discipline or combination
    Waffe,     ///< the weapon's key
    Bezeichnung,
    DefDatei,  ///< an existing def file, for an esa_preis.ini alone
    KennNummer,
    Regelnummer,
    WertungsRadius,
    MaximalDurchmesser,
    MinimalDurchmesser,
    Schusszahl,
    Probeschuesse,
    SchiessZeit,
    ProbeZeit,
    Wertung,
    SchiessPosition,
    SerienLaenge,
    DateiWaffe,
    DateiScheibe,
    ZeitenAnzahl,
    Zeit,
    SchussAnzahl,
    SchussZahl,
    PositionsAnzahl,
    Position,
    SerienAnzahl,
    Serien,
    DateiName,  ///< the def file to write
    Rest,       ///< holds nothing
    ColumnCount
  };

  DefinitionRows();

  TextTable& table() { return table_; }
  const TextTable& table() const { return table_; }

  /// Builds everything anew from the competition and from the names of the files in the folder (with its
  /// final separator); edits are lost, all rows show. Errors of the store pass, the rows so far stay.
  void build(dao::Database& db, Files& files, const QString& folder);

  /// Empty for columns that suggest nothing.
  const Suggestions& suggestions(int column) const { return suggestions_[column]; }

  /// The titles of all rows; names of def files stay as they are.
  void setNaming(Naming naming);
  /// Hides rows; ticks stay as they are.
  void setFilter(RowFilter filter);
  void setOutput(Output output);
  /// All rows, hidden ones too.
  void selectAll(bool selected);
  /// The colour of what identifies a row.
  void setKeyColour(const QColor& colour);

  bool isHidden(int row) const { return table_.rowHeight(row) == 0; }
  bool isChosen(int row) const { return table_.text(row, Gewaehlt) == "-1"; }

  /// What to ask after an edit of a cell that others could take over; nothing for the rest.
  static std::optional<QString> fillDownQuestion(int row, int column);
  /// Copies the cell into the empty ones it is meant for.
  void fillDown(int row, int column);

 private:
  struct Shots;
  void readSuggestions(dao::Database& db, Files& files, const QString& folder);
  void addDisciplines(dao::Database& db, ListOrder order);
  void addCombinations(dao::Database& db, ListOrder order);
  void addWeapons(dao::Database& db, const QString& name, const QString& key, int discipline,
                  const Shots& shots);
  void setDefaults(dao::Database& db);

  TextTable table_;
  Suggestions suggestions_[ColumnCount];
};

}  // namespace qk

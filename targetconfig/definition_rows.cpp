#include "targetconfig/definition_rows.h"

#include <QHash>
#include <QStringList>
#include <array>

#include "app/ground/feld_wert.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/runtime/files.h"
#include "platform/runtime/numbers.h"
#include "targetconfig/station_files.h"

namespace qk {

namespace {

using C = DefinitionRows;

const QString Ticked = "-1";
const QString Unticked = "0";

const std::array<const char*, C::ColumnCount> Headers = {
    "",
    "Diszi/Kombi",
    "Waffe",
    ">Bezeichnung",
    "def-Datei",
    ">KennNummer",
    ">Regelnummer",
    ">WertungsRadius",
    ">MaximalDurchmesser",
    ">MinimalDurchmesser",
    ">Schusszahl",
    ">Probeschüsse",
    ">SchiessZeit",
    ">ProbeZeit",
    ">Wertung",
    ">SchiessPosition",
    ">SerienLaenge",
    ">DateiWaffe",
    ">DateiScheibe",
    ">ZeitenAnzahl",
    ">Zeit1",
    ">SchussAnzahl",
    ">SchussZahl1",
    ">PositionsAnzahl",
    ">Position1",
    ">SerienAnzahl",
    ">Serien1",
    ">DateiName",
    "",
};

const QString SuggestedScoring = "|0;Ring|1;Zehntelringe|10;Ring + Teiler|11;Zehntel + Teiler";
const QString SuggestedSighters = "|0;unbegrenzt|-2;keine|1;1|2;2|3;3|4;4|5;5|10;10";

QString textOf(const dao::Recordset& rows, const QString& column) {
  return FeldWert(rows, column).toString();
}

int numberOf(const dao::Recordset& rows, const QString& column) {
  return FeldWert(rows, column).toInt();
}

/// Names are no list text, in which a bar or a number would mean something.
Suggestions fileNames(Files& files, const QString& folder, const QString& pattern) {
  Suggestions names{.freeText = true, .entries = {}};
  for (const QString& name : files.list(folder, pattern)) names.entries.append({name, name});
  return names;
}

Suggestions keyNumbers(dao::Database& db) {
  Suggestions numbers{.freeText = true, .entries = {}};
  const auto keys = db.openRecordset("Select * from Meldedisziplin order by MeldeKz");
  for (; !keys->eof(); keys->moveNext())
    numbers.entries.append(numberedSuggestion(QString::number(numberOf(*keys, "Id")),
                                              {textOf(*keys, "MeldeKz"), textOf(*keys, "MeldeDisziplin")}));
  return numbers;
}

}  // namespace

/// What the hidden text of a row says of its shots.
struct DefinitionRows::Shots {
  int series = 0;
  bool tenths = false;
};

DefinitionRows::DefinitionRows() : table_(ColumnCount) {
  for (int column = 0; column < ColumnCount; ++column) table_.setText(0, column, Headers[size_t(column)]);
  table_.setTickColumn(Gewaehlt, Ticked);
  for (int column = Bezeichnung; column < Rest; ++column) table_.setEditable(column, true);
  setOutput(Output::Ini);
}

void DefinitionRows::build(dao::Database& db, Files& files, const QString& folder) {
  table_.setRows(1);
  readSuggestions(db, files, folder);
  const ListOrders orders = listOrders(db);
  addDisciplines(db, orders.disciplines);
  addCombinations(db, orders.combinations);
  setDefaults(db);
}

void DefinitionRows::readSuggestions(dao::Database& db, Files& files, const QString& folder) {
  suggestions_[KennNummer] = keyNumbers(db);
  suggestions_[Probeschuesse] = parseSuggestions(SuggestedSighters);
  suggestions_[Wertung] = parseSuggestions(SuggestedScoring);
  suggestions_[DateiWaffe] = fileNames(files, folder, "0_hw*.def");
  suggestions_[DateiScheibe] = fileNames(files, folder, "0_hs*.def");
  suggestions_[DefDatei] = fileNames(files, folder, "0_hd*.def");
  suggestions_[DateiName] = suggestions_[DefDatei];
}

void DefinitionRows::addDisciplines(dao::Database& db, ListOrder order) {
  const auto rows = db.openRecordset(disciplinesQuery(order));
  for (; !rows->eof(); rows->moveNext()) {
    const int id = numberOf(*rows, "ID");
    addWeapons(db, textOf(*rows, "Name"), "Diszi" + QString::number(id), id,
               {numberOf(*rows, "RingSerie"), numberOf(*rows, "RingZentel") != 0});
  }
}

/// The longest series and the tenths flag go on from one combination to the next, as the stations have always
/// been set up: a later combination inherits them from all before it.
void DefinitionRows::addCombinations(dao::Database& db, ListOrder order) {
  Shots shots;
  const auto rows = db.openRecordset(combinationsQuery(order));
  for (; !rows->eof(); rows->moveNext()) {
    const QString id = QString::number(numberOf(*rows, "ID"));
    const auto members = db.openRecordset("Select * from Kombination_Diszi where KombiID = " + id);
    for (; !members->eof(); members->moveNext()) {
      const int discipline = numberOf(*members, "disziID");
      const auto member =
          db.openRecordset("Select * from Disziplin where ID = " + QString::number(discipline));
      if (!member->eof()) {
        shots.series = std::max(shots.series, numberOf(*member, "RingSerie"));
        shots.tenths = shots.tenths || numberOf(*member, "RingZentel") != 0;
      }
      addWeapons(db, textOf(*rows, "Kombinationsname"), "Kombi" + id, discipline, shots);
    }
  }
}

void DefinitionRows::addWeapons(dao::Database& db, const QString& name, const QString& key, int discipline,
                                const Shots& shots) {
  const auto weapons =
      db.openRecordset("Select * from DisziplinWaffen where DisziID = " + QString::number(discipline));
  for (; !weapons->eof(); weapons->moveNext()) {
    const QString weapon = textOf(*weapons, "KZ");
    table_.addRow({Ticked, name, weapon}, key + "-" + weapon + ";" + QString::number(shots.series) + ";" +
                                              (shots.tenths ? Ticked : Unticked));
  }
}

void DefinitionRows::setDefaults(dao::Database& db) {
  const auto keys = db.openRecordset("Select * from MeldeDisziplin");
  QHash<QString, std::optional<QString>> rules;  // by weapon
  for (int row = 1; row < table_.rows(); ++row) {
    const auto set = [&](Column column, const QString& text) { table_.setText(row, column, text); };
    const QString weapon = table_.text(row, Waffe);
    const QStringList tag = table_.rowData(row).split(';');
    set(Bezeichnung, table_.text(row, Name));
    set(DefDatei, "");
    set(KennNummer, "0");
    if (!rules.contains(weapon)) {
      keys->findFirst("ScheibenKZ = " + dao::sql::quoted(weapon));
      rules.insert(weapon, keys->noMatch() ? std::nullopt : std::optional(textOf(*keys, "MeldeKZ")));
    }
    if (const auto& rule = rules.value(weapon)) set(Regelnummer, *rule);
    set(WertungsRadius, "225");
    set(MaximalDurchmesser, "450");
    set(MinimalDurchmesser, "450");
    set(Schusszahl, tag.value(1));
    set(Probeschuesse, "keine");
    set(SchiessZeit, "999 min");
    set(ProbeZeit, "999 min");
    set(Wertung, tag.value(2) == Ticked ? "Zehntel + Teiler" : "Ring + Teiler");
    set(SchiessPosition, "stehend");
    set(SerienLaenge, "10");
    set(ZeitenAnzahl, "1");
    set(Zeit, "60 min");
    set(SchussAnzahl, "1");
    set(SchussZahl, "10");
    set(PositionsAnzahl, "1");
    set(Position, "1-Position");
    set(SerienAnzahl, "1");
    set(Serien, "10");
    set(DateiName, definitionFileName(weapon, table_.text(row, Bezeichnung)));
  }
}

void DefinitionRows::setNaming(Naming naming) {
  for (int row = 1; row < table_.rows(); ++row) {
    const QString name = table_.text(row, Name);
    const QString weapon = table_.text(row, Waffe);
    table_.setText(row, Bezeichnung,
                   naming == Naming::Direkt           ? name
                   : naming == Naming::MitDoppelpunkt ? weapon + ": " + name
                                                      : weapon + "_" + name);
  }
}

void DefinitionRows::setFilter(RowFilter filter) {
  const QString kind = filter == RowFilter::NurDisziplinen ? "D" : "K";
  for (int row = 1; row < table_.rows(); ++row) {
    const bool shown = filter == RowFilter::Alle || table_.rowData(row).startsWith(kind);
    table_.setRowHeight(row, shown ? -1 : 0);
  }
}

void DefinitionRows::setOutput(Output output) {
  const bool iniAlone = output == Output::Ini;
  table_.setColumnWidth(DefDatei, iniAlone ? -1 : 0);
  for (int column = KennNummer; column < ColumnCount; ++column)
    table_.setColumnWidth(column, iniAlone ? 0 : -1);
}

void DefinitionRows::selectAll(bool selected) {
  for (int row = 1; row < table_.rows(); ++row) table_.setText(row, Gewaehlt, selected ? Ticked : Unticked);
}

void DefinitionRows::setKeyColour(const QColor& colour) {
  for (int row = 1; row < table_.rows(); ++row)
    for (int column = Gewaehlt; column <= Waffe; ++column) table_.setCellLook(row, column, {{}, colour, {}});
}

std::optional<QString> DefinitionRows::fillDownQuestion(int row, int column) {
  if (column == DateiWaffe && row == 1) return "Alle offenen Einträge dieser Spalte übertragen?";
  if (column == DateiScheibe || column == DefDatei)
    return "Alle offenen Einträge dieser Waffenart übertragen?";
  return std::nullopt;
}

void DefinitionRows::fillDown(int row, int column) {
  const QString weapon = table_.text(row, Waffe);
  const QString value = table_.text(row, column);
  for (int other = 1; other < table_.rows(); ++other) {
    const bool meant = column == DateiWaffe || table_.text(other, Waffe) == weapon;
    if (meant && table_.text(other, column).isEmpty()) table_.setText(other, column, value);
  }
}

}  // namespace qk

#include "link/linecontrol/line_disciplines.h"

#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

constexpr int kTickWidth = 400;
constexpr int kNumberWidth = 620;
constexpr int kTitledNumberWidth = 800;  // its title is longer than any number

double number(const TextTable& table, int row, int column) {
  return parsePrefix(table.text(row, column));
}

}  // namespace

LineDisciplines::LineDisciplines(const Workplace& workplace) : workplace_(workplace), table_(ColumnCount) {
  table_.setText(0, Name, "Disziplin");
  table_.setText(0, Schuss, "Schuss");
  table_.setText(0, Gesamt, "Ges.");
  table_.setText(0, Nachkauf, "Nachk.");
  table_.setTickColumn(Auswahl, "1");
  table_.setEditable(Auswahl, true);
  table_.setEditable(Nachkauf, true);
  for (int column : {Schuss, Gesamt, Nachkauf, Grundwert}) {
    table_.setRightAligned(column, true);
    table_.setColumnWidth(column, kNumberWidth);
  }
  for (int column : {Schuss, Nachkauf}) table_.setColumnWidth(column, kTitledNumberWidth);
  table_.setColumnWidth(Auswahl, kTickWidth);
  table_.setColumnWidth(Grundwert, 0);
}

void LineDisciplines::read(const QString& folder, LineReadings& readings) {
  table_.setRows(1);
  reported(fehlerReport(workplace_.dialogs, "Fehler beim Ermittelen der Intarso-Schusszahlen DEF!"),
           [&](Steps& step) {
             DisciplineGrid grid;
             step([&] { grid = readings.stationDisciplines(workplace_.files, folder); });
             if (grid.iniMissing) {
               workplace_.dialogs.note(iniMissingText(grid.iniPath), BoxIcon::Critical, "Fehler");
               return;
             }
             for (const GridDiscipline& discipline : grid.rows)
               table_.addRow(
                   {"0", discipline.title, discipline.shots, discipline.shots, "", discipline.shots},
                   disziplinSchluessel(table_.rows()));
           });
}

void LineDisciplines::afterEdit(int row, int column) {
  if (column == Schuss) {
    if (number(table_, row, Schuss) < number(table_, row, Gesamt)) {
      workplace_.dialogs.note("Schusszahl unter Einstellung in DEF-Datei!", BoxIcon::Exclamation, "Fehler");
      table_.setText(row, Schuss, table_.text(row, Gesamt));
    }
  } else if (column == Nachkauf) {
    const double extra = number(table_, row, Nachkauf);
    if (extra != 0 && extra + number(table_, row, Grundwert) <= 0) {
      workplace_.dialogs.note("Gesamtschusszahl muss größer 0 sein!", BoxIcon::Critical);
      table_.setText(row, Nachkauf, "");
    }
    showTotal(row);
  }
}

void LineDisciplines::clearShots() {
  for (int row = 1; row < table_.rows(); ++row) {
    const QString shots = table_.text(row, Schuss);
    table_.setText(row, Gesamt, shots);
    table_.setText(row, Grundwert, shots);
    table_.setText(row, Nachkauf, "");
  }
}

void LineDisciplines::selectAll(bool selected) {
  for (int row = 1; row < table_.rows(); ++row) table_.setText(row, Auswahl, selected ? "1" : "0");
}

void LineDisciplines::selectGroup(dao::Database& db, int groupId) {
  selectAll(false);
  if (groupId <= 0) return;
  const auto rs = db.openRecordset("Select * from Haering_Gruppen_Disziplinen where GruppenID = " +
                                   QString::number(groupId));
  for (; !rs->eof(); rs->moveNext()) {
    const QString name = rs->value("DisziplinName").toString();
    for (int row = 1; row < table_.rows(); ++row)
      if (table_.text(row, Name) == name) table_.setText(row, Auswahl, "1");
  }
}

void LineDisciplines::enterExtra(int row, int count) {
  table_.setText(row, Nachkauf, QString::number(count));
  table_.setText(row, Gesamt, numberText(number(table_, row, Grundwert) + count));
}

void LineDisciplines::extraSent(int row, const QString& sent) {
  table_.setText(row, Auswahl, "1");
  if (table_.text(row, Nachkauf).trimmed() == sent) {
    table_.setText(row, Grundwert, table_.text(row, Gesamt));
    table_.setText(row, Nachkauf, "");
    return;
  }
  table_.setText(row, Grundwert, numberText(number(table_, row, Grundwert) + parsePrefix(sent)));
  showTotal(row);
}

void LineDisciplines::showTotal(int row) {
  table_.setText(row, Gesamt, numberText(number(table_, row, Nachkauf) + number(table_, row, Grundwert)));
}

DisziplinZeilen LineDisciplines::rows() const {
  DisziplinZeilen all;
  all.reserve(static_cast<size_t>(table_.rows()));
  for (int row = 1; row < table_.rows(); ++row)
    all.push_back({table_.text(row, Auswahl), table_.text(row, Name), table_.text(row, Schuss),
                   table_.text(row, Gesamt), table_.text(row, Nachkauf)});
  return all;
}

}  // namespace qk

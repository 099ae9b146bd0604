// The discipline grid of a firing line: what its station offers, what is chosen for the shooter, and how many
// shots. Works on the data of the grid; needs no window.
//
// Rows stand in the order of esa_preis.ini, which is the only link between a row and the station's
// discipline. The hidden row data is "Diszi" + row number.
#pragma once

#include <QString>

#include "link/commands.h"
#include "link/linecontrol/line_readings.h"
#include "platform/dao/database.h"
#include "platform/grid/text_table.h"
#include "platform/workplace.h"

namespace qk {

class LineDisciplines {
 public:
  enum Column {
    Auswahl = 0,    ///< "0" or "1"
    Name = 1,       ///< as esa_preis.ini spells it
    Schuss = 2,     ///< shots for this shooter
    Gesamt = 3,     ///< total shots
    Nachkauf = 4,   ///< additional shots, typed by the operator; empty when none
    Grundwert = 5,  ///< base of the total: the def file's count, or the total after the last additional shots
    ColumnCount = 6
  };

  /// Header, tick column, widths; no rows.
  explicit LineDisciplines(const Workplace& workplace);

  TextTable& table() { return table_; }
  const TextTable& table() const { return table_; }

  /// Refills the grid from esa_preis.ini and the def files of the exchange folder (with its final separator).
  /// A missing esa_preis.ini and other failures are reported in a box; the grid then stays empty.
  void read(const QString& folder, LineReadings& readings);

  /// The rules behind an edit of a cell: refuses too few shots in columns Schuss and Nachkauf with a box.
  void afterEdit(int row, int column);
  /// Undoes additional shots in the grid; nothing is sent.
  void clearShots();
  void selectAll(bool selected);
  /// Selects exactly the disciplines of a stored group, by name; id 0 or below selects none. Errors of the
  /// store pass to the caller.
  void selectGroup(dao::Database& db, int groupId);
  /// Enters `count` additional shots in a row, as the popup does.
  void enterExtra(int row, int count);
  /// A row's additional shots went out, as they stood there: they belong to the base now, the row is
  /// selected, and nothing is left to send but what was typed over them since.
  void extraSent(int row, const QString& sent);

  /// The cells of all rows, for the texts that are built from them.
  DisziplinZeilen rows() const;

 private:
  void showTotal(int row);

  Workplace workplace_;
  TextTable table_;
};

}  // namespace qk

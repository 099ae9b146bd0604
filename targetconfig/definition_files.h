// From the generator's rows to the files of the stations: the checks before, and the writing. Needs no
// window; asks and reports through the boxes.
//
// Each file is written beside its place and then renamed, so that a station never reads half of one.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/runtime/retry.h"
#include "platform/workplace.h"
#include "targetconfig/definition_rows.h"
#include "targetconfig/station_files.h"

namespace qk {

/// The def file of a row. Its scoring is empty where the cell holds none of the four that there are; its
/// sighting shots stay as the cell has them.
Definition definitionOf(const TextTable& table, int row);
/// The sections of esa_preis.ini: chosen rows in sight, with the def file's name from `column`.
std::vector<StationDiscipline> stationDisciplinesOf(const DefinitionRows& rows, int column);
/// Whether the row stands in any file: chosen, in sight, and for def files alone with a name.
bool isWritten(const DefinitionRows& rows, int row, Output output);
/// Rows that get a def file: chosen, in sight, and with a name for it.
std::vector<int> definitionFileRows(const DefinitionRows& rows);

/// First chosen row in sight whose cell is empty.
std::optional<int> rowWithoutEntry(const DefinitionRows& rows, int column);
/// First chosen row without weapon or target file; hidden ones count too.
std::optional<int> rowWithoutFiles(const DefinitionRows& rows);

class DefinitionFiles {
 public:
  /// `rows` must not change its rows while create() runs. `folder` with its final separator.
  DefinitionFiles(const Workplace& workplace, const DefinitionRows& rows, const QString& folder);

  /// Called with the cell that a message is about, before the message.
  std::function<void(int row, int column)> showCell;
  /// Called before each file; false stops between two files.
  std::function<bool(int written, int all)> progress;

  /// Checks, writes, and says what became of it. False when nothing, or not all, was written.
  bool create(Output output);

 private:
  bool check(Output output) const;
  bool checkEntries(int column) const;
  bool checkFiles() const;
  bool checkCharacters(Output output) const;
  bool write(Output output);
  void show(int row, int column) const;

  Workplace workplace_;
  const DefinitionRows& rows_;
  QString folder_;
};

}  // namespace qk

// Starter sets: what a new competition begins with, as text files that an office can edit.
//
// A file holds rows in the form of platform/schema/schema_text.h ("Zeilen Schützenklassen" …); its first
// comment line is its title, those behind it say what it is for. Beyond that form, a cell of a column that
// names rows of other tables may name several: "1-4, 7" stands for five rows alike.
#pragma once

#include <QString>
#include <vector>

#include "platform/schema/schema_build.h"

namespace qk {

class Files;

struct StarterSet {
  QString name;   ///< the file's, without folder and extension
  QString title;  ///< its first comment line, or the name
  QString about;  ///< the comment lines behind it down to an empty one, in one line; may be empty
  QString path;
};

/// The folder beside the program in which they lie; ends in a separator.
QString starterFolder();

/// Those in the folder, by title. A folder that is missing holds none; what can't be read is left out.
std::vector<StarterSet> starterSets(Files& files, const QString& folder);

/// The rows of a starter set, tables in an order in which they can be inserted. `tables`: of the competition
/// to be. Error 5 with "<source>:<line>: <what is wrong>": besides faults of the form, a table that a starter
/// set can't fill, a number that stands there twice, one that names no row.
std::vector<TableData> starterRows(const QString& text, const QString& source, const Schema& tables);

}  // namespace qk

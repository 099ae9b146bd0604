// Which column of a file is taken for which column of a list: recognised by the headings, or said by hand and
// remembered for the next file with the same heading.
#pragma once

#include <QStringList>

#include "masterdata/lists/columns.h"

namespace qk {

class Settings;

namespace lists {

/// For each column of the file the heading of the ListColumn it is taken for, or asStored() of one; empty for
/// a column that isn't read. None stands twice.
using Assignment = QStringList;

/// By the headings alone: a ListColumn's own heading, its name in the table, or a synonym. Where two columns
/// of the file would be the same one the first is taken. "Name" beside "Vorname" is the family name.
Assignment recognised(ListKind kind, const QStringList& headings);

/// The same, but what was once assigned by hand to a heading goes first.
Assignment recognised(ListKind kind, const QStringList& headings, const Settings& settings);

/// Remembers what the hand has changed against recognised(); "not read" is remembered too, and what agrees
/// with it is forgotten again. Error 75 when the settings can't be stored.
void remember(ListKind kind, const QStringList& headings, const Assignment& byHand, Settings& settings);

/// What an assignment lacks so that rows can be judged, a German sentence; empty when nothing.
QString missingColumns(ListKind kind, const Assignment& assignment);

}  // namespace lists
}  // namespace qk

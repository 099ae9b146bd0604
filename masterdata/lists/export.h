// Lists out of a competition, with the headings by which they are read again.
#pragma once

#include <QStringList>
#include <vector>

#include "masterdata/lists/columns.h"

namespace qk::lists {

struct StoreState;

/// The heading and a row for each shooter, club or team. Taken over into a competition with the same classes
/// (by KZ) and disciplines, clubs and teams first, it gives equal rows there; keys may differ. A column whose
/// meaning is unknown but that refers to other rows (MeldeDisziID) isn't in it.
std::vector<QStringList> exportedRows(ListKind kind, const StoreState& state);

/// The same as a file, by writeCsv().
QByteArray exportedCsv(ListKind kind, const StoreState& state);

}  // namespace qk::lists

// Where start numbers stand.
#pragma once

#include <QString>
#include <vector>

#include "platform/dao/database.h"

namespace qk {

struct NumberedColumn {
  QString table, column;
};

/// All columns of the competition that hold a start number as text, those of other programs' tables as well:
/// the texts called `Startnummer` or `StartNr`. (`Startnummer` of `ScheibenNummern` is a number, the first
/// target of a stack.) The shooters' own one comes first.
std::vector<NumberedColumn> numberedColumns(const dao::Database& database);

}  // namespace qk

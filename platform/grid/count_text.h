// How many rows a list has, and what is still to come, for the line below it.
#pragma once

#include <QString>

namespace qk {

class BoundRows;

/// "1 Zeile", "12.345 Zeilen", "1.000.000 Zeilen, wird sortiert…". `one` is the whole text for one row,
/// `many` the word behind a number.
QString countText(const BoundRows& rows, const QString& one, const QString& many);

}  // namespace qk

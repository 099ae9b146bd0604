// A second reckoning of bar code font strings: what a reader makes of our symbols.
#pragma once

#include <QString>
#include <optional>

namespace qk::test {

/// The number that a character of the Code 128 font stands for.
int valueOf128(QChar c);
/// What a reader of Code 128 makes of the symbols; nothing when start, stop or checksum are wrong.
std::optional<QString> decoded128(const QString& symbols);
/// The thirteen digits that the EAN-13 font string draws, the first one by its parity pattern; empty when it
/// is none.
QString decoded13(const QString& symbols);
/// Their check digit is right.
bool checks13(const QString& digits);

}  // namespace qk::test

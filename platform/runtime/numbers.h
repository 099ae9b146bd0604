// Number forms: three readings and the ways back to text. The format is German whatever the workstation's.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace qk {

/// Strict reading: optional sign, digits, at most one decimal comma; outer blanks allowed.
/// Anything else ("", "9.7", "1e3", "1.000,5") is Error 13, a number beyond all range Error 6.
double parseStrict(QStringView text);

/// Prefix reading: blanks, sign, digits, one decimal point, then stop; 0 for nothing readable.
/// A number beyond all range is Error 6.
double parsePrefix(QStringView text);

/// The prefix reading that tells "nothing readable" (or beyond all range) from 0.
std::optional<double> readPrefix(QStringView text);

/// Tolerant reading: every "." is dropped, every "," is the decimal point, then the prefix reading.
double parseTolerant(QStringView text);

/// True where parseStrict would go through.
bool isNumeric(QStringView text);

/// At most 15 significant digits, decimal comma, no group; 0.1 + 0.2 gives "0,3", 1e20 gives "1E+20".
/// What is no number gives "INF", "-INF" or "NAN".
QString numberText(double value);
QString numberText(qint64 value);

/// Fixed decimals with or without thousands points. Rounds the 15-digit decimal text, halves away from
/// zero: formatNumber(12.35, 1) is "12,4". Named formats "##,###0.0" and "##,##0.0" are (x, 1, true).
/// A value that rounds to nothing carries no sign.
QString formatNumber(double value, int decimals, bool grouped = false);

/// Whole numbers round halves to even (2.5 gives 2); out of range is Error 6.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);

}  // namespace qk

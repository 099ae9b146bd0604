// Values of the store as texts of a report, by German rules.
#pragma once

#include <QVariant>
#include <optional>

#include "platform/report/definition.h"

namespace qk::report {

/// "Währung" (or Currency), "Datum" (Short Date), "Uhrzeit", "DatumZeit", "Ganzzahl", "Ja/Nein", or a
/// pattern: "0", "0,0", "0,00", "#.##0", "#.##0,00". Nothing for another name.
std::optional<Format> formatNamed(const QString& name);

/// Null is the empty text. A text that isn't what the format wants stays as it is.
QString formatted(const QVariant& value, const std::optional<Format>& format);

/// True for numbers, money and dates, which stand at the right.
bool standsRight(const QVariant& value);

/// What a condition asks: not Null, not 0, not empty.
bool isThere(const QVariant& value);

}  // namespace qk::report

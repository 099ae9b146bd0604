// Values in the form in which they travel to an engine and back: dates as ISO text "YYYY-MM-DD HH:MM:SS",
// yes/no as -1/0, money as a number with four decimals (from an engine also as its text), everything else as
// it is.
#pragma once

#include <QVariant>

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {

QString isoText(const QDateTime& date);
/// Reads isoText, also without a time. Invalid for anything else.
QDateTime dateOfIso(QStringView iso);
QDateTime dateOfSerial(double serial);  ///< days since 30.12.1899
double serialOfDate(const QDateTime& date);

/// The least and the greatest number that a column of whole numbers takes.
std::pair<double, double> limitsOf(Kind kind);

/// The form for a place of this kind; Error 3464 when the value can't be one.
QVariant toNative(const QVariant& value, Kind kind);
/// The form for a column of this type.
QVariant nativeFieldValue(const QVariant& value, FieldType type);
QVariant fromNative(const QVariant& native, FieldType type);

/// Preset of a field from its column's default, a literal as SQL spells it; invalid for expressions.
QVariant presetOfDefault(const QString& text, FieldType type);

}  // namespace qk::dao::sql

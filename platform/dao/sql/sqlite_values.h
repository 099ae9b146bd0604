// Values in the form SQLite stores them: dates as ISO text "YYYY-MM-DD HH:MM:SS", yes/no as -1/0, money as a
// number with four decimals, everything else as it is.
#pragma once

#include <QVariant>

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {

QString isoText(const QDateTime& date);
/// Reads isoText, also without a time. Invalid for anything else.
QDateTime dateOfIso(QStringView iso);
QDateTime dateOfSerial(double serial);  ///< days since 30.12.1899
double serialOfDate(const QDateTime& date);

/// The form for a place of this kind; Error 3464 when the value can't be one.
QVariant toSqlite(const QVariant& value, Kind kind);
QVariant fromSqlite(const QVariant& native, FieldType type);

}  // namespace qk::dao::sql

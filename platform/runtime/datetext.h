// Dates as text: DD.MM.YYYY, with HH:MM:SS where there is a time. Plain 0 is 30.12.1899 00:00.
#pragma once

#include <QDateTime>
#include <QString>

namespace qk {

QDateTime dateZero();

/// The day at that time of its clock. What a clock change leaves out counts from midnight, and so is an hour
/// on.
QDateTime momentOf(const QDate& day, const QTime& clock);

/// "20.11.2026", or "20.11.2026 10:41:07" when the time isn't midnight, or "10:41:07" on the day of plain 0.
QString dateText(const QDateTime& value);

/// Reads what dateText writes, ISO dates ("2026-11-20", with "T" or blank before a time), one-digit days and
/// months, two-digit years (00–29 is 20xx). Anything else is Error 13.
QDateTime parseDate(QStringView text);
bool isDate(QStringView text);

}  // namespace qk

// A birth date as people write it, and as a competition stores it: text, "DD.MM.YYYY".
#pragma once

#include <QDate>
#include <QString>

namespace qk {

inline constexpr QStringView kUnknownBirthDate = u"00.00.0000";

struct BirthDate {
  QString stored;   ///< "DD.MM.YYYY", or kUnknownBirthDate; empty with a trouble
  QString trouble;  ///< why it is none, a German sentence; empty when all is well
  bool ok() const { return trouble.isEmpty(); }
};

/// Reads "1.2.80", "01021980", "1980-02-01", "1. Februar 1980" and what else is common, with a clock time
/// behind it too. Nothing at all, "unbekannt", "?" and zeros are the unknown date. A year of two digits lies
/// at or before the reference date's; a later one of four is a slip, and so is an age above 130.
BirthDate readBirthDate(const QString& typed, const QDate& refDatum);

}  // namespace qk

#include "shooters/class_rule.h"

#include "platform/runtime/datetext.h"

namespace qk {

namespace {

/// First day of the class year that begins in that year. A day that the year lacks (29.02.) is the last one
/// of its month.
QDate classYearStart(const QString& yearBegin, int year) {
  constexpr int kLeapYear = 2000;
  const QString text = yearBegin + QString("%1").arg(year, 4, 10, QChar('0'));
  const QString inLeapYear = yearBegin + QString::number(kLeapYear);
  if (isDate(text) || !isDate(inLeapYear)) return parseDate(text).date();
  const QDate month(year, parseDate(inLeapYear).date().month(), 1);
  return QDate(year, month.month(), month.daysInMonth());
}

bool takesSex(int classSex, const QString& geschlecht) {
  switch (classSex) {
    case 0:
      return true;
    case 1:
      return geschlecht.toUpper() == "M";
    case 2:
      return geschlecht.toUpper() == "W";
    default:
      return false;
  }
}

}  // namespace

bool isKnownBirthDate(const QString& gebDat) {
  return gebDat.right(4) != "0000" && isDate(gebDat);
}

QDate birthDateOf(const QString& gebDat, const QDate& refDatum) {
  const QDate date = parseDate(gebDat).date();
  return date.year() > refDatum.year() ? date.addYears(-100) : date;
}

std::optional<qint32> classByAge(const ClassRule& rule, const QString& gebDat, const QString& geschlecht) {
  const QDate born = birthDateOf(gebDat, rule.refDatum);
  for (const AgeClass& one : rule.classes) {
    const QDate latest =
        classYearStart(rule.yearBegin, rule.refDatum.addYears(1 - one.from).year()).addDays(-1);
    const QDate earliest = classYearStart(rule.yearBegin, rule.refDatum.addYears(-one.to).year());
    if (born >= earliest && born <= latest && takesSex(one.sex, geschlecht)) return one.id;
  }
  return {};
}

}  // namespace qk

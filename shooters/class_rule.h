// The class that a competition's age limits give a shooter: a function of values.
#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

namespace qk {

struct AgeClass {
  qint32 id = 0;
  int from = 0, to = 0;  ///< lowest and highest age, in whole years
  int sex = 0;           ///< 0 both, 1 men, 2 women; anything else takes nobody
};

struct ClassRule {
  std::vector<AgeClass> classes;  ///< by their lowest age; of those that fit, the first one counts
  QString yearBegin;              ///< day and month on which a class year begins, "01.01."
  QDate refDatum;                 ///< ages are those reached in the class year that holds it
};

/// False for year 0000 and for what is no date.
bool isKnownBirthDate(const QString& gebDat);

/// The date that a stored text means: a two-digit year that was read into the wrong century is put right.
/// Error 13 for what is no date.
QDate birthDateOf(const QString& gebDat, const QDate& refDatum);

/// The class of someone whose birth date is known; nothing where no class takes him. `geschlecht`: "M" or "W"
/// in either case, anything else fits only classes of both sexes. Error 13 where a class year begins on no
/// day.
std::optional<qint32> classByAge(const ClassRule& rule, const QString& gebDat, const QString& geschlecht);

}  // namespace qk

// Where simulated hits fall and what they count. Lengths are micrometres from the centre of the target.
#pragma once

#include <QString>

#include "platform/runtime/clock.h"

namespace qk {

/// How distance and ring belong together on one kind of target.
struct TargetFace {
  int tenRadius;  ///< the greatest distance that still counts 10,0
  int ringWidth;  ///< distance between two rings
};

/// By the weapon's short name: "LG" air rifle, "LP" air pistol, "KK" 50 m rifle, "ZS" gallery rifle; unknown
/// is "LG".
TargetFace targetFace(const QString& weapon);

/// Ring value in tenths, 109 in the centre; below the first ring it is a miss, 0.
int ringTenths(const TargetFace& face, int radius);

struct Hit {
  int x = 0;
  int y = 0;
  int radius = 0;       ///< the distance that x and y give, rounded
  int angleTenths = 0;  ///< tenths of a degree, 0 to the right, counter-clockwise, below 3600
  int ringTenths = 0;
};

/// A hit of a shooter whose groups spread by `spread` rings (standard deviation in each direction).
Hit makeHit(const TargetFace& face, double spread, Random& random);

/// How good a shooter is, the same at each call: a spread between 0,45 and 2 rings.
double spreadOfShooter(const QString& startnummer, quint64 seed);

/// What a station knows of a shot beside the hit.
struct ShotRecord {
  QString code;
  QString discipline;
  QString className;
  int range = 1;
  int line = 1;
  QString shooter;
  QString mode;  ///< sighter or match mark
  int scoring = 0;
  int number = 1;
  Hit hit;
  QString time;          ///< HH:MM:SS
  QString relativeTime;  ///< MM:SS
  QString date;          ///< DD.MM.YYYY
  QString disciplineKey;
  QString classKey;
  QString startnummer;
};

/// The record line: 21 fields, separated by " ; ", without a final separator; lengths in hundredths of a
/// millimetre.
QString recordLine(const ShotRecord& record);

}  // namespace qk

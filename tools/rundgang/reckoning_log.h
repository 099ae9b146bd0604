// What the stations fired, by their own log.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace qk {

/// Numbers with one decimal are counted in tenths: 97 is 9,7.
struct FiredShot {
  int line = 0;
  int hit = 0;
  int wholeRing = 0;
  int tenths = 0;      ///< ring value
  QString key;         ///< line, hit, date and time: what makes a shot that shot
  QStringList record;  ///< the 21 fields as reported
};

/// A number of the log in tenths: "-12,3" is -123.
int tenthsOf(const QString& text);
/// And back, as the German texts have it: 97 is "9,7", 90 is "9".
QString tenthsText(int tenths);

/// In the order of firing. A shot that was reported twice stands once.
std::vector<FiredShot> firedShots(const QString& stationLog);

}  // namespace qk

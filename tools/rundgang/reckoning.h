// The second opinion: what the stations fired, by their own log, against what stands in the competition.
// Reads log and file on ways of its own and shares no line of reckoning with the program.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <vector>

namespace qk {

struct FiredShot {
  int line = 0;
  int hit = 0;
  int wholeRing = 0;
  int tenths = 0;  ///< ring value in tenths, 97 for 9,7
  QString key;     ///< line, hit, date and time: what makes a shot that shot
};

/// In the order of firing. A shot that was reported twice stands once.
std::vector<FiredShot> firedShots(const QString& stationLog);

struct Row {  ///< of the closing table
  QString what;
  QString stations, competition;
  bool agrees() const { return stations == competition; }
};

/// A booked series as the stations' log gives it.
struct ExpectedSeries {
  QString discipline;
  QString sum;  ///< decimal comma
};

/// Series of `length` shots in the order of firing; the last may be shorter.
std::vector<ExpectedSeries> seriesOf(const std::vector<FiredShot>& shots, const QString& discipline,
                                     int length, bool tenths);

std::vector<Row> reckon(const QString& competition, const std::vector<FiredShot>& fired, int expectedOpen,
                        const std::vector<ExpectedSeries>& series);
/// Prints the table; true when every row agrees.
bool printTable(const std::vector<Row>& rows);

}  // namespace qk

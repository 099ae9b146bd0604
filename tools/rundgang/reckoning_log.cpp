#include "tools/rundgang/reckoning_log.h"

#include <QFile>
#include <QSet>
#include <QStringDecoder>
#include <cstdlib>

namespace qk {

namespace {
constexpr int kFields = 21;
}

int tenthsOf(const QString& text) {
  const QStringList parts = text.trimmed().split(',');
  const int whole = std::abs(parts.first().toInt()) * 10;
  const int size = whole + (parts.size() > 1 ? parts[1].left(1).toInt() : 0);
  return text.trimmed().startsWith('-') ? -size : size;
}

QString tenthsText(int tenths) {
  const QString sign = tenths < 0 ? "-" : "";
  const int size = std::abs(tenths);
  if (size % 10 == 0) return sign + QString::number(size / 10);
  return sign + QString("%1,%2").arg(size / 10).arg(size % 10);
}

std::vector<FiredShot> firedShots(const QString& stationLog) {
  std::vector<FiredShot> shots;
  QSet<QString> known;
  QFile file(stationLog);
  if (!file.open(QIODevice::ReadOnly)) return shots;
  QStringDecoder windows1252("windows-1252");
  while (!file.atEnd()) {
    const QString line = windows1252(file.readLine().trimmed());
    FiredShot shot;
    shot.record = line.split(" ; ");
    if (shot.record.size() != kFields) continue;
    shot.line = shot.record[4].toInt();
    shot.hit = shot.record[8].toInt();
    shot.tenths = tenthsOf(shot.record[9]);
    shot.wholeRing = shot.tenths / 10;
    shot.key = QStringList{shot.record[4], shot.record[8], shot.record[17], shot.record[15]}.join('/');
    if (known.contains(shot.key)) continue;
    known.insert(shot.key);
    shots.push_back(shot);
  }
  return shots;
}

}  // namespace qk

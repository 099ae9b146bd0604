#include "tools/station/shot_generator.h"

#include <QCryptographicHash>
#include <QStringList>
#include <QtMath>
#include <algorithm>
#include <cmath>

namespace qk {

namespace {

/// Tenths as text with a decimal comma: 1234 is "123,4".
QString tenthsText(int tenths) {
  const int size = std::abs(tenths);
  return (tenths < 0 ? "-" : "") + QString::number(size / 10) + "," + QString::number(size % 10);
}

/// The direction of a hit as the digit that lies there on a number pad; 5 is the centre.
QString arrow(const Hit& hit) {
  if (hit.radius == 0) return "5";
  static const char eighths[] = "69874123";
  return QString(QChar(eighths[((hit.angleTenths + 225) / 450) % 8]));
}

}  // namespace

TargetFace targetFace(const QString& weapon) {
  if (weapon == "LP" || weapon == "KK") return {8000, 8000};
  if (weapon == "ZS") return {4575, 4500};
  return {2500, 2500};
}

int ringTenths(const TargetFace& face, int radius) {
  const double tenths = std::floor(10.0 * (face.tenRadius - radius) / face.ringWidth);
  const int ring = 100 + static_cast<int>(tenths);
  return ring < 10 ? 0 : std::min(ring, 109);
}

Hit makeHit(const TargetFace& face, double spread, Random& random) {
  const double length = std::sqrt(-2 * std::log(1 - random.next())) * spread * face.ringWidth;
  const double direction = 2 * M_PI * random.next();
  Hit hit;
  hit.x = qRound(length * std::cos(direction));
  hit.y = qRound(length * std::sin(direction));
  hit.radius = qRound(std::hypot(hit.x, hit.y));
  hit.angleTenths = (qRound(qRadiansToDegrees(std::atan2(hit.y, hit.x)) * 10) + 3600) % 3600;
  hit.ringTenths = ringTenths(face, hit.radius);
  return hit;
}

double spreadOfShooter(const QString& startnummer, quint64 seed) {
  const QByteArray digest = QCryptographicHash::hash((startnummer + "/" + QString::number(seed)).toUtf8(),
                                                     QCryptographicHash::Sha1);
  // From a squad shooter, who seldom leaves the ten, to a beginner, who averages eight and a half.
  return 0.45 + 1.55 * static_cast<uchar>(digest[0]) / 255.0;
}

QString recordLine(const ShotRecord& record) {
  const QStringList fields = {
      record.code,
      record.discipline,
      record.className,
      QString::number(record.range),
      QString::number(record.line),
      record.shooter,
      record.mode,
      QString::number(record.scoring),
      QString::number(record.number),
      tenthsText(record.hit.ringTenths),
      arrow(record.hit),
      tenthsText(record.hit.x),
      tenthsText(record.hit.y),
      tenthsText(record.hit.radius),
      tenthsText(record.hit.angleTenths),
      record.time,
      record.relativeTime,
      record.date,
      record.disciplineKey,
      record.classKey,
      record.startnummer,
  };
  return fields.join(" ; ");
}

}  // namespace qk

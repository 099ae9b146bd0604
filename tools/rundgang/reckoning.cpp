#include "tools/rundgang/reckoning.h"

#include <QFile>
#include <QSet>
#include <QTextStream>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace qk {

namespace {

QString inTenths(int tenths, bool decimal) {
  if (!decimal || tenths % 10 == 0) return QString::number(tenths / 10);
  return QString("%1,%2").arg(tenths / 10).arg(tenths % 10);
}

int count(dao::Database& store, const QString& text) {
  const auto rows = store.openRecordset(text);
  if (rows->eof()) return 0;
  rows->moveLast();
  return rows->recordCount();
}

QStringList sortedSums(const std::vector<ExpectedSeries>& series) {
  QStringList sums;
  for (const ExpectedSeries& s : series) sums << s.discipline + " " + s.sum;
  sums.sort();
  return sums;
}

QStringList storedSums(dao::Database& store) {
  QStringList sums;
  const auto rows = store.openRecordset(
      "SELECT SchussSerien.Ergebnis, Disziplin.Name as Disziplin FROM SchussSerien INNER JOIN Disziplin ON "
      "SchussSerien.DisziID = Disziplin.ID");
  for (; !rows->eof(); rows->moveNext())
    sums << rows->value("Disziplin").toString() + " " +
                inTenths(qRound(rows->value("Ergebnis").toDouble() * 10), true);
  sums.sort();
  return sums;
}

}  // namespace

std::vector<FiredShot> firedShots(const QString& stationLog) {
  std::vector<FiredShot> shots;
  QSet<QString> known;
  QFile file(stationLog);
  if (!file.open(QIODevice::ReadOnly)) return shots;
  while (!file.atEnd()) {
    const QList<QString> parts = QString::fromLatin1(file.readLine().trimmed()).remove('"').split(" ; ");
    if (parts.size() < 21) continue;
    const QStringList ring = parts[9].trimmed().split(',');
    FiredShot shot;
    shot.line = parts[4].toInt();
    shot.hit = parts[8].toInt();
    shot.wholeRing = ring.first().toInt();
    shot.tenths = shot.wholeRing * 10 + (ring.size() > 1 ? ring[1].toInt() : 0);
    shot.key = QStringList{parts[4], parts[8], parts[17], parts[15]}.join('/');
    if (known.contains(shot.key)) continue;
    known.insert(shot.key);
    shots.push_back(shot);
  }
  return shots;
}

std::vector<ExpectedSeries> seriesOf(const std::vector<FiredShot>& shots, const QString& discipline,
                                     int length, bool tenths) {
  std::vector<ExpectedSeries> series;
  int sum = 0, inSeries = 0;
  const auto close = [&] {
    if (inSeries > 0) series.push_back({discipline, inTenths(sum, tenths)});
    sum = inSeries = 0;
  };
  for (const FiredShot& shot : shots) {
    sum += tenths ? shot.tenths : shot.wholeRing * 10;
    if (++inSeries == length) close();
  }
  close();
  return series;
}

std::vector<Row> reckon(const QString& competition, const std::vector<FiredShot>& fired, int expectedOpen,
                        const std::vector<ExpectedSeries>& series) {
  const auto store = dao::Database::open(competition);
  const auto number = [](qint64 n) { return QString::number(n); };
  QSet<QString> keys;
  const auto all = store->openRecordset("Select * from Haering_Daten");
  int rows = 0;
  for (; !all->eof(); all->moveNext(), ++rows) keys.insert(all->value("Key").toString());
  const int shots = static_cast<int>(fired.size());
  return {
      {"Schuss in Haering_Daten", number(shots), number(rows)},
      {"davon verschieden", number(shots), number(keys.size())},
      {"offen", number(expectedOpen),
       number(count(*store, "Select * from Haering_Daten where verbucht = 0 and verworfen = 0"))},
      {"verbucht", number(shots - expectedOpen),
       number(count(*store, "Select * from Haering_Daten where verbucht = -1"))},
      {"Zeilen in SchussSerien", number(static_cast<qint64>(series.size())),
       number(count(*store, "Select * from SchussSerien"))},
      {"Summen der Serien", sortedSums(series).join(" | "), storedSums(*store).join(" | ")},
  };
}

bool printTable(const std::vector<Row>& rows) {
  QTextStream out(stdout);
  bool good = true;
  out << QString("%1 %2 %3\n").arg("", -26).arg("Stationen", 12).arg("Wettkampf", 12);
  for (const Row& row : rows) {
    out << QString("%1 %2 %3  %4\n")
               .arg(row.what, -26)
               .arg(row.stations, 12)
               .arg(row.competition, 12)
               .arg(row.agrees() ? "stimmt" : "STIMMT NICHT");
    good = good && row.agrees();
  }
  return good;
}

}  // namespace qk

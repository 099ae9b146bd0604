#include "tools/rundgang/comparison.h"

#include <QTextStream>
#include <algorithm>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace qk {

namespace {
constexpr qsizetype kShownDifferences = 20;
}  // namespace

std::vector<StoredRow> storedRows(dao::Database& store, const QString& query) {
  std::vector<StoredRow> all;
  const auto rows = store.openRecordset(query);
  for (; !rows->eof(); rows->moveNext()) {
    StoredRow row;
    for (int i = 0; i < rows->fieldCount(); ++i) row[rows->fieldDef(i).name] = rows->value(i);
    all.push_back(row);
  }
  return all;
}

void Comparison::add(const QString& what, const QString& expected, const QString& stored) {
  result.rows.push_back({what, expected, stored});
}

void Comparison::add(const QString& what, qint64 expected, qint64 stored) {
  add(what, QString::number(expected), QString::number(stored));
}

QList<int> Comparison::claim(const QString& table, const std::vector<ExpectedRow>& expected,
                             const std::vector<StoredRow>& stored) {
  QList<int> places;
  std::vector<bool> taken(stored.size());
  for (const ExpectedRow& row : expected) {
    QStringList nearest;
    int place = -1;
    for (size_t i = 0; i < stored.size() && place < 0; ++i) {
      if (taken[i]) continue;
      const QStringList wrong = differences(row, stored[i]);
      if (wrong.isEmpty()) place = static_cast<int>(i);
      if (nearest.isEmpty() || wrong.size() < nearest.size()) nearest = wrong;
    }
    places << place;
    if (place >= 0)
      taken[static_cast<size_t>(place)] = true;
    else
      result.differences << table + ": " + (nearest.isEmpty() ? "Zeile fehlt" : nearest.join(", "));
  }
  const auto alike = std::count_if(places.begin(), places.end(), [](int place) { return place >= 0; });
  add("Zeilen in " + table, static_cast<qint64>(expected.size()), static_cast<qint64>(stored.size()));
  add("  in allen Werten gleich", static_cast<qint64>(expected.size()), alike);
  return places;
}

bool printTable(const Reckoning& reckoning, const QString& expecting) {
  QTextStream out(stdout);
  bool good = reckoning.differences.isEmpty();
  out << QString("%1 %2 %3\n").arg("", -26).arg(expecting, 12).arg("Wettkampf", 12);
  for (const Row& row : reckoning.rows) {
    out << QString("%1 %2 %3  %4\n")
               .arg(row.what, -26)
               .arg(row.expected, 12)
               .arg(row.competition, 12)
               .arg(row.agrees() ? "stimmt" : "STIMMT NICHT");
    good = good && row.agrees();
  }
  if (reckoning.binaryRests > 0)
    out << QString("Blocksummen, von denen nur ein binärer Rest dasteht: %1\n").arg(reckoning.binaryRests);
  for (const QString& difference : reckoning.differences.mid(0, kShownDifferences))
    out << "  " << difference << "\n";
  if (const auto more = reckoning.differences.size() - kShownDifferences; more > 0)
    out << QString("  und %1 weitere\n").arg(more);
  return good;
}

}  // namespace qk

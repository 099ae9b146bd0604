#include "tools/rundgang/sheet_reckoning.h"

#include <QDate>
#include <QMap>
#include <algorithm>
#include <cmath>

#include "platform/dao/database.h"
#include "tools/rundgang/comparison.h"

namespace qk {

namespace {

constexpr int kPrinted = 100, kPlainLimit = 20;

struct Result {
  qint64 id = 0;
  QString shooter, weapon;
  qint64 discipline = 0;
  int tenths = 0;
  QDate day;
};
using Results = std::vector<Result>;

int tenthsOf(const QVariant& value) {
  return static_cast<int>(std::lround(value.toDouble() * 10));
}

bool isSet(const StoredRow& row, const QString& column) {
  return row[column].toInt() != 0;
}

Results resultsIn(dao::Database& store, const QString& table) {
  Results all;
  for (const StoredRow& row : storedRows(store, "Select * from " + table + " order by ID"))
    all.push_back({row["ID"].toLongLong(), row["Startnummer"].toString(), row["WTyp"].toString(),
                   row["DisziID"].toLongLong(), tenthsOf(row["Ergebnis"]),
                   QDate::fromString(row["Datum"].toString().left(10), "dd.MM.yyyy")});
  return all;
}

/// The better first: the smaller of teilers, the larger of rings.
void sortByWorth(Results& results, bool teiler) {
  std::stable_sort(results.begin(), results.end(), [teiler](const Result& one, const Result& other) {
    return teiler ? one.tenths < other.tenths : one.tenths > other.tenths;
  });
}

void cut(Results& results, qsizetype most) {
  if (static_cast<qsizetype>(results.size()) > most) results.resize(static_cast<size_t>(most));
}

QList<int> valuesOf(const Results& results) {
  QList<int> values;
  for (const Result& result : results)
    if (values.size() < kPrinted) values << result.tenths;
  return values;
}

/// Everything a sheet is made of, read once.
struct Facts {
  explicit Facts(dao::Database& store)
      : teilers(resultsIn(store, "Schuss")),
        series(resultsIn(store, "SchussSerien")),
        weapons(storedRows(store, "Select * from DisziplinWaffen")),
        profileWeapons(storedRows(store, "Select * from Auswert_Waffen")),
        profileClasses(storedRows(store, "Select * from Auswert_Klassen")),
        profiles(storedRows(store, "Select * from AuswertProfil order by ID")),
        links(storedRows(store, "Select * from AwProfilDiszi order by ID")) {
    for (const StoredRow& row : storedRows(store, "Select * from Disziplin"))
      disciplines[row["ID"].toLongLong()] = row;
    for (const StoredRow& row : storedRows(store, "Select * from Schützen"))
      classes[row["Startnummer"].toString()] = row["KlassenID"].toLongLong();
  }

  QStringList weaponsOf(qint64 profile, qint64 discipline) const {
    QStringList all;
    for (const StoredRow& wanted : profileWeapons)
      for (const StoredRow& weapon : weapons)
        if (wanted["AuswertID"].toLongLong() == profile && weapon["DisziID"].toLongLong() == discipline &&
            weapon["WaffenID"] == wanted["WaffenID"])
          all << weapon["KZ"].toString();
    return all;
  }
  bool namesWeapons(qint64 profile) const {
    return std::any_of(profileWeapons.begin(), profileWeapons.end(),
                       [profile](const StoredRow& row) { return row["AuswertID"].toLongLong() == profile; });
  }
  QList<qint64> classesOf(qint64 profile) const {
    QList<qint64> all;
    for (const StoredRow& row : profileClasses)
      if (row["AuswertID"].toLongLong() == profile) all << row["KlassenID"].toLongLong();
    return all;
  }

  Results teilers, series;
  std::vector<StoredRow> weapons, profileWeapons, profileClasses, profiles, links;
  QMap<qint64, StoredRow> disciplines;
  QMap<QString, qint64> classes;
};

/// A discipline of a profile with what is left of the shooter's results.
struct Part {
  const StoredRow* profile;
  const StoredRow* discipline;
  Results results;
  qint64 profileId() const { return (*profile)["ID"].toLongLong(); }
  bool teiler() const { return isSet(*discipline, "Teiler"); }
};

void keepDays(Results& results, const Results& ofEverybody, qint64 discipline) {
  QDate last;
  for (const Result& result : ofEverybody)
    if (result.discipline == discipline && (last.isNull() || result.day > last)) last = result.day;
  std::erase_if(results, [last](const Result& result) { return result.day != last; });
}

/// The first `most` of each day or month, at least one.
void keepBestOfEach(Part& part) {
  const bool month = isSet(*part.profile, "Monatswertung");
  const int most = std::max(1, (*part.profile)["nBestTageswertung"].toInt());
  sortByWorth(part.results, !isSet(*part.discipline, "Ringe"));
  QMap<QDate, int> taken;
  std::erase_if(part.results, [&](const Result& result) {
    const QDate period = month ? QDate(result.day.year(), result.day.month(), 1) : result.day;
    return ++taken[period] > most;
  });
}

void filter(const Facts& facts, const QString& shooter, Part& part) {
  const StoredRow& profile = *part.profile;
  const StoredRow& discipline = *part.discipline;
  const qint64 id = discipline["ID"].toLongLong();
  sortByWorth(part.results, part.teiler());
  if (isSet(discipline, "bGewErg") && discipline["nGewErg"].toInt() > 0)
    cut(part.results, discipline["nGewErg"].toInt());
  if (isSet(profile, "OptWaffen") && facts.namesWeapons(part.profileId()))
    if (const QStringList weapons = facts.weaponsOf(part.profileId(), id); !weapons.isEmpty())
      std::erase_if(part.results, [&](const Result& result) { return !weapons.contains(result.weapon); });
  const QList<qint64> classes = facts.classesOf(part.profileId());
  if (isSet(profile, "OptKlassen") && !classes.isEmpty() && !classes.contains(facts.classes[shooter]))
    part.results.clear();
  if (isSet(profile, "OptTage")) keepDays(part.results, part.teiler() ? facts.teilers : facts.series, id);
  if (isSet(profile, "Tageswertung") || isSet(profile, "Monatswertung")) keepBestOfEach(part);
  sortByWorth(part.results, part.teiler());
}

int hundredthsOf(const QString& german) {
  return static_cast<int>(std::lround(QString(german).remove('.').replace(',', '.').toDouble() * 100));
}

SheetRow rowOf(const Part& part, int sum) {
  SheetRow row;
  row.contest = (*part.profile)["Name"].toString();
  row.discipline = (*part.discipline)["Name"].toString();
  row.sum = sum;
  row.results = valuesOf(part.results);
  return row;
}

void addGroups(const Facts& facts, const Results& ofEverybody, const QString& shooter, const QString& group,
               std::vector<SheetRow>& rows) {
  QMap<std::pair<QString, QString>, Results> groups;
  for (const Result& result : ofEverybody)
    if (result.shooter == shooter && facts.disciplines.contains(result.discipline))
      groups[{facts.disciplines[result.discipline]["Name"].toString(), result.weapon}].push_back(result);
  for (auto it = groups.begin(); it != groups.end(); ++it) {
    const StoredRow& discipline = facts.disciplines[it->front().discipline];
    sortByWorth(*it, group == "Teiler");
    cut(*it, isSet(discipline, "bGewErg") ? discipline["nGewErg"].toInt() : kPlainLimit);
    SheetRow row;
    row.group = group;
    row.discipline = it.key().first;
    row.weapon = it.key().second;
    row.results = valuesOf(*it);
    rows.push_back(row);
  }
}

/// Whether a result's weapon is one of the profile's: by the first discipline that knows it.
bool weaponCounts(const Facts& facts, qint64 profile, const QString& weapon) {
  for (const StoredRow& known : facts.weapons) {
    if (known["KZ"].toString() != weapon) continue;
    return std::any_of(
        facts.profileWeapons.begin(), facts.profileWeapons.end(), [&](const StoredRow& wanted) {
          return wanted["AuswertID"].toLongLong() == profile && wanted["WaffenID"] == known["WaffenID"];
        });
  }
  return false;
}

void addPremium(const Facts& facts, const StoredRow& profile, const QString& shooter,
                std::vector<SheetRow>& rows) {
  const qint64 id = profile["ID"].toLongLong();
  const bool teiler = isSet(profile, "Teiler");
  Results found;
  for (const StoredRow& link : facts.links)
    for (const Result& result : teiler ? facts.teilers : facts.series)
      if (link["AwProfilID"].toLongLong() == id && link["DisziID"].toLongLong() == result.discipline &&
          result.shooter == shooter)
        found.push_back(result);
  sortByWorth(found, teiler);
  const int wanted = profile["Anzahl"].toInt();
  cut(found, wanted);
  const QList<qint64> classes = facts.classesOf(id);
  const bool classCounts = classes.isEmpty() || classes.contains(facts.classes[shooter]);
  int sum = 0, count = 0;
  for (const Result& result : found)
    if (classCounts && weaponCounts(facts, id, result.weapon)) sum += result.tenths, ++count;
  if (count == 0) return;
  const int least = profile["nMinAnzahlErg"].toInt();
  const int needed = teiler ? wanted : isSet(profile, "nMinAnzahlErgAktiv") ? least : 0;
  SheetRow row;
  row.group = "Prämie";
  row.discipline = profile["Name"].toString();
  if (count < needed) row.discipline += QString(" -ohne Wertung (%1/%2)").arg(count).arg(needed);
  row.results = {sum};
  rows.push_back(row);
}

}  // namespace

std::vector<SheetRow> profileSheet(dao::Database& store, const QString& startNumber) {
  const Facts facts(store);
  std::vector<Part> parts;
  for (const StoredRow& profile : facts.profiles)
    for (const StoredRow& link : facts.links) {
      if (!isSet(profile, "nShowKurzAuswertung") || link["AwProfilID"] != profile["ID"]) continue;
      const auto discipline = facts.disciplines.constFind(link["DisziID"].toLongLong());
      Part part{&profile, &*discipline, {}};
      for (const Result& result : part.teiler() ? facts.teilers : facts.series)
        if (result.shooter == startNumber && result.discipline == discipline.key())
          part.results.push_back(result);
      filter(facts, startNumber, part);
      parts.push_back(part);
    }

  std::vector<SheetRow> rows;
  int running = 0;
  for (const int type : {7, 8, 0, 1, 2, 6}) {
    std::vector<Part> ofType;
    std::copy_if(parts.begin(), parts.end(), std::back_inserter(ofType),
                 [type](const Part& part) { return (*part.profile)["Typ"].toInt() == type; });
    std::stable_sort(ofType.begin(), ofType.end(), [](const Part& one, const Part& other) {
      return (*one.profile)["Name"].toString().localeAwareCompare((*other.profile)["Name"].toString()) < 0;
    });
    for (Part& part : ofType) {
      if (part.results.empty()) continue;
      if (type == 2) {
        const int target = hundredthsOf((*part.profile)["Vorgabe"].toString());
        std::stable_sort(part.results.begin(), part.results.end(),
                         [target](const Result& one, const Result& other) {
                           return std::abs(target - one.tenths * 10) < std::abs(target - other.tenths * 10);
                         });
      }
      int sum = 0;
      if (const int wanted = (*part.profile)["Anzahl"].toInt(); type == 0 && wanted > 0) {
        Results all;
        for (const Part& other : parts)
          if (other.profileId() == part.profileId())
            all.insert(all.end(), other.results.begin(), other.results.end());
        sortByWorth(all, part.teiler());
        cut(all, wanted);
        for (const Result& result : all) sum += result.tenths;
        running = static_cast<int>(all.size()) + 1;
      }
      if (isSet(*part.profile, "nMinAnzahlErgAktiv") &&
          running - 1 < (*part.profile)["nMinAnzahlErg"].toInt())
        continue;
      rows.push_back(rowOf(part, sum));
    }
  }
  return rows;
}

std::vector<SheetRow> plainSheet(dao::Database& store, const QString& startNumber) {
  const Facts facts(store);
  std::vector<SheetRow> rows;
  addGroups(facts, facts.teilers, startNumber, "Teiler", rows);
  addGroups(facts, facts.series, startNumber, "Serien", rows);
  for (const StoredRow& profile : facts.profiles) addPremium(facts, profile, startNumber, rows);
  return rows;
}

}  // namespace qk

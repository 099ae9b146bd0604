#include "tools/rundgang/reckoning.h"

#include <QTextStream>
#include <algorithm>
#include <cmath>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tools/rundgang/reckoning_acts.h"

namespace qk {

namespace {

using State = ReckonedShot::State;

constexpr qsizetype kShownDifferences = 20;

QString countText(qint64 n) {
  return QString::number(n);
}

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

int tenthsIn(const StoredRow& row, const QString& column) {
  return static_cast<int>(std::lround(row[column].toDouble() * 10));
}

/// Every column of a received shot.
ExpectedRow shotRow(const ReckonedShot& shot) {
  const QStringList& r = shot.fired->record;
  ExpectedRow row;
  row.figures = {text("WettbewerbBezeichnung", r[1]),
                 text("KlasseBezeichnung", r[2]),
                 number("StandnummerOrt", r[3].toInt()),
                 number("Liniennummer", shot.fired->line),
                 text("Schütze", r[5]),
                 text("ProbeMatch", r[6]),
                 number("Wertung", r[7].toInt()),
                 number("Treffernummer", shot.fired->hit),
                 tenths("RingwertmitZehntel", shot.fired->tenths),
                 text("Lagepfeil", r[10]),
                 tenths("X", tenthsOf(r[11])),
                 tenths("Y", tenthsOf(r[12])),
                 tenths("Radius", tenthsOf(r[13])),
                 tenths("Winkel", tenthsOf(r[14])),
                 text("ZeitAbsolut", r[15]),
                 text("ZeitRelativ", r[16]),
                 text("Datum", r[17]),
                 text("Wettbewerb", r[18]),
                 text("Klasse", r[19]),
                 text("Startnummer", shot.shooter),
                 text("Waffe", shot.weapon),
                 tenths("Teiler", shot.teiler),
                 tenths("Teilerfaktor", shot.factor),
                 text("Key", storedKey(*shot.fired)),
                 number("Verbucht", shot.state == State::Booked ? -1 : 0),
                 number("Verworfen", shot.state == State::Discarded ? -1 : 0),
                 shot.state == State::Open ? never("BuchungsZeitpunkt")
                                           : moment("BuchungsZeitpunkt", shot.from, shot.to)};
  return row;
}

class Audit {
 public:
  Audit(dao::Database& store, const std::vector<FiredShot>& fired)
      : store_(store), facts_(readFacts(store)), shots_(receivedShots(fired, facts_)) {}

  Reckoning run(const Journal& journal) {
    const auto received = storedRows(store_, "Select * from Haering_Daten");
    settleTeilers(received);
    const Expected expected = replay(journal, facts_, shots_);
    compareShots(received);
    compare("Schuss", expected.teilers);
    const auto series = compare("SchussSerien", expected.series);
    for (const StoredRow& row : series) result_.binaryRests += binaryRests(row["Folge"].toString());
    comparePictures(expected.pictures);
    return result_;
  }

 private:
  /// Where a teiler may fall a tenth short, the row that was stored at reception says whether it did.
  void settleTeilers(const std::vector<StoredRow>& received) {
    QHash<QString, int> stored;
    for (const StoredRow& row : received) stored[row["Key"].toString()] = tenthsIn(row, "Teiler");
    for (ReckonedShot& shot : shots_)
      if (shot.teilerMayBeLess && stored.value(storedKey(*shot.fired)) == shot.teiler - 1) --shot.teiler;
  }

  void compareShots(const std::vector<StoredRow>& received) {
    std::vector<ExpectedRow> expected;
    for (const ReckonedShot& shot : shots_) expected.push_back(shotRow(shot));
    claim("Haering_Daten", expected, received);
    for (const auto& [what, state, flag] : {std::tuple{"davon verbucht", State::Booked, "Verbucht"},
                                            std::tuple{"davon verworfen", State::Discarded, "Verworfen"}}) {
      const auto here = std::count_if(shots_.begin(), shots_.end(),
                                      [state = state](const ReckonedShot& s) { return s.state == state; });
      const auto there = std::count_if(received.begin(), received.end(), [flag = flag](const StoredRow& row) {
        return row[flag].toInt() != 0;
      });
      add(what, here, there);
    }
  }

  std::vector<StoredRow> compare(const QString& table, const std::vector<ExpectedRow>& expected) {
    const auto stored = storedRows(store_, "Select * from " + table);
    claim(table, expected, stored);
    return stored;
  }

  void comparePictures(const std::vector<ExpectedRow>& expected) {
    auto stored = storedRows(store_, "Select * from Grafik_Scheibe");
    const QList<int> places = claim("Grafik_Scheibe", expected, stored);
    qint64 here = 0, alike = 0;
    for (size_t i = 0; i < expected.size(); ++i) {
      here += static_cast<qint64>(expected[i].children.size());
      if (places[static_cast<qsizetype>(i)] < 0) continue;
      const QString id = stored[static_cast<size_t>(places[static_cast<qsizetype>(i)])]["ID"].toString();
      const auto hits =
          storedRows(store_, "Select * from Grafik_Schuss where ScheibenID = " + id + " order by ID");
      for (size_t hit = 0; hit < std::min(hits.size(), expected[i].children.size()); ++hit) {
        const QStringList wrong = differences(expected[i].children[hit], hits[hit]);
        alike += wrong.isEmpty();
        if (!wrong.isEmpty()) result_.differences << "Grafik_Schuss: " + wrong.join(", ");
      }
    }
    add("Zeilen in Grafik_Schuss", here,
        static_cast<qint64>(storedRows(store_, "Select * from Grafik_Schuss").size()));
    add("  in allen Werten gleich", here, alike);
  }

  /// Finds for each expected row a stored one that agrees in every figure and isn't taken yet: lines write
  /// side by side, so the order of the rows says nothing. The places of what was found, -1 for none.
  QList<int> claim(const QString& table, const std::vector<ExpectedRow>& expected,
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
        result_.differences << table + ": " + (nearest.isEmpty() ? "Zeile fehlt" : nearest.join(", "));
    }
    const auto alike = std::count_if(places.begin(), places.end(), [](int place) { return place >= 0; });
    add("Zeilen in " + table, static_cast<qint64>(expected.size()), static_cast<qint64>(stored.size()));
    add("  in allen Werten gleich", static_cast<qint64>(expected.size()), alike);
    return places;
  }

  void add(const QString& what, qint64 here, qint64 there) {
    result_.rows.push_back({what, countText(here), countText(there)});
  }

  dao::Database& store_;
  Facts facts_;
  std::vector<ReckonedShot> shots_;
  Reckoning result_;
};

}  // namespace

Reckoning reckon(const QString& competition, const std::vector<FiredShot>& fired, const Journal& journal) {
  const auto store = dao::Database::open(competition);
  return Audit(*store, fired).run(journal);
}

bool printTable(const Reckoning& reckoning) {
  QTextStream out(stdout);
  bool good = reckoning.differences.isEmpty();
  out << QString("%1 %2 %3\n").arg("", -26).arg("Stationen", 12).arg("Wettkampf", 12);
  for (const Row& row : reckoning.rows) {
    out << QString("%1 %2 %3  %4\n")
               .arg(row.what, -26)
               .arg(row.stations, 12)
               .arg(row.competition, 12)
               .arg(row.agrees() ? "stimmt" : "STIMMT NICHT");
    good = good && row.agrees();
  }
  out << QString("Blocksummen, von denen nur ein binärer Rest dasteht: %1\n").arg(reckoning.binaryRests);
  for (const QString& difference : reckoning.differences.mid(0, kShownDifferences))
    out << "  " << difference << "\n";
  if (const auto more = reckoning.differences.size() - kShownDifferences; more > 0)
    out << QString("  und %1 weitere\n").arg(more);
  return good;
}

}  // namespace qk

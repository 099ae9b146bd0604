#include "tools/rundgang/reckoning.h"

#include <algorithm>
#include <cmath>

#include "platform/dao/database.h"
#include "tools/rundgang/reckoning_acts.h"

namespace qk {

namespace {

using State = ReckonedShot::State;

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
    for (const StoredRow& row : series) sides_.result.binaryRests += binaryRests(row["Folge"].toString());
    comparePictures(expected.pictures);
    return sides_.result;
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
    sides_.claim("Haering_Daten", expected, received);
    for (const auto& [what, state, flag] : {std::tuple{"davon verbucht", State::Booked, "Verbucht"},
                                            std::tuple{"davon verworfen", State::Discarded, "Verworfen"}}) {
      const auto here = std::count_if(shots_.begin(), shots_.end(),
                                      [state = state](const ReckonedShot& s) { return s.state == state; });
      const auto there = std::count_if(received.begin(), received.end(), [flag = flag](const StoredRow& row) {
        return row[flag].toInt() != 0;
      });
      sides_.add(what, here, there);
    }
  }

  std::vector<StoredRow> compare(const QString& table, const std::vector<ExpectedRow>& expected) {
    const auto stored = storedRows(store_, "Select * from " + table);
    sides_.claim(table, expected, stored);
    return stored;
  }

  void comparePictures(const std::vector<ExpectedRow>& expected) {
    auto stored = storedRows(store_, "Select * from Grafik_Scheibe");
    const QList<int> places = sides_.claim("Grafik_Scheibe", expected, stored);
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
        if (!wrong.isEmpty()) sides_.result.differences << "Grafik_Schuss: " + wrong.join(", ");
      }
    }
    sides_.add("Zeilen in Grafik_Schuss", here,
               static_cast<qint64>(storedRows(store_, "Select * from Grafik_Schuss").size()));
    sides_.add("  in allen Werten gleich", here, alike);
  }

  dao::Database& store_;
  Facts facts_;
  std::vector<ReckonedShot> shots_;
  Comparison sides_;
};

}  // namespace

Reckoning reckon(const QString& competition, const std::vector<FiredShot>& fired, const Journal& journal) {
  const auto store = dao::Database::open(competition);
  return Audit(*store, fired).run(journal);
}

}  // namespace qk

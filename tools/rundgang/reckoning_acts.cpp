#include "tools/rundgang/reckoning_acts.h"

#include <QHash>
#include <algorithm>

namespace qk {

namespace {

using Chosen = std::vector<ReckonedShot*>;

constexpr int kNoLimit = 99999;
constexpr int kBlock = 10;
constexpr int kFirstColumn = 250;  ///< characters of the single values that fit in the first column

/// What the last transfer of a line has made, not stored yet.
struct Pending {
  std::vector<ExpectedRow> teilers, series;
};

struct Visit {
  const Act& act;
  const Person& person;
};

/// What every result carries, whatever its kind.
std::vector<Figure> common(const Visit& visit, const Rule& rule, const QString& weapon) {
  return {text("Startnummer", visit.act.shooter),
          number("MannID", visit.person.clubId),
          number("VorMannID", visit.person.teamId),
          number("KlassenID", visit.person.classId),
          number("DisziID", rule.id),
          moment("Datum", visit.act.from, visit.act.to),
          number("SPO_ID", 0),
          text("ScheibenNummern", ""),
          number("bManuell", 0),
          text("WTyp", weapon),
          number("Betrag", 0)};
}

ExpectedRow joined(std::vector<Figure> figures, const std::vector<Figure>& more) {
  figures.insert(figures.end(), more.begin(), more.end());
  return {std::move(figures), {}};
}

ExpectedRow teilerRow(const Visit& visit, const Rule& rule, const ReckonedShot& shot) {
  return joined(common(visit, rule, shot.weapon),
                {text("Art", "T"), tenths("Ergebnis", shot.teiler), number("Ring", 0),
                 tenths("x", tenthsOf(shot.fired->record[11])), tenths("y", tenthsOf(shot.fired->record[12])),
                 number("ScheibenNr", shot.fired->hit), text("SchussXY", ""), text("SerieXY", ""),
                 number("DSBTeiler", 0), number("DSBRinge", 0)});
}

ExpectedRow ringTeilerRow(const Visit& visit, const Rule& rule, const Chosen& batch) {
  int rings = 0;
  int best = rule.limited ? rule.limit : kNoLimit;
  QString both;
  for (const ReckonedShot* shot : batch) {
    const int ring = rule.tenths ? shot->ring() : shot->whole();
    rings += ring;
    best = std::min(best, shot->teiler);
    both += "R:" + tenthsText(ring) + ";T:" + tenthsText(shot->teiler) + ";";
  }
  return joined(common(visit, rule, batch.back()->weapon),
                {text("Art", "RT"), tenths("Ergebnis", rule.maximum - rings + best), number("Ring", 0),
                 number("x", 0), number("y", 0), number("ScheibenNr", 0), text("SchussXY", ""),
                 text("SerieXY", both), tenths("DSBTeiler", best), tenths("DSBRinge", rings)});
}

/// What of a shot a ring series sums, in tenths.
int counted(const Rule& rule, const ReckonedShot& shot) {
  const int digit = shot.ring() % 10;
  if (rule.tenthDigits) return digit * 10;
  if (rule.mixed) return shot.whole() + digit * 10;
  return rule.tenths ? shot.ring() : shot.whole();
}

ExpectedRow seriesRow(const Visit& visit, const Rule& rule, const Chosen& series) {
  const bool wholeRings = !rule.tenths && !rule.tenthDigits && !rule.mixed;
  int sum = 0, block = 0, place = 0;
  QList<int> blocks;
  QString singles, teilers;
  for (const ReckonedShot* shot : series) {
    sum += counted(rule, *shot);
    block += counted(rule, *shot);
    singles += tenthsText(wholeRings ? shot->whole() : shot->ring()) + "|";
    teilers += tenthsText(shot->teiler) + "|";
    if (++place % kBlock != 0 && place != rule.series) continue;
    blocks << block;
    block = 0;
    singles += "-";
  }
  return joined(common(visit, rule, series.back()->weapon),
                {tenths("Ergebnis", sum), text("Anz", QString::number(rule.series) + "er"),
                 blockSums("Folge", blocks, wholeRings), text("Einzelfolge", singles.left(kFirstColumn)),
                 text("Einzelfolge2", singles.mid(kFirstColumn)), text("EinzelFolgeTeiler", teilers),
                 text("SerieXY", "")});
}

/// Cuts the shots into series; the last may be shorter.
std::vector<Chosen> cut(const Chosen& shots, int length) {
  std::vector<Chosen> parts;
  for (size_t i = 0; length > 0 && i < shots.size(); ++i) {
    if (i % static_cast<size_t>(length) == 0) parts.emplace_back();
    parts.back().push_back(shots[i]);
  }
  return parts;
}

void workOut(const Visit& visit, const Rule& rule, const Chosen& shots, Pending& pending) {
  if (rule.teilers && !rule.rings)
    for (const ReckonedShot* shot : shots) pending.teilers.push_back(teilerRow(visit, rule, *shot));
  if (!rule.rings) return;
  for (const Chosen& part : cut(shots, rule.series)) {
    if (rule.teilers) {
      pending.teilers.push_back(ringTeilerRow(visit, rule, part));
      continue;
    }
    const bool whole = static_cast<int>(part.size()) == rule.series;
    if (rule.extra != 0 && whole) part.back()->ringsCleared = true;
    const bool loneExtra = rule.extra == 1 && part.size() == 1 && !whole;
    if (!loneExtra) pending.series.push_back(seriesRow(visit, rule, part));
  }
}

ExpectedRow hitRow(const ReckonedShot& shot) {
  return {{number("SchussNr", shot.fired->hit - 1), tenths("Ringwert", shot.ring()),
           tenths("Teiler", shot.teiler), tenths("x", tenthsOf(shot.fired->record[11])),
           tenths("Y", tenthsOf(shot.fired->record[12]))},
          {}};
}

ExpectedRow pictureRow(const Visit& visit, const Chosen& shots) {
  ExpectedRow row;
  int whole = 0, ring = 0;
  for (const ReckonedShot* shot : shots) {
    whole += shot->whole();
    ring += shot->ring();
    row.children.push_back(hitRow(*shot));
  }
  const ReckonedShot& first = *shots.front();
  row.figures = {text("StartNr", visit.act.shooter),
                 text("Name", visit.person.name),
                 text("Verein", visit.person.club),
                 text("Wettkampf", first.fired->record[1]),
                 text("ScheibenTyp", first.weapon),
                 number("AnzScheiben", 1),
                 tenths("Teilerfaktor", first.factor),
                 number("AnzEinschuesse", static_cast<qint64>(shots.size())),
                 moment("Datum", visit.act.from, visit.act.to),
                 tenths("ringeo", whole),
                 tenths("ringem", ring)};
  return row;
}

class Replay {
 public:
  Replay(const Facts& facts, std::vector<ReckonedShot>& shots) : facts_(facts) {
    for (ReckonedShot& shot : shots) lines_[shot.fired->line].open.push_back(&shot);
  }

  void run(const Act& act) {
    Line& line = lines_[act.line];
    const Visit visit{act, facts_.persons[act.shooter]};
    Chosen chosen;
    for (int place : act.shots) chosen.push_back(line.open.at(static_cast<size_t>(place)));
    switch (act.kind) {
      case Act::Kind::ChangeShooter:
        for (ReckonedShot* shot : line.open) shot->shooter = act.shooter;
        break;
      case Act::Kind::Discard:
        end(act, line, chosen, ReckonedShot::State::Discarded);
        line.pending = {};
        break;
      case Act::Kind::Transfer:
        transfer(visit, line, chosen);
        break;
      case Act::Kind::Store:
        store(visit, line, chosen);
        break;
      case Act::Kind::Book:
        store(visit, line, chosen);
        end(act, line, chosen, ReckonedShot::State::Booked);
        break;
    }
  }

  Expected expected;

 private:
  struct Line {
    Chosen open;
    Pending pending;
  };

  void transfer(const Visit& visit, Line& line, const Chosen& chosen) const {
    line.pending = {};
    std::vector<Rule> rules;
    for (const QString& name : visit.act.disciplines) rules.push_back(facts_.rules[name]);
    std::sort(rules.begin(), rules.end(), [](const Rule& a, const Rule& b) { return a.place < b.place; });
    for (const Rule& rule : rules) workOut(visit, rule, chosen, line.pending);
  }

  void store(const Visit& visit, Line& line, const Chosen& chosen) {
    std::move(line.pending.teilers.begin(), line.pending.teilers.end(), std::back_inserter(expected.teilers));
    std::move(line.pending.series.begin(), line.pending.series.end(), std::back_inserter(expected.series));
    expected.pictures.push_back(pictureRow(visit, chosen));
    line.pending = {};
  }

  static void end(const Act& act, Line& line, const Chosen& chosen, ReckonedShot::State state) {
    for (ReckonedShot* shot : chosen) {
      shot->state = state;
      shot->from = act.from;
      shot->to = act.to;
      line.open.erase(std::find(line.open.begin(), line.open.end(), shot));
    }
  }

  const Facts& facts_;
  QHash<int, Line> lines_;
};

}  // namespace

QString storedKey(const FiredShot& shot) {
  const auto lastThree = [](int n) { return QString::number(n % 1000).rightJustified(3, '0'); };
  return lastThree(shot.line) + "0" + lastThree(shot.hit) + "-" + shot.record[17] + "-" + shot.record[15];
}

std::vector<ReckonedShot> receivedShots(const std::vector<FiredShot>& fired, const Facts& facts) {
  std::vector<ReckonedShot> shots;
  for (const FiredShot& one : fired) {
    const TargetKey target = facts.targets[one.record[18]];
    const int radius = tenthsOf(one.record[13]);
    ReckonedShot shot;
    shot.fired = &one;
    shot.weapon = target.weapon;
    shot.factor = target.factor;
    shot.teiler = radius * 10 / target.factor;
    shot.teilerMayBeLess = target.factor != 10 && radius * 10 % target.factor == 0;
    shot.shooter = one.record[20];
    shots.push_back(shot);
  }
  return shots;
}

Expected replay(const Journal& journal, const Facts& facts, std::vector<ReckonedShot>& shots) {
  Replay reckoned(facts, shots);
  for (const Act& act : journal) reckoned.run(act);
  return std::move(reckoned.expected);
}

}  // namespace qk

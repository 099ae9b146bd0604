// The transfer against a bare loop over the same sums, and whether it stays linear in shots × disciplines.
#include "capture/transfer.h"

#include <algorithm>

#include "benchmarks/pairs.h"
#include "benchmarks/visit.h"

namespace qk::bench {

namespace {

struct Size {
  int shots, disciplines, series;
};
constexpr Size kVisit{60, 40, 40};
constexpr Size kLarge{240, 160, 40};

void house(Rounds& rounds, Size size) {
  const Shots shots = visitShots(size.shots);
  const Disciplines disciplines = visitDisciplines(size.disciplines, size.series);
  const Schuetze shooter = visitShooter();
  CountingRandom random;
  const QDateTime now(QDate(2026, 11, 20), QTime(10, 0));
  while (rounds.next()) {
    PendingResults results;
    transferShots(shots, disciplines, &shooter,
                  {now, random, [](const Error&, const QString&) { return ErrorAnswer::Abort; }}, results);
    keep(results);
    if (results.m_colTeilerErg.isEmpty() || results.m_colRingErg.isEmpty())
      rounds.fail("the transfer made nothing");
  }
}

/// A result as a loop without collections, keys and reports would leave it.
struct BareResult {
  explicit BareResult(const Disziplin& d) : discipline(d.ID) {}
  int discipline;
  double sum = 0;
  QString blocks, singles, teilers, weapon;
};

/// A shot with its texts, written once for all disciplines.
struct BareShot {
  const HaeringSchuss& shot;
  QString whole, tenths, teiler;
};
using BareShots = std::vector<BareShot>;

QString comma(double value) {
  return QString::number(value).replace('.', ',');
}

void bareTeiler(const BareShots& shots, const Disziplin& d, std::vector<BareResult>& results) {
  for (const BareShot& s : shots) {
    BareResult& result = results.emplace_back(d);
    result.sum = s.shot.dblTeiler;
    result.weapon = s.shot.sWaffe;
  }
}

void bareRingTeiler(const BareShots& shots, const Disziplin& d, std::vector<BareResult>& results) {
  const auto batch = static_cast<size_t>(d.RingSerie);
  for (size_t first = 0; first < shots.size(); first += batch) {
    double rings = 0, best = d.DSBTeilerGrenze ? d.DSBTeilerGrenzWert : 9999.9;
    BareResult& result = results.emplace_back(d);
    for (size_t i = first; i < std::min(first + batch, shots.size()); ++i) {
      rings += shots[i].shot.RingOhneZehntel;
      best = std::min(best, shots[i].shot.dblTeiler);
      result.singles += "R:" + shots[i].whole + ";T:" + shots[i].teiler + ";";
      result.weapon = shots[i].shot.sWaffe;
    }
    result.sum = d.dblMaxSerieDSB - rings + best;
  }
}

double bareValue(const HaeringSchuss& shot, const Disziplin& d) {
  if (d.Ring0XZehntel) return shot.Ring0XZehntel;
  if (d.RingXXZehntel) return shot.RingXXZehntel;
  return d.RingZentel ? shot.RingMitZehntel : shot.RingOhneZehntel;
}

void bareRing(const BareShots& shots, const Disziplin& d, std::vector<BareResult>& results) {
  const bool wholeRings = !d.Ring0XZehntel && !d.RingXXZehntel && !d.RingZentel;
  BareResult result(d);
  double block = 0;
  int inSeries = 0;
  for (const BareShot& s : shots) {
    const double value = bareValue(s.shot, d);
    result.sum += value;
    block += value;
    result.singles += (wholeRings ? s.whole : s.tenths) + "|";
    result.teilers += s.teiler + "|";
    result.weapon = s.shot.sWaffe;
    if (++inSeries % 10 == 0) {
      result.blocks += comma(block).rightJustified(8, '0');
      block = 0;
    }
    if (inSeries < d.RingSerie) continue;
    results.push_back(result);
    result = BareResult(d);
    inSeries = 0;
  }
  if (inSeries > 0) results.push_back(result);
}

void bare(Rounds& rounds, Size size) {
  const Shots shots = visitShots(size.shots);
  const Disciplines disciplines = visitDisciplines(size.disciplines, size.series);
  while (rounds.next()) {
    BareShots texts;
    for (const auto& shot : shots)
      texts.push_back({*shot, QString::number(shot->RingOhneZehntel), comma(shot->RingMitZehntel),
                       comma(shot->dblTeiler)});
    std::vector<BareResult> results;
    for (const auto& d : disciplines) {
      if (d->Teiler && !d->Ringe)
        bareTeiler(texts, *d, results);
      else if (d->Teiler)
        bareRingTeiler(texts, *d, results);
      else
        bareRing(texts, *d, results);
    }
    keep(results);
  }
}

using namespace std::placeholders;

const Registered transfer{Pair{"Übertragen 60 Schuss × 40", 2.0, "gegen eine bloße Schleife über die Summen",
                               std::bind(house, _1, kVisit), std::bind(bare, _1, kVisit), 5}};
const Registered large{Pair{"Übertragen 240 Schuss × 160", 2.1, "gegen eine bloße Schleife über die Summen",
                            std::bind(house, _1, kLarge), std::bind(bare, _1, kLarge), 2}};
const Registered linear{Quotient{"Wachstum des Übertragens", 1.1, "16-mal so viel gegen einmal",
                                 "Übertragen 240 Schuss × 160", "Übertragen 60 Schuss × 40"}};

}  // namespace

}  // namespace qk::bench

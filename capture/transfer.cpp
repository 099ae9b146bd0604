#include "capture/transfer.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime/datetext.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

/// The teiler of a ring-teiler figure before the first shot, where the discipline sets no limit.
constexpr double NoTeilerLimit = 9999.9;
constexpr int BlockShots = 10;
constexpr int BlockSumWidth = 8;
constexpr int EinzelfolgeWidth = 250;

/// The values of a shot that this run counts, and their texts, written once for all disciplines.
struct CountedShot {
  explicit CountedShot(const HaeringSchuss& s)
      : shot(s),
        whole(s.RingOhneZehntel),
        withTenths(s.RingMitZehntel),
        tenthDigit(s.Ring0XZehntel),
        mixed(s.RingXXZehntel),
        wholeText(QString::number(s.RingOhneZehntel)),
        withTenthsText(numberText(s.RingMitZehntel)),
        teilerText(numberText(s.dblTeiler)),
        hitKey(QString::number(s.TrefferNummer) + "-" + s.Key) {}

  void clearRings() {
    whole = withTenths = tenthDigit = mixed = 0;
    wholeText = withTenthsText = "0";
    isExtra = true;
  }

  const HaeringSchuss& shot;
  double whole, withTenths, tenthDigit, mixed;
  QString wholeText, withTenthsText, teilerText;
  QString hitKey;  ///< the shot in the keys of its teiler records
  bool isExtra = false;
};

/// A ring series while it grows.
struct Series {
  double dblSumme = 0;
  double dblBlock = 0;
  QString sFolge, sEinzelfolge, sEinzelTeiler, sWaffe;
};

/// What a ring discipline sums of a shot; the first flag that is set decides.
double CountedShot::*countedValue(const Disziplin& d) {
  if (d.Ring0XZehntel) return &CountedShot::tenthDigit;
  if (d.RingXXZehntel) return &CountedShot::mixed;
  if (d.RingZentel) return &CountedShot::withTenths;
  return &CountedShot::whole;
}

class TransferRun {
 public:
  TransferRun(const std::vector<std::shared_ptr<HaeringSchuss>>& shots, const Schuetze* shooter,
              const TransferSurroundings& surroundings, PendingResults& results)
      : shooter_(shooter),
        random_(surroundings.random),
        now_(dateText(surroundings.now)),
        saveTeilerReport_(
            [&surroundings](const Error& e) { return surroundings.report(e, "SaveTeilerInKlasse"); }),
        saveDSBReport_([&surroundings](const Error& e) { return surroundings.report(e, "SaveDSBInKlasse"); }),
        saveSerieReport_(
            [&surroundings](const Error& e) { return surroundings.report(e, "SaveSerieInKlasse"); }),
        results_(results) {
    shots_.reserve(shots.size());
    for (const auto& shot : shots) shots_.emplace_back(*shot);
  }

  void run(const Disziplin& d) {
    switch (kindOf(d)) {
      case DisciplineKind::Teiler:
        runTeiler(d);
        break;
      case DisciplineKind::RingTeiler:
        runRingTeiler(d);
        break;
      case DisciplineKind::Ring:
        runRing(d);
        break;
      case DisciplineKind::None:
        break;
    }
  }

 private:
  void runTeiler(const Disziplin& d) {
    const QString keyStart = "Zt-" + QString::number(d.ID) + "-" + d.Name + "-";
    for (const CountedShot& shot : shots_) SaveTeilerInKlasse(d, shot, keyStart);
  }

  void runRingTeiler(const Disziplin& d) {
    const size_t nMax = static_cast<size_t>(std::max<int>(d.RingSerie, 0));
    if (nMax == 0) return;
    for (size_t first = 0; first < shots_.size(); first += nMax)
      SaveDSBInKlasse(d, first, std::min(first + nMax, shots_.size()));
  }

  void runRing(const Disziplin& d) {
    const int nMax = d.RingSerie;
    if (nMax < 1) return;
    const auto value = countedValue(d);
    const auto valueText =
        value == &CountedShot::whole ? &CountedShot::wholeText : &CountedShot::withTenthsText;
    Series series;
    int z = 1;
    for (size_t i = 0; i < shots_.size(); ++i) {
      CountedShot& s = shots_[i];
      if (z == nMax && d.ZusatzTeiler) countAsExtra(i);
      series.sWaffe = s.shot.sWaffe;
      series.dblSumme += s.*value;
      series.dblBlock += s.*value;
      series.sEinzelfolge += s.*valueText + "|";
      series.sEinzelTeiler += s.teilerText + "|";
      if (z % BlockShots == 0 || z == nMax) closeBlock(series);
      if (++z > nMax) {
        SaveSerieInKlasse(d, series);
        series = {};
        z = 1;
      }
    }
    const bool loneExtraShot = d.ZusatzTeiler == 1 && z == 2;
    if (z >= 2 && !loneExtraShot) SaveSerieInKlasse(d, series);
  }

  void countAsExtra(size_t position) {
    if (!shots_[position].isExtra) results_.extraShots.push_back(static_cast<int>(position));
    shots_[position].clearRings();
  }

  static void closeBlock(Series& series) {
    series.sFolge += (QString(BlockSumWidth, u'0') + numberText(series.dblBlock)).right(BlockSumWidth);
    series.sEinzelfolge += "-";
    series.dblBlock = 0;
  }

  QString chanceKey() {
    return "Zt" + QString::number(static_cast<int>(std::floor(random_.next() * 50001))) + "-" + now_;
  }

  const Schuetze& shooter() const {
    if (!shooter_) throw Error(errors::kObjectNotSet);
    return *shooter_;
  }

  /// Makes a record, lets `fill` write what is its own, and adds it under its key.
  template <class Record, class Fill>
  void save(KeyedCollection<Record>& collection, const Disziplin& d, const ErrorReport& report, Fill&& fill) {
    reported(report, [&](Steps& step) {
      const auto record = std::make_shared<Record>();
      record->Datum = now_;
      record->DisziID = d.ID;
      record->DisziplinName = d.Name;
      fill(*record);
      step([&] { record->Startnummer = shooter().Startnummer; });
      // Crossed as it may look: the column of the team holds the club, the column before it the team.
      step([&] { record->MannId = shooter().VereinsID; });
      step([&] { record->KlassenID = shooter().KlassenID; });
      step([&] { record->VorMannId = shooter().lMannID; });
      step([&] { collection.add(record, record->Key); });
    });
  }

  void SaveTeilerInKlasse(const Disziplin& d, const CountedShot& counted, const QString& keyStart) {
    if (results_.m_colTeilerErg.contains("Zt" + counted.hitKey)) return;
    const HaeringSchuss& s = counted.shot;
    save(results_.m_colTeilerErg, d, saveTeilerReport_, [&](QKTeilerDisziplin& record) {
      record.Key = keyStart + counted.hitKey;
      record.Art = "T";
      record.ergebnis = s.dblTeiler;
      record.ScheibenNr = s.TrefferNummer;
      record.WTyp = s.sWaffe;
      record.X = s.X;
      record.Y = s.Y;
    });
  }

  void SaveDSBInKlasse(const Disziplin& d, size_t first, size_t end) {
    double dblBest = d.DSBTeilerGrenze ? d.DSBTeilerGrenzWert : NoTeilerLimit;
    double dblRinge = 0;
    QString sSerie, sWaffe;
    for (size_t i = first; i < end; ++i) {
      const CountedShot& s = shots_[i];
      dblRinge += d.RingZentel ? s.withTenths : s.whole;
      sSerie += "R:" + (d.RingZentel ? s.withTenthsText : s.wholeText) + ";";
      dblBest = std::min(dblBest, s.shot.dblTeiler);
      sSerie += "T:" + s.teilerText + ";";
      sWaffe = s.shot.sWaffe;
    }
    save(results_.m_colTeilerErg, d, saveDSBReport_, [&](QKTeilerDisziplin& record) {
      record.Key = chanceKey();
      record.Art = "RT";
      record.ergebnis = d.dblMaxSerieDSB - dblRinge + dblBest;
      record.WTyp = sWaffe;
      record.DSBRinge = dblRinge;
      record.DSBTeiler = dblBest;
      record.SerieXY = sSerie;
      record.DSBMaxRinge = d.dblMaxSerieDSB;
    });
  }

  void SaveSerieInKlasse(const Disziplin& d, const Series& series) {
    save(results_.m_colRingErg, d, saveSerieReport_, [&](QKRingDisziplin& record) {
      record.Key = chanceKey();
      record.ergebnis = series.dblSumme;
      record.Anz = QString::number(d.RingSerie) + "er";
      record.WTyp = series.sWaffe;
      record.Folge = series.sFolge;
      record.Einzelfolge = series.sEinzelfolge.left(EinzelfolgeWidth);
      record.Einzelfolge2 = series.sEinzelfolge.mid(EinzelfolgeWidth);
      record.EinzelfolgeTeiler = series.sEinzelTeiler;
    });
  }

  const Schuetze* shooter_;
  Random& random_;
  QString now_;
  ErrorReport saveTeilerReport_, saveDSBReport_, saveSerieReport_;
  PendingResults& results_;
  std::vector<CountedShot> shots_;
};

}  // namespace

void transferShots(const std::vector<std::shared_ptr<HaeringSchuss>>& shots,
                   const std::vector<std::shared_ptr<Disziplin>>& disciplines, const Schuetze* shooter,
                   const TransferSurroundings& surroundings, PendingResults& results) {
  TransferRun run(shots, shooter, surroundings, results);
  for (const auto& discipline : disciplines) run.run(*discipline);
}

void clearRingValues(HaeringSchuss& shot) {
  shot.Ring0XZehntel = 0;
  shot.RingMitZehntel = 0;
  shot.RingXXZehntel = 0;
  shot.RingOhneZehntel = 0;
}

}  // namespace qk

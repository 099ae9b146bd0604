#include "masterdata/pages/sample.h"

#include <QStringList>
#include <limits>

#include "capture/transfer.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

struct SampleShot {
  const char* ring;
  double teiler;
};

constexpr SampleShot kShots[] = {{"9,7", 123.4}, {"10,4", 51.2}, {"8,9", 210.7}, {"10,9", 8.3},
                                 {"9,2", 178.5}, {"10,1", 88.9}, {"7,6", 331.8}, {"10,6", 31.6},
                                 {"9,9", 104.2}, {"10,0", 96.5}};

std::vector<std::shared_ptr<HaeringSchuss>> sampleShots() {
  std::vector<std::shared_ptr<HaeringSchuss>> shots;
  for (const SampleShot& sample : kShots) {
    auto shot = std::make_shared<HaeringSchuss>();
    const QString ring = QString::fromUtf8(sample.ring);
    shot->RingMitZehntel = parseStrict(ring);
    leiteRingeAb(*shot, ring);
    shot->dblTeiler = sample.teiler;
    shot->TrefferNummer = static_cast<qint16>(shots.size() + 1);
    shot->Key = QString::number(shots.size() + 1);
    shots.push_back(shot);
  }
  return shots;
}

qint16 small(const dao::RowValues& values, const QString& column) {
  const int value = values.value(column).toInt();
  return static_cast<qint16>(
      std::clamp<int>(value, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()));
}

/// As far as the transfer asks.
std::shared_ptr<Disziplin> disciplineOf(const dao::RowValues& values) {
  auto discipline = std::make_shared<Disziplin>();
  discipline->Name = values.value("Name").toString();
  discipline->Ringe = small(values, "Ringe");
  discipline->Teiler = small(values, "Teiler");
  discipline->RingZentel = small(values, "RingZentel");
  discipline->Ring0XZehntel = small(values, "Ring0XZehntel");
  discipline->RingXXZehntel = small(values, "RingXXZehntel");
  discipline->RingSerie = small(values, "RingSerie");
  discipline->ZusatzTeiler = small(values, "ZusatzTeiler");
  discipline->dblMaxSerieDSB = values.value("dblMaxSerieDSB").toDouble();
  discipline->DSBTeilerGrenze = small(values, "DSBTeilerGrenze");
  discipline->DSBTeilerGrenzWert = small(values, "DSBTeilerGrenzWert");
  return discipline;
}

/// Two records of one second may get the same key by chance; here they never do.
class Counting : public Random {
 public:
  double next() override { return ++count_ / 1000.0; }

 private:
  int count_ = 0;
};

PendingResults resultsOf(const std::shared_ptr<Disziplin>& discipline) {
  PendingResults results;
  Counting random;
  const Schuetze shooter;
  const TransferSurroundings surroundings{QDateTime(QDate(2000, 1, 1), QTime(12, 0)), random,
                                          [](const Error&, const QString&) { return ErrorAnswer::Abort; }};
  transferShots(sampleShots(), {discipline}, &shooter, surroundings, results);
  return results;
}

QString shotsLine() {
  QStringList shots;
  for (const SampleShot& shot : kShots)
    shots << QString::fromUtf8(shot.ring) + " (" + numberText(shot.teiler) + ")";
  return "Zehn Schüsse, Ring und in Klammern der Teiler: " + shots.join("  ");
}

QString teilerLine(const PendingResults& results) {
  QStringList teilers;
  double best = std::numeric_limits<double>::max();
  for (const auto& result : results.m_colTeilerErg.objects()) {
    teilers << numberText(result->ergebnis);
    best = std::min(best, result->ergebnis);
  }
  return "Jeder Schuss ein Ergebnis: " + teilers.join("  ") + ". Der beste: " + numberText(best);
}

QStringList ringTeilerLines(const Disziplin& discipline, const PendingResults& results) {
  QStringList lines;
  for (const auto& result : results.m_colTeilerErg.objects())
    lines << QString("Ring-Teiler: %1 − %2 Ringe + Teiler %3 = %4")
                 .arg(numberText(discipline.dblMaxSerieDSB), numberText(result->DSBRinge),
                      numberText(result->DSBTeiler), numberText(result->ergebnis));
  return lines;
}

QStringList seriesLines(const PendingResults& results) {
  QStringList lines;
  for (const auto& series : results.m_colRingErg.objects()) {
    const qsizetype shots = series->Einzelfolge.count('|');
    lines << QString("Serie %1 aus %2: %3 Ringe (%4)")
                 .arg(series->Anz, shots == 1 ? "1 Schuss" : QString("%1 Schüssen").arg(shots),
                      numberText(series->ergebnis),
                      QString(series->Einzelfolge).replace('|', ' ').remove('-').trimmed());
  }
  return lines;
}

}  // namespace

QString sampleText(const dao::RowValues& values) {
  const auto discipline = disciplineOf(values);
  const PendingResults results = resultsOf(discipline);
  QStringList lines{shotsLine()};
  switch (kindOf(*discipline)) {
    case DisciplineKind::None:
      lines << "Daraus wird nichts: Weder »Ringe« noch »Teiler« ist gewählt.";
      break;
    case DisciplineKind::Teiler:
      lines << teilerLine(results);
      break;
    case DisciplineKind::RingTeiler:
      lines << ringTeilerLines(*discipline, results);
      break;
    case DisciplineKind::Ring:
      lines << seriesLines(results);
      break;
  }
  if (lines.size() == 1) lines << "Daraus wird kein Ergebnis: »Schuss je Serie« muss größer als 0 sein.";
  return lines.join('\n');
}

}  // namespace qk

// Shots, disciplines and a shooter for the tests of result capture, written as an official would note them.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "capture/records.h"
#include "link/haeringschuss.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/numbers.h"

namespace qk::test {

using Shots = std::vector<std::shared_ptr<HaeringSchuss>>;

/// "9,7/72,4": ring value and teiler (0 when left out). The hit number sets the key.
inline std::shared_ptr<HaeringSchuss> shot(int number, const QString& text) {
  auto s = std::make_shared<HaeringSchuss>();
  const QStringList parts = text.split('/');
  s->TrefferNummer = static_cast<qint16>(number);
  s->LinienNummer = 3;
  s->WettbewerbBezeichnung = "20 Luftgewehr";
  s->Datum = "20.11.2026";
  s->AbsoluteZeit =
      QString("10:%1:%2").arg(number / 60, 2, 10, QChar(u'0')).arg(number % 60, 2, 10, QChar(u'0'));
  s->RingMitZehntel = parseStrict(parts.at(0));
  leiteRingeAb(*s, parts.at(0));
  s->dblTeiler = parts.size() > 1 ? parseStrict(parts.at(1)) : 0;
  s->dblTeilerFaktor = 1;
  s->Radius = s->dblTeiler;
  s->X = 10 * number;
  s->Y = -number;
  s->sWaffe = "LG";
  s->Key = schussKey(s->LinienNummer, s->TrefferNummer, s->Datum, s->AbsoluteZeit);
  s->bAngewaehlt = true;
  return s;
}

/// "9,7 10,9/12,3 38x8": shots in order, "nx" repeats one.
inline Shots shots(const QString& text, int firstNumber = 1) {
  Shots all;
  for (const QString& word : text.split(' ', Qt::SkipEmptyParts)) {
    const auto times = word.indexOf('x');
    const int count = times < 0 ? 1 : word.left(times).toInt();
    for (int i = 0; i < count; ++i)
      all.push_back(shot(firstNumber + static_cast<int>(all.size()), word.mid(times + 1)));
  }
  return all;
}

/// "Ring 40", "Ring 40 Zehntel", "Ring 10 Zehntelziffer", "Ring 10 Gemischt", "Ring 11 Zusatz=1", "Teiler",
/// "RT 10 Max=109 Grenze=50 Zehntel", "Ring 10 Halbe"; the name is the text itself.
inline std::shared_ptr<Disziplin> discipline(int id, const QString& text) {
  auto d = std::make_shared<Disziplin>();
  d->ID = id;
  d->Name = text;
  for (const QString& word : text.split(' ')) {
    const QString value = word.mid(word.indexOf('=') + 1);
    if (word == "Ring" || word == "RT") d->Ringe = -1;
    if (word == "Teiler" || word == "RT") d->Teiler = -1;
    if (word == "Zehntel") d->RingZentel = -1;
    if (word == "Zehntelziffer") d->Ring0XZehntel = -1;
    if (word == "Gemischt") d->RingXXZehntel = -1;
    if (word == "Halbe") d->Ring05Zehntel = -1;
    if (word.startsWith("Max=")) d->dblMaxSerieDSB = parseStrict(value);
    if (word.startsWith("Zusatz=")) d->ZusatzTeiler = static_cast<qint16>(value.toInt());
    if (word.startsWith("Grenze=")) {
      d->DSBTeilerGrenze = -1;
      d->DSBTeilerGrenzWert = static_cast<qint16>(value.toInt());
    }
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    if (isNumber) d->RingSerie = static_cast<qint16>(number);
  }
  return d;
}

/// Disciplines divided by " + ", with the ids 1, 2, 3 …
inline std::vector<std::shared_ptr<Disziplin>> disciplines(const QString& text) {
  std::vector<std::shared_ptr<Disziplin>> all;
  if (text.isEmpty()) return all;
  for (const QString& one : text.split(" + "))
    all.push_back(discipline(static_cast<int>(all.size()) + 1, one));
  return all;
}

inline KeyedCollection<Disziplin> collected(const std::vector<std::shared_ptr<Disziplin>>& disciplines) {
  KeyedCollection<Disziplin> all;
  for (const auto& d : disciplines) all.add(d, "-" + QString::number(d->ID));
  return all;
}

inline Schuetze shooter() {
  Schuetze s;
  s.Startnummer = "107";
  s.ID = 7;
  s.Name = "Müller, Änne";
  s.VereinsID = 12;
  s.lMannID = 5;
  s.KlassenID = 30;
  s.VereinsName = "SV Grünau";
  s.Mannschaftsname = "Grünau 1";
  s.KlassenName = "Damen I";
  return s;
}

inline QDateTime noon() {
  return QDateTime(QDate(2026, 11, 20), QTime(12, 0, 0));
}

/// Draws 0, 1/50001, 2/50001 …, so that keys carry 0, 1, 2 …; or always the same.
class CountingRandom : public Random {
 public:
  double next() override { return (constant ? *constant : drawn++ + 0.5) / 50001; }
  std::optional<double> constant;
  int drawn = 0;
};

}  // namespace qk::test

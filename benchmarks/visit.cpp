#include "benchmarks/visit.h"

#include <QTime>

#include "platform/runtime/numbers.h"

namespace qk::bench {

Shots visitShots(int count) {
  Shots all;
  for (int i = 0; i < count; ++i) {
    auto shot = std::make_shared<HaeringSchuss>();
    const int tenths = 70 + i * 7 % 40;
    shot->TrefferNummer = static_cast<qint16>(i + 1);
    shot->LinienNummer = 1;
    shot->WettbewerbBezeichnung = "LG Auflage";
    shot->Datum = "20.11.2026";
    shot->AbsoluteZeit = QTime(10, 0).addSecs(i).toString("HH:mm:ss");
    shot->RingMitZehntel = tenths / 10.0;
    leiteRingeAb(*shot, numberText(shot->RingMitZehntel));
    shot->dblTeiler = (i * 37 % 2000) / 10.0;
    shot->dblTeilerFaktor = 1;
    shot->Radius = shot->dblTeiler;
    shot->X = i;
    shot->Y = -i;
    shot->sWaffe = "LG";
    shot->Key = schussKey(shot->LinienNummer, shot->TrefferNummer, shot->Datum, shot->AbsoluteZeit);
    shot->bAngewaehlt = true;
    all.push_back(std::move(shot));
  }
  return all;
}

Disciplines visitDisciplines(int count, int series) {
  Disciplines all;
  for (int i = 0; i < count; ++i) {
    auto discipline = std::make_shared<Disziplin>();
    discipline->ID = 1000 + i;
    discipline->Name = "Disziplin " + QString::number(i);
    const int kind = i % 8;
    discipline->Teiler = kind < 4 ? -1 : 0;
    discipline->Ringe = kind < 2 ? 0 : -1;
    discipline->RingSerie = static_cast<qint16>(kind < 4 ? 10 : series);
    discipline->dblMaxSerieDSB = 109;
    discipline->DSBTeilerGrenze = kind == 3 ? -1 : 0;
    discipline->DSBTeilerGrenzWert = 50;
    discipline->RingZentel = kind == 5 ? -1 : 0;
    discipline->Ring0XZehntel = kind == 6 ? -1 : 0;
    discipline->RingXXZehntel = kind == 7 ? -1 : 0;
    all.push_back(std::move(discipline));
  }
  return all;
}

Schuetze visitShooter() {
  Schuetze shooter;
  shooter.Startnummer = "107";
  shooter.VereinsID = 4;
  shooter.lMannID = 5;
  shooter.KlassenID = 14;
  return shooter;
}

}  // namespace qk::bench

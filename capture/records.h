// The plain records of result capture: what a discipline is, who shoots, and the pending results.
//
// All are values without behaviour. A loader makes one, the line keeps it in a collection, and it dies when
// the collection is emptied. "Flag" fields hold 0 or -1 and are tested as non-zero.
#pragma once

#include <QString>
#include <cstdint>

#include "platform/runtime/collection.h"

namespace qk {

/// A class of shooters that a discipline admits.
struct Schuetzenklasse {
  QString Name;
  std::int32_t ID = 0;
};

/// A weapon that a discipline admits.
struct Waffenklasse {
  std::int32_t ID = 0;
  QString Kurzbezeichnung;
};

/// A hit as a target drawing needs it.
struct Einzelschuss {
  double Ringwert = 0;
  double Teiler = 0;
  std::int32_t X = 0;
  std::int32_t Y = 0;
  bool bHide = false;
  std::int32_t lFillColor = 0;
};

/// What shots may count for. `Ringe` and `Teiler` together sort it into one of the kinds of kindOf().
struct Disziplin {
  QString Name;  ///< shown in lists, matched against the station's competition names
  std::int32_t ID = 0;
  std::int16_t Ringe = 0;   ///< flag: shots count by ring value
  std::int16_t Teiler = 0;  ///< flag: shots count by teiler
  std::int16_t Einzel = 0;
  std::int16_t bVerein = 0;
  std::int16_t bMaxVerein = 0;
  std::int16_t bGewVerein = 0;
  std::int32_t LMaxVerein = 0;
  std::int16_t LGewVerein = 0;
  std::int16_t RingZentel = 0;  ///< flag: ring values count with tenths
  std::int16_t RingSerie = 0;   ///< shots per series; also the batch of a ring-teiler figure
  std::int16_t bLGewTeiler = 0;
  std::int32_t LGewTeiler = 0;
  std::int32_t CmdIndex = 0;  ///< sort position in lists
  std::int16_t bVMannschaft = 0;
  std::int16_t bEMannschaft = 0;
  std::int16_t nEMannschaft = 0;
  std::int16_t bOhneKlassen = 0;
  std::int16_t bMaxWert = 0;
  double dblMaxWert = 0;
  std::int16_t bVollMannschaft = 0;
  std::int16_t bGewErg = 0;
  std::int16_t nGewErg = 0;
  double dblMaxSerieDSB = 0;       ///< maximal ring total of a ring-teiler series
  std::int16_t Ring05Zehntel = 0;  ///< flag: decides the layout code only
  std::int16_t bGewVorBel = 0;
  std::int16_t nGewVorBel = 0;
  std::int32_t DisziSPO_ID = 0;
  std::int16_t Ring0XZehntel = 0;       ///< flag: a series counts only the tenth digit of each shot
  std::int16_t RingXXZehntel = 0;       ///< flag: a series counts whole ring plus tenth digit
  std::int16_t DSBTeilerGrenze = 0;     ///< flag: the teiler of a ring-teiler figure has an upper limit
  std::int16_t DSBTeilerGrenzWert = 0;  ///< that limit
  std::int32_t AwSetupID = 0;
  std::int16_t bAktiveSchuetzen = 0;
  std::int16_t nAktiveSchuetzenAnzahl = 0;
  /// Not 0: the last shot of a series is an extra shot for the teiler only. Exactly 1 also drops a series
  /// that would hold nothing but one extra shot.
  std::int16_t ZusatzTeiler = 0;
  std::int16_t bSPOMannschaft = 0;
  std::int16_t VortelAnzeige = 0;
  KeyedCollection<Schuetzenklasse> Klassen;  ///< under "-" + id
  KeyedCollection<Waffenklasse> Waffen;      ///< under "-" + id
};

enum class DisciplineKind { None, Teiler, RingTeiler, Ring };

inline DisciplineKind kindOf(const Disziplin& discipline) {
  if (discipline.Teiler) return discipline.Ringe ? DisciplineKind::RingTeiler : DisciplineKind::Teiler;
  return discipline.Ringe ? DisciplineKind::Ring : DisciplineKind::None;
}

/// The shooter on a line. The capture fills and uses Startnummer, Name, ID, VereinsID, KlassenID, lMannID and
/// the three names; the other fields are those of the competition's own record.
struct Schuetze {
  QString Startnummer;
  std::int32_t ID = 0;
  QString Anrede, Name, Vorname, Strasse, PLZ, Ort, Telefon, Geschlecht, Gebdat, AusweisNr;
  std::int32_t VereinsID = 0;
  bool bVerein = false;
  QString Bank, BLZ, Kto, KtoInhaber;
  std::int32_t lMannID = 0;
  std::int32_t bGebDat = 0;
  QString email, homepage, SPOKey;
  std::int32_t MeldeDisziID = 0;
  std::int32_t KlassenID = 0;
  bool bGebKlasseManuell = false;
  QString Bemerkungen, StartnummerEinzel;
  std::int16_t nStartnummerEinzel = 0;
  std::int16_t AmateurSchuetze = 0;
  QString VereinsName, Mannschaftsname, KlassenName;
};

/// A future row of table `Schuss`: a single teiler (Art "T") or a ring-teiler figure (Art "RT").
struct QKTeilerDisziplin {
  std::int32_t ID = 0;
  QString Art;
  double ergebnis = 0;
  double Ring = 0;
  double X = 0;
  double Y = 0;
  std::int32_t ScheibenNr = 0;
  QString Startnummer;
  std::int32_t MannId = 0;  ///< holds the shooter's club
  std::int32_t KlassenID = 0;
  std::int32_t DisziID = 0;
  std::int32_t VorMannId = 0;  ///< holds the shooter's team
  QString SchussXY, SerieXY, Datum;
  double DSBTeiler = 0;
  double DSBRinge = 0;
  double SPO_ID = 0;
  QString ScheibenNummern;
  bool bManuell = false;
  QString WTyp;
  double Betrag = 0;
  std::int32_t VereinsID = 0;
  QString Key, DisziplinName;
  double DSBMaxRinge = 0;
  QString MeytonTargetID, SKASTargetID;
};

/// A future row of table `SchussSerien`: one ring series.
struct QKRingDisziplin {
  std::int32_t ID = 0;
  double ergebnis = 0;
  QString Startnummer;
  std::int32_t MannId = 0;  ///< holds the shooter's club
  std::int32_t KlassenID = 0;
  std::int32_t DisziID = 0;
  QString Anz, Folge, Einzelfolge, Einzelfolge2;
  std::int32_t VorMannId = 0;  ///< holds the shooter's team
  QString EinzelfolgeTeiler, SerieXY, Datum;
  double SPO_ID = 0;
  QString ScheibenNummern;
  bool bManuell = false;
  QString WTyp;
  double Betrag = 0;
  std::int32_t VereinsID = 0;
  QString DisziplinName, Key, EinzelfolgeRadius, MeytonTargetID, SKASTargetID, Einzelfolge3;
};

}  // namespace qk

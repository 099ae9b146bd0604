// What a quick evaluation is worked out from, and what comes of it: rows of the competition and of the print
// database as plain values. The members carry the names of their columns.
#pragma once

#include <QDate>
#include <QString>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace qk {

/// Where a result is kept: `Schuss` holds teilers (less is better), `SchussSerien` rings (more is better).
enum class Quelle { Schuss, SchussSerien };

/// A stored result, and as a row of `EinzelErgebnisse` also the profile that it was copied for.
struct EinzelErgebnis {
  qint32 ID = 0;  ///< in the print database; 0 before it is stored there
  QString Startnummer;
  qint32 DisziId = 0;
  QString WTyp;
  QString Art;
  double Ergebnis = 0;
  qint32 KlassenID = 0;
  qint32 ErgID = 0;  ///< the key in its source
  Quelle Tabelle = Quelle::Schuss;
  qint32 WkID = 0;
  QString Datum;  ///< as it is stored
};

/// One discipline of one profile: a row of `Profile`.
struct ProfilDisziplin {
  qint32 AwProfilID = 0;
  QString AuswertProfil_Name;
  int Typ = 0;
  int Anzahl = 0;
  QString Vorgabe;
  int OptKlassen = 0;
  int OptTage = 0;
  int OptWaffen = 0;
  bool Tageswertung = false;
  bool Monatswertung = false;
  int nBestTageswertung = 0;
  int nMinAnzahlErgAktiv = 0;
  int nMinAnzahlErg = 0;

  qint32 DisziID = 0;
  QString Disziplin_Name;
  bool Disziplin_Teiler = false;
  bool Ringe = false;
  bool bGewErg = false;
  int nGewErg = 0;

  Quelle quelle() const { return Disziplin_Teiler ? Quelle::Schuss : Quelle::SchussSerien; }
};

struct DisziplinWaffe {
  qint32 DisziID = 0;
  qint32 WaffenID = 0;
  QString KZ;
};
struct AuswertWaffe {
  qint32 AuswertID = 0;
  qint32 WaffenID = 0;
};
struct AuswertKlasse {
  qint32 AuswertID = 0;
  qint32 KlassenID = 0;
};

/// Which weapons and classes the profiles admit. Each list in the order of its table's key.
struct Zulassung {
  std::vector<DisziplinWaffe> disziplinWaffen;
  std::vector<AuswertWaffe> auswertWaffen;
  std::vector<AuswertKlasse> auswertKlassen;
};

/// The last shooting day of a discipline, taken over all shooters.
using LetzteSchiesstage = std::map<std::pair<Quelle, qint32>, QDate>;

constexpr int kEinzelspalten = 100;  // E1 to E100

/// A row of `Ergebnisse`. What is empty stays unset in the table.
struct ErgebnisZeile {
  QString Wettkampf;
  QString Disziplin;
  QString Gruppe;
  QString WTyp;
  QString Startnummer;
  std::optional<double> DisziErgebnis = {};
  std::vector<double> E = {};  ///< E1 and onward, at most kEinzelspalten
};

}  // namespace qk

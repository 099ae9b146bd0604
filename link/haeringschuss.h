// One shot as the target system reports it, and the import of its record line.
//
// A record is one line of text. Fields are separated by " ; " (a semicolon alone doesn't separate), numbers
// carry a decimal comma, double quotes anywhere are noise. A shot record has at least 21 fields; further ones
// are ignored. A final " ; " may stand or not, or lack its last blank.
#pragma once

#include <QString>
#include <QStringView>

#include "platform/runtime/retry.h"

namespace qk {

namespace dao {
class Database;
}

class HaeringSchuss {
 public:
  QString ZeilenCode;  ///< record code; only "78" has an answer
  QString WettbewerbBezeichnung;
  QString KlasseBezeichnung;
  qint16 OrtStandnummer = 0;
  qint16 LinienNummer = 0;
  QString SchuetzenName;
  QString ProbeMatch;  ///< sighter or match mark, passed on uninterpreted
  qint16 Wertung = 0;  ///< 0 ring, 10 tenths, 1 ring with teiler, 11 tenths with teiler
  qint16 TrefferNummer = 0;
  double RingMitZehntel = 0;
  double Ring0XZehntel = 0;  ///< derived: the tenth digit
  double RingXXZehntel = 0;  ///< derived: whole ring plus tenth digit, 9,7 counts 16
  QString LagePfeilzeichen;
  double X = 0;  ///< X, Y and Radius in the target system's own units
  double Y = 0;
  double Radius = 0;
  double PHiPosition = 0;  ///< angle of the hit
  QString AbsoluteZeit;    ///< wall-clock time of the hit
  QString RelativeZeit;
  QString Datum;
  QString RegelNummerWettbewerb;  ///< discipline key
  QString RegelNummerKlasse;
  QString SchuetzeStartnummer;
  qint16 RingOhneZehntel = 0;  ///< derived: the whole ring
  QString VerbuchtDatum;       ///< time of booking or discarding; not set by the import
  bool Verbucht = false;       ///< not set by the import
  QString sWaffe;              ///< derived: weapon type of the discipline key, empty when unknown
  double dblTeilerFaktor = 0;  ///< derived: divisor from Radius to teiler
  double dblTeiler = 0;        ///< derived: cut, not rounded, to one decimal
  qint32 ID = 0;               ///< row id; not set by the import
  QString Key;                 ///< identity of the shot, see schussKey()
  bool bAngewaehlt = false;    ///< selected for transfer; not set by the import

  /// Fills the object from a record line and returns true. A line of fewer than 21 fields returns false and
  /// touches no field. `sInput` is changed in place: a missing final " ; " is added, double quotes are
  /// removed. Statements run one by one under `report`; after an ignored failure the field keeps its former
  /// value, an abort returns false. A number that can't be read names its field. `db` is the competition (may
  /// be null) and must outlive the call.
  bool Haering_Import_Zeile(QString& sInput, dao::Database* db, const ErrorReport& report);
};

/// Identity of a shot: line and hit number cut to their last three digits, date, time:
/// "0030017-20.11.2026-10:41:07".
QString schussKey(qint16 linie, qint16 treffer, const QString& datum, const QString& zeit);

/// The three derived ring values from the text of a ring value ("9,7" gives 9, 7 and 16; the latter two
/// unrounded).
qint16 ringOhneZehntel(const QString& ring);  ///< Error 6 beyond 16 bits
double ring0XZehntel(const QString& ring);
double ringXXZehntel(const QString& ring);
/// Sets all three fields of a shot. Error 6 beyond 16 bits.
void leiteRingeAb(HaeringSchuss& schuss, const QString& ring);

/// Weapon type (`ScheibenKZ`) of a discipline key, tried as it is and then reduced to digits and dots.
/// "LG" without a database; empty when the key is unknown.
QString ErmittleWaffe(dao::Database* db, const QString& sKey);

/// Teiler factor of a discipline key less every "DSB". 1 without a database, for an unknown key and for a
/// stored 0.
double ErmittleTeilerFaktor(dao::Database* db, const QString& sKey);

}  // namespace qk

#include "shooters/class_determination.h"

#include <QDate>

#include "app/ground/feld_wert.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/retry.h"

namespace qk {

namespace {

/// First day of the class year that begins in that year. A day that the year lacks (29.02.) is the last one
/// of its month.
QDate classYearStart(const QString& wechseldatum, int year) {
  constexpr int kLeapYear = 2000;
  const QString text = wechseldatum + QString("%1").arg(year, 4, 10, QChar('0'));
  const QString inLeapYear = wechseldatum + QString::number(kLeapYear);
  if (isDate(text) || !isDate(inLeapYear)) return parseDate(text).date();
  const QDate month(year, parseDate(inLeapYear).date().month(), 1);
  return QDate(year, month.month(), month.daysInMonth());
}

/// A two-digit year that was read into the wrong century is put right.
QDate birthDate(const QString& gebDat, const QDate& refDatum) {
  const QDate date = parseDate(gebDat).date();
  return date.year() > refDatum.year() ? date.addYears(-100) : date;
}

bool takesSex(int classSex, const QString& geschlecht) {
  switch (classSex) {
    case 0:
      return true;
    case 1:
      return geschlecht.toUpper() == "M";
    case 2:
      return geschlecht.toUpper() == "W";
    default:
      return false;
  }
}

}  // namespace

qint32 ErmittleKlassenIDAusSaetzen(const GlobalVariablen& global, Dialogs& dialogs, dao::Recordset& klassen,
                                   const dao::Recordset& klassenwechsel, const QString& gebDat,
                                   const QString& geschlecht, bool manuell, qint32 klassenID) {
  qint32 result = 0;
  reported(fehlerReport(dialogs, "Fehler beim Ermitteln de Klassen-ID!"), [&](Steps&) {
    if (manuell) {
      result = klassenID;
      return;
    }
    if ((klassen.bof() && klassen.eof()) || gebDat.right(4) == "0000" || !isDate(gebDat)) return;
    const QDate born = birthDate(gebDat, global.RefDatum);
    for (klassen.moveFirst(); !klassen.eof(); klassen.moveNext()) {
      const QString wechsel = FeldWert(klassenwechsel, "wechseldatumneu").toString();
      const int from = FeldWert(klassen, "Alter von").toInt();
      const int to = FeldWert(klassen, "Alter bis").toInt();
      const QDate latest = classYearStart(wechsel, global.RefDatum.addYears(1 - from).year()).addDays(-1);
      const QDate earliest = classYearStart(wechsel, global.RefDatum.addYears(-to).year());
      if (born >= earliest && born <= latest && takesSex(FeldWert(klassen, "Geschlecht").toInt(), geschlecht))
        break;
    }
    // Behind the last class this fails, and the report says that no class fits.
    result = FeldWert(klassen, "ID").toInt();
  });
  return result;
}

qint32 ErmittleKlassenID(const GlobalVariablen& global, Dialogs& dialogs, const QString& gebDat,
                         const QString& geschlecht, bool manuell, qint32 klassenID) {
  qint32 result = 0;
  reported(fehlerReport(dialogs, "Fehler beim Ermitteln der ID der Klasse!"), [&](Steps&) {
    const auto database = dao::Database::open(global.sWettkampf);
    const auto klassen = database->openRecordset("Select * from Schützenklassen order by [Alter von]");
    const auto klassenwechsel = database->openRecordset("Klassenwechsel");
    result = ErmittleKlassenIDAusSaetzen(global, dialogs, *klassen, *klassenwechsel, gebDat, geschlecht,
                                         manuell, klassenID);
  });
  return result;
}

QString ErmittleKlassenName(const GlobalVariablen& global, Dialogs& dialogs, const QString& competitionFile,
                            const QString& startnummer, bool kurz) {
  QString result;
  reported(fehlerReport(dialogs, "Fehler beim Ermitteln des Klassennamens!"), [&](Steps&) {
    const auto forClasses = dao::Database::open(competitionFile);
    const auto forShooter = dao::Database::open(competitionFile);
    const auto schuetze = forShooter->openRecordset("Select * from Schützen where Startnummer = " +
                                                    dao::sql::quoted(startnummer));
    if (schuetze->eof()) return;
    const qint32 id = ErmittleKlassenID(global, dialogs, FeldWert(*schuetze, "GebDat").toString(),
                                        FeldWert(*schuetze, "Geschlecht").toString(),
                                        FeldWert(*schuetze, "bGebKlasseManuell").toInt() != 0,
                                        FeldWert(*schuetze, "KlassenID").toInt());
    const auto klasse =
        forClasses->openRecordset("Select * from SchützenKlassen where ID = " + QString::number(id));
    if (!klasse->eof()) result = FeldWert(*klasse, kurz ? "KZ" : "Klasse").toString();
  });
  return result;
}

}  // namespace qk

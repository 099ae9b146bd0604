#include "shooters/class_determination.h"

#include "app/ground/feld_wert.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/retry.h"
#include "shooters/class_rule.h"

namespace qk {

namespace {

AgeClass ageClass(const dao::Recordset& row) {
  return {FeldWert(row, "ID").toInt(), FeldWert(row, "Alter von").toInt(), FeldWert(row, "Alter bis").toInt(),
          FeldWert(row, "Geschlecht").toInt()};
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
    if ((klassen.bof() && klassen.eof()) || !isKnownBirthDate(gebDat)) return;
    ClassRule rule{{}, FeldWert(klassenwechsel, "wechseldatumneu").toString(), global.RefDatum};
    for (klassen.moveFirst(); !klassen.eof(); klassen.moveNext()) rule.classes.push_back(ageClass(klassen));
    const auto taken = classByAge(rule, gebDat, geschlecht);
    // Behind the last class this fails, and the report says that no class fits.
    result = taken ? *taken : FeldWert(klassen, "ID").toInt();
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

#include "shooters/look_ups.h"

#include <memory>

#include "app/ground/feld_wert.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/retry.h"

namespace qk {

namespace {

const QString kLineBreak = "\r\n";

QString textOf(const dao::Recordset& recordset, const QString& column) {
  return FeldWert(recordset, column).toString();
}

/// The column of the query's first row, empty without a row.
QString firstText(dao::Database& database, const QString& query, const QString& column) {
  const auto rows = database.openRecordset(query);
  return rows->eof() ? QString() : textOf(*rows, column);
}

QString idText(qint32 id) {
  return QString::number(id);
}

}  // namespace

QString ErmittleSPOText(dao::Database& database, Dialogs& dialogs, qint32 schuetzeID) {
  QString result;
  reported(fehlerReport(dialogs, "Fehler bei ErmittleSPOText_err!"), [&](Steps&) {
    result.clear();
    const auto rows = database.openRecordset(
        "SELECT Schuetzen_SPO_Anmeldungen.SchuetzeID, Schuetzen_SPO_Anmeldungen.SPOID, "
        "Schuetzen_SPO_Anmeldungen.SPOKey, MeldeDisziplin.MeldeDisziplin, MeldeDisziplin.MeldeKZ, "
        "Schuetzen_SPO_Anmeldungen.MannID, Mannschaften.MannName"
        " FROM (Schuetzen_SPO_Anmeldungen INNER JOIN MeldeDisziplin"
        " ON Schuetzen_SPO_Anmeldungen.SPOID = MeldeDisziplin.ID)"
        " LEFT JOIN Mannschaften ON Schuetzen_SPO_Anmeldungen.MannID = Mannschaften.ID"
        " where SchuetzeID = " +
        idText(schuetzeID));
    for (; !rows->eof(); rows->moveNext()) {
      result += textOf(*rows, "Meldedisziplin");
      const QString team = textOf(*rows, "MannName");
      if (!team.isEmpty()) result += " - " + team;
      result += kLineBreak;
    }
  });
  return result;
}

QString ErmittleVereinsKurzname(dao::Database& database, Dialogs& dialogs, qint32 vereinsID) {
  QString result;
  reported(fehlerReport(dialogs, "Fehler beim Ermitteln des VereinsKurznamen!"), [&](Steps&) {
    const auto rows = database.openRecordset("Select * from Verein where ID = " + idText(vereinsID));
    if (rows->eof()) return;
    result = textOf(*rows, "Kurzname");
    if (result.isEmpty()) result = textOf(*rows, "Name");
  });
  return result;
}

QString ErmittleMannschaftsName(dao::Database& database, Dialogs& dialogs, qint32 mannID) {
  QString result;
  reported(fehlerReport(dialogs, "Fehler bei ErmittleMannschaftsName_err!"), [&](Steps&) {
    result = firstText(database, "Select * from Mannschaften where ID = " + idText(mannID), "MannName");
  });
  return result;
}

QString ErmittleMannschaftsGruppe(dao::Database& database, Dialogs& dialogs, qint32 id,
                                  bool idIstMannschaft) {
  QString result;
  reported(fehlerReport(dialogs, "Fehler bei ErmittleMannschaftsGruppe_err!"), [&](Steps& step) {
    qint32 group = 0;
    if (idIstMannschaft)
      step([&] {
        const auto team = database.openRecordset("Select * from Mannschaften where ID = " + idText(id));
        if (!team->eof()) group = FeldWert(*team, "GruppenID").toInt();
      });
    result = firstText(database, "Select * from MannschaftsGruppen where MannGrpID = " + idText(group),
                       "Bezeichnung");
  });
  return result;
}

}  // namespace qk

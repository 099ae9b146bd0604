#include "cash/balances.h"

#include "app/ground/feld_wert.h"
#include "cash/amounts.h"
#include "platform/dao/recordset.h"

namespace qk {

namespace {

/// How a payment row counts: open ones against, paid ones for. A row without a payment counts nothing.
Money anteil(const dao::Recordset& row) {
  const Money betrag = BetragAusFeld(row, "Betrag");
  return FeldWert(row, "Offen").toInt() != 0 ? -betrag : betrag;
}

Money saldo(dao::Database& database, const QString& column, qint32 id) {
  Money sum;
  const auto rows =
      database.openRecordset("Select * from Kasse_Eingang where " + column + " = " + QString::number(id));
  for (; !rows->eof(); rows->moveNext()) sum += anteil(*rows);
  return sum;
}

}  // namespace

Money saldoVerein(dao::Database& database, qint32 VereinID) {
  return saldo(database, "VereinID", VereinID);
}

Money saldoMannschaft(dao::Database& database, qint32 MannID) {
  return saldo(database, "MannID", MannID);
}

std::vector<VmEntry> spoMannschaften(dao::Database& database, qint32 SchuetzeID) {
  std::vector<VmEntry> entries;
  const auto rows = database.openRecordset(
      "SELECT Schuetzen_SPO_Anmeldungen.SchuetzeID, Schuetzen_SPO_Anmeldungen.MannID, Kasse_Eingang.Betrag, "
      "Kasse_Eingang.Offen, Mannschaften.MannName FROM (Schuetzen_SPO_Anmeldungen LEFT JOIN Kasse_Eingang ON "
      "Schuetzen_SPO_Anmeldungen.MannID = Kasse_Eingang.MannID) INNER JOIN Mannschaften ON "
      "Schuetzen_SPO_Anmeldungen.MannID = Mannschaften.ID Where (((Schuetzen_SPO_Anmeldungen.SchuetzeID) = " +
      QString::number(SchuetzeID) +
      ") And ((Schuetzen_SPO_Anmeldungen.MannID) > 0)) ORDER BY Schuetzen_SPO_Anmeldungen.MannID;");
  if (rows->eof()) return entries;
  qint32 team = FeldWert(*rows, "MannID").toInt();
  QString name = FeldWert(*rows, "MannName").toString();
  Money balance;
  const auto finish = [&] {
    entries.push_back({"SPO-Mannschaft: " + name + ": " + balance.toCurrencyText(), team});
  };
  for (; !rows->eof(); rows->moveNext()) {
    if (FeldWert(*rows, "MannID").toInt() == team) {
      balance += anteil(*rows);
      continue;
    }
    finish();
    // The row that brought the change isn't counted.
    team = FeldWert(*rows, "MannID").toInt();
    name = FeldWert(*rows, "MannName").toString();
    balance = Money();
  }
  finish();
  return entries;
}

VmMenu vmMenu(dao::Database& database, const VmShooter& shooter) {
  VmMenu menu;
  if (database.openRecordset("Select * from Kasse_Verwaltung where Verein = -1")->eof()) return menu;
  VmEntry club{{}, 0, false};
  if (shooter.VereinsID > 0)
    club = {"Verein: " + shooter.sVerein + ": " + saldoVerein(database, shooter.VereinsID).toCurrencyText(),
            shooter.VereinsID};
  menu.entries.push_back(club);
  if (shooter.lMannID > 0)
    menu.entries.push_back(
        {"Mannschaft: " + shooter.sMann + ": " + saldoMannschaft(database, shooter.lMannID).toCurrencyText(),
         shooter.lMannID});
  for (const VmEntry& team : spoMannschaften(database, shooter.ID)) menu.entries.push_back(team);
  menu.visible = club.visible || menu.entries.size() > 1;
  return menu;
}

}  // namespace qk

#include "evaluation/shooter_header.h"

#include "app/ground/feld_wert.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/sql/quote.h"
#include "platform/runtime/datetext.h"
#include "shooters/look_ups.h"

namespace qk {

namespace {

QString textIn(const dao::Recordset& rows, const QString& column) {
  const QVariant value = FeldWert(rows, column);
  return value.typeId() == QMetaType::QDateTime ? dateText(value.toDateTime()) : value.toString();
}

QString className(dao::Database& database, qint32 KlassenID) {
  const auto rows =
      database.openRecordset("Select * from SchützenKlassen where ID = " + QString::number(KlassenID));
  return rows->eof() ? QString() : textIn(*rows, "Klasse");
}

}  // namespace

ShooterHeader shooterHeader(dao::Database& database, Dialogs& dialogs, const QString& sStartnummer) {
  ShooterHeader header;
  if (sStartnummer.isEmpty()) return header;
  const auto rows = database.openRecordset(
      "SELECT Schützen.*, Verein.Name AS VName, Verein.ID as VID FROM Verein RIGHT JOIN Schützen ON "
      "Verein.ID = Schützen.VereinsID");
  rows->findFirst("Startnummer = " + dao::sql::quoted(sStartnummer));
  if (rows->noMatch()) return header;
  header.Name = textIn(*rows, "Name");
  header.VName = textIn(*rows, "VName");
  header.Gebdat = textIn(*rows, "Gebdat");
  header.MannName = ErmittleMannschaftsName(database, dialogs, FeldWert(*rows, "lMannID").toInt());
  header.SPO = ErmittleSPOText(database, dialogs, FeldWert(*rows, "ID").toInt()).replace("\r\n", " - ");
  header.Klasse = className(database, FeldWert(*rows, "KlassenID").toInt());
  return header;
}

QString headline(const ShooterHeader& header, const QString& sStartnummer) {
  QString line = header.Name.isEmpty() ? QString() : header.Name + ", ";
  line += "Startnummer " + sStartnummer;
  return header.VName.isEmpty() ? line : line + ", " + header.VName;
}

}  // namespace qk

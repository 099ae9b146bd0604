// A shooter as people see him, and as the table `Schützen` holds him.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include "masterdata/people/person_name.h"
#include "platform/dao/changes.h"

namespace qk {

struct ShooterData {
  QString startnummer;
  PersonName person;
  QString gebDat;      ///< "DD.MM.YYYY", or what else stands in the table
  QString geschlecht;  ///< "M", "W" or nothing
  qint32 vereinsID = 0, mannID = 0;
  qint32 klassenID = 0;
  bool klasseManuell = false;
  QString ausweisNr;
  QHash<QString, QString> further;  ///< texts by column, those of furtherColumns() that the table has
};

/// The plain text columns that no rule speaks of: address, bank, remarks.
const QStringList& furtherColumns();

/// What a column is called on the screen.
QString titleOf(const QString& column);

/// What a row of the table says. Columns that the table lacks stay empty.
ShooterData shooterData(const dao::RowValues& row);

/// The values of `data` that differ from what `row` holds, by column; columns that `row` lacks are left out.
/// A name that says the same person stays as it was written.
dao::RowValues changedValues(const ShooterData& data, const dao::RowValues& row);

}  // namespace qk

// Who the results belong to, as it stands above them.
#pragma once

#include <QString>

namespace qk {

class Dialogs;
namespace dao {
class Database;
}

struct ShooterHeader {
  QString Name, VName, Gebdat, MannName;
  QString SPO;     ///< registrations, divided by " - "
  QString Klasse;  ///< empty for a class that doesn't exist
};

/// Of the shooter with that start number; empty when there is none. Errors pass.
ShooterHeader shooterHeader(dao::Database& database, Dialogs& dialogs, const QString& sStartnummer);

/// One line for a printed list: name, start number, club.
QString headline(const ShooterHeader& header, const QString& sStartnummer);

}  // namespace qk

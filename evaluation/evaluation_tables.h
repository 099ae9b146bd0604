// The tables of a competition as the values of an evaluation, and what is done to the competition before it
// is read. Errors of the store pass.
#pragma once

#include <QStringList>

#include "evaluation/plain_list.h"
#include "evaluation/values.h"

namespace qk {

namespace dao {
class Database;
}

/// The statements that give all stored results the class, the club (`MannID`) and the team (`VorMannID`) that
/// their shooters have now, in their order.
QStringList abgleichAnweisungen();

/// The statement on the competition that makes `Profile` in the print database at that path: a row for each
/// discipline of each profile that quick evaluations show. What two tables call the same bears the table's
/// name in front (`Disziplin_Teiler`).
QString profileAnweisung(const QString& sDruckdatei);
std::vector<ProfilDisziplin> leseProfile(dao::Database& druck);

/// All of a shooter's results, teilers first.
std::vector<EinzelErgebnis> leseErgebnisse(dao::Database& wettkampf, const QString& Startnummer);
Zulassung leseZulassung(dao::Database& wettkampf);
/// The last days of the disciplines whose profile asks for them and in which the shooter has results.
LetzteSchiesstage leseLetzteTage(dao::Database& wettkampf, const std::vector<ProfilDisziplin>& profile,
                                 const std::vector<EinzelErgebnis>& ergebnisse);
Listenregeln leseListenregeln(dao::Database& wettkampf);

/// "Schuss" or "SchussSerien".
QString tabellenName(Quelle quelle);

}  // namespace qk

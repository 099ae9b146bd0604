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

/// All that a shooter has in one source.
std::vector<EinzelErgebnis> leseErgebnisse(dao::Database& wettkampf, Quelle quelle,
                                           const QString& Startnummer);
std::vector<DisziplinWaffe> leseDisziplinWaffen(dao::Database& wettkampf);
std::vector<AuswertWaffe> leseAuswertWaffen(dao::Database& wettkampf);
std::vector<AuswertKlasse> leseAuswertKlassen(dao::Database& wettkampf);
/// The day of the discipline's last result of any shooter; invalid where it has none.
QDate leseLetztenTag(dao::Database& wettkampf, Quelle quelle, qint32 lDisziID);
std::vector<ListenDisziplin> leseDisziplinen(dao::Database& wettkampf);
std::vector<ListenProfil> leseListenprofile(dao::Database& wettkampf);
std::vector<ProfilZuordnung> leseZuordnungen(dao::Database& wettkampf);

/// "Schuss" or "SchussSerien".
QString tabellenName(Quelle quelle);

}  // namespace qk

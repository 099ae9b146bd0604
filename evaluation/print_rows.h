// The rows of a print database: a copy of "ergschdruck.mdb" that a sheet is printed from. Errors of the store
// pass.
#pragma once

#include <QVariant>
#include <utility>
#include <vector>

#include "evaluation/values.h"
#include "platform/workplace.h"

namespace qk {

namespace dao {
class Database;
}

/// A shooter as `Schütze` and, in the plain list, every row of `Ergebnisse` has him, by column.
using SchuetzenSpalten = std::vector<std::pair<QString, QVariant>>;

/// Fills `Schütze` with the shooter, his club, team, class and sport registrations. Nothing where there is no
/// such shooter; the first where several bear the number. A failure to read the registrations is reported.
SchuetzenSpalten fuelleSchuetze(const Workplace& workplace, dao::Database& wettkampf, dao::Database& druck,
                                const QString& Startnummer);

/// Heads the sheet with the competition's names and place. The closing words stay unless the setting
/// `Schnelldruckzusatz` is 0.
void fuelleWettkampf(const Workplace& workplace, dao::Database& wettkampf, dao::Database& druck);

void schreibeEinzelErgebnisse(dao::Database& druck, const std::vector<EinzelErgebnis>& ergebnisse);

/// `schuetze`: empty where the rows name him by his number alone.
void schreibeErgebnisse(dao::Database& druck, const std::vector<ErgebnisZeile>& zeilen,
                        const SchuetzenSpalten& schuetze = {});

}  // namespace qk

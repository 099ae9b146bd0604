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
class Recordset;
}  // namespace dao

/// A shooter as `Schütze` and, in the plain list, every row of `Ergebnisse` has him, by column.
using SchuetzenSpalten = std::vector<std::pair<QString, QVariant>>;

/// Fills `Schütze` with the shooter, his club, team, class and sport registrations. Nothing where there is no
/// such shooter; the first where several bear the number. A failure to read the registrations is reported.
SchuetzenSpalten fuelleSchuetze(const Workplace& workplace, dao::Database& wettkampf, dao::Database& druck,
                                const QString& Startnummer);

/// Heads the sheet with the competition's names and place. The closing words stay unless the setting
/// `Schnelldruckzusatz` is 0.
void fuelleWettkampf(const Workplace& workplace, dao::Database& wettkampf, dao::Database& druck);

/// Adds a row to `EinzelErgebnisse`, and gives the result its key there.
void schreibeEinzelErgebnis(dao::Recordset& tabelle, EinzelErgebnis& ergebnis);

/// Adds a row to `Ergebnisse`. `schuetze`: empty where it names him by his number alone.
void schreibeErgebnis(dao::Recordset& tabelle, const ErgebnisZeile& zeile,
                      const SchuetzenSpalten& schuetze = {});

}  // namespace qk

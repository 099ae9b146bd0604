// The targets on a sheet: of each discipline the shooter's newest one, drawn from its stored hits.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <vector>

namespace qk {

namespace dao {
class Database;
}

/// A hit as the station measured it, in its own unit, from the middle of the target: x to the right, y up.
struct Treffer {
  double x = 0, y = 0;
  double Ringwert = 0;
};

/// The width of a ring in the unit of the hits, from how far the hits are from the middle and what they
/// count. 0 where they don't tell: none counts, or all are in the very middle.
double ringbreite(const std::vector<Treffer>& treffer);

/// The target as a PNG picture, as large as the hits ask for: the rings in which a hit counts, numbered, and
/// the hits. Hits without numbers in their places are left out. Rings are left out where `ringbreite` is 0.
QByteArray scheibenbild(const std::vector<Treffer>& treffer);

/// Makes `Scheibenbilder` in the print database (`Disziplin`, `Datum`, `Schuss`, `Ringe`, `Bild`), in place
/// of an older one: a row for each discipline, in their order, in which the shooter has a picture. Errors of
/// the stores pass.
void schreibeScheibenbilder(dao::Database& wettkampf, dao::Database& druck, const QString& Startnummer,
                            const QStringList& disziplinen);

}  // namespace qk

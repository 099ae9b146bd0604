// What a shooter's sheet should show, worked out from the stored results and the profiles on ways of its own.
#pragma once

#include <QList>
#include <QString>
#include <vector>

namespace qk {

namespace dao {
class Database;
}

struct SheetRow {
  QString contest;     ///< the profile; empty in the plain list
  QString group;       ///< of the plain list: "Teiler", "Serien", "Prämie"
  QString discipline;  ///< as printed; a premium's name with what it falls short of
  QString weapon;      ///< of the plain list
  int sum = 0;         ///< in tenths, of the profile
  QList<int> results;  ///< in tenths, in their order
};

/// The rows by profiles, in printed order.
std::vector<SheetRow> profileSheet(dao::Database& store, const QString& startNumber);
/// The best results of each discipline and weapon, and the premiums.
std::vector<SheetRow> plainSheet(dao::Database& store, const QString& startNumber);

}  // namespace qk

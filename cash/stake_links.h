// What a stake pays for and whom it is released for. Needs no window.
#pragma once

#include <QSet>
#include <vector>

#include "cash/diszi_kombi.h"
#include "platform/grid/text_table.h"

namespace qk {

struct StakeTargetColumn {
  enum : int { Merkmal = 0, Gewaehlt = 1, Art = 2, Name = 3, Anz = 4, Anzahl = 5 };
};

/// The disciplines and combinations of a stake, ticked, each with its number of targets.
class StakeTargets {
 public:
  StakeTargets();

  TextTable& flexBarcode() { return table_; }
  void LoadDisziKombi(const std::vector<DisziKombi>& entries);

  // Errors of the store pass; a failed save leaves the stake with fewer rows.
  void zeige(dao::Database& database, qint32 EinlageID);
  void speichere(dao::Database& database, qint32 EinlageID) const;

 private:
  int zeile(int DisziKZ, qint32 DisziKombiID) const;

  TextTable table_;
};

/// The boxes that select shooter classes by what they are. A group without a tick doesn't restrict; ticks of
/// a group are alternatives, and a class must fit all groups.
struct ClassFilter {
  bool freihand = false, auflage = false;
  bool damen = false, herren = false;
  bool bis18 = false, ueber18 = false;
};
struct ClassTraits {
  bool Auflage = false;
  int Geschlecht = 0;  ///< 0 both, 1 men, 2 women
  int AlterVon = 0, AlterBis = 0;
};
bool passt(const ClassFilter& filter, const ClassTraits& klasse);

struct ShooterClass {
  qint32 id = 0;
  QString Klasse;
};
// Errors of the store pass.
std::vector<ShooterClass> ladeKlassen(dao::Database& database);
QSet<qint32> klassenDerEinlage(dao::Database& database, qint32 EinlageID);
QSet<qint32> klassenNachMerkmal(dao::Database& database, const ClassFilter& filter);
/// No class at all releases the stake for everyone.
void speichereKlassen(dao::Database& database, qint32 EinlageID, const std::vector<qint32>& klassen);

}  // namespace qk

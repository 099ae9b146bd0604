// What clubs and teams have paid and still owe, as the entries of the menu "VM-Einlagen" show it.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/dao/database.h"
#include "platform/runtime/money.h"

namespace qk {

/// An entry of the submenu: what it says, and the id of its club or team.
struct VmEntry {
  QString caption;
  qint32 id = 0;
  bool visible = true;  ///< the club's entry stays, hidden, for a shooter without a club
};

struct VmMenu {
  bool visible = false;
  std::vector<VmEntry> entries;  ///< the club's first, then the team's, then those of SPO teams
};

struct VmShooter {
  qint32 ID = 0, VereinsID = 0, lMannID = 0;
  QString sVerein, sMann;
};

/// Paid rows less open ones. Errors of the store pass.
Money saldoVerein(dao::Database& database, qint32 VereinID);
Money saldoMannschaft(dao::Database& database, qint32 MannID);

/// The teams that the shooter is registered with, in the order of their ids. Of each team but the first, its
/// first payment row isn't counted.
std::vector<VmEntry> spoMannschaften(dao::Database& database, qint32 SchuetzeID);

/// The whole submenu; hidden without a stake for clubs and teams, or with no balance to show.
VmMenu vmMenu(dao::Database& database, const VmShooter& shooter);

}  // namespace qk

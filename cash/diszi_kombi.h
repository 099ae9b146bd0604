// The disciplines and combinations of a competition, in the order in which the desk lists them.
#pragma once

#include <QString>
#include <vector>

#include "platform/dao/database.h"

namespace qk {

struct DisziKombi {
  bool kombi = false;
  qint32 id = 0;
  QString name;

  QString Art() const { return kombi ? "K" : "D"; }
  int DisziKZ() const { return kombi ? 2 : 1; }  ///< in `Kasse_DisziKombi`
};

/// All disciplines, then all combinations; each by name or by `CmdIndex` as the competition says. Errors of
/// the store pass.
std::vector<DisziKombi> ladeDisziKombi(dao::Database& database);

}  // namespace qk

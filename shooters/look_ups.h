// Small look-ups of a competition: what an id of its tables is called.
// A row that is missing gives the empty text; so does a failure, after it was reported.
#pragma once

#include <QString>

namespace qk {

class Dialogs;
namespace dao {
class Database;
}

/// The shooter's sport registrations, one line each: discipline, then " - " and the team where there is one.
QString ErmittleSPOText(dao::Database& database, Dialogs& dialogs, qint32 schuetzeID);
/// Short name of a club, its name where that is empty.
QString ErmittleVereinsKurzname(dao::Database& database, Dialogs& dialogs, qint32 vereinsID);
QString ErmittleMannschaftsName(dao::Database& database, Dialogs& dialogs, qint32 mannID);
/// The group of a team. An id that isn't a team's finds nothing.
QString ErmittleMannschaftsGruppe(dao::Database& database, Dialogs& dialogs, qint32 id, bool idIstMannschaft);

}  // namespace qk

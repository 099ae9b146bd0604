// Which stakes may be sold to which shooter class.
#pragma once

#include <QtGlobal>

namespace qk {

class Dialogs;
namespace dao {
class Database;
}

/// True when the stake may be sold to the class: no class is named for it, or this one is. A refusal says so
/// in a box.
bool KassePruefung(dao::Database& database, Dialogs& dialogs, qint32 lEinlageID, qint32 KlassenID);

}  // namespace qk

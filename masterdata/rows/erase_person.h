// A shooter's personal data go, what he shot and paid stays.
#pragma once

#include <QStringList>

#include "platform/dao/database.h"

namespace qk {

struct Erasure {
  QStringList emptied;  ///< the shooter's columns that held something
  qint64 pictures = 0;  ///< rows of `Grafik_Scheibe` that bore name and club
  qint64 shots = 0;     ///< rows of `Haering_Daten` that bore the name
  /// Other texts of the shooter that hold something: columns of another program, whose meaning isn't known
  /// here. They stay.
  QStringList unknown;
};

/// What a shooter who is erased is called.
QString erasedName();

/// In one transaction: the name becomes erasedName(), address, bank, birth date, sex, licence number, remarks
/// and the like are emptied, and the name on pictures and in the shots received. Start number, class, club,
/// team, registrations and payments stay; the class is fixed as set by hand, for without a birth date it
/// couldn't be found again. The last import of a list can't be taken back after it. 3167 when the shooter is
/// gone; Error 5 with a German text when another shooter bears the number, for the pictures may be the other
/// one's.
Erasure erasePerson(dao::Database& database, qint64 shooter);

}  // namespace qk

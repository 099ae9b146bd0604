// What keeps a shooter from being stored, in plain words, and what makes one think twice.
#pragma once

#include "masterdata/counter/counter.h"

namespace qk {

struct ShooterTrouble {
  QString column;  ///< where it stands, a column of `Schützen`
  QString text;    ///< a German sentence; empty when all is well
};

/// "Die Startnummer 107 ist vergeben:" and who has it.
QString numberIsTaken(const QString& number, const PresentShooter& holder);

/// The first trouble with what was changed: `before` is the row as it was read. Errors of the store pass.
ShooterTrouble troubleWith(const ShooterData& data, const dao::RowValues& before, qint64 id,
                           const Counter& counter);

/// The question about somebody of the same name and birth date, the two below each other; empty for nobody,
/// and where neither name nor date was changed.
QString namesakeQuestion(const ShooterData& data, const dao::RowValues& before, qint64 id,
                         const Counter& counter);

}  // namespace qk

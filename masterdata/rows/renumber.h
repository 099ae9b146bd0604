// Another start number for a shooter.
#pragma once

#include <QString>

#include "platform/dao/changes.h"
#include "platform/dao/database.h"

namespace qk {

enum class Renumbering {
  WithResults,  ///< results, payments and all else that bears the number go along
  ShooterOnly   ///< they stay: where two shooters bear one number, they are the other one's
};

/// Gives the shooter of that key the number, in one transaction. Error 5 with a German text, and nothing is
/// changed:
/// - the number is empty or too long, or a shooter has it, or results or payments bear it
/// - open shots bear the present one: a line and its station hold it (names both); asked while nobody stores
///   a shot
/// - WithResults, and another shooter bears the present number as well
/// A line of the office program that has chosen him, and no shot of his yet, isn't known here: there he is to
/// be chosen anew. 3167 when the shooter is gone, RowChanged when somebody has renumbered him meanwhile.
void renumber(dao::Database& database, qint64 shooter, const QString& number,
              Renumbering kind = Renumbering::WithResults);

/// The same as part of other changes of that database, written with them: what refuses is asked now and then.
void renumber(dao::Database& database, dao::Changes& changes, qint64 shooter, const QString& number,
              Renumbering kind = Renumbering::WithResults);

}  // namespace qk

// The class of a shooter, from date of birth and sex by the age limits of the competition. Ages are reckoned
// against the competition's reference date: an age is the one reached in the class year that holds it.
// A failure is reported and gives 0 or the empty text.
#pragma once

#include <QString>

#include "app/ground/global_variablen.h"

namespace qk {

class Dialogs;
namespace dao {
class Recordset;
}

/// klassen: the classes in the order of `Alter von`; of those that fit, the first one counts.
/// klassenwechsel: stands on the row that says when a class year begins ("01.01.").
/// manuell: the class was set by hand, klassenID stays. An unknown birth date (year 0000, or no date) gives 0
/// without a word, a shooter whom no class takes gives 0 with a report.
qint32 ErmittleKlassenIDAusSaetzen(const GlobalVariablen& global, Dialogs& dialogs, dao::Recordset& klassen,
                                   const dao::Recordset& klassenwechsel, const QString& gebDat,
                                   const QString& geschlecht, bool manuell, qint32 klassenID);

/// The same with the tables of the open competition, read anew each time.
qint32 ErmittleKlassenID(const GlobalVariablen& global, Dialogs& dialogs, const QString& gebDat,
                         const QString& geschlecht, bool manuell, qint32 klassenID);

/// Name of the class of that shooter, or its short key; empty when there is no such shooter or class.
QString ErmittleKlassenName(const GlobalVariablen& global, Dialogs& dialogs, const QString& competitionFile,
                            const QString& startnummer, bool kurz = false);

}  // namespace qk

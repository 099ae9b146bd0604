#include "cash/base_update.h"

namespace qk {

void KasseBasisAktualisieren(dao::Database& database) {
  for (const char* statement :
       {"UPDATE Kasse_Eingang INNER JOIN Schützen ON Kasse_Eingang.Startnummer = Schützen.Startnummer SET "
        "Kasse_Eingang.VereinIDBasis = [Schützen].[VereinsID]",
        "UPDATE Kasse_Eingang INNER JOIN Mannschaften ON Kasse_Eingang.MannID = Mannschaften.ID SET "
        "Kasse_Eingang.VereinIDBasis = [Mannschaften].[VereinID]",
        "UPDATE Kasse_Eingang SET Kasse_Eingang.VereinIDBasis = [Kasse_Eingang].[VereinID] WHERE "
        "(((Kasse_Eingang.VereinID)>0))",
        "UPDATE Kasse_Eingang SET Kasse_Eingang.MannIDBasis = [MannID] WHERE (((Kasse_Eingang.MannID)>0))",
        "UPDATE Kasse_Eingang INNER JOIN Schützen ON Kasse_Eingang.Startnummer = Schützen.Startnummer SET "
        "Kasse_Eingang.MannIDBasis = [Schützen].[lMannID]WHERE (([Schützen].[lMannID]>0))"})
    database.execute(statement);
}

}  // namespace qk

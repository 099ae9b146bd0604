// The texts for a station that are built from the line's discipline grid, and what is asked before they go
// out. The commands themselves are rows of link/station_commands.h.
#pragma once

#include <QString>
#include <vector>

namespace qk {

/// Pause between the commands of a sequence, milliseconds.
inline constexpr int BefehlsPause = 200;

/// One row of the discipline grid, cells as texts. Rows stand in grid order, the first is row 1.
struct DisziplinZeile {
  QString auswahl = {};   ///< column 0: "0" is not selected, any other value is
  QString name = {};      ///< column 1
  QString schuss = {};    ///< column 2
  QString gesamt = {};    ///< column 3
  QString nachkauf = {};  ///< column 4: additional shots, empty when none
};
using DisziplinZeilen = std::vector<DisziplinZeile>;

/// Characters of the discipline mask; rows beyond can't be selected.
inline constexpr int MaskenLaenge = 30;

/// Row data of a grid row: "Diszi" + number from 1.
QString disziplinSchluessel(int zeile);

/// Exactly 30 characters, one a row in order: "-" not selected, "1" selected; padded with "-".
QString disziplinMaske(const DisziplinZeilen& zeilen);

/// Command 75: registers shooter and disciplines. Empty without a start number.
QString anmeldeBefehl(const QString& sStartnummer, const QString& schuetzenName, const QString& maske);

/// True where the cell of additional shots holds a number.
bool hatNachkauf(const QString& nachkauf);
/// Command 80: additional shots for the discipline of grid row `zeile`. Error 13 unless
/// hatNachkauf(nachkauf), Error 6 for a row beyond 16 bits.
QString nachkaufBefehl(int zeile, const QString& nachkauf);

/// The readable list of selected disciplines (or of additional shots) for the questions; each line ends in CR
/// LF.
QString disziplinAuswahlNamen(const DisziplinZeilen& zeilen, bool bNachkauf);

/// Texts of the questions before sending; all with title "Hinweis".
QString frageOhneDisziplin();
QString frageDisziplinenSenden(const QString& namen);
QString frageNachkaufSenden(const QString& namen);

}  // namespace qk

// The start card: a sheet that a shooter takes to his line. It names him, his class and what he has paid for,
// and carries his start number as a bar code.
#pragma once

#include <vector>

#include "app/ground/report_door.h"
#include "platform/workplace.h"

namespace qk {

class CashDesk;

struct StartCard {
  QString Bez1, Bez2, Ort;
  QString Startnummer, Name, GebDat, Klasse, Verein, Mannschaft, Meldungen;
  struct Zeile {
    bool kombi = false;
    QString Bezeichnung;
    int Anzahl = 0;  ///< targets that are paid for
  };
  /// Disciplines, then combinations, in the order of the desk; nothing for open items.
  std::vector<Zeile> Disziplinen;
};

/// The card of the shown shooter, from what is stored. Errors of the store pass.
StartCard startkarteFuer(CashDesk& desk);

/// Prints it and tells what became of it, for the status line. A failure asks nothing and leaves nothing
/// behind.
QString Kladde_Print(CashDesk& desk, ReportDoor& reports);

}  // namespace qk

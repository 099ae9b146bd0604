// What both sheets of a quick evaluation have in common. Each statement runs as a step: its failure is shown
// under the text of the routine that runs it.
#pragma once

#include <memory>
#include <vector>

#include "app/ground/report_door.h"
#include "evaluation/print_file.h"
#include "evaluation/print_rows.h"
#include "platform/dao/database.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace qk {

/// What a sheet needs around it. All of it outlives the evaluation, which lets pending events run: nobody may
/// close the competition meanwhile.
struct Auswertungsplatz {
  Workplace workplace;
  dao::Database& wettkampf;
  ReportDoor& reports;
  QString SystemVerzeichnis;  ///< where template and reports lie; ends in a separator
};

/// Gives the stored results of all shooters the class, club and team that the shooters have now. Not where a
/// file "NoUpdate.txt" lies beside the program.
void gleicheErgebnisseAb(Steps& step, const Auswertungsplatz& platz);

std::unique_ptr<Druckdatei> neueDruckdatei(Steps& step, const Auswertungsplatz& platz);

/// The shooter and the competition; the shooter's columns.
SchuetzenSpalten schreibeKopf(Steps& step, const Auswertungsplatz& platz, const Druckdatei& druck,
                              const QString& Startnummer);

/// `Ergebnisse`, and the targets of their disciplines.
void schreibeZeilen(Steps& step, const Auswertungsplatz& platz, const Druckdatei& druck,
                    const QString& Startnummer, const std::vector<ErgebnisZeile>& zeilen,
                    const SchuetzenSpalten& schuetze);

/// Closes the file and runs the report on it: shown or printed when this returns. False when it failed, or
/// the operator gave the printing up.
bool zeigeBericht(Steps& step, const Auswertungsplatz& platz, Druckdatei& druck, const QString& sBericht,
                  ReportOrder::Ziel ziel);

}  // namespace qk

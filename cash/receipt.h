// The receipt of a shooter: the data file that a report is made of. It says what the window shows, not what
// is stored.
#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "app/ground/report_door.h"
#include "platform/grid/text_table.h"
#include "platform/workplace.h"

namespace qk {

class CashDesk;

struct ReceiptTarget {
  QString Scheibennr, Ausgabe, Bezeichnung, Zuordnung, Typ;
};

/// Everything that stands on a receipt, as texts of the window.
struct Receipt {
  QString Bez1, Bez2, Ort;
  QString Startnummer, Name, GebDat, Klasse, Disziplin, Verein, Mannschaft;
  QStringList Gruppen;
  struct Zeile {
    QString Bezeichnung, Offen, Betrag, Datum;
  };
  std::vector<Zeile> Kasse;
  std::vector<ReceiptTarget> Scheiben;
};

/// The team as it stands on the receipt: its group is added where the shown text doesn't hold it.
QString belegMannschaft(const QString& label9, const QString& gruppe);

/// The rows of a purchase (all with the same date) or of the stored payments (each with its own).
std::vector<Receipt::Zeile> belegZeilen(const TextTable& rows, const QString& datum = {});

/// Fills a copy of the template `ErgKasseDruck.mdb` in the folder of the environment variable `temp`; its
/// path. Errors pass and leave the copy behind.
QString schreibeBelegDatei(const Workplace& workplace, const Receipt& receipt);

/// The shown shooter's receipt: of the purchase in hand, or of all that is stored. Errors pass.
Receipt belegFuer(CashDesk& desk, bool aktuellerKauf, std::vector<ReceiptTarget> scheiben);

/// Makes receipt and data file, runs the report on it and removes it. Failures are reported.
void druckeBeleg(const Workplace& workplace, ReportDoor& reports, const std::function<Receipt()>& beleg,
                 ReportOrder::Ziel ziel);

}  // namespace qk

// The sheet for the shooter at the current line.
#include <QScopedValueRollback>
#include <QStatusBar>

#include "app/frmLindorm.h"
#include "app/shell/waiting_window.h"
#include "capture/row_values.h"
#include "evaluation/quick_evaluation.h"
#include "platform/widgets/hourglass.h"

namespace qk {

namespace {

enum class Auswertung { Schnellliste, Profile };

/// Which of them the competition's shooters get.
Auswertung gewaehlteAuswertung(dao::Database& wettkampf) {
  const auto rs = wettkampf.openRecordset("Wettkampf", dao::RecordsetType::Snapshot);
  return !rs->eof() && doubleIn(*rs, "KurzauswertungDiszi") != 0 ? Auswertung::Profile
                                                                 : Auswertung::Schnellliste;
}

}  // namespace

/// Events run while a sheet is made; what would take away what it stands on is refused meanwhile.
bool frmLindorm::isEvaluating(const QString& refused) {
  if (evaluating_)
    workplace_.dialogs.note("Die Kurzauswertung läuft noch. " + refused +
                            " geht erst, wenn das Blatt gedruckt oder seine Vorschau geschlossen ist.");
  return evaluating_;
}

void frmLindorm::Kurzauswertung(qint16 nZiel) {
  if (isEvaluating("Eine weitere")) return;
  reported(fehlerReport(workplace_.dialogs, "Fehler bei Kurzauswertung_err!"), [&](Steps& step) {
    const QString Startnummer = Get_AktStartnummer();
    if (Startnummer.isEmpty())
      return workplace_.dialogs.note("Bitte wählen Sie einen Schützen an der aktuellen Linie!");
    if (!global_.Datenbank) return workplace_.dialogs.note("Bitte öffnen Sie einen Wettkampf.");
    Auswertung auswertung = Auswertung::Schnellliste;
    step([&] { auswertung = gewaehlteAuswertung(*global_.Datenbank); });

    const QScopedValueRollback running(evaluating_, true);
    const Hourglass hourglass;
    const dao::WorkSign sign =
        showWorkIn(*statusBar(), "Die Ergebnisse werden mit der Schützenliste abgeglichen");
    const Auswertungsplatz platz{workplace_, *global_.Datenbank, auswertungen_, global_.SystemVerzeichnis};
    const auto ziel = static_cast<ReportOrder::Ziel>(nZiel);
    const bool done = auswertung == Auswertung::Profile ? druckeProfilauswertung(platz, Startnummer, ziel)
                                                        : druckeSchnellliste(platz, Startnummer, ziel);
    if (done && ziel == ReportOrder::Ziel::Drucker)
      success_.say("Kurzauswertung für Startnummer " + Startnummer + " gedruckt.");
  });
}

}  // namespace qk

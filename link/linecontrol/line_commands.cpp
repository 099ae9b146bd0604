#include "link/linecontrol/line_commands.h"

#include <QScopedValueRollback>

#include "link/commands.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"

namespace qk {

LineCommands::LineCommands(const Workplace& workplace, LineSide& line, LineDisciplines& disciplines)
    : workplace_(workplace), line_(line), disciplines_(disciplines) {}

bool LineCommands::quietly(const std::function<void()>& statement) {
  try {
    statement();
  } catch (const Error&) {
    // The operator sees at the station, and at the mark in the tree, whether the command took effect.
  }
  return line_.lives();
}

void LineCommands::Set_Linie_PreisModus_ON() {
  if (!quietly([&] { line_.Output_2_ESA(BefehlVorPreismodus, false); })) return;
  if (!quietly([&] { line_.Output_2_ESA(BefehlPreismodusEin, false); })) return;
  line_.setTimerEnabled(true);
  quietly([&] { line_.raise(LineEvent::PreisModusGestartet); });
}

void LineCommands::Set_Linie_PreisModus_OFF() {
  if (!quietly([&] { line_.Output_2_ESA(BefehlPreismodusAus, false); })) return;
  if (!quietly([&] { line_.raise(LineEvent::PreisModusBeendet); })) return;
  line_.setTimerEnabled(false);
}

void LineCommands::Set_Abmelden_Schuetze() {
  const auto pause = [&] { workplace_.waits.sleep(BefehlsPause); };
  if (!quietly([&] { line_.Output_2_ESA(BefehlAbmelden1, false); })) return;
  if (!quietly(pause)) return;
  if (!quietly([&] { line_.Output_2_ESA(BefehlAbmelden2, false); })) return;
  if (!quietly(pause)) return;
  if (!quietly([&] { line_.Output_2_ESA(BefehlAbmelden3, false); })) return;
  if (!quietly([&] { line_.raise(LineEvent::WettkampfBeendet); })) return;
  line_.clearShooterInput();
  line_.clearShooterLabels();
}

bool LineCommands::wantsToSend(bool bFrage) {
  const QString names = Get_HaeringDisziplinAuswahlNamen(false);
  if (names.isEmpty()) return workplace_.dialogs.confirm(frageOhneDisziplin());
  return bFrage && workplace_.dialogs.confirm(frageDisziplinenSenden(names));
}

void LineCommands::Set_Anmelden_SchuetzeDisziplinen(bool bFrage) {
  reported(
      fehlerReport(workplace_.dialogs, "Fehler bei Set_Anmelden_SchuetzeDisziplinen_err!"), [&](Steps& step) {
        if (line_.startnummer().isEmpty())
          return workplace_.dialogs.note("Bitte Schützen wählen!", BoxIcon::Exclamation);
        if (!wantsToSend(bFrage) || !line_.lives()) return;
        workplace_.waits.runMessageLoop();
        if (!line_.lives()) return;
        step([&] {
          line_.Output_2_ESA(
              anmeldeBefehl(line_.startnummer(), line_.schuetzenName(), disziplinMaske(disciplines_.rows())),
              false);
        });
        if (!line_.lives()) return;
        Nachkauf_Senden(false);
        if (line_.lives()) step([&] { line_.raise(LineEvent::SchuetzeGesendet); });
      });
}

void LineCommands::Nachkauf_Senden(bool bFrage) {
  if (sendingExtras_) return;
  const QScopedValueRollback sending(sendingExtras_, true);
  reported(fehlerReport(workplace_.dialogs, "Fehler bei Nachkauf_Senden_err!"), [&](Steps& step) {
    if (bFrage && !workplace_.dialogs.confirm(frageNachkaufSenden(Get_HaeringDisziplinAuswahlNamen(true))))
      return;
    sendExtras(step);
  });
}

void LineCommands::sendExtras(Steps& step) {
  TextTable& table = disciplines_.table();
  for (int row = 1; line_.lives() && row < table.rows(); ++row) {
    const QString extra = table.text(row, LineDisciplines::Nachkauf).trimmed();
    if (!hatNachkauf(extra)) continue;
    step([&] { line_.Output_2_ESA(nachkaufBefehl(row, extra), true); });
    if (line_.lives() && row < table.rows()) disciplines_.extraSent(row);
  }
}

QString LineCommands::Get_HaeringDisziplinAuswahlNamen(bool bNachkauf) {
  QString names;
  reported(fehlerReport(workplace_.dialogs, "Fehler bei Get_HaeringDisziplinAuswahlNamen_err!"),
           [&](Steps&) { names = disziplinAuswahlNamen(disciplines_.rows(), bNachkauf); });
  return names;
}

void LineCommands::Wettkampf_Vorbereiten() {
  line_.Output_2_ESA(BefehlVorbereiten, true);
}
void LineCommands::Wettkampf_Starten() {
  line_.Output_2_ESA(BefehlStarten, true);
}
void LineCommands::Wettkampf_Stoppen() {
  line_.Output_2_ESA(BefehlStoppen, true);
}
void LineCommands::Set_Linie_Werbefenster_EIN(const QString& text) {
  line_.Output_2_ESA(BefehlWerbefensterEin + text, false);
}
void LineCommands::Set_Linie_Werbefenster_AUS() {
  line_.Output_2_ESA(BefehlWerbefensterAus, false);
}
void LineCommands::Set_Linie_ZurueckWindows() {
  line_.Output_2_ESA(BefehlWindows, false);
}
void LineCommands::Set_Linie_ShutDown() {
  line_.Output_2_ESA(BefehlHerunterfahren, false);
}

}  // namespace qk

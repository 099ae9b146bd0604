#include "link/linecontrol/line_commands.h"

#include <QScopedValueRollback>

#include "link/commands.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"

namespace qk {

LineCommands::LineCommands(const Workplace& workplace, LineSide& line, LineDisciplines& disciplines)
    : workplace_(workplace), line_(line), disciplines_(disciplines) {}

void LineCommands::send(Befehl befehl) {
  send(befehl, stationCommand(befehl).text());
}
void LineCommands::send(Befehl befehl, const QString& text) {
  line_.Output_2_ESA(text, stationCommand(befehl).wait, {});
}

bool LineCommands::quietly(const std::function<void()>& statement) {
  try {
    statement();
  } catch (const Error&) {
    // The operator sees at the station, and at the mark in the tree, whether the command took effect.
  }
  return line_.lives();
}

QString LineCommands::Set_Linie_PreisModus_ON() {
  const QString done = "Preismodus ein";
  if (!line_.opens()) return done;
  if (!quietly([&] { send(Befehl::VorPreismodus); })) return done;
  if (!quietly([&] { send(Befehl::PreismodusEin); })) return done;
  line_.setTimerEnabled(true);
  quietly([&] { line_.raise(LineEvent::PreisModusGestartet); });
  return done;
}

QString LineCommands::Set_Linie_PreisModus_OFF() {
  const QString done = "Preismodus beendet";
  if (!quietly([&] { send(Befehl::PreismodusAus); })) return done;
  if (!quietly([&] { line_.raise(LineEvent::PreisModusBeendet); })) return done;
  line_.setTimerEnabled(false);
  return done;
}

QString LineCommands::Set_Abmelden_Schuetze() {
  const QString done = "Schütze abgemeldet";
  const auto pause = [&] { workplace_.waits.sleep(BefehlsPause); };
  if (!quietly([&] { send(Befehl::Abmelden1); })) return done;
  if (!quietly(pause)) return done;
  if (!quietly([&] { send(Befehl::Abmelden2); })) return done;
  if (!quietly(pause)) return done;
  if (!quietly([&] { send(Befehl::Abmelden3); })) return done;
  if (!quietly([&] { line_.raise(LineEvent::WettkampfBeendet); })) return done;
  line_.clearShooterInput();
  line_.clearShooterLabels();
  return done;
}

bool LineCommands::wantsToSend(bool bFrage) {
  const QString names = Get_HaeringDisziplinAuswahlNamen(false);
  if (names.isEmpty()) return workplace_.dialogs.confirm(frageOhneDisziplin());
  return bFrage && workplace_.dialogs.confirm(frageDisziplinenSenden(names));
}

QString LineCommands::Set_Anmelden_SchuetzeDisziplinen(bool bFrage) {
  const QString number = line_.startnummer();
  const QString done = line_.schuetzenName() + " an die Station gesendet";
  reported(fehlerReport(workplace_.dialogs, "Fehler bei Set_Anmelden_SchuetzeDisziplinen_err!"),
           [&](Steps& step) {
             if (line_.startnummer().isEmpty())
               return workplace_.dialogs.note("Bitte Schützen wählen!", BoxIcon::Exclamation);
             if (!wantsToSend(bFrage) || !line_.lives()) return;
             workplace_.waits.runMessageLoop();
             if (!line_.lives()) return;
             step([&] {
               send(Befehl::Anmelden, anmeldeBefehl(line_.startnummer(), line_.schuetzenName(),
                                                    disziplinMaske(disciplines_.rows())));
             });
             if (!line_.lives()) return;
             Nachkauf_Senden(false);
             if (line_.lives()) step([&] { line_.raise(LineEvent::SchuetzeGesendet); });
           });
  return line_.lives() && line_.startnummer() == number ? done : QString();
}

QString LineCommands::Nachkauf_Senden(bool bFrage) {
  const QString number = line_.startnummer();
  if (extrasOf_.contains(number)) return {};
  const QScopedValueRollback sending(extrasOf_, extrasOf_ + QSet<QString>{number});
  const auto wanted = [&] { return line_.lives() && line_.startnummer() == number; };
  reported(fehlerReport(workplace_.dialogs, "Fehler bei Nachkauf_Senden_err!"), [&](Steps& step) {
    if (bFrage && !workplace_.dialogs.confirm(frageNachkaufSenden(Get_HaeringDisziplinAuswahlNamen(true))))
      return;
    sendExtras(step, wanted);
  });
  return wanted() ? "Nachkauf gesendet" : QString();
}

void LineCommands::sendExtras(Steps& step, const std::function<bool()>& wanted) {
  TextTable& table = disciplines_.table();
  const bool waits = stationCommand(Befehl::Nachkauf).wait;
  for (int row = 1; wanted() && row < table.rows(); ++row) {
    const QString extra = table.text(row, LineDisciplines::Nachkauf).trimmed();
    if (!hatNachkauf(extra)) continue;
    step([&] { line_.Output_2_ESA(nachkaufBefehl(row, extra), waits, wanted); });
    if (wanted() && row < table.rows()) disciplines_.extraSent(row, extra);
  }
}

QString LineCommands::Get_HaeringDisziplinAuswahlNamen(bool bNachkauf) {
  QString names;
  reported(fehlerReport(workplace_.dialogs, "Fehler bei Get_HaeringDisziplinAuswahlNamen_err!"),
           [&](Steps&) { names = disziplinAuswahlNamen(disciplines_.rows(), bNachkauf); });
  return names;
}

QString LineCommands::Wettkampf_Vorbereiten() {
  send(Befehl::Vorbereiten);
  return {};
}
QString LineCommands::Wettkampf_Starten() {
  send(Befehl::Starten);
  return {};
}
QString LineCommands::Wettkampf_Stoppen() {
  send(Befehl::Stoppen);
  return {};
}
QString LineCommands::Set_Linie_Werbefenster_EIN(const QString& text) {
  send(Befehl::WerbefensterEin, stationCommand(Befehl::WerbefensterEin).text() + text);
  return "Werbefenster eingeblendet";
}
QString LineCommands::Set_Linie_Werbefenster_AUS() {
  send(Befehl::WerbefensterAus);
  return "Werbefenster ausgeblendet";
}
QString LineCommands::Set_Linie_ZurueckWindows() {
  send(Befehl::Windows);
  return "zurück zu Windows";
}
QString LineCommands::Set_Linie_ShutDown() {
  send(Befehl::Herunterfahren);
  return "Rechner fährt herunter";
}

}  // namespace qk

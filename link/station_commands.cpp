#include "link/station_commands.h"

#include <algorithm>

namespace qk {

namespace {

constexpr bool kWaits = true, kOverwrites = false;

}  // namespace

const std::vector<StationCommand>& stationCommands() {
  using B = Befehl;
  using A = StationAct;
  static const std::vector<StationCommand> all = {
      {B::VorPreismodus, "H014", "", "", kOverwrites, A::Nothing, "geht dem Preismodus voraus"},
      {B::PreismodusEin, "76", " 'Umschalten auf Preismodus", "", kOverwrites, A::EnterPriceMode,
       "Preismodus ein"},
      {B::PreismodusAus, "77", " 'UmschaltenAuf Fernbedienung", "", kOverwrites, A::LeavePriceMode,
       "Preismodus aus"},
      {B::Anmelden, "75", "", "Startnummer ; Name ; Startnummer ; Startnummer ; Auswahl", kOverwrites,
       A::Register, "Schützen mit seinen Disziplinen anmelden"},
      {B::Nachkauf, "80", "", "Zeile;Anzahl", kWaits, A::AddShots, "zusätzliche Schüsse einer Disziplin"},
      {B::Abmelden1, "52", "", "", kOverwrites, A::Pause, "Schützen abmelden, erster von drei Befehlen"},
      {B::Abmelden2, "66", "", "", kOverwrites, A::SignOff, "Schützen abmelden, zweiter Befehl"},
      {B::Abmelden3, "53", "", "", kOverwrites, A::SignOff, "Schützen abmelden, dritter Befehl"},
      {B::Vorbereiten, "12", "", "", kWaits, A::Pause, "Wettkampf vorbereiten"},
      {B::Starten, "13", "", "", kWaits, A::GoOn, "Wettkampf starten; Teil der Antwort auf die Kennung 78"},
      {B::Stoppen, "52", "", "", kWaits, A::Pause, "Wettkampf stoppen"},
      {B::Antwort78, "67", "", "", kWaits, A::Nothing, "Antwort auf einen Schuss mit der Kennung 78"},
      {B::WerbefensterEin, "45", " ", "Bild", kOverwrites, A::ShowAdvert, "Werbefenster einblenden"},
      {B::WerbefensterAus, "46", " 'Werbefenster ausblenden", "", kOverwrites, A::HideAdvert,
       "Werbefenster ausblenden"},
      {B::Windows, "50", " 'Zurück zu Windows", "", kOverwrites, A::LeaveToDesktop, "zurück zu Windows"},
      {B::Herunterfahren, "99", " 'Rechner herunterfahren", "", kOverwrites, A::ShutDown,
       "Rechner herunterfahren"},
  };
  return all;
}

const StationCommand& stationCommand(Befehl befehl) {
  return stationCommands().at(static_cast<size_t>(befehl));
}

const StationCommand* readCommand(const QString& command) {
  const auto& all = stationCommands();
  const auto row = std::find_if(all.begin(), all.end(),
                                [&](const StationCommand& each) { return command.startsWith(each.code); });
  return row == all.end() ? nullptr : &*row;
}

}  // namespace qk

#include "app/watch/server_source.h"

#include <utility>

#include "app/watch/watch_texts.h"
#include "platform/runtime/error.h"

namespace qk {

namespace {

const QString kServer = "server";
const QString kStandby = "ersatz";
const QString kServerPage = "stoerungen.html#server";
const QString kStandbyPage = "stoerungen.html#ersatz";
const QString kNothingStored =
    "Schüsse und Buchungen werden nicht gespeichert, bis er antwortet. Die Stationen halten ihre Schüsse so "
    "lange fest.";
const QString kCheckServer =
    "Netz und Server prüfen. Ist er verloren, mit dem Ersatzserver oder mit der letzten Sicherung "
    "weitermachen.";

Threat silentServer(const QString& what) {
  return {
      kServer, ThreatLevel::Grave, "Server antwortet nicht", what, kNothingStored, kCheckServer, kServerPage,
      {}};
}

QString backlogText(const dao::StandbyState& state) {
  QStringList parts;
  if (state.behind) parts << QString("%1 Sekunden").arg(state.behind->count());
  if (state.bytesBehind) parts << sizeText(*state.bytesBehind);
  return parts.join(", ");
}

}  // namespace

ServerSource::ServerSource(std::function<std::optional<dao::StandbyState>()> ask) : ask_(std::move(ask)) {}

/// One answer that is missing may be a hiccup of the net; the second one in a row counts.
std::vector<Threat> ServerSource::look(const QDateTime&) {
  try {
    const std::optional<dao::StandbyState> state = ask_();
    failures_ = 0;
    if (state) return findings(*state);
    behind_ = false;
    return {};
  } catch (const Error& error) {
    if (++failures_ < 2) return {};
    return {silentServer(error.description())};
  }
}

bool ServerSource::isBehind(const dao::StandbyState& state) const {
  const int part = behind_ ? 2 : 1;
  return (state.behind && *state.behind > kLate / part) ||
         (state.bytesBehind && *state.bytesBehind > kMuch / part);
}

std::vector<Threat> ServerSource::findings(const dao::StandbyState& state) {
  behind_ = state.connected && isBehind(state);
  if (state.commitsWait)
    return {Threat{kStandby,
                   ThreatLevel::Grave,
                   "Server wartet auf Ersatz",
                   "Der Server ist so eingestellt, dass eine Änderung erst gilt, wenn auch der Ersatzserver "
                   "sie hat, und der ist nicht verbunden.",
                   "Kein Schuss und keine Buchung wird gespeichert; das Programm wartet.",
                   "Den Ersatzserver einschalten. Gibt es keinen mehr, am Server die Liste der synchronen "
                   "Ersatzserver leeren.",
                   kStandbyPage,
                   {}}};
  if (!state.connected)
    return {Threat{kStandby,
                   ThreatLevel::Warning,
                   "Ersatzserver fehlt",
                   "Zur Serverdatei gehören mehrere Rechner, aber kein Ersatzserver ist verbunden.",
                   "Fällt der Server jetzt aus, bleibt nur die letzte Sicherung.",
                   "Den Ersatzserver einschalten; nach einem Wechsel auf den zweiten Rechner den ersten als "
                   "neuen Ersatz aufsetzen.",
                   kStandbyPage,
                   {}}};
  if (!behind_) return {};
  return {Threat{kStandby,
                 ThreatLevel::Warning,
                 "Ersatzserver im Rückstand",
                 QString("Der Ersatzserver ist im Rückstand: %1.").arg(backlogText(state)),
                 "Fällt der Server jetzt aus, fehlt dem Ersatz, was er noch nicht hat.",
                 "Netz zwischen den beiden Rechnern, Belastung und Platz auf dem Ersatzserver prüfen.",
                 kStandbyPage,
                 {}}};
}

Threat ServerSource::silence(const QDateTime& since) const {
  return silentServer(QString("Der Server antwortet seit %1 nicht.").arg(timeText(since)));
}

}  // namespace qk

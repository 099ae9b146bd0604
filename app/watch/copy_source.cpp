#include "app/watch/copy_source.h"

#include <QDir>

#include "app/watch/watch_texts.h"

namespace qk {

namespace {

const QString kKey = "sicherung";
const QString kPage = "stoerungen.html#sicherung";
constexpr int kOldIntervals = 3;

Threat calm(const QString& line, const QString& what) {
  return {kKey, ThreatLevel::Calm, line, what, {}, {}, kPage, {}};
}

Threat warning(const CopyState& state, const QString& line, const QString& what) {
  return {
      kKey,
      ThreatLevel::Warning,
      line,
      what,
      "Fällt der Rechner oder der Server jetzt aus, ist verloren, was seit der letzten Sicherung dazukam.",
      QString("Den Ordner der Sicherungen prüfen: %1. Fehlt er, oder ist er voll, in den "
              "Einstellungen einen anderen wählen.")
          .arg(QDir::toNativeSeparators(state.folder)),
      kPage,
      {}};
}

QString lastText(const CopyState& state, const QDate& today) {
  if (!state.lastProven.isValid()) return "Bisher gibt es keine geprüfte Sicherung.";
  return QString("Die letzte geprüfte Sicherung ist von %1: %2.")
      .arg(timeText(state.lastProven, today), QDir::toNativeSeparators(state.file));
}

Threat finding(const CopyState& state, const QDateTime& opened, const QDateTime& now) {
  const QDate today = now.date();
  if (!state.enabled)
    return calm("Sicherung aus",
                "Sicherungen sind in den Einstellungen abgeschaltet. " + lastText(state, today));
  const bool proven = state.lastProven.isValid();
  const QDateTime fresh = state.upToDate.isValid() ? state.upToDate : opened;
  const bool old = fresh.secsTo(now) > kOldIntervals * std::chrono::seconds(state.interval).count();
  if (!state.trouble.isEmpty())
    return warning(state, "Sicherung misslungen", state.trouble + ' ' + lastText(state, today));
  if (old)
    return warning(state, proven ? "Sicherung alt: " + timeText(state.lastProven, today) : "Keine Sicherung",
                   QString("Seit mehr als %1 Minuten ist keine neue Sicherung fertig geworden. ")
                           .arg(kOldIntervals * state.interval.count()) +
                       lastText(state, today));
  if (!proven) return calm("Noch keine Sicherung", "Die erste Sicherung ist noch nicht fertig.");
  return calm("Sicherung " + timeText(state.lastProven, today),
              lastText(state, today) +
                  (state.upToDate > state.lastProven
                       ? QString(" Bis %1 hat sich nichts geändert.").arg(timeText(state.upToDate, today))
                       : QString()));
}

}  // namespace

std::vector<Threat> copyFindings(const CopyState& state, const QDateTime& opened, const QDateTime& now) {
  std::vector<Threat> found;
  if (!state.openedCopy.isEmpty())
    found.push_back({"kopie", ThreatLevel::Calm, "Sicherung geöffnet", state.openedCopy, {}, {}, kPage, {}});
  found.push_back(finding(state, opened, now));
  return found;
}

void CopySource::tell(const CopyState& state) {
  const std::lock_guard guard(lock_);
  state_ = state;
}

QString CopySource::folder() const {
  const std::lock_guard guard(lock_);
  return state_ && state_->enabled ? state_->folder : QString();
}

std::vector<Threat> CopySource::look(const QDateTime& now) {
  const std::lock_guard guard(lock_);
  return state_ ? copyFindings(*state_, opened_, now) : std::vector<Threat>();
}

/// It waits for nobody, so nobody waits for it.
Threat CopySource::silence(const QDateTime&) const {
  return calm("Sicherung ungewiss", "Der Stand der Sicherungen ist nicht bekannt.");
}

}  // namespace qk

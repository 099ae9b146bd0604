#include "app/watch/exchange_source.h"

#include <algorithm>
#include <utility>

#include "app/watch/watch_texts.h"

namespace qk {

namespace {

const QString kPage = "stoerungen.html#austauschordner";
const QString kNothingHeard =
    "Keine Linie hört ihre Station, und kein Befehl geht hinaus. Die Stationen halten ihre Schüsse so lange "
    "fest.";
const QString kCheck = "Netz, Freigabe und Optionen - Intarso Netzwerkpfad prüfen.";

}  // namespace

ExchangeSource::ExchangeSource(std::shared_ptr<Storage> storage, std::function<QString()> folder)
    : storage_(std::move(storage)), folder_(std::move(folder)) {}

bool ExchangeSource::isThere() {
  if (looks_++ % kLooksAListing != 0) return storage_->isThere(lookedAt_);
  const std::optional<std::chrono::milliseconds> time = storage_->timeOfListing(lookedAt_);
  if (!time) return false;
  times_.push_back(*time);
  if (times_.size() > kListings) times_.pop_front();
  return true;
}

/// Of fewer than all listings nothing is said yet.
std::chrono::milliseconds ExchangeSource::median() const {
  if (times_.size() < kListings) return {};
  std::vector<std::chrono::milliseconds> sorted(times_.begin(), times_.end());
  const auto middle = sorted.begin() + kListings / 2;
  std::nth_element(sorted.begin(), middle, sorted.end());
  return *middle;
}

void ExchangeSource::forget() {
  times_.clear();
  looks_ = 0;
  slow_ = false;
}

std::vector<Threat> ExchangeSource::look(const QDateTime&) {
  const QString folder = folder_();
  if (std::exchange(lookedAt_, folder) != folder) forget();
  if (!isThere()) {
    forget();
    return {Threat{Key,
                   ThreatLevel::Grave,
                   "Austauschordner fehlt",
                   QString("Der Austauschordner »%1« ist nicht da.").arg(folder),
                   kNothingHeard,
                   kCheck,
                   kPage,
                   {}}};
  }
  slow_ = median() > (slow_ ? kQuick : kSlow);
  if (!slow_) return {};
  return {
      Threat{Key,
             ThreatLevel::Warning,
             "Austauschordner langsam",
             QString("Der Austauschordner »%1« braucht für eine Antwort %2; üblich sind wenige Tausendstel.")
                 .arg(folder, secondsText(median())),
             "Jede Linie sieht dort jede Sekunde nach. Schüsse kommen spät, und das Fenster stockt. Oft "
             "fällt der Ordner danach ganz aus.",
             "Belastung des Netzes und des Rechners prüfen, auf dem der Ordner liegt: große Kopien, "
             "Virenprüfung, ein Kabel, das wackelt.",
             kPage,
             {}}};
}

Threat ExchangeSource::silence(const QDateTime& since) const {
  return {Key,
          ThreatLevel::Grave,
          "Austauschordner hängt",
          QString("Der Austauschordner antwortet seit %1 nicht.").arg(timeText(since)),
          kNothingHeard,
          kCheck,
          kPage,
          {}};
}

}  // namespace qk

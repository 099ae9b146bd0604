#include "app/watch/threat_book.h"

#include <algorithm>

namespace qk {

namespace {

std::vector<ThreatBook::Entry>::iterator entryOf(std::vector<ThreatBook::Entry>& entries,
                                                 const QString& key) {
  return std::find_if(entries.begin(), entries.end(),
                      [&](const ThreatBook::Entry& entry) { return entry.threat.key == key; });
}

void join(Threat& threat, const Threat& other) {
  QStringList things = threat.things + other.things;
  things.removeDuplicates();
  const QString consequence = threat.consequence.contains(other.consequence)
                                  ? threat.consequence
                                  : threat.consequence + ' ' + other.consequence;
  if (other.level > threat.level) threat = other;
  threat.things = things;
  threat.consequence = consequence;
}

bool comesFirst(const ThreatBook::Entry& one, const ThreatBook::Entry& other) {
  return one.threat.level != other.threat.level ? one.threat.level > other.threat.level
                                                : one.since < other.since;
}

}  // namespace

bool ThreatBook::update(const std::vector<Threat>& found, const QDateTime& now) {
  std::vector<Entry> next;
  for (const Threat& threat : found) {
    if (const auto known = entryOf(next, threat.key); known != next.end()) {
      join(known->threat, threat);
      continue;
    }
    const auto before = entryOf(standing_, threat.key);
    // What was only worth knowing begins to threaten now.
    const bool goesOn = before != standing_.end() &&
                        (before->threat.level == ThreatLevel::Calm) == (threat.level == ThreatLevel::Calm);
    next.push_back({threat, goesOn ? before->since : now, {}});
  }
  for (const Entry& entry : standing_) {
    if (entry.threat.level == ThreatLevel::Calm) continue;
    const auto same = entryOf(next, entry.threat.key);
    if (same != next.end() && same->threat.level != ThreatLevel::Calm) continue;
    past_.push_front(entry);
    past_.front().until = now;
  }
  if (past_.size() > kMostPast) past_.resize(kMostPast);
  std::stable_sort(next.begin(), next.end(), comesFirst);
  if (next == standing_) return false;
  standing_ = std::move(next);
  return true;
}

bool ThreatBook::has(const QString& key) const {
  return std::any_of(standing_.begin(), standing_.end(),
                     [&](const Entry& entry) { return entry.threat.key == key; });
}

ThreatLevel ThreatBook::level() const {
  return standing_.empty() ? ThreatLevel::Calm : standing_.front().threat.level;
}

int ThreatBook::count() const {
  return static_cast<int>(std::count_if(standing_.begin(), standing_.end(), [](const Entry& entry) {
    return entry.threat.level != ThreatLevel::Calm;
  }));
}

QString ThreatBook::line() const {
  if (standing_.empty()) return {};
  const int more = count() - 1;
  return standing_.front().threat.line + (more > 0 ? "  +" + QString::number(more) : QString());
}

}  // namespace qk

// What threatens now and since when, and what has passed.
#pragma once

#include <QDateTime>
#include <deque>
#include <optional>
#include <vector>

#include "app/watch/threat.h"

namespace qk {

class ThreatBook {
 public:
  static constexpr size_t kMostPast = 20;

  struct Entry {
    Threat threat;  ///< as it was last
    QDateTime since;
    QDateTime until;  ///< invalid while it stands
    friend bool operator==(const Entry&, const Entry&) = default;
  };

  /// Takes over what is found at a moment; findings of one key become one, with all the things they hit
  /// and all that follows. True
  /// when what is shown has changed.
  bool update(const std::vector<Threat>& found, const QDateTime& now);

  /// The gravest first, of equal ones the oldest.
  const std::vector<Entry>& standing() const { return standing_; }
  /// The latest first. What was calm isn't kept.
  const std::deque<Entry>& past() const { return past_; }

  bool has(const QString& key) const;
  /// Of the gravest; Calm when nothing threatens.
  ThreatLevel level() const;
  /// How many threaten; what is calm doesn't count.
  int count() const;
  /// For the status bar: the gravest, and how many more there are ("Wenig Platz: 312 MB  +2"). Without any
  /// what is calm, or nothing.
  QString line() const;

 private:
  std::vector<Entry> standing_;
  std::deque<Entry> past_;
};

}  // namespace qk

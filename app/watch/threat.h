// What threatens the office, as a value: a line for the status bar, and what the operator wants to know next.
#pragma once

#include <QString>
#include <QStringList>

namespace qk {

enum class ThreatLevel {
  Calm,     ///< nothing threatens; worth knowing all the same ("Sicherung 15:10")
  Warning,  ///< nothing fails yet
  Grave     ///< fails already, or is about to
};

/// Texts are plain and German.
struct Threat {
  QString key;  ///< the same as long as it is the same threat, whatever its figures
  ThreatLevel level = ThreatLevel::Warning;
  QString line;         ///< for the status bar: a few words
  QString what;         ///< what is
  QString consequence;  ///< what happens if nothing is done
  QString remedy;       ///< what to do
  QString page;         ///< of the handbook, with an anchor: "stoerungen.html#platz"
  QStringList things;   ///< what is hit, where several may be: "der Wettkampf"

  friend bool operator==(const Threat&, const Threat&) = default;
};

}  // namespace qk

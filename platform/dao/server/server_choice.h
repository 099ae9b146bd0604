// Which of a server's hosts is worked with: the primary, of what each of them said of itself.
//
// A standby that is made the primary begins a new timeline, one number higher than that of the primary it
// followed. So of two that both call themselves the primary the one on the lower timeline is out of date: it
// came back after it was given up, and what is stored there is lost.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "platform/dao/server/server_address.h"

namespace qk::dao {

struct ServerIdentity {
  QString system;    ///< the same for a server and its standbys; empty where the role may not know
  int timeline = 0;  ///< from 1

  friend bool operator==(const ServerIdentity&, const ServerIdentity&) = default;
};

struct HostAnswer {
  enum class Kind { Silent, Refused, TooOld, Standby, Primary };
  Kind kind = Kind::Silent;
  ServerIdentity identity = {};  ///< of a primary
  QString refusal = {};          ///< of Refused: a German sentence
};

/// What is known before they are asked.
struct ServerKnowledge {
  QString system;  ///< that this program is at work with just now; empty: with none yet
  std::function<int(const QString& system)> timelineOf;  ///< the highest that was ever met; 0: never
};

/// Place of the one to work with, among answers in the order of the address.
std::optional<size_t> primaryAmong(const std::vector<HostAnswer>& answers, const ServerKnowledge& known);
/// Why there is none: German sentences about each host.
QString whyNoPrimary(const ServerAddress& address, const std::vector<HostAnswer>& answers,
                     const ServerKnowledge& known);

/// In words for the operator: that a host said nothing at all.
QString silenceOf(const QString& host);

}  // namespace qk::dao

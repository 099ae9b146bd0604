// What a workstation knows of its servers: the highest timeline that it has met of each, so that a primary
// that comes back after it was given up is told from the one that took over; the server that is worked with
// while connections stand; and which hosts didn't answer a moment ago. Any thread may ask.
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QString>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/dao/server/server_choice.h"

namespace qk::dao {

class ServerMemory {
 public:
  /// Where timelines outlive the program; both are called in any thread, one call at a time.
  struct Keeper {
    std::function<int(const QString& system)> read;  ///< 0 without one
    std::function<void(const QString& system, int timeline)> write;
  };

  /// That of this program.
  static ServerMemory& ofProgram();

  void keepBy(Keeper keeper);

  int timelineOf(const QString& system);
  void learn(const ServerIdentity& identity);
  /// Whether a higher timeline of the same server was met meanwhile.
  bool isOvertaken(const ServerIdentity& identity) const;

  /// While what comes back lives, the server of the address is that system. Nothing for an unknown one.
  std::shared_ptr<void> hold(const ServerAddress& address, const ServerIdentity& identity);
  /// Empty while nobody holds one.
  QString systemHeld(const ServerAddress& address) const;

  /// Whether the host was asked in vain within the last minute. Then nobody waits for it, so that silence
  /// lasts no longer for it.
  bool wasSilent(const ServerEndpoint& endpoint) const;
  void noteSilence(const ServerEndpoint& endpoint, bool silent);

 private:
  using Holding = std::pair<QByteArray, QString>;  // of an address a system
  static QByteArray keyOf(const ServerAddress& address);
  void release(const Holding& holding);

  mutable std::mutex mutex_;
  Keeper keeper_;
  QHash<QString, int> timelines_;
  std::map<Holding, int> held_;
  std::map<std::pair<QString, int>, QElapsedTimer> silent_;  // by host and port
};

/// Keeps the timelines of the program's memory while it lives.
class KeptTimelines {
 public:
  explicit KeptTimelines(ServerMemory::Keeper keeper) { ServerMemory::ofProgram().keepBy(std::move(keeper)); }
  ~KeptTimelines() { ServerMemory::ofProgram().keepBy({}); }
  KeptTimelines(const KeptTimelines&) = delete;
  KeptTimelines& operator=(const KeptTimelines&) = delete;
};

}  // namespace qk::dao

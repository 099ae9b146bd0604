#include "platform/dao/server/server_memory.h"

#include <algorithm>

namespace qk::dao {

ServerMemory& ServerMemory::ofProgram() {
  static ServerMemory memory;
  return memory;
}

void ServerMemory::keepBy(Keeper keeper) {
  const std::scoped_lock lock(mutex_);
  keeper_ = std::move(keeper);
}

/// Another program of this workstation may have met a higher one.
int ServerMemory::timelineOf(const QString& system) {
  if (system.isEmpty()) return 0;
  const std::scoped_lock lock(mutex_);
  int& known = timelines_[system];
  if (keeper_.read) known = std::max(known, keeper_.read(system));
  return known;
}

void ServerMemory::learn(const ServerIdentity& identity) {
  if (identity.system.isEmpty()) return;
  const std::scoped_lock lock(mutex_);
  const int kept = keeper_.read ? keeper_.read(identity.system) : 0;
  int& known = timelines_[identity.system];
  known = std::max({known, kept, identity.timeline});
  if (keeper_.write && known > kept) keeper_.write(identity.system, known);
}

bool ServerMemory::isOvertaken(const ServerIdentity& identity) const {
  const std::scoped_lock lock(mutex_);
  return identity.timeline < timelines_.value(identity.system);
}

std::shared_ptr<void> ServerMemory::hold(const ServerAddress& address, const ServerIdentity& identity) {
  if (identity.system.isEmpty()) return {};
  const Holding holding{keyOf(address), identity.system};
  {
    const std::scoped_lock lock(mutex_);
    ++held_[holding];
  }
  return {this, [holding](ServerMemory* memory) { memory->release(holding); }};
}

void ServerMemory::release(const Holding& holding) {
  const std::scoped_lock lock(mutex_);
  if (const auto held = held_.find(holding); --held->second == 0) held_.erase(held);
}

QString ServerMemory::systemHeld(const ServerAddress& address) const {
  const std::scoped_lock lock(mutex_);
  const QByteArray key = keyOf(address);
  const auto held = held_.lower_bound({key, {}});
  return held != held_.end() && held->first.first == key ? held->first.second : QString();
}

bool ServerMemory::wasSilent(const ServerEndpoint& endpoint) const {
  constexpr qint64 kMinute = 60'000;
  const std::scoped_lock lock(mutex_);
  const auto silence = silent_.find({endpoint.host, endpoint.port});
  return silence != silent_.end() && !silence->second.hasExpired(kMinute);
}

void ServerMemory::noteSilence(const ServerEndpoint& endpoint, bool silent) {
  const bool remembered = wasSilent(endpoint);
  const std::scoped_lock lock(mutex_);
  if (!silent)
    silent_.erase({endpoint.host, endpoint.port});
  else if (!remembered)
    silent_[{endpoint.host, endpoint.port}].start();
}

/// Whatever else its file says.
QByteArray ServerMemory::keyOf(const ServerAddress& address) {
  ServerAddress place;
  place.endpoints = address.endpoints;
  place.database = address.database;
  return serverAddressText(place);
}

}  // namespace qk::dao

#include "platform/dao/standby.h"

#include "platform/dao/postgres/postgres_connection.h"
#include "platform/dao/postgres/postgres_standby.h"
#include "platform/dao/shared_passwords.h"

namespace qk::dao {
std::optional<StandbyState> standbyOf(const QString& path, int patience) {
  const std::optional<ServerAddress> address = serverAddressIn(path);
  if (!address) return {};
  OpenOptions options;
  options.readOnly = true;
  options.patience = patience;
  PostgresConnection connection(*address, SharedPasswords::supplied(options));
  const StandbyState state = standbyOf(connection);
  if (address->endpoints.size() == 1 && !state.connected && !state.synchronous) return {};
  return state;
}

}  // namespace qk::dao

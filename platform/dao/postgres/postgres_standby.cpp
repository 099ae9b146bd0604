#include "platform/dao/postgres/postgres_standby.h"

#include "platform/dao/postgres/postgres_connection.h"

namespace qk::dao {
namespace {

/// The best of the standbys, and one row without any. A role without the right to know gets a row of Nulls
/// for each. How far back one is that says nothing tells the time since its last word.
const QString kBest =
    "SELECT s.pid IS NOT NULL, s.application_name, pg_wal_lsn_diff(pg_current_wal_lsn(), s.flush_lsn)::int8, "
    "extract(epoch FROM greatest(s.flush_lag, clock_timestamp() - s.reply_time))::float8, "
    "s.state IS NOT NULL AND s.sync_state NOT IN ('sync', 'quorum'), "
    "current_setting('synchronous_standby_names') <> '' "
    "FROM (SELECT 1) AS always LEFT JOIN pg_stat_replication AS s ON s.state IS DISTINCT FROM 'backup' AND "
    "s.application_name IS DISTINCT FROM 'pg_basebackup' "
    "ORDER BY s.sync_state IN ('sync', 'quorum') DESC NULLS LAST, 3 NULLS LAST LIMIT 1";

StandbyState stateIn(const QVariantList& row) {
  StandbyState state;
  state.connected = row[0].toBool();
  state.name = row[1].toString();
  state.synchronous = row[5].toBool();
  state.commitsWait = state.synchronous && (!state.connected || row[4].toBool());
  if (!row[2].isValid()) return state;
  state.bytesBehind = row[2].toLongLong();
  if (*state.bytesBehind == 0)
    state.behind = std::chrono::seconds(0);
  else if (row[3].isValid())
    state.behind = std::chrono::seconds(static_cast<qint64>(row[3].toDouble()));
  return state;
}

}  // namespace

StandbyState standbyOf(PostgresConnection& connection) {
  StandbyState state;
  connection.read(kBest, {}, [&](const QVariantList& row) {
    state = stateIn(row);
    return true;
  });
  return state;
}

}  // namespace qk::dao

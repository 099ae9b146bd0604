// What a server knows of its standby.
#pragma once

#include "platform/dao/server/standby_state.h"

namespace qk::dao {

class PostgresConnection;

StandbyState standbyOf(PostgresConnection& connection);

}  // namespace qk::dao

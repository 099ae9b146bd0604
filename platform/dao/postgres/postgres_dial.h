// Connecting to whichever of a server's hosts is the primary. All are asked at once, so that one which is
// gone costs no time; what each says of itself decides (server_choice.h).
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <memory>
#include <optional>

#include "platform/dao/server/server_memory.h"
#include "platform/runtime/error.h"

struct pg_conn;

namespace qk::dao::postgres {

struct Finish {
  void operator()(pg_conn* connection) const;
};
using Handle = std::unique_ptr<pg_conn, Finish>;

struct Call {
  ServerAddress address;
  std::optional<QString> password;
  QByteArray name;      ///< by which the server lists the connection
  QByteArray settings;  ///< for the session: "-c search_path=dao …"
  std::chrono::milliseconds patience;
};

struct Answer {
  Handle connection;  ///< null when there is no primary
  qsizetype endpoint = 0;
  ServerIdentity identity;
  bool waitsForStandby = false;  ///< confirms a commit only when a standby has it
  enum class Password { Fine, Wanted, Wrong } password = Password::Fine;  ///< where there is no connection
  Error failure{0};                                                       ///< likewise: 3043 or 3343
};

/// Without a message from the client library: its words are the workstation's language, or English.
Answer dial(const Call& call, ServerMemory& memory);

}  // namespace qk::dao::postgres

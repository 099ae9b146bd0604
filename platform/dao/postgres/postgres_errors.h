// What PostgreSQL says, in the numbers of the classic engine.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/dao/server/server_address.h"
#include "platform/runtime/error.h"

namespace qk::dao::postgres {

/// Asked while another call waits.
inline constexpr int kBusy = errors::kLocked;

/// state: the SQLSTATE; message: the server's own words, kept for what has no number.
Error errorOf(const QByteArray& state, const QString& message);
/// Whether the state says that the server has ended this connection.
bool isLoss(const QByteArray& state);

/// The SQLSTATE at the end of a client's message that ends with one; else empty.
QByteArray stateIn(const QString& message);
bool isWrongPassword(const QByteArray& state);
/// Why a server refused a connection, in words for the operator: by the state where the server gave one, else
/// by the client's message, which stands there as it is when it says something unknown.
QString refusalOf(const ServerAddress& address, qsizetype endpoint, const QByteArray& state,
                  const QString& message);

}  // namespace qk::dao::postgres

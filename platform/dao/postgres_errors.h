// What PostgreSQL says, in the numbers of the classic engine.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/runtime/error.h"

namespace qk::dao::postgres {

/// The connection is gone: whether the statement went through is open.
inline constexpr int kConnectionLost = 3043;
inline constexpr int kNoLogin = 3029;

/// state: the SQLSTATE; message: the server's own words, kept for what has no number.
Error errorOf(const QByteArray& state, const QString& message);
/// Whether the state says that the server has ended this connection.
bool isLoss(const QByteArray& state);

}  // namespace qk::dao::postgres

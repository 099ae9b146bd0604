// What SQLite says, in the numbers of the classic engine.
#pragma once

#include <QString>

#include "platform/runtime/error.h"

namespace qk::dao::sqlite {

/// code: extended result code; message: SQLite's own words, kept for what has no number.
Error errorOf(int code, const QString& message);

}  // namespace qk::dao::sqlite

// Errors of a report name its file and, where there is one, the line.
#pragma once

#include "platform/runtime/error.h"

namespace qk::report {

/// "Ungültiges Dateiformat" of the classic run time.
inline constexpr int kInvalidFile = 321;

[[noreturn]] inline void fail(const QString& file, int line, const QString& problem,
                              int number = kInvalidFile) {
  const QString place = line > 0 ? QString("%1, Zeile %2: ").arg(file).arg(line) : file + ": ";
  throw Error(number, place + problem);
}

}  // namespace qk::report

// A missing right to change rows, told as such.
#pragma once

#include <QString>

#include "platform/runtime/error.h"

namespace qk::dao {

/// Runs what changes rows. The engines know one number for every missing right, and its text speaks of
/// reading; here it is 3027, with what the engine says of it.
template <class Change>
auto withRightToWrite(Change&& change) {
  constexpr int kNoRight = 3112, kNotUpdatable = 3027;
  try {
    return change();
  } catch (const Error& error) {
    if (error.number() != kNoRight) throw;
    throw Error(kNotUpdatable, QString(error.description())
                                   .replace(errorDescription(kNoRight),
                                            "Schreiben nicht möglich; keine Schreibberechtigung."));
  }
}

}  // namespace qk::dao

// A missing right to change rows, told as such.
#pragma once

#include <QString>

#include "platform/runtime/error.h"

namespace qk::dao {

/// Runs what changes rows. The engines know one number for every missing right, and its text speaks of
/// reading; here it is 3027, with what the engine says of it.
template <class Change>
auto withRightToWrite(Change&& change) {
  try {
    return change();
  } catch (const Error& error) {
    if (error.number() != errors::kNoReadPermission) throw;
    throw Error(errors::kNotUpdatable, QString(error.description())
                                           .replace(errorDescription(errors::kNoReadPermission),
                                                    "Schreiben nicht möglich; keine Schreibberechtigung."));
  }
}

}  // namespace qk::dao

// A reading that fails says of which field: the number alone sends nobody to the right place.
#pragma once

#include <QString>
#include <QStringView>

#include "platform/runtime/error.h"

namespace qk {

/// Runs the reading of a field; its Error then ends in the field's name and in what stands in it:
/// "Typen unverträglich: Menge „12.3“".
template <class Reading>
auto readNamed(const QString& name, QStringView text, Reading&& reading) {
  try {
    return reading();
  } catch (const Error& error) {
    throw Error(error.number(), error.description() + ": " + name + " „" + text.toString() + "“");
  }
}

}  // namespace qk

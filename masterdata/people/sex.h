// The sex of a shooter as the tables hold it: "M", "W", or nothing.
#pragma once

#include <QString>
#include <optional>

namespace qk {

/// "m", "männlich", "Herr", "w", "weiblich", "f", "Frau" … ; "d", "divers", "x", "-" and nothing give the
/// empty text, which fits classes of both sexes. Nothing for a text that says none of these.
std::optional<QString> sexOf(const QString& text);

}  // namespace qk

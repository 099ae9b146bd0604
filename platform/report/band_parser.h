// The lines of a band: freely placed texts, lines, boxes, pictures and bar codes.
#pragma once

#include "platform/report/line_reader.h"

namespace qk::report {

void parseBandLine(LineReader& words, Band& band);

/// The name of a kind of bar code, if it is one.
std::optional<Symbology> barKindNamed(const QString& name);

}  // namespace qk::report

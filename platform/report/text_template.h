// Texts with values in braces: "Seite {Seite} von {Seiten}", "{Betrag:Währung}", "{Summe(Betrag)}",
// "{Anzahl}". "{{" stands for a brace.
#pragma once

#include "platform/report/definition.h"

namespace qk::report {

/// What is wrong with the text is told by `problem` (empty: nothing).
Template parseTemplate(const QString& text, int line, QString& problem);

/// A lone value: "Betrag", "Summe(Betrag)".
Piece parseValue(const QString& name);

}  // namespace qk::report

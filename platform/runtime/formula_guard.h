// Texts in files that spreadsheets open.
#pragma once

#include <QString>

namespace qk {

/// A text that a spreadsheet would take for a formula gets an apostrophe before it, and a text that has one
/// there already another: so it is never run, and unguarded() gives it back.
QString guarded(const QString& text);
QString unguarded(const QString& cell);

}  // namespace qk

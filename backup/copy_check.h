// Whether a copy that somebody holds in his hands, years later or on another machine, is what was proven.
#pragma once

#include <QString>

#include "backup/evidence.h"

namespace qk {

class Files;

/// The evidence of the copy, which lies beside it and is right, byte by byte. Errors with German texts: 53
/// the copy is missing; 3197 it has no evidence, or isn't what the evidence tells; those of reading.
Evidence requireProven(Files& files, const QString& copy);

/// What can be asked without evidence: that SQLite finds nothing wrong in the whole file. 3049 otherwise.
void requireFlawless(const QString& copy);

}  // namespace qk

// Wounded record lines through the import, in bulk.
#pragma once

#include <QString>

namespace qk::test {

struct FuzzResult {
  int taken = 0;      ///< lines that were still shots
  QString complaint;  ///< what went wrong first; empty when nothing did
};

/// Imports so many lines, each a shot record with a few random wounds, without a database. Whatever comes,
/// the import must neither crash nor let an error out, must leave the object alone on a line too short, and
/// must give each shot the key of its own fields. The same seed gives the same lines.
FuzzResult fuzzImport(quint64 seed, int lines);

}  // namespace qk::test

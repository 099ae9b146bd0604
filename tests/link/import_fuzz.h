// Wounded record lines through the import, in bulk.
#pragma once

#include <QString>

namespace qk::test {

struct FuzzResult {
  int lines = 0;      ///< lines imported
  int taken = 0;      ///< those that were still shots
  int reported = 0;   ///< failures that the import reported
  QString complaint;  ///< what went wrong first; empty when nothing did
};

/// Imports so many lines, each a shot record with a few random wounds, without a database. Whatever comes,
/// the import must neither crash nor let an error out nor report any but a type mismatch or an overflow, must
/// leave the object alone on a line too short, and must give each shot the key of its own fields. The same
/// seed gives the same lines.
FuzzResult fuzzImport(quint64 seed, int lines);

}  // namespace qk::test

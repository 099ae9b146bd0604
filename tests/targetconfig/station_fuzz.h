// Wounded esa_preis.ini and def files through everything that reads them, in bulk.
#pragma once

#include <QString>

namespace qk::test {

struct StationFuzzResult {
  int files = 0;      ///< wounded files that were read
  int titles = 0;     ///< titles that could still be read
  int found = 0;      ///< files that the checker still found
  QString complaint;  ///< what went wrong first; empty when nothing did
};

/// Reads so many wounded files, an esa_preis.ini and a def file by turns, each beside a whole one of the
/// other kind: both readers, what they write again, the firing line, the groups and the checker. Whatever
/// comes, nothing may crash or fail; all three readings must see the same titles; and the checker's rows must
/// hold together. The same seed gives the same files.
StationFuzzResult fuzzStationFiles(quint64 seed, int files);

}  // namespace qk::test

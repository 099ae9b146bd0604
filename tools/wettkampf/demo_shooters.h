// Shooters of a demo competition: plausible people in six clubs, ages spread over all classes.
#pragma once

#include "tools/schema/schema_build.h"
#include "tools/wettkampf/seeded_random.h"

namespace qk {

/// Rows for the table Schützen with the IDs from `firstId` on; start number is ID + 100, once with a letter.
TableData generatedShooters(int count, int firstId, const TableData& classes, SeededRandom& random);

}  // namespace qk

// Shooters of a demo competition: plausible people in six clubs, ages spread over all classes.
#pragma once

#include "masterdata/making/seeded_random.h"
#include "platform/schema/schema_build.h"

namespace qk {

/// Rows for the table Schützen with the IDs from `firstId` on; start number is ID + 100, once with a letter.
TableData generatedShooters(int count, int firstId, const TableData& classes, SeededRandom& random);

}  // namespace qk

// The result grid of a line (`ffErg`): pairs of rows, ring values above, the teilers of the same shots below,
// ten shots a pair; behind them the sums of the row.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "capture/records.h"
#include "link/haeringschuss.h"
#include "platform/grid/text_table.h"
#include "platform/workplace.h"

namespace qk {

/// Fonts and colours of ring rows, teiler rows and sum columns.
struct ResultLook {
  TextTable::CellLook ring, teiler, serie;
};

/// Reads the look from the settings; a failure is reported and leaves what was read so far.
ResultLook LadeSchriftenErgebnisse(const Workplace& workplace);

/// Sizes the grid for the disciplines and hides the rows they don't need.
void FFerg_AufnahmeVorbereiten(const Workplace& workplace, TextTable& ffErg,
                               const KeyedCollection<Disziplin>& disciplines);

/// Columns, titles, labels, fonts and colours for a layout code (capture/discipline_loader.h).
void ErgebnislisteEinrichten(const Workplace& workplace, TextTable& ffErg, const QString& sCode,
                             const ResultLook& look);

/// How many shots the grid holds.
int resultCapacity(const TextTable& ffErg);

/// Empties the grid and writes the shots into it; there must be no more than it holds (Error 9).
void fillResultGrid(TextTable& ffErg, const std::vector<std::shared_ptr<HaeringSchuss>>& shots);

/// Empties the cells; header and labels stay.
void clearResultGrid(TextTable& ffErg);

}  // namespace qk

// What a line shows beside its result grid (capture/result_grid.h): the open shots (`flex`) and the lists of
// best results. The views hold nothing of their own but the row data of `flex`.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "capture/open_shots.h"
#include "capture/transfer.h"
#include "platform/grid/text_table.h"
#include "platform/workplace.h"

namespace qk {

/// Header, widths and the tick column of the grid of open shots; drops its rows.
void FlexEinrichten(TextTable& flex);

/// The cells of a shot's row, the tick empty.
QStringList shotCells(const HaeringSchuss& schuss);

/// Adds the shot to the grid and, under its `Key`, to the collection. One that the collection refuses has no
/// row in the grid either. False when the operator aborted.
bool TransferInGrid(const Workplace& workplace, TextTable& flex, ShotCollection& shots,
                    const std::shared_ptr<HaeringSchuss>& schuss);

/// The lists of best results. `serien` and `teiler` are sorted by text, `beste` stands as worked out.
struct BestResults {
  QStringList beste;   ///< lstBesteErg
  QStringList serien;  ///< LstBesteErgSerien
  QStringList teiler;  ///< LstBesteErgTeiler
};

/// Rebuilds `serien` and `teiler` from the pending results, then `beste`.
void PruefeBesteErgebnisse(const Workplace& workplace, const PendingResults& pending, BestResults& lists);
/// Rebuilds `beste`: for each discipline its largest series, then for each its smallest teiler.
void ErmittleBesteErgebnisse(const Workplace& workplace, BestResults& lists);
void LeereBesteErgebnisse(BestResults& lists);

}  // namespace qk

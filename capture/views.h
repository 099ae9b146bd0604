// What a line shows, on the data of its grids: the open shots (`flex`), the ticked shots in rows of ten
// (`ffErg`) and the lists of best results. Views hold nothing of their own but the row data of `flex`.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>
#include <memory>

#include "capture/open_shots.h"
#include "capture/records.h"
#include "capture/transfer.h"
#include "platform/grid/text_table.h"
#include "platform/workplace.h"

namespace qk {

/// Header, widths and the tick column of the grid of open shots; drops its rows.
void FlexEinrichten(TextTable& flex);

/// The cells of a shot's row, the tick empty.
QStringList shotCells(const HaeringSchuss& schuss);

/// Adds the shot to the grid and, under its `Key`, to the collection. False when the operator aborted.
bool TransferInGrid(const Workplace& workplace, TextTable& flex, ShotCollection& shots,
                    const std::shared_ptr<HaeringSchuss>& schuss);

/// Fonts, colours and widths (twips) of the result grid, as the settings say.
struct ResultLook {
  TextTable::CellLook ring, teiler, serie;
};
ResultLook LadeSchriftenErgebnisse(const Workplace& workplace);

/// Sizes the result grid for the disciplines: pairs of rows for ten shots each.
void FFerg_AufnahmeVorbereiten(const Workplace& workplace, TextTable& ffErg,
                               const KeyedCollection<Disziplin>& disciplines);

/// Columns, titles, labels, fonts and colours of the result grid for a layout code.
void ErgebnislisteEinrichten(const Workplace& workplace, TextTable& ffErg, const QString& sCode,
                             const ResultLook& look);

/// How many shots the result grid holds.
int resultCapacity(const TextTable& ffErg);

/// Writes the shots into the (emptied) result grid, ten a row, with both sums behind them.
void fillResultRow(TextTable& ffErg, const std::vector<std::shared_ptr<HaeringSchuss>>& shots);

/// Empties the cells of the result grid; header and labels stay.
void clearResultGrid(TextTable& ffErg);

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

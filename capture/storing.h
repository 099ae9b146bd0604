// Pending results become rows of `Schuss` and `SchussSerien`, the ticked shots a picture in `Grafik_Scheibe`
// and `Grafik_Schuss`. Nothing runs in a transaction: a failure halfway leaves the rows written so far, and
// storing twice gives two rows.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "capture/open_shots.h"
#include "capture/transfer.h"
#include "platform/dao/database.h"
#include "platform/workplace.h"

namespace qk {

/// How many results became rows, by their kind.
struct StoredResults {
  int serien = 0, teiler = 0, ringTeiler = 0;
};

/// Appends the pending results. Nothing when there are none (a box says so) or the operator aborted; ignoring
/// a failure, which gives a result up, asks once more.
std::optional<StoredResults> SpeichereErgebnisse(const Workplace& workplace, dao::Database* db,
                                                 const PendingResults& pending);

/// Who stands on the picture, as the line's labels show it.
struct PictureCaption {
  QString sStartnummer, sName, sVerein;
};

/// What was stored, in a sentence; empty when nothing was. `booked` is the number of shots booked with it,
/// nothing where they stay open.
QString storedText(const StoredResults& stored, const QString& schuetze, std::optional<int> booked);

/// Writes one target picture of the shots ticked at this moment.
bool SpeichernInGrafikDatenbank(const Workplace& workplace, dao::Database* db, const PictureCaption& caption,
                                const ShotCollection& shots);

}  // namespace qk

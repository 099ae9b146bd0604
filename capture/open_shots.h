// The store of shots: table `Haering_Daten` holds every shot ever received, a line's collection holds its
// open ones, neither booked nor discarded, in the order of the grid of shots.
//
// Each routine reports its own failures in a box (abort, retry, ignore) and answers false when the operator
// gave up; no Error leaves one of them, unless it says so. Each written row is one commit.
#pragma once

#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "link/haeringschuss.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/grid/text_table.h"
#include "platform/runtime/collection.h"
#include "platform/workplace.h"

namespace qk {

using ShotCollection = KeyedCollection<HaeringSchuss>;

/// Fills the shot from the row the recordset stands on; the parts of the ring value are worked out anew.
bool LadeHaeringSchuss(const Workplace& workplace, const dao::Recordset& rs, HaeringSchuss& schuss);

/// Appends a row, open, and puts its ID into the shot.
bool SpeichereHaeringSchuss(const Workplace& workplace, dao::Database* db, HaeringSchuss& schuss);

/// Writes the shot's start number into its row.
bool UpdateHaeringStartnummer(const Workplace& workplace, dao::Database* db, const HaeringSchuss& schuss);

/// Marks the row discarded, now; nothing when there is no such row. Collection and grid stay.
bool VerwerfeHaeringSchuss(const Workplace& workplace, dao::Database* db, const HaeringSchuss& schuss);

/// Marks every ticked open shot booked, now, and takes it out of grid and collection. How many rows bear the
/// mark (a row that was deleted can't); nothing when the operator aborted.
std::optional<int> VerbucheHaeringSchuss(const Workplace& workplace, dao::Database* db, ShotCollection& shots,
                                         TextTable& flex);

/// Which of the lines 1 to nLinien have open shots, in one question. Errors pass.
QSet<int> LinienMitOffenenSchuessen(dao::Database& db, int nLinien);

/// The three queries of a restart, of one line. Counts and texts are 0 and empty when the routine was
/// aborted.
std::int16_t AnzahlOffeneSchuesse(const Workplace& workplace, dao::Database* db, std::int16_t nLinie);
QString StartnummerOffeneSchuesse(const Workplace& workplace, dao::Database* db, std::int16_t nLinie);
/// Hands each open shot of the line to `take`, by the texts of date and time.
bool LadeOffeneSchuesse(const Workplace& workplace, dao::Database* db, std::int16_t nLinie,
                        const std::function<void(std::shared_ptr<HaeringSchuss>)>& take);

}  // namespace qk

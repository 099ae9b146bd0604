// Loading disciplines, shooters and the check lists of a competition (the module BasisFunktionalitaeten).
// Failures of the store (qk::Error) pass to the caller. Null in a column reads as 0 or the empty text.
#pragma once

#include <QString>
#include <memory>

#include "app/ground/list_order.h"
#include "capture/check_list.h"
#include "capture/records.h"
#include "platform/dao/database.h"

namespace qk {

/// The discipline with its admitted classes and weapons, or nothing when there is no such row.
std::shared_ptr<Disziplin> LadeDisziplin(dao::Database& db, std::int32_t nID);

/// The short form waits for a window that shows it: every caller so far takes the name.
enum class KlassenNameForm { Klasse, Kurzform };

/// The shooter with club, team and class names, or nothing when the start number is unknown.
std::shared_ptr<Schuetze> LadeSchuetze(dao::Database& db, const QString& sStartnummer,
                                       KlassenNameForm form = KlassenNameForm::Klasse);

/// Both refill the list: names as text, ids as number, nothing ticked.
void FuelleDisziplinListe(dao::Database& db, CheckList& list, ListOrder order = ListOrder::Position);
void FuelleKombinationsListe(dao::Database& db, CheckList& list, ListOrder order = ListOrder::Position);

/// What the lines offer for choosing.
struct CompetitionLists {
  CheckList disciplines, combinations;
};
std::shared_ptr<const CompetitionLists> LadeListen(dao::Database& db, const ListOrders& orders = {});

/// Ticks exactly the disciplines that belong to the ticked combinations.
void WendeKombinationenAn(dao::Database& db, const CheckList& lstKombi, CheckList& lstDiszi);

/// True when the name of a competition on the station ends an entry of either list, whatever the case. A
/// leading "20" is no part of the name; an empty name ends every entry.
bool WettbewerbInListen(const QString& sWettbewerb, const CheckList& lstDiszi, const CheckList& lstKombi);

/// Unticks both lists, then ticks the first discipline that matches and makes it current, or else the first
/// combination that matches, with its disciplines.
void WaehleWettbewerb(dao::Database& db, const QString& sWettbewerb, CheckList& lstDiszi,
                      CheckList& lstKombi);

/// Digits that set the columns of the result grid, each once and in this order: "1" whole rings, "2" tenths,
/// "3" ring-teiler, "4" half tenths.
QString layoutCode(const KeyedCollection<Disziplin>& disciplines);

}  // namespace qk

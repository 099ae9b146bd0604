#include "cash/club_cash.h"

#include "app/ground/feld_wert.h"
#include "app/ground/temp_module.h"
#include "cash/balances.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "shooters/look_ups.h"

namespace qk {

namespace {

Buyer vmAlsKaeufer(CashStore& store, const Payer& payer) {
  const auto gekauft = [&store, payer](qint32 lEinlageID, const QString&) {
    const auto count =
        store.database().openRecordset("Select Count(*) as Anzahl from Kasse_Eingang where " +
                                       payer.bedingung() + " AND KasseID = " + QString::number(lEinlageID));
    return FeldWert(*count, "Anzahl").toInt();
  };
  return {payer, [](qint32) { return true; }, gekauft};
}

}  // namespace

ClubCash::ClubCash(const Workplace& workplace, const Payer& payer)
    : workplace_(workplace),
      payer_(payer),
      payments_(workplace, store_),
      purchase_(workplace, store_, vmAlsKaeufer(store_, payer)) {}

void ClubCash::open(const QString& DataBaseName) {
  store_.openVM(DataBaseName);
  einlagen_ = store_.ladeEinlagen();
  lade();
}

void ClubCash::lade() {
  const bool club = payer_.art() == Payer::Art::Verein;
  const auto row = store_.database().openRecordset(
      QString("Select * from %1 where ID = %2").arg(club ? "Verein" : "Mannschaften").arg(payer_.id()));
  if (row->eof()) throw Error(errors::kNoCurrentRecord, payer_.werfall() + " ist nicht mehr da.");
  if (club) {
    origin_ = FeldWert(*row, "Name").toString();
    name_ = FeldWert(*row, "Kurzname").toString();
    if (name_.isEmpty()) name_ = origin_;
  } else {
    name_ = FeldWert(*row, "MannName").toString();
    origin_ =
        ErmittleVereinsKurzname(store_.database(), workplace_.dialogs, FeldWert(*row, "VereinID").toInt());
  }
  payments_.lade(payer_);
}

Money ClubCash::saldo() {
  return payer_.art() == Payer::Art::Verein ? saldoVerein(store_.database(), payer_.id())
                                            : saldoMannschaft(store_.database(), payer_.id());
}

BookingOutcome ClubCash::verbuche(std::function<void()> druckeBeleg) {
  BookingSides sides;
  sides.druckeBeleg = std::move(druckeBeleg);
  return qk::verbuche(workplace_, store_, purchase_, payer_, sides);
}

Receipt ClubCash::beleg(bool aktuellerKauf) const {
  Receipt receipt;
  receipt.Bez1 = sBez1;
  receipt.Bez2 = sBez2;
  receipt.Ort = sOrt;
  receipt.Name = name_;
  receipt.Verein = origin_;
  receipt.Kasse = aktuellerKauf ? belegZeilen(purchase_.flex(), Buchungsdatum(workplace_))
                                : belegZeilen(payments_.flexAll());
  return receipt;
}

}  // namespace qk

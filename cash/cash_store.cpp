#include "cash/cash_store.h"

#include "app/ground/feld_wert.h"
#include "platform/dao/sql/quote.h"
#include "platform/runtime/error.h"

namespace qk {

void CashStore::open(const QString& path) {
  close();
  auto database = dao::Database::open(path);
  auto schuetzen = database->openRecordset("Select * from Schützenliste");
  auto einlagen = database->openRecordset("Select * from Kasse_Verwaltung where Verein = 0 order by Platz");
  database_ = std::move(database);
  schuetzen_ = std::move(schuetzen);
  einlagen_ = std::move(einlagen);
}

void CashStore::openVM(const QString& path) {
  close();
  auto database = dao::Database::open(path);
  einlagen_ = database->openRecordset("Select * from Kasse_Verwaltung where Verein = -1 order by Platz");
  database_ = std::move(database);
}

void CashStore::close() {
  eingaenge_.reset();
  einlagen_.reset();
  schuetzen_.reset();
  database_.reset();
  spende_ = {};
}

dao::Database& CashStore::database() const {
  if (!database_) throw Error(errors::kObjectNotSet);
  return *database_;
}

dao::Recordset& CashStore::schuetzen() const {
  if (!schuetzen_) throw Error(errors::kObjectNotSet);
  return *schuetzen_;
}

dao::Recordset& CashStore::einlagen() const {
  if (!einlagen_) throw Error(errors::kObjectNotSet);
  return *einlagen_;
}

dao::Recordset* CashStore::eingaenge() const {
  return eingaenge_.get();
}

bool CashStore::findeSchuetze(const QString& sStartNr) {
  const QString criterion = "Startnummer = " + dao::sql::quoted(sStartNr);
  schuetzen().findFirst(criterion);
  if (!schuetzen_->noMatch()) return true;
  // The list was read when the desk was opened; whoever came since stands in a new one.
  auto now = database().openRecordset("Select * from Schützenliste");
  now->findFirst(criterion);
  if (now->noMatch()) return false;
  schuetzen_ = std::move(now);
  return true;
}

bool CashStore::findeEinlage(qint32 id) {
  const QString criterion = "ID = " + QString::number(id);
  einlagen().findFirst(criterion);
  if (!einlagen_->noMatch()) return true;
  einlagen_->requery();  // another desk may have made it meanwhile
  einlagen_->findFirst(criterion);
  return !einlagen_->noMatch();
}

void CashStore::openEingaenge(const Payer& payer) {
  eingaenge_ = database().openRecordset("Select * from Kasse_Eingang where " + payer.bedingung());
}

std::vector<Stake> CashStore::ladeEinlagen() {
  std::vector<Stake> all;
  spende_ = {};
  einlagen().requery();
  for (; !einlagen_->eof(); einlagen_->moveNext()) {
    all.push_back({FeldWert(*einlagen_, "ID").toInt(), FeldWert(*einlagen_, "Bezeichnung").toString()});
    if (all.back().Bezeichnung == kSpende) spende_ = all.back();
  }
  return all;
}

}  // namespace qk

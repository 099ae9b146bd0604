#include "cash/cash_desk.h"

#include "app/ground/feld_wert.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "shooters/class_determination.h"
#include "shooters/look_ups.h"

namespace qk {

CashDesk::CashDesk(const Workplace& workplace, GlobalVariablen& global)
    : workplace_(workplace),
      global_(global),
      payments_(workplace, store_),
      purchase_(workplace, store_, schuetzeAlsKaeufer(workplace, store_, payments_.flexAll())) {}

void CashDesk::OpenDB() {
  store_.open(global_.sWettkampf);
  Q_EMIT opened();
  ladeEinlagen();
}

void CashDesk::ladeEinlagen() {
  einlagen_ = store_.ladeEinlagen();
  Q_EMIT einlagenGeladen();
}

void CashDesk::readShooter(Steps& step, const QString& sVerein, const QString& sMann) {
  ShownShooter shown;
  shown.Verein = sVerein;
  shown.Mann = sMann;
  step([&] {
    const dao::Recordset& row = store_.schuetzen();
    shown.ID = FeldWert(row, "ID").toInt();
    shown.Startnummer = FeldWert(row, "Startnummer").toString();
    shown.Name = FeldWert(row, "Schützen.Name").toString();
    shown.GebDat = FeldWert(row, "GebDat").toString();
    shown.AusweisNr = FeldWert(row, "AusweisNr").toString();
    shown.SPOKEY = FeldWert(row, "SPOKEY").toString();
    shown.VereinsID = FeldWert(row, "VereinsID").toInt();
    shown.lMannID = FeldWert(row, "lMannID").toInt();
  });
  shown.SPOText = ErmittleSPOText(store_.database(), workplace_.dialogs, shown.ID);
  shown.SPO = QString(shown.SPOText).replace("\r\n", " - ");
  shown.Klasse = ErmittleKlassenName(global_, workplace_.dialogs, global_.sWettkampf, sStartNr_);
  shooter_ = shown;
}

bool CashDesk::UpdateStartNr(const QString& sStartNr, const QString& sVerein, const QString& sMann) {
  bool found = false;
  const auto report = fehlerReport(workplace_.dialogs, "Fehler beim Aktualisieren der Schützendaten!");
  const bool ended = reported(report, [&](Steps& step) {
    sStartNr_ = sStartNr;
    if (!store_.isOpen()) step([&] { OpenDB(); });
    step([&] { found = store_.findeSchuetze(sStartNr_); });
    if (!found) return Q_EMIT shooterUnknown();
    // Whatever fails from here on: nothing of the former shooter stands under the new name.
    vm_ = {};
    payments_.leere();
    readShooter(step, sVerein, sMann);
    Q_EMIT shooterShown();
    step([&] {
      vm_ = vmMenu(store_.database(),
                   {shooter_.ID, shooter_.VereinsID, shooter_.lMannID, shooter_.Verein, shooter_.Mann});
    });
    Q_EMIT vmShown();
    step([&] { payments_.lade(sStartNr_); });
    Q_EMIT paymentsShown();
  });
  return ended && found;
}

void CashDesk::ladeSchuetzenNeu() {
  if (!sStartNr_.isEmpty()) UpdateStartNr(sStartNr_, shooter_.Verein, shooter_.Mann);
}

bool CashDesk::istNochDerselbe() {
  if (sStartNr_.isEmpty()) return true;
  const QString before = shooter_.Startnummer, name = shooter_.Name;
  QString now;
  {
    const auto row = database().openRecordset("Select Startnummer from Schützen where ID = " +
                                              QString::number(shooter_.ID));
    if (!row->eof()) now = FeldWert(*row, "Startnummer").toString();
  }
  if (now == before) return true;
  if (now.isEmpty()) {
    // The number may be somebody else's by now: nobody is shown, nor read again under it.
    sStartNr_.clear();
    Q_EMIT shooterUnknown();
    workplace_.dialogs.note(name + " (Startnummer " + before +
                                ") ist nicht mehr zu finden.\r\nEs ist noch nichts verbucht: bitte den "
                                "Schützen neu wählen (F3).",
                            BoxIcon::Exclamation);
    return false;
  }
  wechsleSchuetzen(now);
  workplace_.dialogs.note(name + " hat jetzt die Startnummer " + now + ", nicht mehr " + before +
                              ".\r\nEs ist noch nichts verbucht: bitte prüfen und wiederholen.",
                          BoxIcon::Exclamation);
  return false;
}

void CashDesk::wechsleSchuetzen(const QString& sStartNr) {
  const auto row =
      database().openRecordset("Select * from Schützen where Startnummer = " + dao::sql::quoted(sStartNr));
  if (row->eof()) return workplace_.dialogs.note("Startnummer nicht gefunden!");
  const qint32 VereinsID = FeldWert(*row, "VereinsID").toInt();
  const qint32 lMannID = FeldWert(*row, "lMannID").toInt();
  UpdateStartNr(FeldWert(*row, "Startnummer").toString(),
                ErmittleVereinsKurzname(database(), workplace_.dialogs, VereinsID),
                ErmittleMannschaftsName(database(), workplace_.dialogs, lMannID));
}

}  // namespace qk

#include "cash/purchase.h"

#include <QScopeGuard>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "cash/amounts.h"
#include "cash/article_number.h"
#include "cash/class_release.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

const QString kGespeichert = "gespeichert";

}  // namespace

Buyer schuetzeAlsKaeufer(const Workplace& workplace, CashStore& store, const TextTable& flexAll) {
  const auto darf = [workplace, &store](qint32 lEinlageID) {
    const qint32 KlassenID = FeldWert(store.schuetzen(), "KlassenID").toInt();
    return KassePruefung(store.database(), workplace.dialogs, lEinlageID, KlassenID);
  };
  const auto gekauft = [&flexAll](qint32, const QString& Bezeichnung) {
    int count = 0;
    for (int row = 0; row < flexAll.rows(); ++row)
      count += flexAll.text(row, CashColumn::Bezeichnung) == Bezeichnung ? 1 : 0;
    return count;
  };
  return {Payer(QString()), darf, gekauft};
}

Purchase::Purchase(const Workplace& workplace, CashStore& store, Buyer buyer)
    : workplace_(workplace), store_(store), buyer_(std::move(buyer)) {
  richteKassenTabelleEin(flex_);
  flex_.setColumnWidth(CashColumn::Merkmal, 0);
}

int Purchase::anzahlKaeufe(qint32 lEinlageID, const QString& Bezeichnung) const {
  int count = 0;
  const QString id = QString::number(lEinlageID);
  for (int row = 0; row < flex_.rows(); ++row) count += flex_.rowData(row) == id ? 1 : 0;
  return count + buyer_.gekauft(lEinlageID, Bezeichnung);
}

std::optional<Money> Purchase::fragtBetrag() {
  meldeAufgeschobenes();
  const QString answer = workplace_.dialogs.input("Bitte geben Sie den Betrag ein: ");
  const Money amount = BetragAusText(answer);
  if (amount != Money() || liesZahl(workplace_.settings, keys::Abfrage0Euro) != 1) return amount;
  const bool anyway = workplace_.dialogs.confirm(
      "Sie haben keinen gültigen Betrag eingegeben!\r\nSoll dies dennoch verbucht werden?",
      BoxIcon::Exclamation);
  return anyway ? std::optional(amount) : std::nullopt;
}

void Purchase::AddKauf(qint32 lEinlageID) {
  AddAnzahl(lEinlageID, 1);
}

/// Whoever follows the purchase reckons all of it anew: for many rows once is enough.
void Purchase::AddAnzahl(qint32 lEinlageID, int nAnzahl) {
  const auto told = qScopeGuard([this] { meldeAufgeschobenes(); });
  for (int i = 0; i < nAnzahl; ++i) nimmAuf(lEinlageID);
}

void Purchase::meldeAufgeschobenes() {
  if (std::exchange(aufgeschoben_, false)) UpdateAktGesamt();
}

void Purchase::nimmAuf(qint32 lEinlageID) {
  const bool found = store_.findeEinlage(lEinlageID);
  if (!buyer_.darf(lEinlageID)) return;
  if (!found) return;
  const dao::Recordset& stake = store_.einlagen();
  const QString Bezeichnung = FeldWert(stake, "Bezeichnung").toString();
  const bool VorgabeOffen = FeldWert(stake, "VorgabeOffen").toInt() != 0;
  if (const int Nachkauf = FeldWert(stake, "Nachkauf").toInt(); Nachkauf > 0) {
    const int count = anzahlKaeufe(lEinlageID, Bezeichnung);
    if (count >= Nachkauf) {
      meldeAufgeschobenes();
      workplace_.dialogs.note(
          buyer_.payer.werfall() + " hat die max. Nachkaufmöglichkeit bereits erreicht!\r\n" + Bezeichnung +
              " - " + QString::number(count) + (count == 1 ? " Kauf erlaubt!" : " Käufe erlaubt!"),
          BoxIcon::Information);
      return;
    }
  }
  Money betrag = BetragAusFeld(stake, "Betrag");
  if (betrag == Money()) {
    const std::optional<Money> answer = fragtBetrag();
    if (!answer) return;
    betrag = *answer;
  }
  addRow(Bezeichnung, VorgabeOffen || betragsart_ == Betragsart::OffenePosten, betrag, lEinlageID);
}

void Purchase::AddAnzahlFragen(qint32 lEinlageID) {
  const QString answer = workplace_.dialogs.input("Bitte geben Sie die Anzahl der Käufe ein:", "Einlagen");
  AddAnzahl(lEinlageID, toInt16(ZahlAusText(answer)));
}

void Purchase::AddArtikel(const QString& text) {
  reported(fehlerReport(workplace_.dialogs, "Fehler beim Ermitteln der Artikelnummer!"), [&](Steps& step) {
    std::optional<qint32> id;
    const QString number = ArtikelNummerAusText(text);
    if (number.isEmpty()) return;  // a stake without a number isn't meant by none
    step([&] {
      id.reset();
      const auto hits = store_.database().openRecordset("Select * from Kasse_Verwaltung where ArtikelNr = " +
                                                        dao::sql::quoted(number));
      if (!hits->eof()) id = FeldWert(*hits, "ID").toInt();
    });
    if (id) step([&] { AddKauf(*id); });
  });
}

void Purchase::AddSpende(const Money& betrag) {
  if (betrag == Money()) return;
  addRow(store_.spende().Bezeichnung, false, betrag, store_.spende().id);
  meldeAufgeschobenes();
}

void Purchase::addRow(const QString& Bezeichnung, bool offen, const Money& betrag, qint32 lEinlageID) {
  flex_.addRow(kassenZeile(Bezeichnung, offen, betrag, Buchungsdatum(workplace_)),
               QString::number(lEinlageID));
  aufgeschoben_ = true;
}

void Purchase::entferne(int row) {
  if (row < 1 || row >= flex_.rows()) return;
  flex_.removeRow(row);
  bool anyStored = false;
  for (int left = 1; left < flex_.rows(); ++left) anyStored = anyStored || istGespeichert(left);
  if (!anyStored) flex_.setColumnWidth(CashColumn::Merkmal, 0);
  UpdateAktGesamt();
}

void Purchase::entferneAlle() {
  if (isEmpty()) return;
  flex_.setRows(1);
  flex_.setColumnWidth(CashColumn::Merkmal, 0);
  UpdateAktGesamt();
}

void Purchase::setBetragsart(Betragsart art) {
  betragsart_ = art;
  if (art == Betragsart::OffenePosten)
    for (int row = 1; row < flex_.rows(); ++row) flex_.setText(row, CashColumn::Offen, kOffen);
  if (art == Betragsart::OffenePosten) UpdateAktGesamt();
}

void Purchase::nachEingabe(int row, int column) {
  if (column == CashColumn::Betrag) {
    try {
      BetragAusText(flex_.text(row, column));
    } catch (const Error& error) {
      flex_.setText(row, column, "0");
      workplace_.dialogs.note(error.description(), BoxIcon::Exclamation);
    }
  }
  UpdateAktGesamt();
}

void Purchase::markiereGespeichert(int row) {
  flex_.setColumnWidth(CashColumn::Merkmal, -1);
  flex_.setText(row, CashColumn::Merkmal, kGespeichert);
}

bool Purchase::istGespeichert(int row) const {
  return !flex_.text(row, CashColumn::Merkmal).isEmpty();
}

}  // namespace qk

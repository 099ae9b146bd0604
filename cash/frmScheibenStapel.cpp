#include "cash/frmScheibenStapel.h"

#include "cash/attempt.h"
#include "cash/diszi_kombi.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "ui_frmScheibenStapel.h"

namespace qk {

namespace {

const char* const kNone = "(keine: der Kassierer wählt)";

/// Of an entry of the choice: combination or not, and the id.
QString keyOf(int DisziKombi, qint32 id) {
  return QString("%1 %2").arg(id > 0 ? DisziKombi : 0).arg(qMax(0, id));
}

}  // namespace

frmScheibenStapel::frmScheibenStapel(const Workplace& workplace, dao::Database& database, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      database_(database),
      ui_(std::make_unique<Ui::frmScheibenStapel>()) {
  ui_->setupUi(this);
  connect(ui_->cmdOK, &QAbstractButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QAbstractButton::clicked, this, &QDialog::reject);
}

frmScheibenStapel::~frmScheibenStapel() = default;

void frmScheibenStapel::lade() {
  const auto stack = ladeStapel(database_, lStapelID_);
  if (!stack)
    throw Error(errors::kRecordDeleted,
                "Der Stapel ist nicht mehr da; ein anderer Arbeitsplatz hat ihn gelöscht.");
  before_ = *stack;
  ui_->cmbVorgabe->clear();
  ui_->cmbVorgabe->addItem(kNone, keyOf(0, 0));
  for (const DisziKombi& each : ladeDisziKombi(database_))
    ui_->cmbVorgabe->addItem(each.kombi ? each.name + "  (Kombination)" : each.name,
                             keyOf(each.kombi ? 1 : 0, each.id));
  zeige(eingabeAus(before_));
}

void frmScheibenStapel::zeige(const StackInput& input) {
  setWindowTitle(lStapelID_ == 0 ? QString("Neuer Scheibenstapel") : "Scheibenstapel: " + input.Bezeichnung);
  ui_->txtBezeichnung->setText(input.Bezeichnung);
  ui_->txtScheibentyp->setText(input.Scheibentyp);
  ui_->txtStartnummer->setText(input.Startnummer);
  ui_->txtEndnummer->setText(input.Endnummer);
  ui_->txtAktuelleNummer->setText(input.AktuelleNummer);
  const QString key = keyOf(input.DisziKombi, input.VorgabeID);
  if (ui_->cmbVorgabe->findData(key) < 0)  // it mustn't get lost by being looked at
    ui_->cmbVorgabe->addItem(QString("(gelöscht: Nummer %1)").arg(input.VorgabeID), key);
  ui_->cmbVorgabe->setCurrentIndex(ui_->cmbVorgabe->findData(key));
  ui_->chkAnzeigen->setChecked(input.Anzeigen);
  ui_->txtPCAnzeige->setText(input.PCAnzeige);
  ui_->txtSortierung->setText(input.Sortierung);
  ui_->txtBezeichnung->setFocus();
  shown_ = eingabe();
}

StackInput frmScheibenStapel::eingabe() const {
  const QStringList key = ui_->cmbVorgabe->currentData().toString().split(u' ');
  return {ui_->txtBezeichnung->text(),  ui_->txtScheibentyp->text(),    ui_->txtStartnummer->text(),
          ui_->txtEndnummer->text(),    ui_->txtAktuelleNummer->text(), ui_->txtPCAnzeige->text(),
          ui_->txtSortierung->text(),   key.value(1).toInt(),           key.value(0).toInt(),
          ui_->chkAnzeigen->isChecked()};
}

bool frmScheibenStapel::bearbeite() {
  bool there = false;
  versuche(workplace_, [&] {
    lade();
    there = true;
  });
  return there && exec() == Accepted;
}

/// False where the operator wants to change something first, or has given up storing.
bool frmScheibenStapel::speichere() {
  const TargetStack stack = stapelAus(eingabe(), before_);
  const QStringList doubts = bedenken(stack, ladeAlleStapel(database_));
  if (!doubts.isEmpty() && !workplace_.dialogs.confirm(doubts.join("\r\n") + "\r\nTrotzdem speichern?",
                                                       BoxIcon::Exclamation, BoxAnswer::No))
    return false;
  bool stored = false;
  reported(fehlerReport(workplace_.dialogs, "Fehler beim Speichern des Scheibenstapels!"), [&](Steps& step) {
    stored = step([&] { lStapelID_ = speichereStapel(database_, stack, before_); });
  });
  return stored;
}

void frmScheibenStapel::accept() {
  try {
    if (speichere()) QDialog::accept();
  } catch (const Error& error) {
    workplace_.dialogs.note(error.description(), BoxIcon::Exclamation);
  }
}

void frmScheibenStapel::reject() {
  if (eingabe() == shown_ ||
      workplace_.dialogs.confirm("Die Änderungen am Scheibenstapel sind nicht gespeichert.\r\nVerwerfen?",
                                 BoxIcon::Question, BoxAnswer::No))
    QDialog::reject();
}

}  // namespace qk

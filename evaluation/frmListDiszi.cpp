#include "evaluation/frmListDiszi.h"

#include <QPushButton>

#include "app/ground/feld_wert.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/widgets/empty_text.h"
#include "ui_frmListDiszi.h"

namespace qk {

namespace {

const QString kTeiler = "Select * from Disziplin where Teiler = True";
const QString kSerien = "Select * from Disziplin where Ringe = True AND Teiler = False";

}  // namespace

frmListDiszi::frmListDiszi(const Workplace& workplace, dao::Database& database, QWidget* parent)
    : QDialog(parent), workplace_(workplace), database_(database), ui_(std::make_unique<Ui::frmListDiszi>()) {
  ui_->setupUi(this);
  setEmptyText(ui_->lstDisziplinen, "Keine Disziplinen");
  resize(48 * fontMetrics().averageCharWidth(), 26 * fontMetrics().lineSpacing());
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmListDiszi::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &frmListDiszi::reject);
  connect(ui_->lstDisziplinen, &QListWidget::itemDoubleClicked, this, &frmListDiszi::cmdOK_Click);
  connect(ui_->lstDisziplinen, &QListWidget::itemSelectionChanged, this, &frmListDiszi::showChoice);
}

frmListDiszi::~frmListDiszi() = default;

void frmListDiszi::setChangeAll(bool bChangeAll) {
  bChangeAll_ = bChangeAll;
  ui_->chkAllChange->setChecked(bChangeAll);
}

QListWidgetItem* frmListDiszi::chosen() const {
  return ui_->lstDisziplinen->selectedItems().value(0);
}

QString frmListDiszi::chosenName() const {
  return chosen() ? chosen()->text() : QString();
}

void frmListDiszi::setVisible(bool visible) {
  if (visible && !isVisible()) Form_Load();
  QDialog::setVisible(visible);
}

void frmListDiszi::Form_Load() {
  reported(fehlerReport(workplace_.dialogs, "Fehler beim Ladend der Disziplinen."), [this](Steps&) {
    ui_->lstDisziplinen->clear();
    const auto rows = database_.openRecordset(bTeiler_ ? kTeiler : kSerien);
    for (; !rows->eof(); rows->moveNext()) {
      auto* entry = new QListWidgetItem(FeldWert(*rows, "Name").toString(), ui_->lstDisziplinen);
      const qint32 id = FeldWert(*rows, "ID").toInt();
      entry->setData(Qt::UserRole, id);
      if (id == lId_) ui_->lstDisziplinen->setCurrentItem(entry);
    }
  });
  showChoice();
  ui_->lstDisziplinen->setFocus();
}

/// Nothing is chosen at first where the results stand in a discipline that this list doesn't offer.
void frmListDiszi::showChoice() {
  ui_->cmdOK->setEnabled(chosen() || ui_->lstDisziplinen->count() == 0);
}

/// An empty list has nothing to change to.
void frmListDiszi::cmdOK_Click() {
  lId_ = chosen() ? chosen()->data(Qt::UserRole).toInt() : 0;
  bCopy_ = ui_->chkErgCopy->isChecked();
  bChangeAll_ = ui_->chkAllChange->isChecked();
  accept();
}

void frmListDiszi::reject() {
  lId_ = 0;
  QDialog::reject();
}

}  // namespace qk

#include "targetconfig/frmDisziKZ.h"

#include <QPushButton>
#include <QScreen>

#include "app/ground/global_variablen.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/widgets/empty_text.h"
#include "platform/widgets/hourglass.h"
#include "ui_frmDisziKZ.h"

namespace qk {

namespace {

const QString kQuery = "Select * from MeldeDisziplin order by MeldeKZ";

std::vector<BoundColumn> columns() {
  return {{.field = "MeldeDisziplin", .characters = 34},
          {.field = "MeldeKZ", .characters = 10},
          {.field = "ScheibenKZ", .characters = 10},
          {.field = "TeilerfaktorESA", .characters = 10},
          {.field = "Anzeigen", .characters = 8, .checkBox = true},
          {.field = "Vorbelegen", .characters = 8, .checkBox = true}};
}

}  // namespace

frmDisziKZ::frmDisziKZ(const Workplace& workplace, const GlobalVariablen& global, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      global_(global),
      ui_(std::make_unique<Ui::frmDisziKZ>()),
      rows_(std::make_unique<BoundRows>(
          fehlerReport(workplace_.dialogs, "Fehler beim Bearbeiten der Disziplinen!"))) {
  ui_->setupUi(this);
  rows_->setColumns(columns());
  ui_->TDBGrid1->setRows(rows_.get());
  setEmptyText(ui_->TDBGrid1, "Keine Disziplinen");
  connect(rows_.get(), &BoundRows::counted, this, &frmDisziKZ::showState);
  connect(rows_.get(), &BoundRows::dataChanged, this, &frmDisziKZ::showState);
  connect(ui_->TDBGrid1, &BoundGrid::doubleClicked, this, [this] {
    if (bAuswahl_) cmdOK_Click();
  });
  connect(ui_->cmdHideAll, &QPushButton::clicked, this, [this] { showAll(false, "cmdHideAll_Click"); });
  connect(ui_->cmdShowAll, &QPushButton::clicked, this, [this] { showAll(true, "cmdShowAll_Click"); });
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmDisziKZ::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmDisziKZ::~frmDisziKZ() {
  rows_->disconnect(this);
}

ErrorReport frmDisziKZ::report(const QString& routine) const {
  return fehlerReport(workplace_.dialogs, "Fehler bei " + routine + "_err!");
}

/// What opening has to say is said before the window is there.
void frmDisziKZ::setVisible(bool visible) {
  if (visible && !isVisible()) {
    Form_Load();
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
    ui_->TDBGrid1->setFocus();
  }
  QDialog::setVisible(visible);
}

void frmDisziKZ::Form_Load() {
  bOK_ = false;
  if (sDataBase_ == global_.SystemVerzeichnis + "LeerSA.mdb")
    workplace_.dialogs.note("Das Bearbeiten des Standardvorlage ist derzeit nicht möglich!");
  ui_->lblDatenbank->setText(sDataBase_);
  ui_->cmdOK->setVisible(bAuswahl_);
  ui_->cmdHideAll->setVisible(!bAuswahl_);
  ui_->cmdShowAll->setVisible(!bAuswahl_);
  ui_->cmdCancel->setText(bAuswahl_ ? "&Abbrechen" : "Schließen");
  ui_->TDBGrid1->setUnlocked(!bAuswahl_);
  reported(report("Form_Load"), [this](Steps&) {
    database_ = dao::Database::open(sDataBase_);
    rows_->open(*database_, kQuery);
    rows_->waitForAll();
    const int row = bAuswahl_ && lId_ > 0 ? rows_->findFirst("ID = " + QString::number(lId_)) : 0;
    ui_->TDBGrid1->setCurrentRow(row);
  });
  showState();
}

void frmDisziKZ::cmdOK_Click() {
  reported(report("cmdOK_Click"), [this](Steps&) {
    const int row = ui_->TDBGrid1->currentRow();
    const QVariant id = rows_->value(row, "ID");
    if (!id.isValid()) throw Error(errors::kRecordDeleted);
    sDisziplin_ = rows_->value(row, "MeldeDisziplin").toString();
    sKey_ = rows_->value(row, "MeldeKZ").toString();
    lId_ = id.toInt();
    bOK_ = true;
    accept();
  });
}

void frmDisziKZ::showAll(bool bAnzeigen, const QString& routine) {
  if (!ui_->TDBGrid1->submitRow() || !database_) return;
  {
    const Hourglass hourglass;
    reported(report(routine), [&](Steps& step) {
      const auto rows = database_->openRecordset(kQuery);
      for (; !rows->eof(); rows->moveNext())
        step([&] {
          rows->edit();
          rows->setValue("Anzeigen", bAnzeigen);
          rows->update();
        });
    });
    rows_->refresh();
    rows_->waitForAll();
  }
  ui_->TDBGrid1->setCurrentRow(0);
}

void frmDisziKZ::reject() {
  if (ui_->TDBGrid1->submitRow()) QDialog::reject();
}

void frmDisziKZ::showState() {
  const int count = rows_->count();
  ui_->cmdOK->setEnabled(count > 0);
  ui_->lblStand->setText(rows_->isEdited() ? "geändert: Zeile verlassen speichert, Esc verwirft"
                         : count == 1      ? "1 Disziplin"
                                           : QString("%1 Disziplinen").arg(count));
}

}  // namespace qk

#include "cash/frmKasseSetup.h"

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "ui_frmKasseSetup.h"

namespace qk {

namespace {

struct Choice {
  QCheckBox* box;
  SettingKey key;
};

std::vector<Choice> choicesOf(const Ui::frmKasseSetup& ui) {
  return {{ui.chkAbfrage, keys::Abfrage},
          {ui.chkAufnahme, keys::NeuAufnahme},
          {ui.chkWechsel, keys::AnzeigeWechsel},
          {ui.chkExport, keys::ExportKumulieren},
          {ui.chkAbfrage0Euro, keys::Abfrage0Euro}};
}

}  // namespace

frmKasseSetup::frmKasseSetup(const Workplace& workplace, QWidget* parent)
    : QDialog(parent), workplace_(workplace), ui_(std::make_unique<Ui::frmKasseSetup>()) {
  ui_->setupUi(this);
  for (const Choice& choice : choicesOf(*ui_))
    choice.box->setChecked(liesFlag(workplace_.settings, choice.key));
  connect(ui_->cmdOK, &QAbstractButton::clicked, this, &frmKasseSetup::cmdOK);
  connect(ui_->cmdCancel, &QAbstractButton::clicked, this, &QDialog::reject);
}

frmKasseSetup::~frmKasseSetup() = default;

void frmKasseSetup::cmdOK() {
  try {
    for (const Choice& choice : choicesOf(*ui_))
      schreibe(workplace_.settings, choice.key, choice.box->isChecked());
    accept();
  } catch (const Error& error) {
    workplace_.dialogs.note("Fehler: " + QString::number(error.number()) + " - " + error.description(),
                            BoxIcon::Exclamation, "Fehler");
  }
}

}  // namespace qk

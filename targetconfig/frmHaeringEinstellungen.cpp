#include "targetconfig/frmHaeringEinstellungen.h"

#include <QCheckBox>
#include <QPushButton>
#include <utility>
#include <vector>

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/files.h"
#include "platform/runtime/retry.h"
#include "ui_frmHaeringEinstellungen.h"

namespace qk {

namespace {

std::vector<std::pair<QCheckBox*, SettingKey>> switchesOf(const Ui::frmHaeringEinstellungen& ui) {
  return {{ui.chkDeleteDisziplinenAbmelden, keys::DisziDeleteAbmelden},
          {ui.chkCloseAbfrage, keys::SchliessenSicherheitsabfrage},
          {ui.chkKassenfenster, keys::OpenKassenfenster}};
}

}  // namespace

QString NetzverzeichnisWaehlen(const Workplace& workplace, const QString& start) {
  const QString present = liesText(workplace.settings, keys::Netzverzeichnis);
  const QString chosen =
      workplace.dialogs.chooseFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n" + present, start);
  return chosen.isEmpty() ? chosen : withTrailingSeparator(chosen);
}

frmHaeringEinstellungen::frmHaeringEinstellungen(const Workplace& workplace, QWidget* parent)
    : QDialog(parent), workplace_(workplace), ui_(std::make_unique<Ui::frmHaeringEinstellungen>()) {
  ui_->setupUi(this);
  connect(ui_->cmdHaeringPfad, &QPushButton::clicked, this, &frmHaeringEinstellungen::cmdHaeringPfad_Click);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmHaeringEinstellungen::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

  const Settings& settings = workplace_.settings;
  ui_->lblHaeringNetzwerkpfad->setText(withTrailingSeparator(liesText(settings, keys::Netzverzeichnis)));
  for (const auto& [box, key] : switchesOf(*ui_)) box->setChecked(liesFlag(settings, key));
}

frmHaeringEinstellungen::~frmHaeringEinstellungen() = default;

void frmHaeringEinstellungen::cmdHaeringPfad_Click() {
  const QString chosen = NetzverzeichnisWaehlen(workplace_, ui_->lblHaeringNetzwerkpfad->text());
  if (!chosen.isEmpty()) ui_->lblHaeringNetzwerkpfad->setText(chosen);
}

void frmHaeringEinstellungen::cmdOK_Click() {
  const bool stored =
      reported(fehlerReport(workplace_.dialogs, "Fehler bei cmdOK_Click_err!"), [&](Steps& step) {
        for (const auto& [box, key] : switchesOf(*ui_))
          step([&] { schreibe(workplace_.settings, key, box->isChecked()); });
        step([&] {
          schreibe(workplace_.settings, keys::Netzverzeichnis, ui_->lblHaeringNetzwerkpfad->text());
        });
      });
  if (!stored) return;
  bOK_ = true;
  accept();
}

}  // namespace qk

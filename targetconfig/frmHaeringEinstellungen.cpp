#include "targetconfig/frmHaeringEinstellungen.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSpinBox>
#include <utility>
#include <vector>

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/files.h"
#include "platform/settings/settings.h"
#include "ui_frmHaeringEinstellungen.h"

namespace qk {

namespace {

std::vector<std::pair<QCheckBox*, SettingKey>> switchesOf(const Ui::frmHaeringEinstellungen& ui) {
  return {{ui.chkDeleteDisziplinenAbmelden, keys::DisziDeleteAbmelden},
          {ui.chkCloseAbfrage, keys::SchliessenSicherheitsabfrage},
          {ui.chkKassenfenster, keys::OpenKassenfenster}};
}

/// The folder of the settings. The default of another platform is nobody's folder here: then there is none.
QString presentFolder(const Settings& settings) {
  const SettingKey& key = keys::Netzverzeichnis;
  const QString stored =
      settings.value(key.application.toString(), key.section.toString(), key.key.toString());
  if (!stored.isEmpty()) return stored;
  const QString preset = liesText(settings, key);
  return isForeignPath(preset) ? QString() : preset;
}

}  // namespace

QString NetzverzeichnisWaehlen(const Workplace& workplace, const QString& start) {
  const QString present = presentFolder(workplace.settings);
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
  showFolder(presentFolder(settings));
  for (const auto& [box, key] : switchesOf(*ui_)) box->setChecked(liesFlag(settings, key));
  showCopies();
}

frmHaeringEinstellungen::~frmHaeringEinstellungen() = default;

void frmHaeringEinstellungen::cmdHaeringPfad_Click() {
  const QString chosen = NetzverzeichnisWaehlen(workplace_, folder_);
  if (!chosen.isEmpty()) showFolder(chosen);
}

void frmHaeringEinstellungen::showFolder(const QString& folder) {
  folder_ = folder.isEmpty() ? folder : withTrailingSeparator(folder);
  ui_->lblHaeringNetzwerkpfad->setText(folder_.isEmpty() ? "noch nicht gewählt" : folder_);
}

void frmHaeringEinstellungen::showCopies() {
  copies_ = liesKopien(workplace_.settings);
  ui_->spnKopienMinuten->setRange(kFewestCopyMinutes, kMostCopyMinutes);
  ui_->spnKopienMinuten->setValue(static_cast<int>(copies_.interval.count()));
  ui_->lblKopienOrdner->setText(copies_.folder);
  ui_->chkKopien->setChecked(copies_.enabled);
  const auto enable = [this](bool enabled) {
    for (QWidget* part :
         {static_cast<QWidget*>(ui_->spnKopienMinuten), static_cast<QWidget*>(ui_->lblKopienOrdner),
          static_cast<QWidget*>(ui_->cmdKopienOrdner)})
      part->setEnabled(enabled);
  };
  connect(ui_->chkKopien, &QCheckBox::toggled, this, enable);
  enable(copies_.enabled);
  connect(ui_->cmdKopienOrdner, &QPushButton::clicked, this, &frmHaeringEinstellungen::cmdKopienOrdner_Click);
}

void frmHaeringEinstellungen::cmdKopienOrdner_Click() {
  const QString chosen = workplace_.dialogs.chooseFolder("Bitte den Ordner der Sicherungen auswählen:",
                                                         ui_->lblKopienOrdner->text());
  if (!chosen.isEmpty()) ui_->lblKopienOrdner->setText(withTrailingSeparator(chosen));
}

/// What is as it was isn't stored: the preset of the folder may change with the program's other folders.
void frmHaeringEinstellungen::storeCopies(Steps& step) {
  Settings& settings = workplace_.settings;
  const int minutes = ui_->spnKopienMinuten->value();
  const QString folder = ui_->lblKopienOrdner->text();
  if (ui_->chkKopien->isChecked() != copies_.enabled)
    step([&] { schreibe(settings, keys::KopienAktiv, ui_->chkKopien->isChecked()); });
  if (minutes != copies_.interval.count()) step([&] { schreibe(settings, keys::KopienMinuten, minutes); });
  if (folder != copies_.folder) step([&] { schreibe(settings, keys::KopienOrdner, folder); });
}

void frmHaeringEinstellungen::cmdOK_Click() {
  const bool stored =
      reported(fehlerReport(workplace_.dialogs, "Fehler bei cmdOK_Click_err!"), [&](Steps& step) {
        for (const auto& [box, key] : switchesOf(*ui_))
          step([&] { schreibe(workplace_.settings, key, box->isChecked()); });
        if (!folder_.isEmpty()) step([&] { schreibe(workplace_.settings, keys::Netzverzeichnis, folder_); });
        storeCopies(step);
      });
  if (!stored) return;
  bOK_ = true;
  accept();
}

}  // namespace qk

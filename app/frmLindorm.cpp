#include "app/frmLindorm.h"

#include <QCloseEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <utility>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "app/ground/temp_module_ui.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/files.h"
#include "ui_frmLindorm.h"

namespace qk {

frmLindorm::frmLindorm(const Workplace& workplace, GlobalVariablen& global, QWidget* parent,
                       std::shared_ptr<Storage> storage)
    : QMainWindow(parent),
      workplace_(workplace),
      global_(global),
      ui_(std::make_unique<Ui::frmLindorm>()),
      opening_(workplace, global),
      tree_((ui_->setupUi(this), ui_->tree)),
      marks_(workplace, tree_,
             [this](int nIndex) -> UserControl1* {
               return nIndex >= 0 && nIndex < lineCount() ? &cLine(nIndex) : nullptr;
             }),
      watch_(workplace, std::move(storage), {*this, *ui_->statusbar}) {
  noLine_ = new QLabel("Keine Linie eingerichtet.\n\nOptionen - Schießstände legt die Linien fest.",
                       ui_->panelLinien);
  noLine_->setObjectName("lblKeineLinie");
  noLine_->setAlignment(Qt::AlignCenter);
  ui_->layoutLinien->addWidget(noLine_, 0, 0);
  opening_.onCaption = [this](const QString& caption) { setWindowTitle(caption); };
  opening_.onOpenDialog = [this](Steps& step) {
    if (starting_ && !workplace_.files.exists(sWettkampf()))
      offerCompetition(step);
    else
      mnuDateiWettkampfOpen_Click(step);
  };
  makeToolbar();
  makeKeys();
  connectMenus();
  connectInfoList();
  showLineActions();
  connect(&tree_, &LineTree::nodeClicked, this, [this](int nLinie) {
    reported(clickReport("tree_NodeClick"), [&](Steps&) { ShowControl(static_cast<qint16>(nLinie)); });
  });
  connect(&marks_, &LineMarks::shooterChosen, this, &frmLindorm::Zeige_Schuetzen);
  connectWatch();
}

frmLindorm::~frmLindorm() = default;

bool frmLindorm::form_load(const QString& sCommandLine) {
  bool opened = false;
  const QScopedValueRollback starting(starting_, true);
  reported(fehlerReport(workplace_.dialogs, "Fehler bei form_load_err!"), [&](Steps& step) {
    step([&] { BenutzerRechteLaden(workplace_, global_); });
    loadSplitters();
    ui_->mnuOptHaeringProtokoll->setChecked(liesFlag(workplace_.settings, keys::ProtokollAktiv));
    ui_->mnuHaeringSendeProtokoll->setChecked(liesFlag(workplace_.settings, keys::SendeProtokollAktiv));
    step([&] { OrdnerErmitteln(workplace_, global_); });
    if (!sCommandLine.isEmpty()) {
      ui_->mnuDateiWettkampfOpen->setVisible(false);
      ui_->mnuDateiStrich1->setVisible(false);
    }
    ui_->mnuOptLoadTestDaten->setVisible(
        workplace_.files.exists(global_.Verzeichnis + "ShowHaeringTestImport.txt"));
    if (!setWettkampf(sCommandLine)) return;
    opened = true;
    Load_Settings();
    global_.sWettkampf = sWettkampf();
  });
  return opened;
}

void frmLindorm::loadSplitters() {
  ui_->splitterBreite->setStretchFactor(1, 1);
  ui_->splitterHoehe->setStretchFactor(0, 1);
  PanelGroesseMerken(workplace_, *ui_->splitterBreite, 0, keys::ShowLinienBreite, PanelMass(*this, 36));
  PanelGroesseMerken(workplace_, *ui_->splitterHoehe, 1, keys::ShowLinienHoehe, PanelMass(*this, 26));
}

void frmLindorm::closeEvent(QCloseEvent* event) {
  if (leaving_ || isEvaluating("Das Schließen") || !Form_QueryUnload()) return event->ignore();
  Form_Unload();
  event->accept();
  Q_EMIT unloaded();
}

bool frmLindorm::Form_QueryUnload() {
  bool close = true;
  reported(fehlerReport(workplace_.dialogs, "Fehler bei Form_QueryUnload_err!"), [&](Steps&) {
    QString open;
    for (int index = 0; index < lineCount(); ++index)
      if (const int shots = cLine(index).nOffeneSchuss(); shots > 0)
        open += QString("Linie %1: %2 offene Schuss\r\n").arg(index + 1).arg(shots);
    if (!open.isEmpty()) {
      close = workplace_.dialogs.confirm("Einige Linien haben noch offene Schüsse!\r\n\r\n" + open +
                                             "\r\nDiese stehen beim nächsten Start wieder bei der Linie zur "
                                             "Auswahl?\r\nFenster schließen?",
                                         BoxIcon::Information, BoxAnswer::No);
    } else if (liesFlag(workplace_.settings, keys::SchliessenSicherheitsabfrage)) {
      close = workplace_.dialogs.confirm("Soll QK-Intarso geschlossen werden?");
    }
  });
  return close;
}

void frmLindorm::Form_Unload() {
  reported(fehlerReport(workplace_.dialogs, "Fehler beim Klick Form_Unload_err!"), [&](Steps&) {
    clearLines();
    leaveCompetition();
    opening_.close();
  });
}

}  // namespace qk

#include "masterdata/windows/main_window.h"

#include <QFileInfo>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "app/ground/temp_module_ui.h"
#include "app/shell/competition_choice.h"
#include "app/shell/frmHilfe.h"
#include "masterdata/pages/opened_competition.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "ui_main_window.h"

namespace qk {

MasterDataWindow::MasterDataWindow(const Workplace& workplace, GlobalVariablen& global, QWidget* parent)
    : QMainWindow(parent),
      workplace_(workplace),
      global_(global),
      ui_(std::make_unique<Ui::frmStammdaten>()) {
  ui_->setupUi(this);
  ui_->splitterSeiten->setStretchFactor(1, 1);
  PanelGroesseMerken(workplace_, *ui_->splitterSeiten, 0, keys::BreiteStammdatenSeiten, PanelMass(*this, 26));
  connect(ui_->mnuOeffnen, &QAction::triggered, this, &MasterDataWindow::chooseCompetition);
  connect(ui_->mnuBeenden, &QAction::triggered, this, &QWidget::close);
  connect(ui_->mnuHandbuch, &QAction::triggered, this, [this] { showHandbook("stammdaten.html"); });
}

MasterDataWindow::~MasterDataWindow() = default;

ErrorReport MasterDataWindow::report(const QString& what) const {
  return fehlerReport(workplace_.dialogs, what);
}

QString MasterDataWindow::lastCompetition() const {
  const QString own = liesText(workplace_.settings, keys::LetzterWettkampfStammdaten);
  return own.isEmpty() ? liesText(workplace_.settings, keys::LetzterWettkampf) : own;
}

bool MasterDataWindow::load(const QString& path) {
  bool opened = false;
  reported(report("Fehler beim Start der Stammdaten!"), [&](Steps& step) {
    step([&] { OrdnerErmitteln(workplace_, global_); });
    const QString wanted = path.isEmpty() ? lastCompetition() : path;
    const QString found =
        workplace_.files.exists(wanted) ? wanted : offeredCompetition(workplace_, global_, wanted);
    opened = !found.isEmpty() && openCompetition(found);
  });
  return opened;
}

bool MasterDataWindow::openCompetition(const QString& path) {
  try {
    auto database = openForMasterData(path);
    setWindowTitle(titleOf(*database, path));
    global_.Datenbank = std::move(database);
  } catch (const Error& error) {
    workplace_.dialogs.note("Der Wettkampf lässt sich nicht öffnen.\n\n" + error.description(),
                            BoxIcon::Exclamation, "Fehler");
    return false;
  }
  global_.sWettkampf = path;
  schreibe(workplace_.settings, keys::LetzterWettkampfStammdaten, path);
  return true;
}

void MasterDataWindow::chooseCompetition() {
  const QString path = chosenCompetition(workplace_, this->path());
  if (!path.isEmpty()) openCompetition(path);
}

void MasterDataWindow::showHandbook(const QString& page) {
  auto* help = findChild<frmHilfe*>({}, Qt::FindDirectChildrenOnly);
  if (!help) help = new frmHilfe(workplace_, Programmverzeichnis() + "handbuch", this);
  if (!page.isEmpty()) help->open(page);
  help->show();
  help->raise();
  help->activateWindow();
}

}  // namespace qk

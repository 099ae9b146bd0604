// What the window of the master data does beside its pages: new competitions, lists, prints.
#include <QFileInfo>

#include "app/ground/temp_module.h"
#include "masterdata/prints/master_prints.h"
#include "masterdata/windows/import_window.h"
#include "masterdata/windows/main_window.h"
#include "masterdata/windows/new_competition.h"
#include "masterdata/windows/shooter_page.h"
#include "platform/dialog/dialogs.h"
#include "ui_main_window.h"

namespace qk {

QString MasterDataWindow::makeNew() {
  const QString folder = path().isEmpty() ? global_.Basisverzeichnis : QFileInfo(path()).path();
  NewCompetition assistant(workplace_, folder, path(), this);
  assistant.exec();
  return assistant.path();
}

void MasterDataWindow::showLists() {
  if (PageWidget* shown = page(); shown && !shown->leave()) return;
  ImportWindow lists(workplace_, *global_.Datenbank, lists::ListKind::Shooters, this);
  lists.exec();
  refresh();
  if (!lists.done().isEmpty()) success_.say(lists.done());
}

void MasterDataWindow::makeOwnMenus() {
  connect(ui_->mnuNeuerWettkampf, &QAction::triggered, this, [this] {
    if (PageWidget* shown = page(); shown && !shown->leave()) return;
    if (const QString made = makeNew(); !made.isEmpty() && openCompetition(made))
      success_.say("Angelegt: " + made);
  });
  connect(ui_->mnuListen, &QAction::triggered, this, &MasterDataWindow::showLists);
  const auto list = [this](QAction* action, MasterList which) {
    connect(action, &QAction::triggered, this,
            [this, which] { MasterPrints(workplace_, reports_, path()).show(which); });
  };
  list(ui_->mnuStartliste, MasterList::Startliste);
  list(ui_->mnuVereinsliste, MasterList::Vereinsliste);
  list(ui_->mnuDisziplinblatt, MasterList::Disziplinblatt);
  // What is typed and not stored would be missing on the card.
  connect(ui_->mnuStartkarten, &QAction::triggered, this, [this] {
    auto* shooters = qobject_cast<ShooterPage*>(page());
    if (shooters && !shooters->leave()) return;
    MasterPrints(workplace_, reports_, path())
        .showStartCards(shooters ? shooters->chosen() : QList<qint64>());
  });
}

}  // namespace qk

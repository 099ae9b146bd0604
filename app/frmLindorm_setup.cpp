// How the main window is put together: toolbar, keys, what is disabled and why.
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

#include "app/frmLindorm.h"
#include "data/icons/icons.h"
#include "platform/widgets/empty_text.h"
#include "ui_frmLindorm.h"

namespace qk {

namespace {

const char* const kNotYet = "In dieser Version noch nicht enthalten.";
const char* const kNoLine = "Keine Linie gewählt: Optionen - Schießstände legt die Linien fest.";
constexpr int kHintMilliseconds = 6000;

}  // namespace

void frmLindorm::makeToolbar() {
  struct Drop {
    QAction* button;
    QAction* all;
  };
  for (QAction* action : ui_->Toolbar1->actions())
    if (!action->isSeparator()) action->setIcon(icon(action->objectName()));
  for (const Drop& drop :
       {Drop{ui_->linienstop, ui_->linienstopAll}, Drop{ui_->anmelden, ui_->anmeldenAll},
        Drop{ui_->abmelden, ui_->abmeldenAll}, Drop{ui_->linienfrei, ui_->linienfreiAll}}) {
    auto* button = qobject_cast<QToolButton*>(ui_->Toolbar1->widgetForAction(drop.button));
    auto* menu = new QMenu(button);
    menu->addAction(drop.all);
    button->setMenu(menu);
    button->setPopupMode(QToolButton::MenuButtonPopup);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  }
  setEmptyText(ui_->lstInfo, "Keine Meldungen der Stationen");
  setEmptyText(ui_->tree, "Keine Linien");
}

void frmLindorm::onKey(int key, const QString& control) {
  auto* shortcut = new QShortcut(QKeySequence(key), this);
  connect(shortcut, &QShortcut::activated, this, [this, control] {
    const int index = Get_AktLinienNummer();
    if (index >= lineCount()) return statusBar()->showMessage(kNoLine, kHintMilliseconds);
    auto* button = cLine(index).findChild<QAbstractButton*>(control);
    if (!button->isEnabled()) return statusBar()->showMessage(button->statusTip(), kHintMilliseconds);
    button->click();
  });
}

void frmLindorm::makeKeys() {
  onKey(Qt::Key_F3, "cmdSchuetzenListe");
  onKey(Qt::Key_F5, "cmdPreisModus");
  onKey(Qt::Key_F6, "cmdSendenSchuetzenDisziplinen");
  onKey(Qt::Key_F7, "cmdNachkauf");
  onKey(Qt::Key_F8, "m_cmdUebertragenTarvex");
  onKey(Qt::Key_F9, "m_cmdSaveTarvex");
  onKey(Qt::Key_F12, "cmdAbmeldenSchuetze");
  connect(new QShortcut(QKeySequence(Qt::Key_F2), this), &QShortcut::activated, this, [this] {
    const int index = Get_AktLinienNummer();
    if (index >= lineCount()) return statusBar()->showMessage(kNoLine, kHintMilliseconds);
    cLine(index).txtStartnummer()->setFocus(Qt::ShortcutFocusReason);
    cLine(index).txtStartnummer()->selectAll();
  });
  ui_->mnuHilfe->setShortcut(Qt::Key_F1);
  const auto step = [this](QKeySequence key, int by) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, [this, by] {
      const int position = tree_.selected() + by;
      if (position < 1 || position > tree_.count()) return;
      tree_.select(position);
      ShowControl(tree_.key(position).remove("Linie").toShort());
    });
  };
  step(QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
  step(QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1);
  auto* keys = new QLabel(
      "F1 Hilfe    F2 Startnummer    F3 Liste    F5 Preismodus    F6 Senden    F7 Nachkauf    F8 Übertragen  "
      "  "
      "F9 Speichern + Verbuchen    F12 Abmelden");
  keys->setObjectName("lblTasten");
  statusBar()->addWidget(keys, 1);
}

void frmLindorm::explain(QAction* action, bool enabled, const QString& why) {
  action->setEnabled(enabled);
  action->setStatusTip(enabled ? action->toolTip() : why);
}

void frmLindorm::disableWithoutTarget() {
  for (QAction* action : {ui_->mnuDateiKurzauswertungPreview, ui_->mnuDateiKurzauswertungPrint,
                          ui_->mnuEditErgebnisse, ui_->Print1, ui_->vorschau, ui_->ErgEdit})
    explain(action, false, kNotYet);
}

void frmLindorm::showLineActions() {
  const bool line = Get_AktLinienNummer() < lineCount();
  noLine_->setVisible(!line);
  for (QAction* action :
       {ui_->Speichern, ui_->Löschen, ui_->linienstop, ui_->anmelden, ui_->abmelden, ui_->linienfrei,
        ui_->schussbild, ui_->mnuEditSchussbilder, ui_->mnuHaeringAktLinieWerbeEIN,
        ui_->mnuHaeringAktLinieWerbeAUS, ui_->mnuHaeringAktWindows, ui_->mnuHaeringAktShutDown,
        ui_->mnuSchussAktWettbewerb, ui_->mnuSchussAlle, ui_->mnuSchussKeinen, ui_->mnuOptLoadTestDaten,
        ui_->mnuEditHaeringOutput})
    explain(action, line, kNoLine);
}

}  // namespace qk

// How the main window is put together: toolbar, keys, what is disabled and why.
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QStatusBar>
#include <QToolButton>

#include "app/frmLindorm.h"
#include "data/icons/icons.h"
#include "platform/widgets/elided_label.h"
#include "platform/widgets/empty_text.h"
#include "ui_frmLindorm.h"

namespace qk {

namespace {

const char* const kNoLine = "Keine Linie gewählt: Optionen - Schießstände legt die Linien fest.";

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
  // These two say nothing; an action without a tip would lend its button its text.
  for (QAction* action : {ui_->exit, ui_->euro}) {
    const auto clear = [button = ui_->Toolbar1->widgetForAction(action)] { button->setToolTip({}); };
    clear();
    connect(action, &QAction::changed, this, clear);
  }
  setEmptyText(ui_->lstInfo, "Keine Meldungen der Stationen");
  setEmptyText(ui_->tree, "Keine Linien");
}

void frmLindorm::onKey(int key, const QString& control) {
  auto* shortcut = new QShortcut(QKeySequence(key), this);
  connect(shortcut, &QShortcut::activated, this, [this, control] {
    const int index = Get_AktLinienNummer();
    if (index >= lineCount()) return statusBar()->showMessage(kNoLine, kStatusMilliseconds);
    auto* button = cLine(index).findChild<QAbstractButton*>(control);
    if (!button->isEnabled()) return statusBar()->showMessage(button->statusTip(), kStatusMilliseconds);
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
    if (index >= lineCount()) return statusBar()->showMessage(kNoLine, kStatusMilliseconds);
    cLine(index).txtStartnummer()->setFocus(Qt::ShortcutFocusReason);
    cLine(index).txtStartnummer()->selectAll();
  });
  onFocusKey(Qt::Key_F4, {"flexHaeringDiszi"});
  onFocusKey(Qt::Key_F10, {"flex"});
  onFocusKey(Qt::Key_F11, {"m_lstDisziTarvex", "m_lstKombiTarvex"});
  ui_->mnuHilfe->setShortcut(Qt::Key_F1);
  ui_->mnuDateiKurzauswertungPreview->setShortcut(Qt::SHIFT | Qt::Key_F9);
  ui_->mnuDateiKurzauswertungPrint->setShortcut(Qt::CTRL | Qt::Key_P);
  // A key that is held down asks for one sheet.
  for (QAction* action : {ui_->mnuDateiKurzauswertungPreview, ui_->mnuDateiKurzauswertungPrint})
    action->setAutoRepeat(false);
  const auto step = [this](QKeySequence key, int by) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, [this, by] {
      const int position = tree_.selected() + by;
      if (position < 1 || position > tree_.count()) return;
      showNode(position);
    });
  };
  step(QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
  step(QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1);
  auto* keys = new ElidedLabel;
  keys->setObjectName("lblTasten");
  keys->setText(
      "F1 Hilfe   F2 Startnummer   F3 Liste   F4 Station   F5 Preismodus   F6 Senden   F7 Nachkauf   "
      "F8 Übertragen   F9 Speichern + Verbuchen   F10 Schüsse   F11 Disziplinen   F12 Abmelden   "
      "Umschalt+F9 Kurzauswertung");
  statusBar()->addWidget(keys, 1);
}

void frmLindorm::onFocusKey(int key, const QStringList& controls) {
  connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this, [this, controls] {
    const int index = Get_AktLinienNummer();
    if (index >= lineCount()) return statusBar()->showMessage(kNoLine, kStatusMilliseconds);
    for (const QString& name : controls)
      if (auto* control = cLine(index).findChild<QWidget*>(name); control->isVisible())
        return control->setFocus(Qt::ShortcutFocusReason);
  });
}

void frmLindorm::explain(QAction* action, bool enabled, const QString& why) {
  action->setEnabled(enabled);
  action->setStatusTip(enabled ? action->toolTip() : why);
}

void frmLindorm::showLineActions() {
  const bool line = Get_AktLinienNummer() < lineCount();
  noLine_->setVisible(!line);
  for (QAction* action : {ui_->Speichern,
                          ui_->Löschen,
                          ui_->linienstop,
                          ui_->anmelden,
                          ui_->abmelden,
                          ui_->linienfrei,
                          ui_->schussbild,
                          ui_->mnuEditSchussbilder,
                          ui_->mnuDateiKurzauswertungPreview,
                          ui_->mnuDateiKurzauswertungPrint,
                          ui_->Print1,
                          ui_->vorschau,
                          ui_->mnuHaeringAktLinieWerbeEIN,
                          ui_->mnuHaeringAktLinieWerbeAUS,
                          ui_->mnuHaeringAktWindows,
                          ui_->mnuHaeringAktShutDown,
                          ui_->mnuSchussAktWettbewerb,
                          ui_->mnuSchussAlle,
                          ui_->mnuSchussKeinen,
                          ui_->mnuOptLoadTestDaten,
                          ui_->mnuEditHaeringOutput})
    explain(action, line, kNoLine);
}

}  // namespace qk

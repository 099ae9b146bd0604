#include "cash/frmScheibenVerwaltung.h"

#include <QScreen>
#include <QShortcut>

#include "app/ground/settings_keys.h"
#include "cash/attempt.h"
#include "cash/frmScheibenStapel.h"
#include "ui_frmScheibenVerwaltung.h"

namespace qk {

frmScheibenVerwaltung::frmScheibenVerwaltung(const Workplace& workplace, dao::Database& database,
                                             QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      database_(database),
      ui_(std::make_unique<Ui::frmScheibenVerwaltung>()),
      stacks_(workplace, database) {
  ui_->setupUi(this);
  ui_->grdStapel->setTable(&stacks_.table());
  ui_->grdStapel->setStretchColumn(StackListColumn::Bezeichnung);
  ui_->grdStapel->setEmptyText("Noch kein Stapel angelegt: Neu...");
  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  connectControls();
}

frmScheibenVerwaltung::~frmScheibenVerwaltung() = default;

void frmScheibenVerwaltung::connectControls() {
  const auto press = [this](QAbstractButton* button, std::function<void()> routine) {
    connect(button, &QAbstractButton::clicked, this, [this, routine] { versuche(workplace_, routine); });
  };
  const auto current = [this] { return stacks_.idOf(ui_->grdStapel->currentRow()); };
  press(ui_->cmdNeu, [this] { bearbeite(0); });
  press(ui_->cmdBearbeiten, [this, current] { bearbeite(current()); });
  press(ui_->cmdLoeschen, [this] {
    const int row = ui_->grdStapel->currentRow();
    if (stacks_.loesche(row)) ui_->grdStapel->setCurrentRow(qMin(row, stacks_.table().rows() - 1));
    knoepfe();
  });
  press(ui_->cmdHoch, [this] { verschiebe(-1); });
  press(ui_->cmdRunter, [this] { verschiebe(1); });
  connect(ui_->cmdClose, &QAbstractButton::clicked, this, &QDialog::reject);
  connect(ui_->grdStapel, &TextGrid::doubleClickedAt, this,
          [this](int row, int) { versuche(workplace_, [&] { bearbeite(stacks_.idOf(row)); }); });
  connect(ui_->grdStapel->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this] { knoepfe(); });
  const auto onKey = [this](int key, QAbstractButton* button) {
    auto* shortcut = new QShortcut(QKeySequence(key), ui_->grdStapel);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
  };
  onKey(Qt::Key_Return, ui_->cmdBearbeiten);
  onKey(Qt::Key_Enter, ui_->cmdBearbeiten);
  onKey(Qt::Key_Insert, ui_->cmdNeu);
  onKey(Qt::Key_Delete, ui_->cmdLoeschen);
  connect(ui_->chkSortiert, &QAbstractButton::clicked, this, [this](bool on) {
    versuche(workplace_, [&] { schreibe(workplace_.settings, keys::SortedScheibenNummern, on); });
  });
  connect(ui_->txtKennung, &QLineEdit::editingFinished, this, [this] {
    const QString mark = ui_->txtKennung->text().trimmed();
    if (mark == liesText(workplace_.settings, keys::LokalePCKennung)) return;
    versuche(workplace_, [&] {
      schreibe(workplace_.settings, keys::LokalePCKennung, mark);
      zeige(stacks_.idOf(ui_->grdStapel->currentRow()));
    });
  });
}

void frmScheibenVerwaltung::setVisible(bool visible) {
  if (visible && !isVisible()) {
    resize(QSize(1000, 520).boundedTo(screen()->availableSize() * 9 / 10));
    Form_Load();
  }
  QDialog::setVisible(visible);
}

void frmScheibenVerwaltung::Form_Load() {
  ui_->chkSortiert->setChecked(liesZahl(workplace_.settings, keys::SortedScheibenNummern) == 1);
  ui_->txtKennung->setText(liesText(workplace_.settings, keys::LokalePCKennung));
  versuche(workplace_, [this] { zeige(0); });
  ui_->grdStapel->setFocus();
}

/// Reads the list anew and stands on that stack, or on the first one.
void frmScheibenVerwaltung::zeige(qint32 id) {
  stacks_.lade();
  const int row = stacks_.rowOf(id);
  if (stacks_.table().rows() > 1) ui_->grdStapel->setCurrentRow(row > 0 ? row : 1);
  knoepfe();
}

void frmScheibenVerwaltung::bearbeite(qint32 id) {
  frmScheibenStapel editor(workplace_, database_, this);
  editor.setLStapelID(id);
  if (editor.bearbeite()) zeige(editor.lStapelID());
  ui_->grdStapel->setFocus();
}

void frmScheibenVerwaltung::verschiebe(int schritt) {
  const qint32 id = stacks_.idOf(ui_->grdStapel->currentRow());
  if (stacks_.verschiebe(ui_->grdStapel->currentRow(), schritt))
    ui_->grdStapel->setCurrentRow(stacks_.rowOf(id));
  knoepfe();
}

void frmScheibenVerwaltung::knoepfe() {
  const int row = ui_->grdStapel->currentRow();
  ui_->cmdBearbeiten->setEnabled(row > 0);
  ui_->cmdLoeschen->setEnabled(row > 0);
  ui_->cmdHoch->setEnabled(row > 1);
  ui_->cmdRunter->setEnabled(row > 0 && row < stacks_.table().rows() - 1);
}

}  // namespace qk

#include "cash/target_panel.h"

#include <QMenu>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTreeView>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module_ui.h"
#include "cash/attempt.h"
#include "platform/look/contrast.h"
#include "ui_target_panel.h"

namespace qk {

namespace {

constexpr int kStackPanel = 0;
constexpr int kStackPanelCharacters = 60;

/// The colour of a node is told; on a dark ground it is made lighter until it can be read.
class ReadableNodes : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const QColor ground = option->palette.color(QPalette::Base);
    option->palette.setColor(QPalette::Text, look::readable(option->palette.color(QPalette::Text), ground));
  }
};

}  // namespace

TargetPanel::TargetPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::TargetPanel>()) {
  ui_->setupUi(this);
  ui_->PicDraw2->setStretchFactor(1, 1);
  ui_->grdScheiben->setStretchColumn(StackColumn::Bezeichnung);
  ui_->grdScheiben->setEmptyText("Kein Scheibenstapel angelegt: Menü Optionen - Verwaltung Scheiben");
  ui_->txtScheibenNummer->setPlaceholderText("Nummer scannen oder eingeben, dann Enter");
}

TargetPanel::~TargetPanel() = default;

void TargetPanel::setDesk(CashDesk& desk) {
  desk_ = &desk;
  numbers_ = std::make_unique<TargetNumbers>(desk);
  ui_->grdScheiben->setTable(&numbers_->grdScheiben());
  SpaltenbreitenMerken(desk.workplace(), *ui_->grdScheiben, keys::KasseScheibenGrid.toString());
  connectControls();
  connectTree(Tree::Diszi);
  connectTree(Tree::Kombi);
  connectNumbers();
}

void TargetPanel::versuche(const std::function<void()>& routine) {
  qk::versuche(desk_->workplace(), routine);
}

QTreeView* TargetPanel::view(Tree which) const {
  return which == Tree::Diszi ? ui_->treeDiszi : ui_->treeKombi;
}

TargetNumbers::View TargetPanel::shown() const {
  const Tree front = ui_->SSTab2->currentIndex() == 0 ? Tree::Diszi : Tree::Kombi;
  const QItemSelectionModel* selection = view(front)->selectionModel();
  return {front, selection->hasSelection() ? selection->currentIndex() : QModelIndex()};
}

void TargetPanel::showNode(Tree which, const QModelIndex& node) {
  ui_->SSTab2->setCurrentIndex(static_cast<int>(which));
  view(which)->scrollTo(node);  // opens its root
}

void TargetPanel::connectControls() {
  const auto press = [this](QAbstractButton* button, std::function<void()> routine, const char* hint) {
    button->setStatusTip(hint);
    connect(button, &QAbstractButton::clicked, this, [this, routine] { versuche(routine); });
  };
  press(
      ui_->cmdScheibeAdd, [this] { numbers_->cmdScheibeAdd(ui_->grdScheiben->currentRow(), shown()); },
      "Gibt die nächste Nummer des gewählten Stapels aus (Enter auf dem Stapel).");
  press(
      ui_->cmdScheibeAddAnzahl,
      [this] { numbers_->cmdScheibeAddAnzahl(ui_->grdScheiben->currentRow(), shown()); },
      "Gibt mehrere Nummern des gewählten Stapels aus.");
  press(
      ui_->cmdScheibeRemove, [this] { numbers_->cmdScheibeRemove(shown()); },
      "Nimmt die gewählte Scheibe zurück (Entf).");
  press(
      ui_->cmdScheibeRemoveAll, [this] { Q_EMIT alleZurueck(); },
      "Nimmt alle noch nicht verbuchten Scheiben zurück.");
  connect(ui_->txtScheibenNummer, &QLineEdit::returnPressed, this, [this] {
    const QString text = ui_->txtScheibenNummer->text();
    ui_->txtScheibenNummer->clear();
    versuche([&] { numbers_->nummerEingegeben(text, shown()); });
    ui_->txtScheibenNummer->setFocus();
  });
  connect(ui_->grdScheiben, &TextGrid::doubleClickedAt, this,
          [this](int row, int) { versuche([&] { numbers_->ScheibeUebergeben(row, shown()); }); });
  connect(ui_->grdScheiben, &TextGrid::contextMenuAt, this, &TargetPanel::stackMenu);
  for (int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* take = new QShortcut(QKeySequence(key), ui_->grdScheiben);
    take->setContext(Qt::WidgetShortcut);
    take->setAutoRepeat(false);  // held, it gives one number
    connect(take, &QShortcut::activated, ui_->cmdScheibeAdd, &QAbstractButton::click);
  }

  const auto keep = [this](QCheckBox* box, bool TargetNumbers::*flag, const SettingKey* key) {
    connect(box, &QCheckBox::toggled, this, [this, flag](bool on) { (*numbers_).*flag = on; });
    if (key)
      connect(box, &QCheckBox::clicked, this,
              [this, key](bool on) { versuche([&] { schreibe(desk_->workplace().settings, *key, on); }); });
  };
  keep(ui_->chkAutoZuordnungScheiben, &TargetNumbers::autoZuordnung, &keys::KasseAutoScheibenZuordnung);
  keep(ui_->chkManuelleNummer, &TargetNumbers::manuelleNummer, &keys::KasseManuelleScheibenNummer);
  // Ticked at each opening: what is scanned shall find its stack.
  keep(ui_->chkScheibenStapelPruefung, &TargetNumbers::stapelPruefung, nullptr);
  ui_->chkScheibenStapelPruefung->setChecked(true);
}

void TargetPanel::connectTree(Tree which) {
  QTreeView* tree = view(which);
  tree->setModel(&numbers_->tree(which));
  tree->setHeaderHidden(true);
  tree->setItemDelegate(new ReadableNodes(tree));
  tree->setDragDropMode(QAbstractItemView::DragDrop);
  tree->setDefaultDropAction(Qt::MoveAction);
  tree->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(tree, &QWidget::customContextMenuRequested, this,
          [this, which](const QPoint& position) { treeMenu(which, position); });
  const auto onKey = [this, tree](const QKeySequence& key, std::function<void()> routine) {
    auto* shortcut = new QShortcut(key, tree);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, routine] { versuche(routine); });
  };
  onKey(Qt::Key_Delete, [this] { numbers_->cmdScheibeRemove(shown()); });
  onKey(QKeySequence::Cut, [this, which] { pickUp(which); });
  onKey(QKeySequence::Paste, [this, which] { putDown(which); });
}

void TargetPanel::connectNumbers() {
  connect(numbers_.get(), &TargetNumbers::hinzugefuegt, this, &TargetPanel::showNode);
  connect(numbers_.get(), &TargetNumbers::zuWaehlen, this,
          [this](Tree which, const QModelIndex& node) { view(which)->setCurrentIndex(node); });
}

void TargetPanel::stackMenu(const QPoint& position) {
  const int row = ui_->grdScheiben->currentRow();
  if (row < 1) return;
  const qint32 id = numbers_->grdScheiben().rowData(row).toInt();
  QMenu menu(this);
  menu.setObjectName("mnuStapel");
  menu.addAction("Neu...", this, [this] { Q_EMIT stapelBearbeiten(0); })->setObjectName("mnuStapelNeu");
  menu.addAction("Bearbeiten...", this, [this, id] { Q_EMIT stapelBearbeiten(id); })
      ->setObjectName("mnuStapelBearbeiten");
  menu.exec(position);
}

void TargetPanel::treeMenu(Tree which, const QPoint& position) {
  const QPersistentModelIndex node = view(which)->indexAt(position);
  if (!TargetTree::isTarget(node)) return;
  view(which)->setCurrentIndex(node);
  QMenu menu(this);
  menu.setObjectName("mnuScheibe");
  menu.addAction("Scheibe zurücknehmen", this,
                 [this] { versuche([this] { numbers_->cmdScheibeRemove(shown()); }); })
      ->setObjectName("mnuScheibeRemove");
  menu.addAction("Nummer ändern...", this, [this, node] { versuche([&] { numbers_->nummerAendern(node); }); })
      ->setObjectName("mnuScheibeNummer");
  menu.addAction("Ausschneiden und mit Strg+V verschieben\tStrg+X", this, [this, which] { pickUp(which); })
      ->setObjectName("mnuScheibeVerschieben");
  menu.exec(view(which)->viewport()->mapToGlobal(position));
}

void TargetPanel::pickUp(Tree which) {
  pickedUp_ = view(which)->currentIndex();
}

void TargetPanel::putDown(Tree which) {
  if (pickedUp_.model() != &numbers_->tree(which)) return;
  const QModelIndex root = TargetTree::rootOf(view(which)->currentIndex());
  const QPersistentModelIndex below = root;
  if (!numbers_->tree(which).move(pickedUp_, root)) return;
  view(which)->expand(below);
  pickedUp_ = QPersistentModelIndex();
}

void TargetPanel::Form_Load() {
  const Workplace& workplace = desk_->workplace();
  PanelGroesseMerken(workplace, *ui_->PicDraw2, kStackPanel, keys::WkKassePicDraw2,
                     PanelMass(*this, kStackPanelCharacters));
  ui_->chkAutoZuordnungScheiben->setChecked(liesFlag(workplace.settings, keys::KasseAutoScheibenZuordnung));
  ui_->chkManuelleNummer->setChecked(liesFlag(workplace.settings, keys::KasseManuelleScheibenNummer));
  numbers_->autoZuordnung = ui_->chkAutoZuordnungScheiben->isChecked();
  numbers_->manuelleNummer = ui_->chkManuelleNummer->isChecked();
}

void TargetPanel::Form_Activate() {
  ui_->SSTab2->setCurrentIndex(liesZahl(desk_->workplace().settings, keys::WkKasseRegister) == 1 ? 1 : 0);
}

void TargetPanel::Form_Unload() {
  versuche(
      [this] { schreibe(desk_->workplace().settings, keys::WkKasseRegister, ui_->SSTab2->currentIndex()); });
  numbers_->close();
}

void TargetPanel::focusNumber() {
  ui_->txtScheibenNummer->setFocus();
}

void TargetPanel::LoadDisziKombiBaum(const std::vector<DisziKombi>& entries) {
  numbers_->LoadDisziKombiBaum(entries);
}

void TargetPanel::LoadScheibenStapel() {
  Q_EMIT stapelGeladen(numbers_->LoadScheibenStapel());
}

void TargetPanel::speichereScheiben(const QString& sStartNr, const QString& Buchungsdatum, int& gespeichert) {
  numbers_->speichereScheiben(sStartNr, Buchungsdatum, gespeichert);
}

void TargetPanel::speichereAktuelleNummern() {
  numbers_->speichereAktuelleNummern();
}

std::vector<ReceiptTarget> TargetPanel::belegScheiben() const {
  return numbers_->belegScheiben();
}

}  // namespace qk

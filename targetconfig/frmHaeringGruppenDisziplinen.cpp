#include "targetconfig/frmHaeringGruppenDisziplinen.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>
#include <algorithm>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "platform/dialog/dialogs.h"
#include "platform/look/plain_tip.h"
#include "platform/runtime/files.h"
#include "platform/widgets/empty_text.h"
#include "targetconfig/station_files.h"
#include "ui_frmHaeringGruppenDisziplinen.h"

namespace qk {

namespace {

enum Column { Tick = 0, Title = 1, ColumnCount = 2 };
constexpr int kTickWidth = 400;

const QString kTicked = "-1";
const QString kUnticked = "0";

/// Unlike everywhere else a missing setting means no folder here, not the one that stations usually have.
QString iniPath(const Settings& settings) {
  SettingKey key = keys::Netzverzeichnis;
  key.preset = u"";
  const QString folder = liesText(settings, key);
  return (folder.isEmpty() ? folder : withTrailingSeparator(folder)) + EsaPreisIni;
}

}  // namespace

frmHaeringGruppenDisziplinen::frmHaeringGruppenDisziplinen(const Workplace& workplace, dao::Database& db,
                                                           QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      groups_(db),
      ui_(std::make_unique<Ui::frmHaeringGruppenDisziplinen>()) {
  ui_->setupUi(this);
  TextTable& table = *ui_->flexHaeringDiszi->table();
  table.setColumns(ColumnCount);
  table.setText(0, Title, "Disziplin");
  table.setTickColumn(Tick, kTicked);
  table.setColumnWidth(Tick, kTickWidth);
  ui_->flexHaeringDiszi->setStretchColumn(Title);
  ui_->flexHaeringDiszi->setEmptyText("Keine Disziplinen: esa_preis.ini ist nicht lesbar oder leer.");
  setEmptyText(ui_->lstHaeringGruppen, "Noch keine Gruppe: Disziplinen ankreuzen, dann „Neu“.");

  ui_->lstHaeringGruppen->installEventFilter(this);
  // A press on another group changes the selection first; only one of the two may read.
  connect(ui_->lstHaeringGruppen, &QListWidget::itemSelectionChanged, this, [this] {
    changedByPress_ = true;
    QTimer::singleShot(0, this, [this] { changedByPress_ = false; });
    lstHaeringGruppen_Click();
  });
  connect(ui_->lstHaeringGruppen, &QListWidget::itemPressed, this, [this] {
    if (!changedByPress_) lstHaeringGruppen_Click();
  });
  connect(ui_->flexHaeringDiszi, &TextGrid::afterEdit, this, &frmHaeringGruppenDisziplinen::showState);
  connect(ui_->cmdNewKombi, &QPushButton::clicked, this, &frmHaeringGruppenDisziplinen::cmdNewKombi_Click);
  connect(ui_->cmdSave, &QPushButton::clicked, this, &frmHaeringGruppenDisziplinen::cmdSave_Click);
  connect(ui_->cmdDelete, &QPushButton::clicked, this, &frmHaeringGruppenDisziplinen::cmdDelete_Click);
  connect(ui_->cmdWahlAlle, &QPushButton::clicked, this, [this] { tickAll(true); });
  connect(ui_->cmdWahlKeine, &QPushButton::clicked, this, [this] { tickAll(false); });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  resize(90 * fontMetrics().averageCharWidth(), 30 * fontMetrics().height());
}

frmHaeringGruppenDisziplinen::~frmHaeringGruppenDisziplinen() = default;

ErrorReport frmHaeringGruppenDisziplinen::report(const QString& text) const {
  return fehlerReport(workplace_.dialogs, text);
}

void frmHaeringGruppenDisziplinen::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (filled_) return;
  filled_ = true;
  fillGroups();
  fillDisciplines();
  keepAsStored();
  ui_->lstHaeringGruppen->setFocus();
}

/// The focus makes the first group current without choosing it: the first arrow chooses it, not the one
/// behind it.
bool frmHaeringGruppenDisziplinen::eventFilter(QObject* watched, QEvent* event) {
  QListWidget* list = ui_->lstHaeringGruppen;
  if (watched == list && event->type() == QEvent::KeyPress && !chosenEntry() && list->count() > 0) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_Home) {
      list->setCurrentRow(std::max(0, list->currentRow()));
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

/// A chosen group stays chosen, and the ticks stay as they are.
void frmHaeringGruppenDisziplinen::fillGroups() {
  reported(report("Fehler beim Ermittelen der Intarso-Gruppen!"), [this](Steps&) {
    const int chosen = chosenId();
    const QSignalBlocker noClick(ui_->lstHaeringGruppen);
    ui_->lstHaeringGruppen->clear();
    for (const DisciplineGroup& group : groups_.all()) {
      auto* entry = new QListWidgetItem(group.name, ui_->lstHaeringGruppen);
      entry->setData(Qt::UserRole, group.id);
      entry->setToolTip(plainTip(group.name));
      if (group.id == chosen) ui_->lstHaeringGruppen->setCurrentItem(entry);
    }
  });
  showState();
}

void frmHaeringGruppenDisziplinen::fillDisciplines() {
  const QString path = iniPath(workplace_.settings);
  TextTable& table = *ui_->flexHaeringDiszi->table();
  table.setRows(1);
  if (!DateiVorhanden(workplace_.files, path))
    return workplace_.dialogs.note(iniMissingText(path), BoxIcon::Critical, "Fehler");
  reported(report("Fehler beim Ermittelen der Intarso-Schusszahlen DEF!"), [&](Steps&) {
    for (const QString& title : groupTitles(workplace_.files, path)) {
      const int row = table.addRow({kUnticked, title});
      table.setRowData(row, "Diszi" + QString::number(row));
    }
  });
}

QListWidgetItem* frmHaeringGruppenDisziplinen::chosenEntry() const {
  return ui_->lstHaeringGruppen->selectedItems().value(0);
}

int frmHaeringGruppenDisziplinen::chosenId() const {
  const QListWidgetItem* entry = chosenEntry();
  return entry ? entry->data(Qt::UserRole).toInt() : 0;
}

void frmHaeringGruppenDisziplinen::lstHaeringGruppen_Click() {
  reported(reportOf("lstHaeringGruppen_Click"), [this](Steps&) {
    TextTable& table = *ui_->flexHaeringDiszi->table();
    for (int row = 1; row < table.rows(); ++row) table.setText(row, Tick, kUnticked);
    if (chosenId() == 0) return;
    const QSet<QString> members = groups_.members(chosenId());
    for (int row = 1; row < table.rows(); ++row)
      if (members.contains(table.text(row, Title))) table.setText(row, Tick, kTicked);
  });
  keepAsStored();
}

void frmHaeringGruppenDisziplinen::cmdNewKombi_Click() {
  const QString name = workplace_.dialogs.input("Bitte neuen Gruppen-Namen eingeben:");
  if (name.isEmpty()) return;
  reported(reportOf("cmdNewKombi_Click"), [&](Steps& step) {
    const std::optional<int> id = groups_.add(name, step);
    fillGroups();
    if (id) groups_.addMembers(*id, tickedTitles(), step);
  });
}

void frmHaeringGruppenDisziplinen::cmdSave_Click() {
  if (chosenId() == 0) return;
  const bool stored = reported(reportOf("cmdSave_Click"), [this](Steps& step) {
    groups_.replaceMembers(chosenId(), tickedTitles(), step);
  });
  if (stored) keepAsStored();
}

void frmHaeringGruppenDisziplinen::cmdDelete_Click() {
  const int id = chosenId();
  if (id == 0) return;
  const QString name = chosenEntry()->text();
  if (!workplace_.dialogs.confirm("Soll die gewählte Gruppe: " + name + " wirklich gelöscht werden?",
                                  BoxIcon::Question, BoxAnswer::No))
    return;
  reported(reportOf("cmdDelete_Click"), [&](Steps& step) { groups_.remove(id, step); });
  fillGroups();
}

void frmHaeringGruppenDisziplinen::tickAll(bool ticked) {
  TextTable& table = *ui_->flexHaeringDiszi->table();
  for (int row = 1; row < table.rows(); ++row) table.setText(row, Tick, ticked ? kTicked : kUnticked);
  showState();
}

QStringList frmHaeringGruppenDisziplinen::tickedTitles() const {
  const TextTable& table = *ui_->flexHaeringDiszi->table();
  QStringList titles;
  for (int row = 1; row < table.rows(); ++row)
    if (ZahlAusText(table.text(row, Tick)) != 0) titles += table.text(row, Title);
  return titles;
}

void frmHaeringGruppenDisziplinen::keepAsStored() {
  stored_ = tickedTitles();
  showState();
}

/// What the ticks mean: those of which group, and whether they are stored.
void frmHaeringGruppenDisziplinen::showState() {
  const int all = ui_->flexHaeringDiszi->table()->rows() - 1;
  const QStringList ticked = tickedTitles();
  const bool chosen = chosenId() != 0;
  QString text = QString("%1 von %2 gewählt").arg(ticked.size()).arg(all);
  if (chosen) text = chosenEntry()->text() + ": " + text;
  if (chosen && ticked != stored_) text += ", noch nicht gespeichert";
  ui_->lblAnzahl->setText(text);
  ui_->cmdSave->setEnabled(chosen);
  ui_->cmdDelete->setEnabled(chosen);
}

}  // namespace qk

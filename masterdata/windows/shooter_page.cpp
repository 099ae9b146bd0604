#include "masterdata/windows/shooter_page.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QShortcut>
#include <QTimer>

#include "masterdata/counter/shooter_acts.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/count_text.h"
#include "platform/grid/grid_browser.h"
#include "platform/widgets/empty_text.h"
#include "ui_shooter_page.h"

namespace qk {

namespace {

const QString kReading = "Die Schützen konnten nicht gelesen werden.";

FilteredQuery shooterQuery() {
  FilteredQuery::Shape shape;
  shape.base =
      "SELECT Schützen.ID AS Nummer, Schützen.Startnummer AS Start, Schützen.Name AS Wer, Schützen.Gebdat AS "
      "Geboren, Schützen.Geschlecht AS Sex, Schützenklassen.Klasse AS Klassenname, Verein.Name AS "
      "Vereinsname, Mannschaften.MannName AS Mannschaft, Schützen.AusweisNr AS Ausweis FROM ((Schützen LEFT "
      "JOIN Verein ON Schützen.VereinsID = Verein.ID) LEFT JOIN Mannschaften ON Schützen.lMannID = "
      "Mannschaften.ID) LEFT JOIN Schützenklassen ON Schützen.KlassenID = Schützenklassen.ID";
  shape.joint = " WHERE ";
  shape.columns = {{"Schützen.Startnummer", {"val(Schützen.Startnummer)", "Schützen.Startnummer"}},
                   {"Schützen.Name"},
                   {"Schützen.Gebdat"},
                   {"Schützen.Geschlecht"},
                   {"Schützenklassen.Klasse"},
                   {"Verein.Name"},
                   {"Mannschaften.MannName"},
                   {"Schützen.AusweisNr"}};
  shape.firstOrder = " ORDER BY val(Schützen.Startnummer)";
  return FilteredQuery(shape);
}

std::vector<BoundColumn> shownColumns() {
  return {{.field = "Start", .title = "Startnr.", .characters = 8},
          {.field = "Wer", .title = "Name", .characters = 26},
          {.field = "Geboren", .title = "Geburtsdatum", .characters = 12},
          {.field = "Sex", .title = "M/W", .characters = 4},
          {.field = "Klassenname", .title = "Klasse", .characters = 18},
          {.field = "Vereinsname", .title = "Verein", .characters = 26},
          {.field = "Mannschaft", .title = "Mannschaft", .characters = 20},
          {.field = "Ausweis", .title = "Ausweis-Nr.", .characters = 12}};
}

constexpr int kName = 1, kClub = 5;
constexpr int kButtons = 6;

}  // namespace

ShooterPage::ShooterPage(const Workplace& workplace, QWidget* parent)
    : PageWidget(parent),
      workplace_(workplace),
      ui_(std::make_unique<Ui::ShooterPage>()),
      rows_(std::make_unique<BoundRows>(fehlerReport(workplace_.dialogs, kReading))) {
  ui_->setupUi(this);
  ui_->rowKnoepfe->setLeftGroup(kButtons);
  layOutGrid();
  ShooterForm& form = *ui_->formSchuetze;
  connect(&form, &ShooterForm::changed, this, &ShooterPage::showState);
  connect(&form, &ShooterForm::stored, this, [this](qint64, const QString& line) {
    rows_->refresh();
    Q_EMIT done(line);
  });
  connect(&form, &ShooterForm::regrouped, this, [this](qint64 id, const dao::RowValues& before) {
    act(ShooterActs(*database_, workplace_.dialogs).bringInLine(id, before));
  });
  connect(&form, &ShooterForm::reloadWanted, this, [this] {
    rows_->refresh();
    showShooter(ui_->formSchuetze->id());
  });
  connect(ui_->cmdNaechster, &QPushButton::clicked, this, &ShooterPage::saveAndNext);
  connect(ui_->cmdSpeichern, &QPushButton::clicked, this, &ShooterPage::save);
  connect(ui_->cmdVerwerfen, &QPushButton::clicked, this, &ShooterPage::dropEdit);
  connect(ui_->cmdUmnummerieren, &QPushButton::clicked, this, [this] {
    if (leave()) act(ShooterActs(*database_, workplace_.dialogs).renumber(ui_->formSchuetze->id()));
  });
  connect(ui_->cmdPersonLoeschen, &QPushButton::clicked, this, [this] {
    if (leave()) act(ShooterActs(*database_, workplace_.dialogs).erase(ui_->formSchuetze->id()));
  });
  connect(ui_->cmdDoppelte, &QPushButton::clicked, this,
          [this] { ShooterActs(*database_, workplace_.dialogs).showDoubles(); });
  auto* next = new QShortcut(Qt::Key_F9, this, this, &ShooterPage::saveAndNext);
  next->setContext(Qt::WidgetWithChildrenShortcut);
  showState();
}

ShooterPage::~ShooterPage() {
  delete ui_->formSchuetze;  // before the counter that it asks
  rows_->disconnect(this);
  if (ui_->gridSchuetzen->selectionModel()) ui_->gridSchuetzen->selectionModel()->disconnect(this);
}

void ShooterPage::layOutGrid() {
  BoundGrid& grid = *ui_->gridSchuetzen;
  rows_->setColumns(shownColumns());
  grid.setRows(rows_.get());
  grid.setFilterRow(true);
  grid.horizontalHeader()->setSectionResizeMode(kName, QHeaderView::Stretch);
  grid.horizontalHeader()->setSectionResizeMode(kClub, QHeaderView::Stretch);
  setEmptyText(&grid,
               "Noch keine Schützen. F9 beginnt den ersten; im Menü Datei stehen Listen zum Einlesen.");
  browser_ = std::make_unique<GridBrowser>(grid, shooterQuery(), [this](GridBrowser::Act) { showRows(); });
  connect(rows_.get(), &BoundRows::counted, this,
          [this] { ui_->lblAnzahl->setText(countText(*rows_, "1 Schütze", "Schützen")); });
  // Who walks the list sees each shooter; what the list does by itself changes nothing in the form.
  connect(grid.selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
    if (ui_->gridSchuetzen->hasFocus()) QTimer::singleShot(0, this, &ShooterPage::follow);
  });
}

void ShooterPage::open(dao::Database& database) {
  database_ = &database;
  browser_->setQuery(shooterQuery());
  reported(fehlerReport(workplace_.dialogs, kReading), [&](Steps&) {
    counter_ = std::make_unique<Counter>(database);
    ui_->formSchuetze->setCounter(*counter_, workplace_.dialogs);
    ui_->formSchuetze->startNext();
  });
  showRows();
  showState();
}

void ShooterPage::showRows() {
  if (!database_) return;
  if (!reported(fehlerReport(workplace_.dialogs, kReading),
                [&](Steps&) { rows_->open(*database_, browser_->query().text()); }))
    rows_->clear();
}

void ShooterPage::refresh() {
  if (!counter_) return;
  reported(fehlerReport(workplace_.dialogs, kReading), [&](Steps&) {
    counter_->refresh();
    ui_->formSchuetze->fillLists();
    if (!isEdited()) ui_->formSchuetze->reset();
  });
  showRows();
}

void ShooterPage::begin() {
  ui_->formSchuetze->begin();
}

bool ShooterPage::isEdited() const {
  return ui_->formSchuetze->isEdited();
}

bool ShooterPage::leave() {
  if (!isEdited()) return true;
  if (workplace_.dialogs.confirm("Der Schütze " + ui_->formSchuetze->who() +
                                 " ist noch nicht gespeichert.\n\nJetzt speichern? (Nein kehrt zurück; dort "
                                 "nimmt Esc die Eingaben zurück.)"))
    return save();
  return false;
}

qint64 ShooterPage::idOfRow(int row) const {
  return row < 0 ? 0 : rows_->value(row, "Nummer").toLongLong();
}

void ShooterPage::follow() {
  BoundGrid& grid = *ui_->gridSchuetzen;
  const qint64 id = idOfRow(grid.currentRow());
  if (id == 0 || id == ui_->formSchuetze->id()) return;
  const QByteArray chosen = rows_->bookmark(grid.currentRow());
  if (leave()) {
    showShooter(id);
    followed_ = chosen;
  } else if (const int row = rows_->rowOf(followed_); row >= 0 && ui_->formSchuetze->id() != 0) {
    grid.setCurrentRow(row);
  }
}

void ShooterPage::showShooter(qint64 id) {
  reported(fehlerReport(workplace_.dialogs, "Der Schütze konnte nicht gelesen werden."), [&](Steps&) {
    if (id != 0)
      ui_->formSchuetze->showShooter(id);
    else
      ui_->formSchuetze->startNext();
  });
}

void ShooterPage::addRow() {
  if (leave()) showShooter(0);
}

bool ShooterPage::save() {
  return ui_->formSchuetze->store();
}

void ShooterPage::saveAndNext() {
  if (!isEdited() || save()) showShooter(0);
}

void ShooterPage::dropEdit() {
  showShooter(ui_->formSchuetze->id());
}

void ShooterPage::removeRow() {
  const qint64 id = ui_->formSchuetze->id();
  if (id == 0) return dropEdit();
  const QString said = ShooterActs(*database_, workplace_.dialogs).remove(id);
  if (said.isEmpty()) return;
  showShooter(0);
  rows_->refresh();
  Q_EMIT done(said);
}

/// What an act has done shows in list and form.
void ShooterPage::act(const QString& said) {
  if (said.isEmpty()) return;
  rows_->refresh();
  showShooter(ui_->formSchuetze->id());
  Q_EMIT done(said);
}

QList<qint64> ShooterPage::chosen() const {
  QList<qint64> ids;
  for (const QByteArray& bookmark : ui_->gridSchuetzen->markedRows())
    if (const qint64 id = idOfRow(rows_->rowOf(bookmark)); id != 0) ids << id;
  if (ids.isEmpty() && ui_->formSchuetze->id() != 0) ids << ui_->formSchuetze->id();
  return ids;
}

void ShooterPage::showState() {
  const bool there = counter_ && ui_->formSchuetze->id() != 0;
  const bool edited = counter_ && isEdited();
  ui_->cmdNaechster->setEnabled(counter_ != nullptr);
  ui_->cmdSpeichern->setEnabled(edited);
  ui_->cmdVerwerfen->setEnabled(edited);
  ui_->cmdUmnummerieren->setEnabled(there);
  ui_->cmdPersonLoeschen->setEnabled(there);
  ui_->cmdDoppelte->setEnabled(counter_ != nullptr);
}

void ShooterPage::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && isEdited()) return dropEdit();
  if (event->key() == Qt::Key_Delete && ui_->gridSchuetzen->hasFocus()) return removeRow();
  PageWidget::keyPressEvent(event);
}

}  // namespace qk

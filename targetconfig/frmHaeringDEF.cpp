#include "targetconfig/frmHaeringDEF.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTimer>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module_ui.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/textcodec.h"
#include "targetconfig/definition_files.h"
#include "ui_frmHaeringDEF.h"

namespace qk {

namespace {

using C = DefinitionRows;

// How long files are written before the window has its turn, and how many are worth a progress display.
constexpr int kPortionMilliseconds = 40;
constexpr int kManyFiles = 20;
// Column widths look at so many rows.
constexpr int kMeasuredRows = 200;
constexpr qsizetype kMostPreviewed = 8000;
constexpr int kPreviewCharacters = 36;

/// Numbers the buttons of a group in the order of their object names: name_0, name_1 …
QButtonGroup* numbered(QObject* parent, std::initializer_list<QRadioButton*> buttons) {
  auto* group = new QButtonGroup(parent);
  int id = 0;
  for (QRadioButton* button : buttons) group->addButton(button, id++);
  return group;
}

}  // namespace

frmHaeringDEF::frmHaeringDEF(const Workplace& workplace, dao::Database& database, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      workplace_(workplace),
      database_(database),
      ui_(std::make_unique<Ui::frmHaeringDEF>()) {
  ui_->setupUi(this);
  ui_->cmdErstellen->setShortcut(Qt::Key_F9);
  ui_->flexDEF->setTable(&rows_.table());
  ui_->flexDEF->setEmptyText("Der Wettkampf hat keine Disziplin mit einer Waffe");
  ui_->flexDEF->horizontalHeader()->setResizeContentsPrecision(kMeasuredRows);
  connectButtons();
  connectGrid();
  setWriting(false);
}

frmHaeringDEF::~frmHaeringDEF() {
  delete ui_->flexDEF;  // it shows the table, which goes first otherwise
}

void frmHaeringDEF::connectButtons() {
  connect(numbered(this, {ui_->optAuswahl_0, ui_->optAuswahl_1, ui_->optAuswahl_2}), &QButtonGroup::idClicked,
          this, &frmHaeringDEF::applyFilter);
  connect(numbered(this, {ui_->optHaeringBezeichnung_0, ui_->optHaeringBezeichnung_1,
                          ui_->optHaeringBezeichnung_2}),
          &QButtonGroup::idClicked, this, [this](int id) { rows_.setNaming(Naming(id)); });
  connect(numbered(this, {ui_->optOutput_0, ui_->optOutput_1, ui_->optOutput_2}), &QButtonGroup::idClicked,
          this, &frmHaeringDEF::applyOutput);
  connect(ui_->cmdSelAll, &QPushButton::clicked, this, [this] { rows_.selectAll(true); });
  connect(ui_->cmdSelNone, &QPushButton::clicked, this, [this] { rows_.selectAll(false); });
  connect(ui_->cmdAuswahlDirecotry, &QPushButton::clicked, this, &frmHaeringDEF::cmdAuswahlDirecotry_Click);
  connect(ui_->cmdExplorer, &QPushButton::clicked, this,
          [this] { ExplorerStarten(workplace_, ui_->lblHaeringPfad->text()); });
  connect(ui_->cmdErstellen, &QPushButton::clicked, this, &frmHaeringDEF::cmdErstellen_Click);
  connect(ui_->cmdStop, &QPushButton::clicked, this, [this] { stop_ = true; });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmHaeringDEF::reject);
}

void frmHaeringDEF::connectGrid() {
  connect(ui_->flexDEF, &TextGrid::afterEdit, this, &frmHaeringDEF::afterEdit);
  connect(ui_->flexDEF->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &frmHaeringDEF::scheduleView);
  connect(&rows_.table(), &TextTable::dataChanged, this, &frmHaeringDEF::scheduleView);
  connect(&rows_.table(), &TextTable::sizesChanged, this, &frmHaeringDEF::scheduleView);
}

void frmHaeringDEF::showEvent(QShowEvent* event) {
  if (!opened_) {
    opened_ = true;
    resize(screen()->availableSize() * 9 / 10);
    const int previewWidth = fontMetrics().averageCharWidth() * kPreviewCharacters;
    ui_->splDEF->setSizes({width() - previewWidth, previewWidth});
    setFolder(liesText(workplace_.settings, keys::Netzverzeichnis));
    build("Form_Load");
    applyOutput();
    ui_->flexDEF->setFocus();
  }
  QDialog::showEvent(event);
}

void frmHaeringDEF::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) showKeyColour();
}

/// Esc takes back: it mustn't take an hour of work with it. The buttons that close say what they do.
void frmHaeringDEF::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && edited_ && !writing_)
    ui_->lblTasten->setText("Eingaben sind noch nicht geschrieben: F9 erstellt, Schließen verwirft sie.");
  else if ((event->key() == Qt::Key_F2 || event->key() == Qt::Key_F4) && !inGrid()) {
    // The grid's keys work from everywhere in the window.
    ui_->flexDEF->setFocus(Qt::ShortcutFocusReason);
    QCoreApplication::sendEvent(ui_->flexDEF, event);
  } else
    QDialog::keyPressEvent(event);
}

bool frmHaeringDEF::inGrid() const {
  return focusWidget() == ui_->flexDEF || ui_->flexDEF->isAncestorOf(focusWidget());
}

/// A question that another window kept back comes when this one is the operator's again.
bool frmHaeringDEF::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && editedCell_)
    QTimer::singleShot(0, this, &frmHaeringDEF::askFillDown);
  return QDialog::event(event);
}

Output frmHaeringDEF::output() const {
  return ui_->optOutput_0->isChecked()   ? Output::Ini
         : ui_->optOutput_1->isChecked() ? Output::IniUndDef
                                         : Output::Def;
}

/// Only what works: a folder may hold nothing to suggest.
void frmHaeringDEF::showKeys() {
  ui_->lblTasten->setText(QString("F2 Eingabe    ") +
                          (ui_->flexDEF->hasSuggestions() ? "F4 Vorschläge    " : "") +
                          "Leertaste Kreuz    F9 Erstellen");
}

/// While files are written, closing means stopping: the routine that writes stands on this window.
void frmHaeringDEF::reject() {
  if (writing_) {
    stop_ = true;
    return;
  }
  editedCell_.reset();  // nobody asks about a window that is gone
  QDialog::reject();
}

void frmHaeringDEF::setFolder(const QString& folder) {
  ui_->lblHaeringPfad->setText(withTrailingSeparator(folder));
}

void frmHaeringDEF::build(const QString& routine) {
  editedCell_.reset();
  reported(fehlerReport(workplace_.dialogs, "Fehler bei " + routine + "_err!"),
           [this](Steps&) { rows_.build(database_, workplace_.files, ui_->lblHaeringPfad->text()); });
  for (int column = 0; column < C::ColumnCount; ++column)
    ui_->flexDEF->setSuggestions(column, rows_.suggestions(column));
  showKeyColour();
  showKeys();
  edited_ = false;
  if (rows_.table().rows() > 1) ui_->flexDEF->setCurrentRow(1);
  scheduleView();
}

void frmHaeringDEF::applyFilter() {
  rows_.setFilter(ui_->optAuswahl_1->isChecked()   ? RowFilter::NurDisziplinen
                  : ui_->optAuswahl_2->isChecked() ? RowFilter::NurKombinationen
                                                   : RowFilter::Alle);
}

void frmHaeringDEF::applyOutput() {
  rows_.setOutput(output());
  ui_->flexDEF->setStretchColumn(output() == Output::Ini ? C::DefDatei : C::Rest);
  showKeys();
}

void frmHaeringDEF::cmdAuswahlDirecotry_Click() {
  askFillDown();
  const QString chosen =
      workplace_.dialogs.chooseFolder("Bitte Pfad auswählen:", ui_->lblHaeringPfad->text());
  if (chosen.isEmpty()) return;
  setFolder(chosen);
  build("cmdAuswahlDirecotry_Click");
  applyFilter();
}

void frmHaeringDEF::cmdErstellen_Click() {
  // The key reaches the button while a cell is still being edited.
  ui_->cmdErstellen->setFocus();
  askFillDown();
  DefinitionFiles files(workplace_, rows_, ui_->lblHaeringPfad->text());
  files.showCell = [this](int row, int column) { showCell(row, column); };
  files.progress = [this](int written, int all) { return goOnWriting(written, all); };
  if (files.create(output())) edited_ = false;
  setWriting(false);
  ui_->cmdErstellen->setFocus();
}

bool frmHaeringDEF::goOnWriting(int written, int all) {
  if (written == 0 && !writing_) {
    setWriting(true);
    ui_->prgErstellen->setVisible(all >= kManyFiles);
    ui_->cmdStop->setVisible(all >= kManyFiles);
    ui_->prgErstellen->setRange(0, all);
    sinceTurn_.start();
  }
  if (sinceTurn_.hasExpired(kPortionMilliseconds)) {
    ui_->prgErstellen->setValue(written);
    workplace_.waits.runMessageLoop();
    sinceTurn_.restart();
  }
  return !stop_;
}

void frmHaeringDEF::setWriting(bool writing) {
  writing_ = writing;
  stop_ = false;
  ui_->prgErstellen->setVisible(false);
  ui_->prgErstellen->setValue(0);
  ui_->cmdStop->setVisible(false);
  for (QWidget* other : {static_cast<QWidget*>(ui_->fraOptionen), static_cast<QWidget*>(ui_->fraOrdner),
                         static_cast<QWidget*>(ui_->flexDEF), static_cast<QWidget*>(ui_->cmdSelAll),
                         static_cast<QWidget*>(ui_->cmdSelNone), static_cast<QWidget*>(ui_->cmdErstellen)})
    other->setEnabled(!writing);
  showKeys();
}

void frmHaeringDEF::afterEdit(int row, int column) {
  if (column == C::Gewaehlt) return;
  edited_ = true;
  showKeys();
  widen(column);
  if (!C::fillDownQuestion(row, column)) return;
  editedCell_ = {row, column};
  // The cell is still open: a box now would take the focus from it, and the edit would come twice.
  QTimer::singleShot(0, this, &frmHaeringDEF::askFillDown);
}

void frmHaeringDEF::askFillDown() {
  const QWidget* above = QApplication::activeModalWidget();
  if (!editedCell_ || !isVisible() || (above && above != this)) return;
  const auto [row, column] = *std::exchange(editedCell_, std::nullopt);
  const Box question{*C::fillDownQuestion(row, column), "Frage", BoxIcon::Question, BoxButtons::YesNo};
  if (workplace_.dialogs.show(question) == BoxAnswer::Yes) rows_.fillDown(row, column);
  widen(column);
}

void frmHaeringDEF::showCell(int row, int column) {
  if (row >= rows_.table().rows()) return;
  ui_->flexDEF->setCurrentCell(row, column);
  ui_->flexDEF->scrollTo(ui_->flexDEF->currentIndex());
}

/// What was typed is longer than what the column was made for.
void frmHaeringDEF::widen(int column) {
  const int wanted = static_cast<const QAbstractItemView*>(ui_->flexDEF)->sizeHintForColumn(column);
  if (wanted > ui_->flexDEF->columnWidth(column)) ui_->flexDEF->setColumnWidth(column, wanted);
}

/// Many cells change at once; looking at them once will do.
void frmHaeringDEF::scheduleView() {
  if (std::exchange(viewScheduled_, true)) return;
  QTimer::singleShot(0, this, [this] {
    viewScheduled_ = false;
    showCount();
    showPreview();
  });
}

void frmHaeringDEF::showCount() {
  int chosen = 0, hidden = 0;
  for (int row = 1; row < rows_.table().rows(); ++row) {
    if (!rows_.isChosen(row)) continue;
    ++(rows_.isHidden(row) ? hidden : chosen);
  }
  QString text = QString("%1 von %2 gewählt").arg(chosen).arg(rows_.table().rows() - 1);
  if (hidden > 0) text += QString(", %1 weitere ausgeblendet").arg(hidden);
  ui_->lblAnzahl->setText(text);
}

void frmHaeringDEF::showPreview() {
  const int row = ui_->flexDEF->currentRow();
  ui_->txtVorschau->setPlainText(row > 0 ? preview(row) : QString());
}

QString frmHaeringDEF::preview(int row) const {
  if (!rows_.isChosen(row) || rows_.isHidden(row)) return "Diese Zeile wird nicht geschrieben.";
  const TextTable& table = rows_.table();
  if (output() != Output::Ini && table.text(row, C::DateiName).isEmpty())
    return output() == Output::Def ? "Diese Zeile wird nicht geschrieben: sie hat keinen >DateiName."
                                   : "Ohne >DateiName wird nichts erstellt.";
  if (output() == Output::Ini)
    return EsaPreisIni + ":\n\nBezeichnung = \"" + table.text(row, C::Bezeichnung) + "\"\nDefinition = \"" +
           table.text(row, C::DefDatei) + "\"";
  QString content;
  try {
    content = fromWindows1252(definitionToBytes(definitionOf(table, row)));
  } catch (const Error& error) {
    content = error.description();
  }
  if (content.size() > kMostPreviewed) content = content.first(kMostPreviewed) + "…";
  return table.text(row, C::DateiName) + ":\n\n" + content.remove('\r');
}

void frmHaeringDEF::showKeyColour() {
  rows_.setKeyColour(palette().color(QPalette::Link));
}

}  // namespace qk

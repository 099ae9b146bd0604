#include "targetconfig/frmHaeringIniPruefung.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module_ui.h"
#include "platform/dialog/dialogs.h"
#include "platform/print/list_pages.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/files.h"
#include "targetconfig/check_delegate.h"
#include "ui_frmHaeringIniPruefung.h"

namespace qk {

namespace {

// How long the folder is read before the window has its turn.
constexpr int kPortionMilliseconds = 40;
constexpr double kPrintPoints = 9;

/// The colours of the rows are made for plain paper. In a dark window black ground is the one on which both
/// can still be read.
void setGround(QWidget& grid) {
  QPalette palette = grid.palette();
  const bool dark = palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
  const QColor ground = dark ? Qt::black : Qt::white;
  palette.setColor(QPalette::Base, ground);
  palette.setColor(QPalette::Highlight, ground);  // the chosen row is framed
  grid.setPalette(palette);
}

}  // namespace

frmHaeringIniPruefung::frmHaeringIniPruefung(const Workplace& workplace, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      workplace_(workplace),
      ui_(std::make_unique<Ui::frmHaeringIniPruefung>()) {
  ui_->setupUi(this);
  TextTable& table = *ui_->flexPruefung->table();
  table.setColumns(1);
  table.setText(0, 0, "Disziplin, def-Datei, Waffe und Scheibe");
  ui_->flexPruefung->setStretchColumn(0);
  ui_->flexPruefung->setAlternatingRowColors(false);
  ui_->flexPruefung->setShowGrid(false);
  ui_->flexPruefung->setItemDelegateForColumn(0, new CheckDelegate(rows_, ui_->flexPruefung));
  setGround(*ui_->flexPruefung);

  connect(ui_->cmdCheck, &QPushButton::clicked, this, &frmHaeringIniPruefung::cmdCheck_Click);
  connect(ui_->cmdPfad, &QPushButton::clicked, this, &frmHaeringIniPruefung::cmdPfad_Click);
  connect(ui_->cmdExplorer, &QPushButton::clicked, this,
          [this] { ExplorerStarten(workplace_, ui_->lblHaeringPfad->text()); });
  connect(ui_->cmdKopieren, &QPushButton::clicked, this, &frmHaeringIniPruefung::cmdKopieren_Click);
  connect(ui_->cmdDrucken, &QPushButton::clicked, this, &frmHaeringIniPruefung::cmdDrucken_Click);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->flexPruefung, &TextGrid::doubleClickedAt, this, [this](int row) { explainRow(row); });
  const auto onKey = [this](const QKeySequence& key, auto routine) {
    auto* shortcut = new QShortcut(key, ui_->flexPruefung);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, routine);
  };
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
    onKey(key, [this] { explainRow(ui_->flexPruefung->currentRow()); });
  onKey(QKeySequence::Copy, [this] { cmdKopieren_Click(); });

  ui_->flexPruefung->installEventFilter(this);
  ui_->flexPruefung->setEmptyText(
      "„Prüfen“ zeigt, welche Dateien esa_preis.ini nennt und welche davon fehlen.");
  setChecking(false);
  setFolder(liesText(workplace_.settings, keys::Netzverzeichnis));
  ui_->cmdCheck->setFocus();
  resize(100 * fontMetrics().averageCharWidth(), 32 * fontMetrics().height());
}

frmHaeringIniPruefung::~frmHaeringIniPruefung() = default;

/// In the grid Enter explains a row: there Prüfen is no default, and isn't drawn as one.
bool frmHaeringIniPruefung::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) ui_->cmdCheck->setDefault(false);
  if (event->type() == QEvent::FocusOut) ui_->cmdCheck->setDefault(true);
  return QDialog::eventFilter(watched, event);
}

ErrorReport frmHaeringIniPruefung::report(const QString& routine) const {
  return fehlerReport(workplace_.dialogs, "Fehler bei " + routine + "_err!");
}

void frmHaeringIniPruefung::setFolder(const QString& folder) {
  ui_->lblHaeringPfad->setText(withTrailingSeparator(folder));
}

void frmHaeringIniPruefung::clearRows() {
  rows_.clear();
  ui_->flexPruefung->table()->setRows(1);
  ui_->lblAnzahl->clear();
}

void frmHaeringIniPruefung::cmdPfad_Click() {
  const QString folder =
      workplace_.dialogs.chooseFolder("Bitte Intarso-Pfad auswählen:", ui_->lblHaeringPfad->text());
  if (!folder.isEmpty()) setFolder(folder);
}

void frmHaeringIniPruefung::cmdCheck_Click() {
  clearRows();
  checkedFolder_ = ui_->lblHaeringPfad->text();
  ui_->flexPruefung->setEmptyText("Keine Disziplinen in esa_preis.ini");
  setChecking(true);
  QElapsedTimer portion;
  portion.start();
  bool failed = false;
  const auto noticed = [&failed, tell = report("cmdCheck_Click")](const Error& error) {
    const ErrorAnswer answer = tell(error);
    failed = answer != ErrorAnswer::Retry;
    return answer;
  };
  reported(noticed, [&](Steps& step) {
    checkConfiguration(workplace_.files, checkedFolder_, step, [&](const CheckRow& row) {
      showRow(row);
      if (portion.elapsed() > kPortionMilliseconds) {
        showCounts();
        workplace_.waits.runMessageLoop();
        portion.start();
      }
      return !stop_;
    });
  });
  if (failed && rows_.empty()) ui_->flexPruefung->setEmptyText("esa_preis.ini ist nicht lesbar");
  const bool stopped = stop_;
  setChecking(false);
  showCounts();
  if (stopped) ui_->lblAnzahl->setText(ui_->lblAnzahl->text() + " – abgebrochen");
}

void frmHaeringIniPruefung::showRow(const CheckRow& row) {
  TextTable& table = *ui_->flexPruefung->table();
  rows_.push_back(row);
  const int added = table.addRow({row.text});
  TextTable::CellLook look;
  look.fore = colourOf(row.state);
  table.setCellLook(added, 0, look);
}

void frmHaeringIniPruefung::setChecking(bool checking) {
  checking_ = checking;
  stop_ = false;
  ui_->cmdClose->setText(checking ? "&Anhalten" : "&Schließen");
  for (QPushButton* button : {ui_->cmdCheck, ui_->cmdPfad, ui_->cmdExplorer}) button->setEnabled(!checking);
  for (QPushButton* button : {ui_->cmdKopieren, ui_->cmdDrucken})
    button->setEnabled(!checking && !rows_.empty());
}

void frmHaeringIniPruefung::showCounts() {
  const QString counts = rows_.empty() ? QString() : countsText(countRows(rows_));
  ui_->lblAnzahl->setText(checking_ ? counts + " …" : counts);
}

void frmHaeringIniPruefung::explainRow(int row) {
  if (row < 1 || checking_) return;
  const QString missing = missingText(rows_.at(static_cast<size_t>(row - 1)), checkedFolder_);
  if (!missing.isEmpty()) workplace_.dialogs.note(missing, BoxIcon::Information);
}

QStringList frmHaeringIniPruefung::head() const {
  return {"Ordner: " + checkedFolder_, "Stand: " + workplace_.clock.now().toString("dd.MM.yyyy HH:mm"),
          ui_->lblAnzahl->text()};
}

void frmHaeringIniPruefung::cmdKopieren_Click() {
  if (rows_.empty()) return;
  QStringList lines = QStringList{windowTitle()} + head() + QStringList{""};
  for (const CheckRow& row : rows_) lines += row.text;
  QGuiApplication::clipboard()->setText(lines.join('\n') + '\n');
}

void frmHaeringIniPruefung::cmdDrucken_Click() {
  std::vector<ListRow> printed;
  printed.reserve(rows_.size());
  for (const CheckRow& row : rows_) {
    const int depth = checkDepth(row.text);
    printed.push_back({depth, markOf(row.state), QString(row.text.mid(depth)).replace(u'\t', u' '),
                       colourOf(row.state).value_or(Qt::black), row.state == CheckState::Missing});
  }
  QFont printFont = font();
  printFont.setPointSizeF(kPrintPoints);
  ListPages pages(windowTitle(), head(), std::move(printed), printFont);
  reported(report("cmdDrucken_Click"), [&](Steps&) { paper_->print(pages); });
}

void frmHaeringIniPruefung::reject() {
  if (checking_)
    stop_ = true;
  else
    QDialog::reject();
}

}  // namespace qk

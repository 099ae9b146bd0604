#include "evaluation/frmSchuetzeErg.h"

#include <QKeyEvent>
#include <QLayout>
#include <QScreen>
#include <QShortcut>
#include <QTabBar>

#include "app/ground/printing.h"
#include "app/ground/temp_module.h"
#include "app/ground/temp_module_ui.h"
#include "evaluation/results_page.h"
#include "platform/dao/database.h"
#include "platform/dialog/dialogs.h"
#include "platform/report/shown_grid.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/datetext.h"
#include "platform/widgets/hourglass.h"
#include "ui_frmSchuetzeErg.h"

namespace qk {

namespace {

constexpr int kCharactersAcross = 116, kLinesDown = 40;
const char* const kEdit = "&Bearbeiten";
const char* const kLock = "S&perren";

}  // namespace

frmSchuetzeErg::frmSchuetzeErg(const Workplace& workplace, const GlobalVariablen& global,
                               ReportControl::Papers papers, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      workplace_(workplace),
      global_(global),
      reports_(workplace, papers),
      ui_(std::make_unique<Ui::frmSchuetzeErg>()) {
  ui_->setupUi(this);
  layout()->setMenuBar(ui_->menubar);
  teiler_ = std::make_unique<ResultsPage>(workplace, ResultKind::Teiler, *ui_->TDBGrid1, *ui_->Data2, "_1");
  serien_ = std::make_unique<ResultsPage>(workplace, ResultKind::Serien, *ui_->TDBGrid2, *ui_->Data3, "_2");
  setDeleting(false, 0);
  const QSize wanted(kCharactersAcross * fontMetrics().averageCharWidth(),
                     kLinesDown * fontMetrics().lineSpacing());
  resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
  connectControls();
  ui_->TDBGrid1->setFocus();
}

frmSchuetzeErg::~frmSchuetzeErg() = default;

void frmSchuetzeErg::connectControls() {
  connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdEdit, &QPushButton::clicked, this, &frmSchuetzeErg::cmdEdit_Click);
  connect(ui_->cmdDelete, &QPushButton::clicked, this, &frmSchuetzeErg::cmdDelete_Click);
  connect(ui_->cmdChangeDiszi, &QPushButton::clicked, this, &frmSchuetzeErg::cmdChangeDiszi_Click);
  connect(ui_->cmdClearFilter, &QPushButton::clicked, this, [this] { activePage().clearFilter(); });
  connect(ui_->cmdStop, &QPushButton::clicked, this, [this] { stop_ = true; });
  connect(ui_->mnuDateiPrint, &QAction::triggered, this, [this] { printActive(1); });
  connect(ui_->mnuDateiPrintPreview, &QAction::triggered, this, [this] { printActive(0); });
  connect(ui_->mnuDateiPrintEdit, &QAction::triggered, this, &frmSchuetzeErg::mnuDateiPrintEdit_Click);
  connect(ui_->mnuDateiClose, &QAction::triggered, this, &QDialog::reject);
  connect(ui_->mnuEditSelAlle, &QAction::triggered, this, &frmSchuetzeErg::mnuEditSelAlle_Click);
  connect(ui_->mnuEditSelNone, &QAction::triggered, this, [this] { activePage().grid().clearMarks(); });
  connect(ui_->SSTab1, &QTabWidget::currentChanged, this, &frmSchuetzeErg::tabChanged);
  for (ResultsPage* page : {teiler_.get(), serien_.get()}) {
    connect(page, &ResultsPage::changed, this, &frmSchuetzeErg::showMarks);
    connect(page, &ResultsPage::disciplineWanted, this, &frmSchuetzeErg::cmdChangeDiszi_Click);
    page->grid().installEventFilter(this);
  }
  connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this,
          &frmSchuetzeErg::helpWanted);
}

ErrorReport frmSchuetzeErg::report(const QString& text) const {
  return fehlerReport(workplace_.dialogs, text);
}

/// Opened with the first need; what keeps it from opening is an Error.
dao::Database& frmSchuetzeErg::database() {
  if (!database_) database_ = dao::Database::open(sWettkampf_);
  return *database_;
}

ResultsPage& frmSchuetzeErg::activePage() const {
  return ui_->SSTab1->currentIndex() == 0 ? *teiler_ : *serien_;
}

// --- what is shown

bool frmSchuetzeErg::LoadSchuetzen() {
  header_ = {};
  const bool goOn = reported(report("Fehler beim Suchen der Startnummer!"), [this](Steps& step) {
    if (!sStartnummer_.isEmpty())
      step([this] { header_ = shooterHeader(database(), workplace_.dialogs, sStartnummer_); });
  });
  ui_->lblStartnummer->setText(sStartnummer_);
  ui_->lblName->setText(header_.Name);
  ui_->lblVName->setText(header_.VName);
  ui_->lblGebdat->setText(header_.Gebdat);
  ui_->lblMannName->setText(header_.MannName);
  ui_->lblSPO->setText(header_.SPO);
  ui_->lblKlasse->setText(header_.Klasse);
  return goOn;
}

bool frmSchuetzeErg::LoadErgebnisse() {
  return reported(report("Fehler beim Laden der Ergebnisse!"),
                  [this](Steps& step) { step([this] { database(); }); }) &&
         database_ && teiler_->load(*database_, sStartnummer_) && serien_->load(*database_, sStartnummer_);
}

void frmSchuetzeErg::say(const QString& text) {
  ui_->lblStand->setText(text);
}

void frmSchuetzeErg::showMarks() {
  const qsizetype marked = activePage().grid().markedRows().size();
  ui_->lblMarkiert->setText(marked == 0 ? QString() : QString::number(marked) + " markiert");
}

void frmSchuetzeErg::tabChanged(int tab) {
  if (tab == tab_) return;
  ResultsPage& left = tab_ == 0 ? *teiler_ : *serien_;
  if (!left.submit()) return ui_->SSTab1->setCurrentIndex(tab_);
  tab_ = tab;
  showMarks();
  if (!ui_->SSTab1->tabBar()->hasFocus()) activePage().grid().setFocus();
}

/// Enter edits an unlocked cell; elsewhere it presses the preset button. Del deletes, as the button does.
bool frmSchuetzeErg::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  auto& grid = *qobject_cast<BoundGrid*>(watched);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (enter && key.modifiers() == Qt::NoModifier && grid.rows()->isUnlocked()) {
    grid.editCurrent();
    return true;
  }
  if (key.key() == Qt::Key_Delete && key.modifiers() == Qt::NoModifier) {
    cmdDelete_Click();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void frmSchuetzeErg::done(int result) {
  if (deleting_) {
    stop_ = true;
    return;
  }
  if (teiler_->submit() && serien_->submit()) QDialog::done(result);
}

void frmSchuetzeErg::cmdEdit_Click() {
  if (!RechtPruefen(workplace_.dialogs, global_)) return;
  const bool unlock = ui_->cmdEdit->text() == kEdit;
  if (!unlock && !activePage().submit()) return;
  ui_->cmdEdit->setText(unlock ? kLock : kEdit);
  for (ResultsPage* page : {teiler_.get(), serien_.get()}) page->setUnlocked(unlock);
  say(unlock ? "Ergebnis, Waffe und Datum lassen sich jetzt ändern; F2 oder Eingabe ändert eine Zelle." : "");
  activePage().grid().setFocus();
}

/// Whoever gives up at a failure keeps the marks that he has: half of the rows would look like all of them.
void frmSchuetzeErg::mnuEditSelAlle_Click() {
  if (!activePage().submit()) return;
  const Hourglass hourglass;
  if (activePage().complete("Fehler beim Markieren der Ergebnisse!")) activePage().grid().selectAll();
}

// --- printing

void frmSchuetzeErg::mnuDateiPrintEdit_Click() {
  reported(report("Fehler bei mnuDateiPrintEdit_Click_err!"), [this](Steps&) {
    CurrentPrinter printer = currentPrinter(workplace_);
    if (const auto chosen = workplace_.dialogs.printerSetup(printer.setup())) printer.keep(*chosen);
  });
}

void frmSchuetzeErg::printActive(qint16 nZiel) {
  ui_->SSTab1->currentIndex() == 0 ? Print_Teiler(nZiel) : Print_Serien(nZiel);
}

void frmSchuetzeErg::Print_Teiler(qint16 nZiel) {
  reported(report("Fehler bei Print_Teiler_err!"), [&](Steps&) { print(*teiler_, nZiel); });
}

void frmSchuetzeErg::Print_Serien(qint16 nZiel) {
  reported(report("Fehler bei Print_Serien_err!"), [&](Steps&) { print(*serien_, nZiel); });
}

void frmSchuetzeErg::print(ResultsPage& page, qint16 nZiel) {
  if (!page.submit()) return;
  report::GridReport made;
  {
    const Hourglass hourglass;
    if (!page.complete("Fehler beim Laden der Ergebnisse!")) return;
    report::GridTable table = report::shownGrid(page.grid());
    table.title = resultTitle(page.kind());
    table.head << headline(header_, sStartnummer_);
    table.head << "Stand: " + dateText(workplace_.clock.now());
    if (const QString filter = page.filterText(); !filter.isEmpty()) table.head << "Nur: " + filter;
    made = report::gridReport(table);
  }
  report::Order order;
  order.windowTitle = resultTitle(page.kind());
  order.place = [this](QWidget& window) { AnzeigeLage(workplace_, window, {}); };
  order.destination = nZiel == 1 ? report::Order::Destination::Printer : report::Order::Destination::Window;
  order.rows = made.rows;
  if (reports_.run(std::move(made.definition), order, this) && nZiel == 1) say("Gedruckt.");
}

}  // namespace qk

#include "masterdata/windows/main_window.h"

#include <QCloseEvent>
#include <QLabel>
#include <QSignalBlocker>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "app/ground/temp_module_ui.h"
#include "app/shell/competition_choice.h"
#include "app/shell/frmHilfe.h"
#include "data/icons/icons.h"
#include "masterdata/pages/opened_competition.h"
#include "masterdata/pages/page_query.h"
#include "masterdata/windows/page_view.h"
#include "masterdata/windows/shooter_page.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "ui_main_window.h"

namespace qk {

namespace {

const QString kShooters = "Schuetzen";

}  // namespace

MasterDataWindow::MasterDataWindow(const Workplace& workplace, GlobalVariablen& global, QWidget* parent)
    : QMainWindow(parent),
      workplace_(workplace),
      global_(global),
      ui_(std::make_unique<Ui::frmStammdaten>()) {
  ui_->setupUi(this);
  ui_->splitterSeiten->setStretchFactor(1, 1);
  PanelGroesseMerken(workplace_, *ui_->splitterSeiten, 0, keys::BreiteStammdatenSeiten, PanelMass(*this, 26));
  makeMenus();
  listPages();
}

MasterDataWindow::~MasterDataWindow() = default;

ErrorReport MasterDataWindow::report(const QString& what) const {
  return fehlerReport(workplace_.dialogs, what);
}

void MasterDataWindow::makeMenus() {
  const auto on = [this](QAction* action, auto routine) {
    connect(action, &QAction::triggered, this, routine);
  };
  const auto onPage = [&](QAction* action, void (PageWidget::*act)()) {
    on(action, [this, act] {
      if (PageWidget* shown = page()) (shown->*act)();
    });
  };
  on(ui_->mnuOeffnen, [this] { chooseCompetition(); });
  on(ui_->mnuBeenden, [this] { close(); });
  onPage(ui_->mnuNeu, &PageWidget::addRow);
  onPage(ui_->mnuSpeichern, &PageWidget::storeRow);
  onPage(ui_->mnuLoeschen, &PageWidget::removeRow);
  onPage(ui_->mnuVerwerfen, &PageWidget::dropEdit);
  on(ui_->mnuAktualisieren, [this] { refresh(); });
  on(ui_->mnuSeiten, [this] { ui_->lstSeiten->setFocus(Qt::ShortcutFocusReason); });
  on(ui_->mnuInhalt, [this] {
    if (PageWidget* shown = page()) shown->begin();
  });
  makeOwnMenus();
  makeToolbar();
  on(ui_->mnuHandbuch, [this] { frmHilfe::showBeside(workplace_, *this, "stammdaten.html"); });
}

void MasterDataWindow::makeToolbar() {
  for (const auto& [action, picture] :
       {std::pair{ui_->mnuBeenden, "exit"}, std::pair{ui_->mnuNeu, "kladde"},
        std::pair{ui_->mnuSpeichern, "Speichern"}, std::pair{ui_->mnuLoeschen, "Löschen"}}) {
    action->setIcon(icon(picture));
    ui_->toolbar->addAction(action);
  }
  auto* keys =
      new QLabel("Strg+N neu · Strg+S speichern · Esc verwerfen · F5 aktualisieren · F1 Handbuch", this);
  keys->setObjectName("lblTasten");
  statusBar()->addPermanentWidget(keys);
}

// --- the pages

void MasterDataWindow::listPages() {
  // The mark of the current one takes a frame's width from the height of its text.
  const int height = fontMetrics().lineSpacing() * 3 / 2;
  for (const Page& page : masterDataPages())
    (new QListWidgetItem(page.title, ui_->lstSeiten))->setSizeHint({0, height});
  pages_.resize(ui_->lstSeiten->count());
  connect(ui_->lstSeiten, &QListWidget::currentRowChanged, this, &MasterDataWindow::pageChosen);
  connect(ui_->lstSeiten, &QListWidget::itemActivated, this, [this] { page()->begin(); });
}

PageWidget& MasterDataWindow::pageAt(int row) {
  PageWidget*& page = pages_[row];
  if (page) return *page;
  const Page& description = masterDataPages()[size_t(row)];
  // Shooters come to a counter: typing one in is worth a page of its own.
  if (description.key == kShooters)
    page = new ShooterPage(workplace_, ui_->stackSeiten);
  else
    page = new PageView(workplace_, description, ui_->stackSeiten);
  ui_->stackSeiten->addWidget(page);
  connect(page, &PageWidget::done, this, [this](const QString& text) {
    success_.say(text);
    showCounts();
    showTitle();
  });
  page->open(*global_.Datenbank);
  return *page;
}

PageWidget* MasterDataWindow::page() const {
  return shown_ < 0 ? nullptr : pages_[shown_];
}

void MasterDataWindow::pageChosen(int row) {
  if (row < 0 || row == shown_ || !global_.Datenbank) return;
  if (PageWidget* before = page(); before && !before->leave()) {
    const QSignalBlocker quiet(ui_->lstSeiten);
    ui_->lstSeiten->setCurrentRow(shown_);
    return before->begin();
  }
  const bool isMade = pages_[row] != nullptr;
  PageWidget& chosen = pageAt(row);
  if (isMade) chosen.refresh();  // another page may have changed what this one refers to
  ui_->stackSeiten->setCurrentWidget(&chosen);
  shown_ = row;
}

bool MasterDataWindow::showPage(const QString& key) {
  const std::vector<Page>& all = masterDataPages();
  for (int row = 0; row < int(all.size()); ++row)
    if (all[size_t(row)].key == key) ui_->lstSeiten->setCurrentRow(row);
  return shown_ >= 0 && all[size_t(shown_)].key == key;
}

void MasterDataWindow::showCounts() {
  reported(report("Fehler beim Zählen der Stammdaten!"), [this](Steps&) {
    const std::vector<Page>& all = masterDataPages();
    for (int row = 0; row < int(all.size()); ++row) {
      const Page& page = all[size_t(row)];
      const bool missing = !global_.Datenbank->hasTable(page.table);
      QString count = page.single ? "" : " (%L1)";
      if (missing)
        count = " – fehlt";
      else if (!page.single)
        count = count.arg(countOf(*global_.Datenbank, page));
      ui_->lstSeiten->item(row)->setText(page.title + count);
      ui_->lstSeiten->item(row)->setToolTip(missing ? "Dieser Wettkampf hat die Tabelle nicht." : "");
    }
  });
}

void MasterDataWindow::showTitle() {
  reported(report("Fehler beim Lesen: " + masterDataPages().front().title),
           [this](Steps&) { setWindowTitle(titleOf(*global_.Datenbank, path())); });
}

void MasterDataWindow::refresh() {
  if (PageWidget* shown = page()) shown->refresh();
  showCounts();
}

void MasterDataWindow::closeEvent(QCloseEvent* event) {
  if (PageWidget* shown = page(); shown && !shown->leave()) return event->ignore();
  event->accept();
}

// --- the competition

QString MasterDataWindow::lastCompetition() const {
  const QString own = liesText(workplace_.settings, keys::LetzterWettkampfStammdaten);
  return own.isEmpty() ? liesText(workplace_.settings, keys::LetzterWettkampf) : own;
}

bool MasterDataWindow::load(const QString& path) {
  bool opened = false;
  reported(report("Fehler beim Start der Stammdaten!"), [&](Steps& step) {
    step([&] { OrdnerErmitteln(workplace_, global_); });
    const QString wanted = path.isEmpty() ? lastCompetition() : path;
    const QString found = workplace_.files.exists(wanted)
                              ? wanted
                              : offeredCompetition(workplace_, global_, wanted, [this] { return makeNew(); });
    opened = !found.isEmpty() && openCompetition(found);
  });
  return opened;
}

bool MasterDataWindow::openCompetition(const QString& path) {
  std::unique_ptr<dao::Database> database;
  try {
    database = openForMasterData(path);
    setWindowTitle(titleOf(*database, path));
  } catch (const Error& error) {
    workplace_.dialogs.note("Der Wettkampf lässt sich nicht öffnen.\n\n" + error.description(),
                            BoxIcon::Exclamation, "Fehler");
    return false;
  }
  // The pages stand on the one that was open: all of them go over before it closes.
  for (PageWidget* page : pages_)
    if (page) page->open(*database);
  std::swap(global_.Datenbank, database);
  global_.sWettkampf = path;
  showCounts();
  if (shown_ < 0) ui_->lstSeiten->setCurrentRow(0);
  schreibe(workplace_.settings, keys::LetzterWettkampfStammdaten, path);
  return true;
}

void MasterDataWindow::chooseCompetition() {
  const QString path = chosenCompetition(workplace_, this->path());
  if (path.isEmpty() || (page() && !page()->leave())) return;
  openCompetition(path);
}

}  // namespace qk

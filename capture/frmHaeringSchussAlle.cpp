#include "capture/frmHaeringSchussAlle.h"

#include <QPushButton>
#include <QScreen>
#include <QShowEvent>

#include "capture/shot_browser_query.h"
#include "platform/dao/database.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/count_text.h"
#include "platform/runtime/clock.h"
#include "platform/widgets/empty_text.h"
#include "ui_frmHaeringSchussAlle.h"

namespace qk {

namespace {

// How long rows are deleted, or waited for, before the window has its turn.
constexpr int kPortionMilliseconds = 40;

/// Enough for what usually stands there; numbers are short.
int charactersOf(const QString& column) {
  if (column == "WettbewerbBezeichnung" || column == "KlasseBezeichnung" || column == "Schütze") return 20;
  if (column == "Key" || column == "BuchungsZeitpunkt") return 18;
  if (column == "Wettbewerb" || column == "Klasse" || column == "Datum" || column == "ZeitAbsolut") return 11;
  return 7;
}

QString routineOf(GridBrowser::Act act) {
  switch (act) {
    case GridBrowser::Act::Filter:
      return "gridInput_FilterChange";
    case GridBrowser::Act::Order:
      return "gridInput_HeadClick";
    case GridBrowser::Act::Clear:
      return "cmdClearFilter_Click";
  }
  return {};
}

}  // namespace

frmHaeringSchussAlle::frmHaeringSchussAlle(const Workplace& workplace, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      workplace_(workplace),
      ui_(std::make_unique<Ui::frmHaeringSchussAlle>()),
      rows_(std::make_unique<BoundRows>([this](const Error& error) {
        return report(deleting_ ? "cmdDeleteHaering_Click" : "gridInput_Fetch")(error);
      })) {
  ui_->setupUi(this);
  std::vector<BoundColumn> columns;
  for (const QString& name : shotBrowserColumns())
    columns.push_back({.field = name, .characters = charactersOf(name)});
  rows_->setColumns(std::move(columns));
  ui_->gridInput->setRows(rows_.get());
  ui_->gridInput->setFilterRow(true);
  setEmptyText(ui_->gridInput, "Keine Schüsse");
  setDeleting(false);
  connect(rows_.get(), &BoundRows::counted, this, &frmHaeringSchussAlle::showCount);
  browser_ = std::make_unique<GridBrowser>(*ui_->gridInput, shotBrowserQuery(),
                                           [this](GridBrowser::Act act) { refresh(routineOf(act)); });
  connect(ui_->cmdClearFilter, &QPushButton::clicked, browser_.get(), &GridBrowser::clearFilter);
  connect(ui_->cmdDeleteHaering, &QPushButton::clicked, this, &frmHaeringSchussAlle::cmdDeleteHaering_Click);
  connect(ui_->cmdStop, &QPushButton::clicked, this, [this] { stop_ = true; });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  showCount();
}

frmHaeringSchussAlle::~frmHaeringSchussAlle() {
  rows_->disconnect(this);
}

ErrorReport frmHaeringSchussAlle::report(const QString& routine) const {
  return fehlerReport(workplace_.dialogs, "Fehler bei " + routine + "_err!");
}

void frmHaeringSchussAlle::showEvent(QShowEvent* event) {
  if (!opened_) {
    opened_ = true;
    resize(screen()->availableSize() * 9 / 10);
    openCompetition();
    ui_->gridInput->setFocus();
  }
  QDialog::showEvent(event);
}

void frmHaeringSchussAlle::openCompetition() {
  if (reported(report("Form_Load"), [this](Steps&) { database_ = dao::Database::open(sWettkampf_); }))
    refresh("Form_Load");
}

void frmHaeringSchussAlle::refresh(const QString& routine) {
  if (!database_) return;
  bool opened = false;
  reported(report(routine),
           [&](Steps& step) { opened = step([&] { rows_->open(*database_, browser_->query().text()); }); });
  // Whatever the answer: rows of a former query would be deleted for those of this one.
  if (!opened) rows_->clear();
}

void frmHaeringSchussAlle::cmdDeleteHaering_Click() {
  if (!workplace_.dialogs.confirm("Sollen alle bisherigen Intarsoeinträge gelöscht werden?",
                                  BoxIcon::Question, BoxAnswer::No))
    return;
  setDeleting(true);
  deleteRows();
  setDeleting(false);
  refresh("cmdDeleteHaering_Click");
}

/// In portions, so that the window lives and the operator can stop between two rows. How many there are is
/// known only when the list is whole.
void frmHaeringSchussAlle::deleteRows() {
  ui_->prgDelete->setRange(0, 0);
  while (!stop_ && !rows_->waitForAll(kPortionMilliseconds)) workplace_.waits.runMessageLoop();
  const int all = rows_->count();
  ui_->prgDelete->setRange(0, all);
  while (!stop_ && rows_->count() > 0 && rows_->removeFirst(kPortionMilliseconds)) {
    ui_->prgDelete->setValue(all - rows_->count());
    workplace_.waits.runMessageLoop();
  }
}

void frmHaeringSchussAlle::setDeleting(bool deleting) {
  deleting_ = deleting;
  stop_ = false;
  ui_->prgDelete->setVisible(deleting);
  ui_->cmdStop->setVisible(deleting);
  for (QWidget* other : {static_cast<QWidget*>(ui_->gridInput), static_cast<QWidget*>(ui_->cmdClearFilter),
                         static_cast<QWidget*>(ui_->cmdDeleteHaering)})
    other->setEnabled(!deleting);
  if (deleting) ui_->cmdStop->setFocus();
}

/// While rows are deleted, closing means stopping: the routine that deletes stands on this window.
void frmHaeringSchussAlle::reject() {
  if (deleting_)
    stop_ = true;
  else
    QDialog::reject();
}

void frmHaeringSchussAlle::showCount() {
  if (!rows_->isOpen()) return ui_->lblAnzahl->clear();
  ui_->lblAnzahl->setText(countText(*rows_, "1 Schuss", "Schüsse"));
}

}  // namespace qk

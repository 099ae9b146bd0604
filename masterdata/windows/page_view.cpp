#include "masterdata/windows/page_view.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>

#include "masterdata/pages/page_query.h"
#include "masterdata/rows/references.h"
#include "masterdata/windows/linked_list.h"
#include "masterdata/windows/page_form.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/count_text.h"
#include "platform/widgets/empty_text.h"
#include "ui_page_view.h"

namespace qk {

namespace {

constexpr int kRefused = errors::kReferredTo;
constexpr int kEffectLines = 3;
const QString kNotStorable = "So lässt sich das nicht speichern:\n\n";
constexpr int kPatience = 150;  // milliseconds that the window waits for the first rows

}  // namespace

PageView::PageView(const Workplace& workplace, const Page& page, QWidget* parent)
    : PageWidget(parent),
      workplace_(workplace),
      page_(page),
      ui_(std::make_unique<Ui::PageView>()),
      form_(nullptr),
      rows_(std::make_unique<BoundRows>(readReport())) {
  ui_->setupUi(this);
  form_ = new PageForm(readReport());
  ui_->scroll->setWidget(form_);
  makeLists();
  nameControls();
  makeGrid();
  ui_->panelListe->setVisible(!page_.single);
  ui_->lblBeispiel->setVisible(bool(page_.example));
  ui_->splitter->setStretchFactor(0, 1);
  ui_->splitter->setStretchFactor(1, 1);
  QFont heading = ui_->lblTitel->font();
  heading.setBold(true);
  ui_->lblTitel->setFont(heading);
  ui_->lblWirkung->setMinimumHeight(kEffectLines * fontMetrics().lineSpacing());
  connect(form_, &PageForm::edited, this, &PageView::showState);
  connect(form_, &PageForm::entered, this, [this](const QString& column) {
    if (const PageColumn* of = page_.column(column)) showEffect(of->effect);
    ui_->scroll->ensureWidgetVisible(form_->controlOf(column));
  });
  connect(ui_->tabs, &QTabWidget::currentChanged, this,
          [this](int tab) { showEffect(tab == 0 ? QString() : page_.links[size_t(tab - 1)].effect); });
  connect(ui_->cmdNeu, &QPushButton::clicked, this, &PageView::addRow);
  connect(ui_->cmdLoeschen, &QPushButton::clicked, this, &PageView::removeRow);
  connect(ui_->cmdSpeichern, &QPushButton::clicked, this, &PageView::storeRow);
  connect(ui_->cmdVerwerfen, &QPushButton::clicked, this, &PageView::dropEdit);
}

PageView::~PageView() {
  rows_->disconnect(this);
}

/// Several pages stand in one window.
void PageView::nameControls() {
  for (QWidget* control : findChildren<QWidget*>())
    if (!control->objectName().isEmpty() && !control->objectName().startsWith("qt_") &&
        !control->objectName().contains('_'))
      control->setObjectName(control->objectName() + "_" + page_.key);
  setObjectName("seite_" + page_.key);
  ui_->grid->setAccessibleName(page_.title);
  ui_->tabs->setAccessibleName(page_.title + ", Angaben und Zugehöriges");
  ui_->scroll->setAccessibleName(page_.title + ", Angaben");
  ui_->scroll->setFocusPolicy(Qt::NoFocus);
}

void PageView::makeLists() {
  for (size_t i = 0; i < page_.links.size(); ++i) {
    const LinkedList& link = page_.links[i];
    auto* list = new LinkedListView(link, int(i), "_" + page_.key, report("Fehler beim Lesen: " + link.name));
    ui_->tabs->addTab(list, link.name);
    connect(list, &LinkedListView::edited, this, &PageView::showState);
    lists_.push_back(list);
  }
}

void PageView::makeGrid() {
  std::vector<BoundColumn> columns;
  for (const PageColumn& column : page_.columns)
    if (column.inGrid > 0)
      columns.push_back({.field = fieldOf(column),
                         .title = column.label,
                         .characters = column.inGrid,
                         .text = [&column](const QVariant& value) { return gridText(column, value); }});
  rows_->setColumns(std::move(columns));
  ui_->grid->setRows(rows_.get());
  ui_->grid->setFilterRow(true, "_" + page_.key);
  ui_->grid->setSelectionMode(QAbstractItemView::SingleSelection);
  setEmptyText(ui_->grid, page_.empty);
  ui_->grid->installEventFilter(this);
  browser_ = std::make_unique<GridBrowser>(*ui_->grid, FilteredQuery(gridQuery(page_)),
                                           [this](GridBrowser::Act) { showQuery(); });
  connect(ui_->cmdFilter, &QPushButton::clicked, browser_.get(), &GridBrowser::clearFilter);
  connect(ui_->grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &PageView::rowChosen);
  connect(rows_.get(), &BoundRows::counted, this, &PageView::showCount);
}

ErrorReport PageView::report(const QString& text) const {
  return fehlerReport(workplace_.dialogs, text);
}

ErrorReport PageView::readReport() const {
  return report("Fehler beim Lesen: " + page_.title);
}

// --- what is shown

/// A competition may lack the table, or not answer: the page can't be worked with then.
void PageView::open(dao::Database& database) {
  rows_->clear();
  form_->clear();
  for (LinkedListView* list : lists_) list->show(nullptr, nullptr);
  row_.reset();
  database_ = &database;
  reported(report("Fehler beim Öffnen: " + page_.title), [&](Steps& step) {
    step([&] {
      auto row = std::make_unique<RowEdit>(page_, database);
      form_->build(*row, database);
      row_ = std::move(row);
    });
  });
  setEnabled(row_ != nullptr);
  if (!row_) return;
  showRow();
  if (page_.single)
    showSingle();
  else
    showQuery();
}

/// The table has one row; a competition that lacks it gets it by storing.
void PageView::showSingle() {
  reported(readReport(), [this](Steps&) {
    const auto first = database_->openRecordset("SELECT TOP 1 [" + page_.keyColumn + "] AS Nummer FROM [" +
                                                page_.table + "]");
    const qint64 key = first->eof() ? 0 : first->value("Nummer").toLongLong();
    if (key == 0 || !row_->read(key)) row_->begin();
  });
  showRow();
}

void PageView::showQuery() {
  if (!row_) return;
  const bool opened = reported(readReport(), [this](Steps& step) {
    step([&] { rows_->open(*database_, browser_->query().text()); });
  });
  if (!opened) rows_->clear();
  wanted_ = row_->key();
  rows_->waitForFirst(kPatience);
  standWhenListed();
}

/// A long list is sorted first; the form keeps what it shows until the rows are there.
void PageView::standWhenListed() {
  if (!row_ || !wanted_ || (rows_->count() == 0 && !rows_->isComplete() && rows_->isOpen())) return;
  const qint64 key = *std::exchange(wanted_, std::nullopt);
  if (!row_->isChanged() && !row_->isNew()) stand(key);
}

void PageView::refresh() {
  if (!row_) return;
  reported(readReport(), [this](Steps&) { form_->refreshReferences(); });
  for (LinkedListView* list : lists_) list->refresh();
  if (page_.single) {
    if (!row_->isChanged()) showSingle();
    return;
  }
  showQuery();
}

void PageView::showCount() {
  if (!rows_->isOpen()) return ui_->lblAnzahl->clear();
  ui_->lblAnzahl->setText(countText(*rows_, "1 Zeile", "Zeilen"));
  standWhenListed();
}

void PageView::begin() {
  if (!row_) return;
  if (page_.single || rows_->count() == 0)
    form_->focus();
  else
    ui_->grid->setFocus(Qt::ShortcutFocusReason);
}

// --- the current row

void PageView::rowChosen() {
  if (choosing_ || !row_) return;
  const int at = ui_->grid->currentRow();
  if (at < 0 || at >= rows_->count()) return;
  const qint64 key = rows_->value(at, page_.keyColumn).toLongLong();
  if (key == row_->key() && row_->isOpen()) return;
  if (leave()) return readRow(key);
  stand(row_->key());
}

void PageView::stand(qint64 key) {
  const QScopedValueRollback choosing(choosing_, true);
  int at =
      key == 0 ? 0 : rows_->findFirst(QString("[%1].[%2] = %3").arg(page_.table, page_.keyColumn).arg(key));
  const bool found = at >= 0 && at < rows_->count();
  if (!found && row_->isOpen() && key != 0) {
    // The filter hides it, or it was just made: the form keeps it.
    ui_->grid->setCurrentIndex({});
    return;
  }
  if (rows_->count() == 0) {
    row_->close();
    return showRow();
  }
  at = found ? at : 0;
  ui_->grid->setCurrentRow(at);
  if (!row_->isChanged()) readRow(rows_->value(at, page_.keyColumn).toLongLong());
}

void PageView::readRow(qint64 key) {
  reported(readReport(), [this, key](Steps&) { row_->read(key); });
  showRow();
}

void PageView::showRow() {
  form_->show();
  for (LinkedListView* list : lists_) list->show(row_.get(), database_);
  showState();
}

QString PageView::nameOfRow() const {
  if (!row_->isOpen()) return {};
  if (page_.single) return page_.title;
  if (row_->isNew()) return page_.fresh;
  const PageColumn* column = page_.column(page_.nameColumn);
  const QString name =
      column && column->kind != ColumnKind::LookUp ? row_->entry(page_.nameColumn).simplified() : QString();
  return name.isEmpty() ? page_.named : page_.named + " »" + name + "«";
}

void PageView::showState() {
  const bool open = row_ && row_->isOpen();
  const QStringList changed = open ? row_->changedLabels() : QStringList();
  ui_->lblTitel->setText(open ? nameOfRow() : QString());
  ui_->lblStand->setText(changed.isEmpty() ? QString() : "Nicht gespeichert");
  ui_->cmdSpeichern->setEnabled(!changed.isEmpty());
  ui_->cmdVerwerfen->setEnabled(!changed.isEmpty() || (open && row_->isNew() && !page_.single));
  ui_->cmdLoeschen->setEnabled(open && !row_->isNew());
  if (page_.example) ui_->lblBeispiel->setText(open ? page_.example(row_->values()) : QString());
}

void PageView::showEffect(const QString& text) {
  ui_->lblWirkung->setText(text);
}

// --- what is done

void PageView::addRow() {
  if (!row_ || page_.single || !leave()) return;
  {
    const QScopedValueRollback choosing(choosing_, true);
    ui_->grid->setCurrentIndex({});
    ui_->grid->clearSelection();
  }
  row_->begin();
  showRow();
  ui_->tabs->setCurrentIndex(0);
  form_->focus();
}

bool PageView::leave() {
  if (!row_ || !row_->isChanged()) return true;
  const QString question = nameOfRow() + " ist noch nicht gespeichert:\n" + row_->changedLabels().join(", ") +
                           "\n\nJetzt speichern? (Nein kehrt zurück; dort nimmt Esc die Eingaben zurück.)";
  return workplace_.dialogs.confirm(question, BoxIcon::Question, BoxAnswer::Yes) && store();
}

void PageView::storeRow() {
  if (row_ && row_->isChanged()) store();
}

/// The first thing that is wrong gets the keyboard, behind the box that tells all of them.
bool PageView::refuse() {
  const std::vector<RowTrouble> troubles = row_->troubles();
  if (troubles.empty()) return false;
  QStringList lines;
  for (const RowTrouble& trouble : troubles) lines << trouble.text;
  workplace_.dialogs.note(kNotStorable + lines.join('\n'), BoxIcon::Exclamation);
  ui_->tabs->setCurrentIndex(0);
  if (!troubles.front().column.isEmpty()) form_->focus(troubles.front().column);
  return true;
}

bool PageView::store() {
  Stored outcome = Stored::TryAgain;
  const bool wasNew = row_->isNew();
  while (outcome == Stored::TryAgain) outcome = tryToStore();
  showRow();
  if (outcome == Stored::Stays) return false;
  const QString what = nameOfRow();
  if (!page_.single) {
    const int at = ui_->grid->currentRow();
    if (wasNew || at < 0)
      showQuery();
    else
      rows_->reread(at);
  }
  Q_EMIT done(what + " ist gespeichert.");
  return true;
}

PageView::Stored PageView::tryToStore() {
  Stored outcome = Stored::Stays;
  reported(report("Fehler beim Speichern: " + page_.title), [&](Steps& step) {
    step([&] {
      try {
        if (refuse()) return;
        row_->store();
        outcome = Stored::Done;
      } catch (const dao::RowChanged& changed) {
        outcome = changedMeanwhile(changed);
      } catch (const ReferenceGone& gone) {
        referenceGone(gone);
      } catch (const Error& error) {
        if (error.number() != errors::kRecordDeleted) throw;
        outcome = goneMeanwhile();
      }
    });
  });
  return outcome;
}

PageView::Stored PageView::changedMeanwhile(const dao::RowChanged& changed) {
  const QString text = changedMeanwhileText(*row_, changed.found(), *database_);
  row_->takeOver(changed.found());
  form_->show();
  const bool goesOn = workplace_.dialogs.confirm(
      nameOfRow() + " hat inzwischen jemand anders geändert:\n\n" + text +
          "\n\nIhre Eingaben trotzdem speichern? (Nein speichert nichts; die Eingaben bleiben stehen.)",
      BoxIcon::Exclamation, BoxAnswer::No);
  return goesOn ? Stored::TryAgain : Stored::Stays;
}

/// Nothing is stored. A tick on a row that is gone can't be shown any more, and would never be stored.
void PageView::referenceGone(const ReferenceGone& gone) {
  workplace_.dialogs.note(kNotStorable + gone.description(), BoxIcon::Exclamation);
  for (size_t i = 0; i < page_.links.size(); ++i)
    if (page_.links[i].table == gone.table()) {
      row_->setMember(int(i), gone.key(), false);
      ui_->tabs->setCurrentIndex(int(i) + 1);
    }
  if (page_.table != gone.table()) return;
  ui_->tabs->setCurrentIndex(0);
  form_->focus(gone.column());
}

PageView::Stored PageView::goneMeanwhile() {
  if (!workplace_.dialogs.confirm(
          nameOfRow() + " hat inzwischen jemand anders gelöscht.\n\nAls neue Zeile speichern?",
          BoxIcon::Exclamation, BoxAnswer::No))
    return Stored::Stays;
  row_->becomeNew();
  return Stored::TryAgain;
}

void PageView::removeRow() {
  if (!row_ || page_.single || !row_->isOpen() || row_->isNew()) return;
  const qint64 key = row_->key();
  reported(report("Fehler beim Löschen: " + page_.title), [&](Steps& step) {
    QString refusal;
    step([&] { refusal = refusalOf(*database_, page_.table, key); });
    if (!refusal.isEmpty()) return workplace_.dialogs.note(refusal, BoxIcon::Exclamation);
    const Uses uses = usesOf(*database_, page_.table, key);
    QString question = nameOfRow() + " löschen?";
    if (!uses.parts.empty()) question += "\n\nDamit gehen auch: " + countsText(uses.parts) + ".";
    if (workplace_.dialogs.confirm(question, BoxIcon::Question, BoxAnswer::No)) step([&] { remove(key); });
  });
}

void PageView::remove(qint64 key) {
  const QString what = nameOfRow();
  try {
    dao::Changes changes(*database_);
    qk::removeRow(*database_, changes, page_.table, key);
    changes.write();
  } catch (const Error& error) {
    if (error.number() != kRefused) throw;
    return workplace_.dialogs.note(error.description(), BoxIcon::Exclamation);
  }
  const int at = ui_->grid->currentRow();
  row_->close();
  showQuery();
  if (rows_->count() > 0 && at > 0) ui_->grid->setCurrentRow(std::min(at, rows_->count() - 1));
  Q_EMIT done(what + " ist gelöscht.");
}

void PageView::dropEdit() {
  if (!row_ || !row_->isOpen()) return;
  const QStringList changed = row_->changedLabels();
  if (!changed.isEmpty() && !workplace_.dialogs.confirm("Eingaben zurücknehmen?\n\n" + changed.join(", "),
                                                        BoxIcon::Question, BoxAnswer::No))
    return;
  if (page_.single) return showSingle();
  const qint64 key = row_->key();
  row_->close();
  stand(key);
  showRow();
  begin();
}

bool PageView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->grid && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Delete && key->modifiers() == Qt::NoModifier) {
      removeRow();
      return true;
    }
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      if (key->modifiers() == Qt::NoModifier && row_ && row_->isOpen()) {
        form_->focus();
        return true;
      }
    }
  }
  return PageWidget::eventFilter(watched, event);
}

}  // namespace qk

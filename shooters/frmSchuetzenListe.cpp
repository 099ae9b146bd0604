#include "shooters/frmSchuetzenListe.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "platform/dao/database.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/count_text.h"
#include "platform/runtime/retry.h"
#include "ui_frmSchuetzenListe.h"

namespace qk {

namespace {

constexpr int kStartnummer = 1;

struct ShownColumn {
  int position;
  const char* title;
  int characters;
};

// Positions in the stored query. Widths are in characters, so that they follow the font.
constexpr ShownColumn kShown[] = {
    {kStartnummer, "Startnr.", 8}, {4, "Name", 24},    {12, "Geburtsdatum", 12}, {25, "Verein", 24},
    {26, "Mannschaft", 20},        {27, "Klasse", 16}, {29, "Ausweis-Nr.", 12}};

// Rows of the list that the window is high enough for, its other parts included.
constexpr int kRowsInSight = 24;

const QString kOrder = " order by val(Startnummer)";
const char* const kDoubleTheQuote = "Ein Hochkomma im Namen bitte doppelt eingeben: O''Con findet O'Connor.";

}  // namespace

frmSchuetzenListe::frmSchuetzenListe(const Workplace& workplace, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      ui_(std::make_unique<Ui::frmSchuetzenListe>()),
      list_(new BoundRows(
          [this](const Error& error) {
            waiting_.clear();
            return fehlerReport(workplace_.dialogs, failureText_)(error);
          },
          this)) {
  ui_->setupUi(this);
  layout()->setMenuBar(ui_->menubar);
  QHash<int, QString> titles;
  for (const ShownColumn& column : kShown) titles.insert(column.position, column.title);
  list_->setTitles(titles);
  ui_->VSFlexGrid1->setModel(list_);
  ui_->VSFlexGrid1->verticalHeader()->hide();
  ui_->VSFlexGrid1->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  ui_->VSFlexGrid1->horizontalHeader()->setHighlightSections(false);
  connect(list_, &BoundRows::modelReset, this, &frmSchuetzenListe::layOutList);
  connect(list_, &BoundRows::counted, this, &frmSchuetzenListe::showCount);
  ui_->txtSuchname->installEventFilter(this);
  connect(ui_->txtSuchname, &QLineEdit::textChanged, this,
          [this] { readList("Fehler bei txtSuchname_Change_err!"); });
  connect(ui_->VSFlexGrid1, &QTableView::doubleClicked, this, &frmSchuetzenListe::cmdOK_Click);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmSchuetzenListe::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->mnuDateiCancel, &QAction::triggered, this, &QDialog::reject);
  connect(this, &QDialog::rejected, this, [this] {
    waiting_.clear();
    sStartnummer_.clear();
  });
}

frmSchuetzenListe::~frmSchuetzenListe() {
  list_->disconnect(this);
}

bool frmSchuetzenListe::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) {
    selectFirstRow();
    if (list_->rowCount() > 0) ui_->txtSuchname->setFocus();
  }
  return QDialog::event(event);
}

bool frmSchuetzenListe::eventFilter(QObject* watched, QEvent* event) {
  if (watched != ui_->txtSuchname || event->type() != QEvent::KeyPress)
    return QDialog::eventFilter(watched, event);
  const auto key = static_cast<Qt::Key>(static_cast<QKeyEvent*>(event)->key());
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      if (!waitsForRows(key)) QCoreApplication::sendEvent(ui_->VSFlexGrid1, event);
      return true;
    default:
      return false;
  }
}

void frmSchuetzenListe::showEvent(QShowEvent* event) {
  if (!opened_) {
    opened_ = true;
    openCompetition();
    layOutList();
    fitToColumns();
  }
  QDialog::showEvent(event);
}

void frmSchuetzenListe::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange && opened_) layOutList();
}

void frmSchuetzenListe::openCompetition() {
  const QString failure = "Fehler bei Form_Load_err!";
  if (!reported(fehlerReport(workplace_.dialogs, failure),
                [&](Steps&) { database_ = dao::Database::open(sWettkampf_); }))
    return;
  readList(failure);
  noteDue_ = true;
  // The window comes first, so that the note stands on the empty list that it speaks of.
  QTimer::singleShot(0, this, &frmSchuetzenListe::noteNoShooters);
}

void frmSchuetzenListe::noteNoShooters() {
  if (!noteDue_ || !list_->isComplete()) return;
  noteDue_ = false;
  if (list_->isOpen() && !list_->isBroken() && list_->count() == 0)
    workplace_.dialogs.note("Es sind noch keine Schützen im Wettkampf erfasst!");
}

void frmSchuetzenListe::readList(const QString& failureText) {
  if (!database_) return;
  // What is typed goes into the query as it is: a single quote in it breaks the query.
  const QString name = ui_->txtSuchname->text();
  const bool broken = name.count(u'\'') % 2 != 0;
  const QString filter = name.isEmpty() ? QString() : " WHERE Schützen.Name like '*" + name + "*'";
  failureText_ = broken ? failureText + "\n" + kDoubleTheQuote : failureText;
  waiting_.clear();
  // What a search doesn't find says nothing about the competition.
  if (!name.isEmpty()) noteDue_ = false;
  bool opened = false;
  reported(fehlerReport(workplace_.dialogs, failureText_), [&](Steps&) {
    list_->open(*database_, "Select * from Schützenliste" + filter + kOrder);
    opened = true;
  });
  if (opened) return;
  // Nobody chooses from what was found for another text.
  list_->clear();
  ui_->lblAnzahl->setText(broken ? kDoubleTheQuote : QString());
}

void frmSchuetzenListe::showCount() {
  ui_->lblAnzahl->setText(countText(*list_, "1 Schütze", "Schützen"));
  if (!ui_->VSFlexGrid1->currentIndex().isValid()) selectFirstRow();
  // The list is still being told of its rows: what they set off comes after that.
  if (noteDue_ && list_->isComplete()) QTimer::singleShot(0, this, &frmSchuetzenListe::noteNoShooters);
  if (!waiting_.isEmpty()) QTimer::singleShot(0, this, &frmSchuetzenListe::doWaitingKeys);
}

void frmSchuetzenListe::layOutList() {
  QTableView* view = ui_->VSFlexGrid1;
  const QFontMetrics metrics = view->fontMetrics();
  view->verticalHeader()->setDefaultSectionSize(metrics.height() * 4 / 3);
  for (int column = 0; column < list_->columnCount(); ++column) {
    const auto shown = std::find_if(std::begin(kShown), std::end(kShown),
                                    [&](const ShownColumn& each) { return each.position == column; });
    view->setColumnHidden(column, shown == std::end(kShown));
    if (shown != std::end(kShown))
      view->setColumnWidth(column, (shown->characters + 1) * metrics.averageCharWidth());
  }
}

void frmSchuetzenListe::fitToColumns() {
  int width = ui_->VSFlexGrid1->verticalScrollBar()->sizeHint().width();
  for (const ShownColumn& column : kShown)
    width += (column.characters + 1) * ui_->VSFlexGrid1->fontMetrics().averageCharWidth();
  const QMargins margins = layout()->contentsMargins();
  width += margins.left() + margins.right() + 4 * ui_->VSFlexGrid1->frameWidth();
  const int height = kRowsInSight * ui_->VSFlexGrid1->verticalHeader()->defaultSectionSize();
  resize(QSize(width, height).boundedTo(screen()->availableSize() * 9 / 10));
}

void frmSchuetzenListe::selectFirstRow() {
  if (list_->rowCount() > 0) ui_->VSFlexGrid1->setCurrentIndex(list_->index(0, kStartnummer));
}

bool frmSchuetzenListe::waitsForRows(Qt::Key key) {
  // Behind one that waits, so that the keys keep their order.
  if (waiting_.isEmpty() && (list_->isComplete() || list_->count() > 0)) return false;
  waiting_.append(key);
  return true;
}

void frmSchuetzenListe::doWaitingKeys() {
  if (!list_->isComplete() && list_->count() == 0) return;
  for (const Qt::Key key : std::exchange(waiting_, {})) {
    if (key == Qt::Key_Return) return cmdOK_Click();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(ui_->VSFlexGrid1, &press);
  }
}

void frmSchuetzenListe::cmdOK_Click() {
  if (waitsForRows(Qt::Key_Return)) return;
  const QModelIndex chosen = ui_->VSFlexGrid1->currentIndex();
  sStartnummer_ = chosen.isValid() ? chosen.siblingAtColumn(kStartnummer).data().toString() : QString();
  accept();
}

}  // namespace qk

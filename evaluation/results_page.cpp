#include "evaluation/results_page.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QTimer>

#include "capture/discipline_loader.h"
#include "evaluation/result_check.h"
#include "platform/dao/database.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/count_text.h"
#include "platform/runtime/clock.h"
#include "platform/widgets/empty_text.h"

namespace qk {

namespace {

const char* const kLoading = "Fehler beim Laden der Ergebnisse!";
const char* const kEditing = "Fehler beim Bearbeiten der Ergebnisse!";
const char* const kDeleting = "Fehler beim Löschen des Ergebnisses!";

/// What a report says while something else than the usual is done.
class Saying {
 public:
  Saying(QString& text, const QString& now) : text_(text), before_(text) { text = now; }
  ~Saying() { text_ = before_; }
  Saying(const Saying&) = delete;
  Saying& operator=(const Saying&) = delete;

 private:
  QString& text_;
  QString before_;
};

std::vector<BoundColumn> columns() {
  return {{.field = "Ergebnis", .characters = 10},
          {.field = "Waffe", .characters = 8},
          {.field = "Disziplin", .characters = 36, .locked = true},
          {.field = "Datum", .characters = 20}};
}

}  // namespace

ResultsPage::ResultsPage(const Workplace& workplace, ResultKind kind, BoundGrid& grid, QLabel& count,
                         const QString& nameEnd)
    : workplace_(workplace),
      kind_(kind),
      grid_(grid),
      count_(count),
      failure_(kEditing),
      fetchFailure_(kLoading),
      rows_(std::make_unique<BoundRows>([this](const Error& error) {
        const ErrorAnswer answer = report(failure_)(error);
        justFailed_ = true;
        QTimer::singleShot(0, this, [this] { justFailed_ = false; });
        return answer;
      })) {
  rows_->setFetchReport([this](const Error& error) {
    const ErrorAnswer answer = report(fetchFailure_)(error);
    gaveUp_ = answer == ErrorAnswer::Abort;
    return answer;
  });
  rows_->setColumns(columns());
  rows_->setCheck(
      [this](int row, const QString& field, const QVariant& value) { return mayHold(row, field, value); });
  grid_.setRows(rows_.get());
  grid_.setFilterRow(true, nameEnd);
  grid_.horizontalHeader()->setSectionResizeMode(result::Disziplin, QHeaderView::Stretch);
  setEmptyText(&grid_, "Keine " + resultTitle(kind_));
  browser_ =
      std::make_unique<GridBrowser>(grid_, resultQuery(kind_, {}), [this](GridBrowser::Act) { show(); });
  connect(rows_.get(), &BoundRows::counted, this, &ResultsPage::standSomewhere);
  connect(grid_.selectionModel(), &QItemSelectionModel::selectionChanged, this, &ResultsPage::changed);
  connect(&grid_, &BoundGrid::lockedEdited, this, &ResultsPage::disciplineWanted);
}

ResultsPage::~ResultsPage() {
  rows_->disconnect(this);
  grid_.selectionModel()->disconnect(this);
}

ErrorReport ResultsPage::report(const QString& text) const {
  return fehlerReport(workplace_.dialogs, text);
}

bool ResultsPage::submit() {
  return justFailed_ ? !rows_->isEdited() : grid_.submitRow();
}

bool ResultsPage::load(dao::Database& database, const QString& sStartnummer) {
  database_ = &database;
  browser_->setQuery(resultQuery(kind_, sStartnummer));
  return reported(report(kLoading), [&](Steps& step) {
    if (!step([&] { rows_->open(database, browser_->query().text()); })) rows_->clear();
  });
}

/// The rows of the query in force; none of a former one stay where it can't be read.
void ResultsPage::show() {
  if (!database_) return;
  bool opened = false;
  reported(report(kLoading),
           [&](Steps& step) { opened = step([&] { rows_->open(*database_, browser_->query().text()); }); });
  if (!opened) rows_->clear();
}

QString ResultsPage::filterText() const {
  if (!browser_->query().isFiltered()) return {};
  QStringList parts;
  const QStringList& texts = browser_->query().filterTexts();
  for (qsizetype i = 0; i < texts.size(); ++i)
    if (!texts[i].trimmed().isEmpty()) parts << resultColumns()[i] + " " + texts[i];
  return parts.join(", ");
}

/// There is a current row wherever there is a row: an act without marks is meant for it.
void ResultsPage::standSomewhere() {
  if (grid_.currentRow() < 0 && rows_->count() > 0) grid_.setCurrentRow(0);
  count_.setText(rows_->isComplete() && !rows_->isBroken() ? resultCount(rows_->count())
                                                           : countText(*rows_, "1 Serien", "Serien"));
  Q_EMIT changed();
}

bool ResultsPage::complete(const QString& failure) {
  const Saying saying(fetchFailure_, failure);
  gaveUp_ = false;
  if (rows_->isBroken()) rows_->refresh();
  rows_->waitForAll();
  return !gaveUp_;
}

void ResultsPage::refresh(const QString& failure, int row) {
  if (!rows_->isOpen()) return;
  const Saying saying(fetchFailure_, failure);
  reported(report(failure), [this](Steps& step) { step([this] { rows_->refresh(); }); });
  rows_->waitForAll();
  grid_.setCurrentRow(row);
}

int ResultsPage::currentNumber(const QString& field) const {
  const int row = grid_.currentRow();
  return row < 0 ? 0 : rows_->value(row, field).toInt();
}

int ResultsPage::currentResult() const {
  return currentNumber("SchussID");
}

int ResultsPage::currentDiscipline() const {
  return currentNumber("DisziID");
}

QList<qint32> ResultsPage::resultsOf(const QList<QByteArray>& bookmarks) {
  QList<qint32> results;
  for (const QByteArray& bookmark : bookmarks)
    if (const int row = rows_->rowOf(bookmark); row >= 0 && rows_->reread(row))
      results << rows_->value(row, "SchussID").toInt();
  return results;
}

void ResultsPage::goTo(qint32 result) {
  const int row = rows_->findFirst("SchussID = " + QString::number(result));
  if (row >= 0) grid_.setCurrentRow(row);
}

bool ResultsPage::remove(const QList<QByteArray>& bookmarks, int& removed) {
  const Saying saying(failure_, kDeleting);
  return rows_->removeBookmarked(bookmarks, &removed);
}

/// Whether a typed value may go into the row. What can't be is said, what is doubtful is asked.
bool ResultsPage::mayHold(int row, const QString& field, const QVariant& value) {
  CellCheck check;
  const bool goOn = reported(report(kEditing), [&](Steps& step) {
    if (field == "Datum") {
      check = checkDatum(value, workplace_.clock.now().date());
      return;
    }
    std::shared_ptr<Disziplin> discipline;
    step([&] { discipline = LadeDisziplin(*database_, rows_->value(row, "DisziID").toInt()); });
    if (!discipline) discipline = std::make_shared<Disziplin>();
    check = field == "Waffe" ? checkWaffe(*discipline, value.toString()) : checkErgebnis(*discipline, value);
  });
  if (!goOn) return false;
  if (check.verdict == CellCheck::Verdict::Impossible)
    workplace_.dialogs.note(check.text, BoxIcon::Exclamation);
  if (check.verdict != CellCheck::Verdict::Doubtful) return check.verdict == CellCheck::Verdict::Fine;
  return workplace_.dialogs.confirm(check.text, BoxIcon::Question, BoxAnswer::No);
}

}  // namespace qk

#include "masterdata/windows/import_window.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScreen>
#include <QSignalBlocker>
#include <QTimer>

#include "platform/dialog/dialogs.h"
#include "platform/widgets/empty_text.h"
#include "platform/widgets/hourglass.h"
#include "ui_import_window.h"

namespace qk {

namespace {

constexpr int kHeading = 0, kExample = 1, kReadAs = 2;
const QString kNotRead = "(nicht gelesen)";

using lists::ListKind;
using lists::Verdict;

/// The first cell of the column that says anything.
QString exampleOf(const lists::CsvTable& table, qsizetype column) {
  constexpr size_t kLooked = 200;
  for (size_t row = 1; row < table.rows.size() && row < kLooked; ++row)
    if (const QString cell = table.rows[row].value(column).simplified(); !cell.isEmpty())
      return cell.left(60);
  return {};
}

}  // namespace

/// While a list is read or judged only stopping is possible.
class ImportWindow::Run {
 public:
  explicit Run(ImportWindow& window) : window_(window) {
    window_.running_ = true;
    window_.stop_ = false;
    window_.ui_->barLauf->setValue(0);
    window_.showState();
  }
  ~Run() {
    window_.running_ = false;
    window_.showState();
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

 private:
  ImportWindow& window_;
};

ImportWindow::ImportWindow(const Workplace& workplace, dao::Database& database, ListKind kind,
                           QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      ui_(std::make_unique<Ui::ImportWindow>()),
      session_(workplace, database) {
  ui_->setupUi(this);
  ui_->splitListen->setStretchFactor(0, 2);
  ui_->splitListen->setStretchFactor(1, 3);
  for (const ListKind one : {ListKind::Shooters, ListKind::Clubs, ListKind::Teams})
    ui_->cboArt->addItem(lists::kindName(one), static_cast<int>(one));
  ui_->cboArt->setCurrentIndex(ui_->cboArt->findData(static_cast<int>(kind)));
  session_.setKind(kind);
  ui_->gridVorschau->setModel(&preview_);
  ui_->gridVorschau->verticalHeader()->hide();
  ui_->gridVorschau->horizontalHeader()->setStretchLastSection(true);
  ui_->tabSpalten->verticalHeader()->hide();
  ui_->tabSpalten->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  ui_->tabSpalten->horizontalHeader()->setStretchLastSection(true);
  setEmptyText(ui_->gridVorschau, "Hier steht, was aus jeder Zeile der Datei wird.");
  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  connect(&session_, &ImportSession::dropping, this, [this] { preview_.setJudgement(nullptr); });
  session_.goesOn = [this](int done, int all) { return goesOn(done, all); };
  connect(ui_->cmdDatei, &QPushButton::clicked, this, &ImportWindow::chooseFile);
  connect(ui_->cboArt, &QComboBox::activated, this, [this] {
    session_.setKind(static_cast<ListKind>(ui_->cboArt->currentData().toInt()));
    showColumns();
    judge();
  });
  connect(ui_->cboUrteil, &QComboBox::currentIndexChanged, this, &ImportWindow::showVerdicts);
  connect(ui_->gridVorschau->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &ImportWindow::showDetails);
  connect(ui_->cmdUebernehmen, &QPushButton::clicked, this, [this] {
    const Run run(*this);
    const Hourglass writing;
    say(session_.takeOver());
    showPreview();
  });
  connect(ui_->cmdZuruecknehmen, &QPushButton::clicked, this, [this] {
    const Run run(*this);
    const Hourglass writing;
    say(session_.undo());
    showPreview();
  });
  connect(ui_->cmdAusgeben, &QPushButton::clicked, this, [this] { say(session_.exportList()); });
  connect(ui_->cmdStopp, &QPushButton::clicked, this, [this] { stop_ = true; });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  const QSize room = screen()->availableSize();
  resize(qMin(room.width() * 9 / 10, fontMetrics().averageCharWidth() * 190),
         qMin(room.height() * 8 / 10, fontMetrics().height() * 50));
  ui_->splitListen->setStretchFactor(1, 1);
  ui_->splitListen->setSizes({width() * 2 / 5, width() * 3 / 5});
  showPreview();
}

ImportWindow::~ImportWindow() = default;

void ImportWindow::reject() {
  if (running_)
    stop_ = true;
  else
    QDialog::reject();
}

void ImportWindow::say(const QString& line) {
  ui_->lblErfolg->setText(line);
  if (!line.isEmpty()) done_ = line;
}

/// Several times a second, so that the window lives and can stop it.
bool ImportWindow::goesOn(int done, int all) {
  constexpr int kPause = 50;  // milliseconds
  if (shown_.isValid() && shown_.elapsed() < kPause) return !stop_;
  ui_->barLauf->setMaximum(qMax(1, all));
  ui_->barLauf->setValue(done);
  QCoreApplication::processEvents();
  shown_.start();
  return !stop_;
}

void ImportWindow::chooseFile() {
  const QString path = workplace_.dialogs.openFile(
      "Listen (*.csv;*.txt;*.tsv)|*.csv;*.txt;*.tsv|Alle Dateien (*.*)|*.*", session_.path());
  if (path.isEmpty()) return;
  bool loaded = false;
  {
    const Run run(*this);
    loaded = session_.load(path);
  }
  ui_->lblDatei->setText(session_.path());
  showColumns();
  if (loaded)
    judge();
  else
    showPreview();
}

void ImportWindow::judge() {
  if (running_) return;
  say({});
  {
    const Run run(*this);
    session_.judge();
  }
  showPreview();
}

void ImportWindow::showColumns() {
  QTableWidget& grid = *ui_->tabSpalten;
  grid.setRowCount(0);
  if (!session_.isLoaded()) return;
  const QStringList headings = session_.table().rows.front();
  grid.setRowCount(static_cast<int>(headings.size()));
  for (int column = 0; column < headings.size(); ++column) {
    grid.setItem(column, kHeading, new QTableWidgetItem(headings[column].simplified()));
    grid.setItem(column, kExample, new QTableWidgetItem(exampleOf(session_.table(), column)));
    auto* choice = new QComboBox(&grid);
    choice->setObjectName(QString("cboSpalte_%1").arg(column));
    choice->setAccessibleName(headings[column].simplified() + " gelesen als");
    choice->addItem(kNotRead, QString());
    for (const lists::ListColumn& one : lists::columnsOf(session_.kind()))
      choice->addItem(one.heading, one.heading);
    const QString assigned = session_.assignment().value(column);
    if (choice->findData(assigned) < 0) choice->addItem(assigned, assigned);
    choice->setCurrentIndex(choice->findData(assigned));
    grid.setCellWidget(column, kReadAs, choice);
    connect(choice, &QComboBox::activated, this, [this, choice, column] {
      session_.assign(column, choice->currentData().toString());
      QTimer::singleShot(0, this, [this, column] {  // the list of this very choice is made anew
        showColumns();
        if (auto* again = findChild<QComboBox*>(QString("cboSpalte_%1").arg(column))) again->setFocus();
        judge();
      });
    });
  }
}

void ImportWindow::showPreview() {
  const lists::Judgement* judgement = session_.judgement();
  {
    const QSignalBlocker quiet(ui_->cboUrteil);
    const QVariant chosen = ui_->cboUrteil->currentData();
    ui_->cboUrteil->clear();
    const int all = judgement ? static_cast<int>(judgement->rows.size()) : 0;
    ui_->cboUrteil->addItem(QString("alle: %1").arg(all), -1);
    for (const Verdict one : {Verdict::New, Verdict::Changed, Verdict::Faulty, Verdict::Known})
      ui_->cboUrteil->addItem(
          QString("%1: %2").arg(lists::verdictName(one)).arg(judgement ? judgement->count(one) : 0),
          static_cast<int>(one));
    ui_->cboUrteil->setCurrentIndex(qMax(0, ui_->cboUrteil->findData(chosen)));
  }
  preview_.setJudgement(judgement);
  showVerdicts();
  showState();
}

void ImportWindow::showVerdicts() {
  const int chosen = ui_->cboUrteil->currentData().toInt();
  preview_.setVerdict(chosen < 0 ? std::optional<Verdict>() : static_cast<Verdict>(chosen));
  ui_->gridVorschau->setColumnWidth(PreviewRows::Line, fontMetrics().averageCharWidth() * 8);
  ui_->gridVorschau->setColumnWidth(PreviewRows::Verdict, fontMetrics().averageCharWidth() * 11);
  ui_->gridVorschau->setColumnWidth(PreviewRows::Who, fontMetrics().averageCharWidth() * 26);
  if (preview_.rowCount() > 0) ui_->gridVorschau->selectRow(0);
  showDetails();
}

void ImportWindow::showDetails() {
  ui_->txtEinzelheiten->setPlainText(preview_.details(ui_->gridVorschau->currentIndex().row()));
}

void ImportWindow::showState() {
  const bool idle = !running_;
  for (QWidget* one : {static_cast<QWidget*>(ui_->cboArt), static_cast<QWidget*>(ui_->cmdDatei),
                       static_cast<QWidget*>(ui_->splitListen), static_cast<QWidget*>(ui_->cmdZuruecknehmen),
                       static_cast<QWidget*>(ui_->cmdAusgeben), static_cast<QWidget*>(ui_->cmdClose)})
    one->setEnabled(idle);
  ui_->cmdUebernehmen->setEnabled(idle && session_.writable() > 0);
  ui_->cmdStopp->setVisible(running_);
  ui_->barLauf->setVisible(running_);
  QString state = session_.missing();
  if (state.isEmpty() && !session_.judgement())
    state = stop_ ? "Angehalten. Die Art der Liste neu zu wählen beurteilt sie von vorn." : "";
  if (session_.judgement() && session_.writable() == 0) state = "Nichts davon ist neu oder geändert.";
  ui_->lblStand->setText(state);
}

}  // namespace qk

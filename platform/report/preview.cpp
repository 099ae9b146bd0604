#include "platform/report/preview.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QShortcut>

#include "platform/dialog/dialogs.h"
#include "platform/report/report_pages.h"
#include "platform/runtime/files.h"
#include "platform/runtime/numbers.h"
#include "ui_preview.h"

namespace qk {

namespace {

constexpr int kTurn = 50;  // milliseconds between two turns of the event loop during a long work
const QString kWidth = "Seitenbreite", kPage = "Ganze Seite";

QString counted(int count) {
  return formatNumber(count, 0, true);
}

/// A title as a file name that every system takes.
QString fileNameOf(QString title) {
  for (QChar& c : title)
    if (QString("\\/:*?\"<>|").contains(c) || c < u' ') c = u'-';
  title = title.simplified();
  return title.isEmpty() ? "Bericht" : title;
}

}  // namespace

ReportPreview::ReportPreview(const Workplace& workplace, Paper& paper, report::Document& document,
                             const QString& title, int zoom, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      paper_(paper),
      document_(document),
      ui_(std::make_unique<Ui::ReportPreview>()) {
  ui_->setupUi(this);
  setWindowTitle(title);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  ui_->rowKopf->setLeftGroup(3);
  ui_->barArbeit->hide();
  for (const int percent : {50, 75, 90, 100, 125, 150, 200})
    ui_->cmbZoom->addItem(QString("%1 %").arg(percent));
  ui_->cmbZoom->addItems({kWidth, kPage});
  ui_->cmbZoom->setCompleter(nullptr);  // what is typed counts, not what it resembles
  const int character = fontMetrics().averageCharWidth();
  resize(130 * character, 46 * fontMetrics().lineSpacing());

  ui_->viwSeiten->setDocument(&document_);
  ui_->viwSeiten->setZoom(report::PageView::Fit::Percent, zoom);
  showZoom();
  connect(&document_, &report::Document::grown, this, [this] {
    ui_->viwSeiten->documentGrew();
    showState();
  });
  connect(&document_, &report::Document::completed, this, &ReportPreview::showState);
  connect(&document_, &report::Document::failed, this, &ReportPreview::fail);
  connect(ui_->viwSeiten, &report::PageView::currentPageChanged, this, &ReportPreview::showState);
  connect(ui_->spnSeite, &QSpinBox::valueChanged, this,
          [this](int page) { ui_->viwSeiten->goToPage(page - 1); });
  connect(ui_->cmbZoom, &QComboBox::textActivated, this, &ReportPreview::zoomChosen);
  connect(ui_->cmbZoom->lineEdit(), &QLineEdit::editingFinished, this,
          [this] { zoomChosen(ui_->cmbZoom->currentText()); });
  connect(ui_->txtSuche, &QLineEdit::textChanged, this, [this] { search(true); });
  connect(ui_->txtSuche, &QLineEdit::returnPressed, this, [this] { search(true); });
  connect(ui_->cmdWeiter, &QPushButton::clicked, this, [this] { search(true); });
  connect(ui_->cmdZurueck, &QPushButton::clicked, this, [this] { search(false); });
  connect(ui_->cmdDrucken, &QPushButton::clicked, this, &ReportPreview::print);
  connect(ui_->cmdPdf, &QPushButton::clicked, this, [this] {
    save("PDF-Datei (*.pdf)|*.pdf", "pdf", [this](QIODevice& device, const report::GoesOn& goesOn) {
      return document_.writePdf(device, windowTitle(), goesOn);
    });
  });
  connect(ui_->cmdCsv, &QPushButton::clicked, this, [this] {
    save("CSV-Datei (*.csv)|*.csv", "csv", [this](QIODevice& device, const report::GoesOn& goesOn) {
      return document_.writeCsv(device, goesOn);
    });
  });
  connect(ui_->cmdHalt, &QPushButton::clicked, this, &ReportPreview::halt);
  connect(ui_->cmdSchliessen, &QPushButton::clicked, this, &ReportPreview::reject);
  makeKeys();
  ui_->viwSeiten->setFocus();
  showState();
}

ReportPreview::~ReportPreview() = default;

void ReportPreview::key(const QKeySequence& sequence, const std::function<void()>& routine) {
  connect(new QShortcut(sequence, this), &QShortcut::activated, this, routine);
}

void ReportPreview::makeKeys() {
  key(Qt::CTRL | Qt::Key_P, [this] { ui_->cmdDrucken->click(); });
  key(Qt::CTRL | Qt::Key_S, [this] { ui_->cmdPdf->click(); });
  key(Qt::CTRL | Qt::Key_F, [this] {
    ui_->txtSuche->setFocus(Qt::ShortcutFocusReason);
    ui_->txtSuche->selectAll();
  });
  key(Qt::Key_F3, [this] { search(true); });
  key(Qt::SHIFT | Qt::Key_F3, [this] { search(false); });
  key(Qt::CTRL | Qt::Key_Plus, [this] { zoomBy(10); });
  key(Qt::CTRL | Qt::Key_Minus, [this] { zoomBy(-10); });
  key(Qt::CTRL | Qt::Key_0, [this] { zoomChosen("100 %"); });
}

/// Esc stops a long work first.
void ReportPreview::reject() {
  if (working_) return halt();
  QDialog::reject();
}

void ReportPreview::showState() {
  const int pages = document_.pageCount();
  const bool growing = !document_.isComplete() && !document_.isStopped();
  {
    const QSignalBlocker quiet(ui_->spnSeite);
    ui_->spnSeite->setMaximum(std::max(1, pages));
    ui_->spnSeite->setValue(ui_->viwSeiten->currentPage() + 1);
  }
  ui_->lblSeiten->setText(QString("von %1%2").arg(counted(pages), growing ? " …" : ""));
  QString state = QString("%1 Zeilen").arg(counted(document_.rowsLaidOut()));
  if (growing) state = "Die Seiten werden aufgebaut: " + state;
  if (document_.isStopped()) state = "Angehalten, es fehlen Seiten: " + state;
  if (!news_.isEmpty()) state = news_;
  ui_->lblStand->setText(state);
  const bool free = !working_ && pages > 0;
  for (QPushButton* button : {ui_->cmdDrucken, ui_->cmdPdf, ui_->cmdCsv}) button->setEnabled(free);
  ui_->cmdHalt->setEnabled(working_ || growing);
  ui_->cmdSchliessen->setEnabled(!working_);
}

void ReportPreview::showZoom() {
  ui_->cmbZoom->setEditText(QString("%1 %").arg(ui_->viwSeiten->percent()));
}

void ReportPreview::zoomChosen(const QString& text) {
  using Fit = report::PageView::Fit;
  if (text == kWidth || text == kPage) {
    ui_->viwSeiten->setZoom(text == kWidth ? Fit::Width : Fit::Page);
  } else if (const auto percent = readPrefix(text); percent && *percent > 0) {
    ui_->viwSeiten->setZoom(Fit::Percent, static_cast<int>(std::min(*percent, 1000.0)));
  }
  showZoom();
}

void ReportPreview::zoomBy(int percent) {
  ui_->viwSeiten->setZoom(report::PageView::Fit::Percent, ui_->viwSeiten->percent() + percent);
  showZoom();
}

void ReportPreview::search(bool forwards) {
  const QString text = ui_->txtSuche->text().trimmed();
  const bool found = ui_->viwSeiten->find(text, forwards);
  news_ = text.isEmpty() || found ? QString() : QString("\"%1\" steht hier nirgends.").arg(text);
  showState();
}

void ReportPreview::halt() {
  halted_ = true;
  if (!working_) document_.stop();
  showState();
}

void ReportPreview::fail(const Error& error) {
  news_ = error.description();
  showState();
  workplace_.dialogs.note(error.description(), BoxIcon::Exclamation, windowTitle());
}

void ReportPreview::work(const QString& what, const std::function<bool(const report::GoesOn&)>& body,
                         const QString& success) {
  working_ = true;
  halted_ = false;
  news_ = what;
  showState();
  ui_->barArbeit->setRange(0, 0);
  ui_->barArbeit->show();
  ui_->lblTasten->hide();
  QElapsedTimer turn;
  turn.start();
  const auto goesOn = [&](int done, int all) {
    if (!turn.hasExpired(kTurn)) return !halted_;
    ui_->barArbeit->setRange(0, all);
    ui_->barArbeit->setValue(done);
    QCoreApplication::processEvents();
    turn.restart();
    return !halted_;
  };
  try {
    news_ = body(goesOn) ? success : "Angehalten, nichts wurde fertig.";
  } catch (const Error& error) {
    news_.clear();
    workplace_.dialogs.note(error.description(), BoxIcon::Exclamation, windowTitle());
  }
  working_ = false;
  ui_->barArbeit->hide();
  ui_->lblTasten->show();
  showState();
}

void ReportPreview::print() {
  work(
      "Wird gedruckt …",
      [this](const report::GoesOn& goesOn) {
        report::ReportPages pages(document_, windowTitle(), goesOn);
        return paper_.print(pages);
      },
      "Gedruckt.");
}

void ReportPreview::save(const QString& filter, const QString& extension, const Writing& write) {
  const QString start = QDir::home().filePath(fileNameOf(windowTitle()) + "." + extension);
  const QString path = workplace_.dialogs.saveFile(filter, start);
  if (path.isEmpty()) return;
  work(
      "Wird gespeichert …",
      [&](const report::GoesOn& goesOn) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        if (!write(buffer, goesOn)) return false;
        workplace_.files.replace(path, bytes);
        return true;
      },
      "Gespeichert: " + path);
}

}  // namespace qk
